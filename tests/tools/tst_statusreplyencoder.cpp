// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "StatusReplyEncoder.h"

#include <QtTest>

class StatusReplyEncoderTest : public QObject
{
    Q_OBJECT

private slots:
    void emptyStandardReply();
    void fullStandardReply();
    void longNamesUseBothLengthBytes();
    void supplyRecords_data();
    void supplyRecords();
    void announcedLengths_data();
    void announcedLengths();
    void emptyQZReply();
    void fullQZReply();
    void qzStatusItems_data();
    void qzStatusItems();
    void qzAnnouncedLengths();
};

namespace {

QByteArray Hex(const char* digitsAndBlanks)
{
    return QByteArray::fromHex(digitsAndBlanks);
}

// Hexadecimal texts make a failed comparison readable.
QByteArray HexText(const QByteArray& bytes)
{
    return bytes.toHex(' ');
}

QByteArray HexText(const ReplyRecord& record)
{
    QZReply reply;
    reply.header.clear();
    reply.items = {record};
    return HexText(EncodeQZReply(reply).mid(1));
}

} // namespace

void StatusReplyEncoderTest::emptyStandardReply()
{
    const QByteArray expected = Hex("00 00 00 00 00 00 00 00 00 00 00 00" // header
                                    "00 00  00 00  00 00" // three empty names
                                    "00 00" // reserved
                                    "00" // status
                                    "00 00" // no firmware version, no extra text
                                    "00 00" // no errors, no warnings
                                    "00 00 00 00 00" // reserved
                                    "00"); // no supplies
    QCOMPARE(HexText(EncodeStandardReply({})), HexText(expected));
}

void StatusReplyEncoderTest::fullStandardReply()
{
    StandardReply reply;
    reply.header = Hex("A0 A1 A2 A3 A4 A5 A6 A7 A8 A9 AA AB");
    reply.vendorName = "Tol";
    reply.productName = "QV";
    reply.serialNumber = "S1";
    reply.reservedBeforeStatus = Hex("B0 B1");
    reply.status = 16;
    reply.firmwareVersion = "1.2";
    reply.extraInfo = "xy";
    reply.errorCodes = {0x11B0, 0x1106};
    reply.warningCodes = {0x110D};
    reply.reservedBeforeSupplies = Hex("C0 C1 C2 C3 C4");
    reply.supplies = {SupplySerialNumber("T9"), SupplyValue(SupplyField::RemainingToner, 8750)};

    const QByteArray expected = Hex("A0 A1 A2 A3 A4 A5 A6 A7 A8 A9 AA AB"
                                    "00 03 54 6F 6C"
                                    "00 02 51 56"
                                    "00 02 53 31"
                                    "B0 B1"
                                    "10"
                                    "03 31 2E 32"
                                    "02 78 79"
                                    "02 11 B0 11 06"
                                    "01 11 0D"
                                    "C0 C1 C2 C3 C4"
                                    "02"
                                    "00 00 02 54 39"
                                    "10 00 02 22 2E");
    QCOMPARE(HexText(EncodeStandardReply(reply)), HexText(expected));
}

void StatusReplyEncoderTest::longNamesUseBothLengthBytes()
{
    StandardReply reply;
    reply.vendorName = QByteArray(300, 'v');
    const QByteArray bytes = EncodeStandardReply(reply);
    QCOMPARE(HexText(bytes.mid(12, 3)), QByteArray("01 2c 76"));
    QCOMPARE(bytes.size(), 12 + 2 + 300 + 2 + 2 + 2 + 1 + 1 + 1 + 1 + 1 + 5 + 1);
}

void StatusReplyEncoderTest::supplyRecords_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<quint32>("value");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("type") << 0x0001 << 0x01020304U << Hex("00 01 04 01 02 03 04");
    QTest::newRow("remaining toner") << 0x1000 << 10000U << Hex("10 00 02 27 10");
    QTest::newRow("waste toner") << 0x1001 << 65535U << Hex("10 01 02 FF FF");
    QTest::newRow("drum rotation") << 0x1002 << 1U << Hex("10 02 02 00 01");
    QTest::newRow("pages") << 0x1003 << 300U << Hex("10 03 04 00 00 01 2C");
    QTest::newRow("prints") << 0x1004 << 0xFFFFFFFFU << Hex("10 04 04 FF FF FF FF");
    QTest::newRow("print dots") << 0x1100 << 258U << Hex("11 00 02 01 02");
    QTest::newRow("printer pages") << 0x1101 << 70000U << Hex("11 01 04 00 01 11 70");
    QTest::newRow("printer prints") << 0x1102 << 0U << Hex("11 02 04 00 00 00 00");
}

void StatusReplyEncoderTest::supplyRecords()
{
    QFETCH(int, field);
    QFETCH(quint32, value);
    QFETCH(QByteArray, expected);
    QCOMPARE(HexText(SupplyValue(static_cast<SupplyField>(field), value)), HexText(expected));
}

void StatusReplyEncoderTest::announcedLengths_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("vendor name") << 12 << Hex("11 12");
    QTest::newRow("product name") << 15 << Hex("21 22");
    QTest::newRow("serial number") << 18 << Hex("31 32");
    QTest::newRow("firmware version") << 24 << Hex("41");
    QTest::newRow("extra text") << 26 << Hex("42");
    QTest::newRow("errors") << 28 << Hex("43 11 06");
    QTest::newRow("warnings") << 31 << Hex("44 11 0D");
    QTest::newRow("supplies") << 39 << Hex("45");
    QTest::newRow("data of a supplies record") << 40 << Hex("10 00 46 01");
}

void StatusReplyEncoderTest::announcedLengths()
{
    QFETCH(int, offset);
    QFETCH(QByteArray, expected);

    StandardReply reply;
    reply.vendorName = "v";
    reply.productName = "p";
    reply.serialNumber = "s";
    reply.firmwareVersion = "f";
    reply.extraInfo = "x";
    reply.errorCodes = {0x1106};
    reply.warningCodes = {0x110D};
    reply.supplies = {{0x1000, Hex("01"), 0x46}};
    reply.announced.vendorName = 0x1112;
    reply.announced.productName = 0x2122;
    reply.announced.serialNumber = 0x3132;
    reply.announced.firmwareVersion = 0x41;
    reply.announced.extraInfo = 0x42;
    reply.announced.errorCodes = 0x43;
    reply.announced.warningCodes = 0x44;
    reply.announced.supplies = 0x45;
    const QByteArray bytes = EncodeStandardReply(reply);
    QCOMPARE(bytes.size(), 44);
    QCOMPARE(HexText(bytes.mid(offset, expected.size())), HexText(expected));
}

void StatusReplyEncoderTest::emptyQZReply()
{
    QCOMPARE(HexText(EncodeQZReply({})), HexText(QByteArray(37, '\0')));
}

void StatusReplyEncoderTest::fullQZReply()
{
    QZReply reply;
    reply.header = QByteArray(36, '\x5A');
    reply.items = {QZMachineState(3), QZJobState(2), QZError(0x11B0), QZWarning(0x110D), QZToner(80)};
    const QByteArray expected = QByteArray(36, '\x5A') +
        Hex("05"
            "00 06 01 03"
            "00 07 01 02"
            "00 09 02 11 B0"
            "00 0C 02 11 0D"
            "00 1D 03 00 00 50");
    QCOMPARE(HexText(EncodeQZReply(reply)), HexText(expected));
}

void StatusReplyEncoderTest::qzStatusItems_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("expected"); // empty if no item stands for the code

    QTest::newRow("2") << 2 << QByteArray();
    QTest::newRow("3 ready") << 3 << Hex("00 06 01 01");
    QTest::newRow("4 initialize") << 4 << Hex("00 06 01 02");
    QTest::newRow("5 busy") << 5 << Hex("00 06 01 03");
    QTest::newRow("6") << 6 << QByteArray();
    QTest::newRow("7") << 7 << QByteArray();
    QTest::newRow("8 printing") << 8 << Hex("00 07 01 02");
    QTest::newRow("9 scanning") << 9 << Hex("00 07 01 03");
    QTest::newRow("10 copying") << 10 << Hex("00 07 01 01");
    QTest::newRow("11") << 11 << QByteArray();
    QTest::newRow("12 unknown") << 12 << Hex("00 06 01 04");
    QTest::newRow("18") << 18 << QByteArray();
}

void StatusReplyEncoderTest::qzStatusItems()
{
    QFETCH(int, code);
    QFETCH(QByteArray, expected);
    const auto item = QZStatus(static_cast<quint8>(code));
    QCOMPARE(item ? HexText(*item) : QByteArray(), HexText(expected));
}

void StatusReplyEncoderTest::qzAnnouncedLengths()
{
    QZReply reply;
    reply.items = {{0x0009, Hex("11"), 9}};
    reply.announcedItems = 5;
    QCOMPARE(HexText(EncodeQZReply(reply).mid(36)), QByteArray("05 00 09 09 11"));
}

QTEST_GUILESS_MAIN(StatusReplyEncoderTest)
#include "tst_statusreplyencoder.moc"
