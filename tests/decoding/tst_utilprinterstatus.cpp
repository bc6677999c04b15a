// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "DecoderFields.h"

#include <QtTest>

#include <algorithm>
#include <array>
#include <new>

// Tests the decoder object: its members, its integer reader and the effect of a second parse.
class UtilPrinterStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void membersInOrder();
    void freshObjectIsZeroed();
    void byteToDWORD_data();
    void byteToDWORD();
    void statusAccessor();
    void secondParseAppendsCodes();
    void secondParseOverwritesWhatItReaches();
};

namespace {

struct Member
{
    const char* name;
    std::size_t size; // bytes
};

constexpr std::array<Member, 50> c_members{{
    {"byHead7", 2},
    {"byHead8", 3},
    {"byHead10", 3},
    {"byVenderNameLen", 3},
    {"szVenderName", 256},
    {"dwVenderNameLen", 8},
    {"byProductNameLen", 3},
    {"szProductName", 256},
    {"dwProductNameLen", 8},
    {"bySerialNumberLen", 3},
    {"szSerialNumber", 256},
    {"dwSerialNumberLen", 8},
    {"byReserved1", 3},
    {"byStatus", 2},
    {"byExtraInfoLen", 2},
    {"szExtraInfo", 256},
    {"byErrorCount", 2},
    {"byErrorCode", 3},
    {"byWarningCount", 2},
    {"byWarningCode", 3},
    {"dwExtraInfoLen", 8},
    {"dwErrorCount", 8},
    {"dwWarningCount", 8},
    {"dwStatus", 8},
    {"szFWVersion", 256},
    {"byFWVersionLen", 2},
    {"byReserved2", 2},
    {"byReserved3", 3},
    {"byReserved4", 3},
    {"bySupplyCount", 2},
    {"dwSupplyCount", 8},
    {"szSupplySerialNumber", 65},
    {"bySupplyType", 5},
    {"byRemainingToner", 3},
    {"byWasteToner", 3},
    {"byOPCRotation", 3},
    {"byNumberOfPages", 5},
    {"byNumberOfPrint", 5},
    {"byPrintDotsCount", 3},
    {"byPrinterNumOfPages", 5},
    {"byPrinterNumOfPrint", 5},
    {"dwSupplyType", 8},
    {"dwRemainingToner", 8},
    {"dwWasteToner", 8},
    {"dwOPCRotation", 8},
    {"dwNumberOfPages", 8},
    {"dwNumberOfPrint", 8},
    {"dwPrintDotsCount", 8},
    {"dwPrinterNumOfPages", 8},
    {"dwPrinterNumOfPrint", 8},
}};

// A header, only one text (the vendor name "TOL"), status code 0x91, two errors, one warning, toner 8000.
QByteArray FirstReply()
{
    return QByteArray(7, '\0') + Hex("17 1819 1A1B 0003") + "TOL" +
        Hex("0000 0000 0000 91 00 00  02 1106 E100  01 110D  00 0000 0000  01 1000 02 1F40");
}

} // namespace

void UtilPrinterStatusTest::membersInOrder()
{
    UtilPrinterStatus status;
    const std::vector<DecoderField> fields = DecoderFields(status);
    QCOMPARE(fields.size(), c_members.size());
    const auto* end = reinterpret_cast<const unsigned char*>(&status.vecWarningCode + 1);
    QVERIFY(&status.vecErrorCode < &status.vecWarningCode);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        QCOMPARE(fields[i].name, c_members[i].name);
        QVERIFY2(fields[i].size == c_members[i].size, c_members[i].name);
        QVERIFY2(fields[i].bytes >= end, c_members[i].name);
        end = fields[i].bytes + fields[i].size;
    }
}

void UtilPrinterStatusTest::freshObjectIsZeroed()
{
    // Memory that was used before, like a worker's stack.
    alignas(UtilPrinterStatus) std::array<unsigned char, sizeof(UtilPrinterStatus)> memory{};
    memory.fill(0xA5);
    auto* status = new (memory.data()) UtilPrinterStatus;
    const QStringList filled = FilledFields(*status);
    const bool hasCodes = !status->vecErrorCode.empty() || !status->vecWarningCode.empty();
    status->~UtilPrinterStatus();

    QCOMPARE(filled, QStringList());
    QVERIFY(!hasCodes);
}

void UtilPrinterStatusTest::byteToDWORD_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<unsigned long>("n");
    QTest::addColumn<unsigned long>("value");

    QTest::newRow("four bytes") << Hex("01020304") << 4UL << 0x01020304UL;
    QTest::newRow("four bytes, the largest") << Hex("FFFFFFFF") << 4UL << 4294967295UL;
    QTest::newRow("four bytes, high bit") << Hex("80000000") << 4UL << 2147483648UL;
    QTest::newRow("three bytes") << Hex("010203") << 3UL << 0x010203UL;
    QTest::newRow("three bytes, the largest") << Hex("FFFFFF") << 3UL << 16777215UL;
    QTest::newRow("two bytes") << Hex("0102") << 2UL << 0x0102UL;
    QTest::newRow("two bytes, the largest") << Hex("FFFF") << 2UL << 65535UL;
    QTest::newRow("two bytes of more") << Hex("01020304") << 2UL << 0x0102UL;
    QTest::newRow("one byte") << Hex("7F") << 1UL << 0x7FUL;
    QTest::newRow("one byte, the largest") << Hex("FF") << 1UL << 255UL;
    QTest::newRow("no byte: the first") << Hex("85") << 0UL << 0x85UL;
    QTest::newRow("five bytes: the first") << Hex("0102030405") << 5UL << 1UL;
    QTest::newRow("eight bytes: the first") << Hex("8102030405060708") << 8UL << 0x81UL;
    QTest::newRow("255 bytes: the first") << QByteArray(255, '\x33') << 255UL << 0x33UL;
}

void UtilPrinterStatusTest::byteToDWORD()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const unsigned long, n);
    QFETCH(const unsigned long, value);

    // A block of exactly these bytes, so that an address sanitizer detects any read beyond them.
    std::vector<unsigned char> exact(bytes.begin(), bytes.end());
    QCOMPARE(UtilPrinterStatus::byteToDWORD(exact.data(), n), value);
}

void UtilPrinterStatusTest::statusAccessor()
{
    UtilPrinterStatus status;
    QCOMPARE(status.getPrinterStatusValue(), static_cast<unsigned char*>(status.byStatus));
    QCOMPARE(ParseStandard(status, FirstReply()), 1U);
    QCOMPARE(status.getPrinterStatusValue()[0], static_cast<unsigned char>(0x91));
}

void UtilPrinterStatusTest::secondParseAppendsCodes()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, FirstReply()), 1U);
    const QByteArray second =
        QByteArray(12, '\0') + Hex("0000 0000 0000 0000 00 00 00  01 2100  02 2102 2103  00 0000 0000  00");
    QCOMPARE(ParseStandard(status, second), 1U);
    QCOMPARE(Codes(status.vecErrorCode), (QList<unsigned long>{0x1106, 0xE100, 0x2100}));
    QCOMPARE(status.dwErrorCount, 1UL);
    QCOMPARE(Codes(status.vecWarningCode), (QList<unsigned long>{0x110D, 0x2102, 0x2103}));
    QCOMPARE(status.dwWarningCount, 2UL);
    QCOMPARE(status.dwStatus, 0UL);
    QCOMPARE(status.dwSupplyCount, 0UL);
    QCOMPARE(status.dwRemainingToner, 8000UL);
}

void UtilPrinterStatusTest::secondParseOverwritesWhatItReaches()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, FirstReply()), 1U);
    QCOMPARE(ParseStandard(status, QByteArray(7, '\0') + Hex("E7 E8E9 EAEB 0002") + "x"), 0U);
    QCOMPARE(RawField(status, QStringLiteral("byHead7")), Hex("E7 00"));
    QCOMPARE(RawField(status, QStringLiteral("byHead8")), Hex("E8 E9 00"));
    QCOMPARE(RawField(status, QStringLiteral("byHead10")), Hex("EA EB 00"));
    QCOMPARE(status.dwVenderNameLen, 2UL);
    QCOMPARE(QByteArray(status.szVenderName), QByteArray("TOL"));
    QCOMPARE(status.dwStatus, 0x91UL);
    QCOMPARE(Codes(status.vecErrorCode), (QList<unsigned long>{0x1106, 0xE100}));
    QCOMPARE(status.dwRemainingToner, 8000UL);
}

QTEST_GUILESS_MAIN(UtilPrinterStatusTest)

#include "tst_utilprinterstatus.moc"
