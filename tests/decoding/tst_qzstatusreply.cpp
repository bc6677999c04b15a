// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "DecoderFields.h"

#include <QtTest>

// Tests each kind of item in QZ replies. tst_qzitemlist tests how the list of items is walked.
class QZStatusReplyTest : public QObject
{
    Q_OBJECT

private slots:
    void stateItems_data();
    void stateItems();
    void statesWithoutMeaning_data();
    void statesWithoutMeaning();
    void codeItems_data();
    void codeItems();
    void codeItemsInSequence_data();
    void codeItemsInSequence();
    void errorsAndWarningsAreApart();
    void tonerItems_data();
    void tonerItems();
};

void QZStatusReplyTest::stateItems_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<unsigned long>("code");
    QTest::addColumn<int>("mapped");

    QTest::newRow("machine 1: ready") << Hex("0006 01 01") << 3UL << 3;
    QTest::newRow("machine 2: initialize") << Hex("0006 01 02") << 4UL << 4;
    QTest::newRow("machine 3: busy") << Hex("0006 01 03") << 5UL << 5;
    QTest::newRow("machine 4: unknown") << Hex("0006 01 04") << 12UL << 0;
    QTest::newRow("job 1: copying") << Hex("0007 01 01") << 10UL << 10;
    QTest::newRow("job 2: printing") << Hex("0007 01 02") << 8UL << 8;
    QTest::newRow("job 3: scanning") << Hex("0007 01 03") << 9UL << 9;
}

void QZStatusReplyTest::stateItems()
{
    QFETCH(const QByteArray, item);
    QFETCH(const unsigned long, code);
    QFETCH(const int, mapped);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, QZReplyOf(1, item)), 1U);
    QCOMPARE(status.dwStatus, code);
    QCOMPARE(RawField(status, QStringLiteral("byStatus")), QByteArray(1, static_cast<char>(code)) + '\0');
    QCOMPARE(FilledFields(status), Names("byStatus dwStatus"));
    QCOMPARE(static_cast<int>(GetPrinterStatusEnum_QZ(status.dwStatus)), mapped);
}

void QZStatusReplyTest::statesWithoutMeaning_data()
{
    QTest::addColumn<QByteArray>("item");

    QTest::newRow("machine 0") << Hex("0006 01 00");
    QTest::newRow("machine 5") << Hex("0006 01 05");
    QTest::newRow("machine 128") << Hex("0006 01 80");
    QTest::newRow("machine 255") << Hex("0006 01 FF");
    QTest::newRow("job 0") << Hex("0007 01 00");
    QTest::newRow("job 4") << Hex("0007 01 04");
    QTest::newRow("job 255") << Hex("0007 01 FF");
}

void QZStatusReplyTest::statesWithoutMeaning()
{
    QFETCH(const QByteArray, item);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, QZReplyOf(1, item)), 1U);
    QCOMPARE(FilledFields(status), QStringList());

    UtilPrinterStatus before;
    QCOMPARE(ParseQZ(before, QZReplyOf(2, Hex("0007 01 03") + item)), 1U);
    QCOMPARE(before.dwStatus, 9UL);

    // The item's data are skipped nevertheless.
    UtilPrinterStatus after;
    QCOMPARE(ParseQZ(after, QZReplyOf(2, item + Hex("0006 01 02"))), 1U);
    QCOMPARE(after.dwStatus, 4UL);
}

void QZStatusReplyTest::codeItems_data()
{
    QTest::addColumn<QByteArray>("data"); // the item from its length on
    QTest::addColumn<unsigned long>("code");
    QTest::addColumn<QByteArray>("raw");
    QTest::addColumn<unsigned long>("flag");

    QTest::newRow("two bytes") << Hex("02 1106") << 0x1106UL << Hex("11 06 00") << 1UL;
    QTest::newRow("no error") << Hex("02 0000") << 0UL << Hex("00 00 00") << 0UL;
    QTest::newRow("low byte alone") << Hex("02 0006") << 6UL << Hex("00 06 00") << 1UL;
    QTest::newRow("high byte alone") << Hex("02 1100") << 0x1100UL << Hex("11 00 00") << 1UL;
    QTest::newRow("one byte") << Hex("01 05") << 5UL << Hex("05 00 00") << 1UL;
    QTest::newRow("one byte, zero") << Hex("01 00") << 0UL << Hex("00 00 00") << 0UL;
    QTest::newRow("three bytes") << Hex("03 F10203") << 0xF10203UL << Hex("F1 02 03") << 1UL;
    QTest::newRow("third byte alone") << Hex("03 000005") << 5UL << Hex("00 00 05") << 0UL;
    QTest::newRow("four bytes") << Hex("04 F1020304") << 0xF1020304UL << Hex("F1 02 03") << 1UL;
    QTest::newRow("fourth byte alone") << Hex("04 00000009") << 9UL << Hex("00 00 00") << 0UL;
    QTest::newRow("five bytes") << Hex("05 F102030405") << 0xF1UL << Hex("F1 02 03") << 1UL;
    QTest::newRow("255 bytes") << Hex("FF") + QByteArray(255, '\x21') << 0x21UL << Hex("21 21 21") << 1UL;
    QTest::newRow("no data, at the end") << Hex("00") << 0UL << Hex("00 00 00") << 0UL;
    QTest::newRow("no data, a byte after it") << Hex("00 AB") << 0xABUL << Hex("00 00 00") << 0UL;
}

// Error and warning items are decoded alike.
void QZStatusReplyTest::codeItems()
{
    QFETCH(const QByteArray, data);
    QFETCH(const unsigned long, code);
    QFETCH(const QByteArray, raw);
    QFETCH(const unsigned long, flag);

    UtilPrinterStatus error;
    QCOMPARE(ParseQZ(error, QZReplyOf(1, Hex("0009") + data)), 1U);
    QCOMPARE(Codes(error.vecErrorCode), (QList<unsigned long>{code}));
    QVERIFY(error.vecWarningCode.empty());
    QCOMPARE(RawField(error, QStringLiteral("byErrorCode")), raw);
    QCOMPARE(error.dwErrorCount, flag);
    QCOMPARE(FilledFieldsBut(error, "byErrorCode dwErrorCount"), QStringList());

    UtilPrinterStatus warning;
    QCOMPARE(ParseQZ(warning, QZReplyOf(1, Hex("000C") + data)), 1U);
    QCOMPARE(Codes(warning.vecWarningCode), (QList<unsigned long>{code}));
    QVERIFY(warning.vecErrorCode.empty());
    QCOMPARE(RawField(warning, QStringLiteral("byWarningCode")), raw);
    QCOMPARE(warning.dwWarningCount, flag);
    QCOMPARE(FilledFieldsBut(warning, "byWarningCode dwWarningCount"), QStringList());
}

void QZStatusReplyTest::codeItemsInSequence_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<QList<unsigned long>>("codes");
    QTest::addColumn<QByteArray>("raw");
    QTest::addColumn<unsigned long>("flag");
    using List = QList<unsigned long>;

    QTest::newRow("two") << 2 << Hex("0009 02 1106  0009 02 110D") << List{0x1106, 0x110D} << Hex("11 0D 00") << 1UL;
    QTest::newRow("flag of the last, off")
        << 2 << Hex("0009 02 1106  0009 02 0000") << List{0x1106, 0} << Hex("00 00 00") << 0UL;
    QTest::newRow("flag of the last, on")
        << 2 << Hex("0009 02 0000  0009 02 1106") << List{0, 0x1106} << Hex("11 06 00") << 1UL;
    // Bytes that a shorter item does not overwrite remain from the one before, and count for the flag.
    QTest::newRow("second byte of the one before")
        << 2 << Hex("0009 02 1106  0009 01 00") << List{0x1106, 0} << Hex("00 06 00") << 1UL;
    QTest::newRow("both bytes of the one before")
        << 2 << Hex("0009 02 1106  0009 00") << List{0x1106, 0} << Hex("11 06 00") << 1UL;
    QTest::newRow("third byte of the one before")
        << 2 << Hex("0009 03 000007  0009 02 0000") << List{7, 0} << Hex("00 00 07") << 0UL;
    QTest::newRow("no data, next header's first byte")
        << 2 << Hex("0009 00  F009 02 0009 02 1106") << List{0xF0} << Hex("00 00 00") << 0UL;
}

void QZStatusReplyTest::codeItemsInSequence()
{
    QFETCH(const int, count);
    QFETCH(const QByteArray, items);
    QFETCH(const QList<unsigned long>, codes);
    QFETCH(const QByteArray, raw);
    QFETCH(const unsigned long, flag);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, QZReplyOf(count, items)), 1U);
    QCOMPARE(Codes(status.vecErrorCode), codes);
    QCOMPARE(RawField(status, QStringLiteral("byErrorCode")), raw);
    QCOMPARE(status.dwErrorCount, flag);
}

void QZStatusReplyTest::errorsAndWarningsAreApart()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, QZReplyOf(4, Hex("0009 02 1106  000C 01 00  0009 02 0000  000C 02 110D"))), 1U);
    QCOMPARE(Codes(status.vecErrorCode), (QList<unsigned long>{0x1106, 0}));
    QCOMPARE(status.dwErrorCount, 0UL);
    QCOMPARE(Codes(status.vecWarningCode), (QList<unsigned long>{0, 0x110D}));
    QCOMPARE(status.dwWarningCount, 1UL);
}

void QZStatusReplyTest::tonerItems_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("items");
    QTest::addColumn<unsigned long>("level");
    QTest::addColumn<unsigned long>("statusCode");

    QTest::newRow("80 percent") << 1 << Hex("001D 03 000050") << 80UL << 0UL;
    QTest::newRow("third byte alone counts") << 1 << Hex("001D 03 111207") << 7UL << 0UL;
    QTest::newRow("the largest") << 1 << Hex("001D 03 0000FF") << 255UL << 0UL;
    QTest::newRow("empty") << 1 << Hex("001D 03 000000") << 0UL << 0UL;
    QTest::newRow("third byte of five") << 2 << Hex("001D 05 0102030405  0006 01 02") << 3UL << 4UL;
    QTest::newRow("the last item counts") << 2 << Hex("001D 03 000050  001D 03 000028") << 40UL << 0UL;
    // The level is at the same offset however short the item is. Its length only tells where the next item begins.
    QTest::newRow("two bytes and a next item") << 3 << Hex("001D 02 1122  5506 00  0006 01 02") << 0x55UL << 4UL;
    QTest::newRow("two bytes and another byte") << 1 << Hex("001D 02 1122 33") << 0x33UL << 0UL;
    QTest::newRow("one byte and a next item") << 2 << Hex("001D 01 11  0006 01 02") << 6UL << 4UL;
    QTest::newRow("no byte and a next item") << 2 << Hex("001D 00  0006 01 02") << 1UL << 4UL;
    QTest::newRow("two bytes at the end") << 1 << Hex("001D 02 1122") << 0UL << 0UL;
    QTest::newRow("one byte at the end") << 1 << Hex("001D 01 11") << 0UL << 0UL;
    QTest::newRow("no byte at the end") << 1 << Hex("001D 00") << 0UL << 0UL;
    QTest::newRow("short one at the end keeps the level") << 2 << Hex("001D 03 000050  001D 02 1122") << 80UL << 0UL;
}

void QZStatusReplyTest::tonerItems()
{
    QFETCH(const int, count);
    QFETCH(const QByteArray, items);
    QFETCH(const unsigned long, level);
    QFETCH(const unsigned long, statusCode);

    UtilPrinterStatus status;
    QCOMPARE(ParseQZ(status, QZReplyOf(count, items)), 1U);
    QCOMPARE(status.dwRemainingToner, level);
    QCOMPARE(RawField(status, QStringLiteral("byRemainingToner")),
             QByteArray(1, static_cast<char>(level)) + QByteArray(2, '\0'));
    QCOMPARE(status.dwStatus, statusCode);
    QVERIFY(status.vecErrorCode.empty());
}

QTEST_GUILESS_MAIN(QZStatusReplyTest)

#include "tst_qzstatusreply.moc"
