// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "DecoderFields.h"

#include <QtTest>

// Tests how the decoder walks the list of items of a QZ reply: 36 bytes that are not read, the number of items, the
// items.
class QZItemListTest : public QObject
{
    Q_OBJECT

private slots:
    void repliesThatSayNothing_data();
    void repliesThatSayNothing();
    void skipping_data();
    void skipping();
    void dataBeyondTheEnd_data();
    void dataBeyondTheEnd();
    void itemCount_data();
    void itemCount();
    void cutReply_data();
    void cutReply();
    void bytesBeyondTheEnd_data();
    void bytesBeyondTheEnd();
    void secondParseAppendsCodes();
};

namespace {

constexpr int SmallestReplyBytes = 40;
constexpr int WholeReplyBytes = 61;

// One item of each kind.
QByteArray WholeReply()
{
    return QZReplyOf(5,
                     Hex("0006 01 01" // 37: ready
                         "0007 01 02" // 41: printing
                         "0009 02 1106" // 45
                         "000C 02 110D" // 50
                         "001D 03 000050")); // 55
}

} // namespace

void QZItemListTest::repliesThatSayNothing_data()
{
    QTest::addColumn<QByteArray>("reply");

    for (int bytes = 0; bytes < SmallestReplyBytes; ++bytes) {
        QTest::addRow("%d bytes", bytes) << WholeReply().left(bytes);
    }
    QTest::newRow("no items") << QZReplyOf(0, Hex("000000"));
    QTest::newRow("no items, but bytes") << QZReplyOf(0, Hex("0006 01 02 0009 02 1106"));
    QTest::newRow("no items, broken one") << QZReplyOf(0, Hex("0009 FF 11"));
}

// The decoder accepts such replies.
void QZItemListTest::repliesThatSayNothing()
{
    QFETCH(const QByteArray, reply);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, reply), 1U);
    QCOMPARE(FilledFields(status), QStringList());
    QVERIFY(status.vecErrorCode.empty());
    QVERIFY(status.vecWarningCode.empty());
}

void QZItemListTest::skipping_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<unsigned long>("statusCode");

    // The data of an item that is not stored are read as the next header.
    QTest::newRow("unknown item's data are an item") << 2 << Hex("0020 04  0006 01 04") << 12UL;
    QTest::newRow("unknown item's data shift the rest") << 2 << Hex("0020 02 AABB  0006 01 02") << 0UL;
    QTest::newRow("and meet an item again") << 3 << Hex("0020 03 AABBCC  0006 01 02") << 4UL;
    QTest::newRow("unknown item without data") << 2 << Hex("0020 00  0006 01 02") << 4UL;
    QTest::newRow("type in both bytes") << 3 << Hex("0106 01  0007 01 03  0600 01") << 9UL;
    QTest::newRow("machine state of two bytes") << 2 << Hex("0006 02 0007 01 03") << 9UL;
    QTest::newRow("machine state of three bytes") << 3 << Hex("0006 03 020202  0007 01 03") << 9UL;
    QTest::newRow("machine state without data") << 2 << Hex("0006 00  0007 01 03") << 9UL;
    QTest::newRow("job state of two bytes") << 2 << Hex("0007 02 0006 01 02") << 4UL;
    QTest::newRow("job state without data") << 2 << Hex("0007 00  0006 01 02") << 4UL;
    QTest::newRow("machine state without data at the end") << 1 << Hex("0006 00") << 0UL;
    QTest::newRow("machine state of two bytes at the end") << 1 << Hex("0006 02 0101") << 0UL;
    // The data of stored items are skipped.
    QTest::newRow("error") << 2 << Hex("0009 04 00060103  0006 01 02") << 4UL;
    QTest::newRow("warning") << 2 << Hex("000C 04 00060103  0006 01 02") << 4UL;
    QTest::newRow("toner") << 2 << Hex("001D 04 00060103  0006 01 02") << 4UL;
    QTest::newRow("the last state counts") << 3 << Hex("0006 01 01  0007 01 02  0006 01 03") << 5UL;
}

void QZItemListTest::skipping()
{
    QFETCH(const int, count);
    QFETCH(const QByteArray, items);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, QZReplyOf(count, items)), 1U);
    QTEST(status.dwStatus, "statusCode");
}

void QZItemListTest::dataBeyondTheEnd_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("items");

    QTest::newRow("machine state") << 1 << Hex("0006 01");
    QTest::newRow("machine state of two bytes") << 1 << Hex("0006 02 01");
    QTest::newRow("machine state of 255 bytes") << 2 << Hex("0006 FF 0007 01 03");
    QTest::newRow("job state") << 1 << Hex("0007 01");
    QTest::newRow("job state of two bytes") << 2 << Hex("0007 02 00");
    QTest::newRow("error") << 1 << Hex("0009 02 11");
    QTest::newRow("error without any") << 1 << Hex("0009 01");
    QTest::newRow("error of 255 bytes") << 2 << Hex("0009 FF 1106 0006 01 02");
    QTest::newRow("warning") << 1 << Hex("000C 02 11");
    QTest::newRow("toner") << 1 << Hex("001D 03 1122");
    QTest::newRow("toner with its level") << 1 << Hex("001D 04 000050");
    QTest::newRow("item in an unknown item's data") << 2 << Hex("0020 04 0009 02 11");
}

void QZItemListTest::dataBeyondTheEnd()
{
    QFETCH(const int, count);
    QFETCH(const QByteArray, items);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, QZReplyOf(count, items)), 0U);
    QCOMPARE(FilledFields(status), QStringList());
    QVERIFY(status.vecErrorCode.empty());
    QVERIFY(status.vecWarningCode.empty());

    // Values decoded before these items stay.
    UtilPrinterStatus after;
    QCOMPARE(ParseQZ(after, QZReplyOf(count + 2, Hex("0006 01 02  0009 02 1106") + items)), 0U);
    QCOMPARE(after.dwStatus, 4UL);
    QCOMPARE(Codes(after.vecErrorCode), (QList<unsigned long>{0x1106}));
}

void QZItemListTest::itemCount_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<unsigned long>("statusCode");
    const QByteArray two = Hex("0006 01 02  0007 01 03");

    QTest::newRow("one of two") << 1 << two << 4UL;
    QTest::newRow("two of two") << 2 << two << 9UL;
    QTest::newRow("three of two") << 3 << two << 9UL;
    QTest::newRow("five of two") << 5 << two << 9UL;
    QTest::newRow("255 of two") << 255 << two << 9UL;
    QTest::newRow("five of two and a byte") << 5 << two + Hex("00") << 9UL;
    QTest::newRow("five of two and two bytes") << 5 << two + Hex("0009") << 9UL;
    QTest::newRow("unknown items count") << 2 << Hex("0020 00  0006 01 02  0007 01 03") << 4UL;
    QTest::newRow("states of another length count") << 2 << Hex("0006 00  0006 01 02  0007 01 03") << 4UL;
    QTest::newRow("broken item after the last") << 2 << two + Hex("0009 FF 11") << 9UL;
}

void QZItemListTest::itemCount()
{
    QFETCH(const int, count);
    QFETCH(const QByteArray, items);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, QZReplyOf(count, items)), 1U);
    QTEST(status.dwStatus, "statusCode");
    QVERIFY(status.vecErrorCode.empty());
}

void QZItemListTest::cutReply_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<unsigned int>("result");

    QCOMPARE(WholeReply().size(), WholeReplyBytes);
    for (int bytes = SmallestReplyBytes; bytes <= WholeReplyBytes; ++bytes) {
        const bool isInsideData = QList<int>{40, 44, 48, 49, 53, 54, 58, 59, 60}.contains(bytes);
        QTest::addRow("%d bytes", bytes) << bytes << (isInsideData ? 0U : 1U);
    }
}

// A reply that ends between items or inside a header is accepted. One that ends inside an item's data is rejected.
void QZItemListTest::cutReply()
{
    QFETCH(const int, bytes);
    QFETCH(const unsigned int, result);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, WholeReply().left(bytes)), result);
    QCOMPARE(status.dwStatus, bytes < 41 ? 0UL : bytes < 45 ? 3UL : 8UL);
    QCOMPARE(Codes(status.vecErrorCode), bytes < 50 ? QList<unsigned long>{} : QList<unsigned long>{0x1106});
    QCOMPARE(status.dwErrorCount, bytes < 50 ? 0UL : 1UL);
    QCOMPARE(Codes(status.vecWarningCode), bytes < 55 ? QList<unsigned long>{} : QList<unsigned long>{0x110D});
    QCOMPARE(status.dwWarningCount, bytes < 55 ? 0UL : 1UL);
    QCOMPARE(status.dwRemainingToner, bytes < 61 ? 0UL : 80UL);

    UtilPrinterStatus inPlace;
    QCOMPARE(ParseQZCut(inPlace, WholeReply(), bytes), result);
    QCOMPARE(FilledFields(inPlace), FilledFields(status));
    QCOMPARE(Codes(inPlace.vecErrorCode), Codes(status.vecErrorCode));
    QCOMPARE(Codes(inPlace.vecWarningCode), Codes(status.vecWarningCode));
}

void QZItemListTest::bytesBeyondTheEnd_data()
{
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QList<unsigned long>>("errors");
    QTest::addColumn<QList<unsigned long>>("warnings");
    using List = QList<unsigned long>;

    QTest::newRow("error without data") << Hex("0009 00") << List{0} << List{};
    QTest::newRow("warning without data") << Hex("000C 00") << List{} << List{0};
    QTest::newRow("toner of two bytes") << Hex("001D 02 0000") << List{} << List{};
    QTest::newRow("toner of one byte") << Hex("001D 01 00") << List{} << List{};
    QTest::newRow("toner without data") << Hex("001D 00") << List{} << List{};
    QTest::newRow("state without data") << Hex("0006 00") << List{} << List{};
    QTest::newRow("unknown item") << Hex("0020 04") << List{} << List{};
}

// Items at the end of the reply must not use bytes that follow the reply in memory.
void QZItemListTest::bytesBeyondTheEnd()
{
    QFETCH(const QByteArray, items);
    QFETCH(const QList<unsigned long>, errors);
    QFETCH(const QList<unsigned long>, warnings);
    const QByteArray reply = QZReplyOf(9, items);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZCut(status, reply + QByteArray(16, '\x01'), reply.size()), 1U);
    QCOMPARE(Codes(status.vecErrorCode), errors);
    QCOMPARE(Codes(status.vecWarningCode), warnings);
    QCOMPARE(FilledFields(status), QStringList());
}

void QZItemListTest::secondParseAppendsCodes()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, WholeReply()), 1U);
    QCOMPARE(ParseQZ(status, QZReplyOf(2, Hex("0009 02 0000  000C 01 07"))), 1U);
    QCOMPARE(Codes(status.vecErrorCode), (QList<unsigned long>{0x1106, 0}));
    QCOMPARE(status.dwErrorCount, 0UL);
    QCOMPARE(Codes(status.vecWarningCode), (QList<unsigned long>{0x110D, 7}));
    QCOMPARE(status.dwStatus, 8UL);
    QCOMPARE(status.dwRemainingToner, 80UL);
}

QTEST_GUILESS_MAIN(QZItemListTest)

#include "tst_qzitemlist.moc"
