// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "DecoderFields.h"

#include <QtTest>

#include <algorithm>
#include <array>
#include <memory>

// Tests supplies records: each type alone, and the list of them at the end of a standard reply.
class SuppliesRecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void recordTypes_data();
    void recordTypes();
    void serialNumber_data();
    void serialNumber();
    void dataLengths_data();
    void dataLengths();
    void shorterSecondRecordKeepsTheTail();
    void unknownTypes_data();
    void unknownTypes();
    void pagesAndPrints_data();
    void pagesAndPrints();
    void recordWithoutData_data();
    void recordWithoutData();
    void serialNumberWithoutData();
    void scratchStartsZeroedInEveryReply();
    void longRecordsInReply_data();
    void longRecordsInReply();
    void allRecordsInReply();
    void cutRecords_data();
    void cutRecords();
    void mostRecords();
};

namespace {

constexpr unsigned long SerialNumberType = 0x0000;

struct RecordType
{
    unsigned long type;
    int capacity; // size of the raw field without the terminating zero
    const char* raw;
    const char* value;
};

constexpr std::array<RecordType, 8> c_numbers{{
    {0x0001, 4, "bySupplyType", "dwSupplyType"},
    {0x1000, 2, "byRemainingToner", "dwRemainingToner"},
    {0x1001, 2, "byWasteToner", "dwWasteToner"},
    {0x1002, 2, "byOPCRotation", "dwOPCRotation"},
    {0x1004, 4, "byNumberOfPrint", "dwNumberOfPrint"},
    {0x1100, 2, "byPrintDotsCount", "dwPrintDotsCount"},
    {0x1101, 4, "byPrinterNumOfPages", "dwPrinterNumOfPages"},
    {0x1102, 4, "byPrinterNumOfPrint", "dwPrinterNumOfPrint"},
}};

// Stores a record from a heap block of exactly its data, so that an address sanitizer detects reads beyond it. A record
// without data still has the one byte from which its value is read.
void Store(UtilPrinterStatus& status, unsigned long type, const QByteArray& data, int n)
{
    const auto exact = std::make_unique<unsigned char[]>(static_cast<std::size_t>(data.size()));
    std::copy(data.begin(), data.end(), exact.get());
    status.setSuppliesData(type, exact.get(), static_cast<unsigned long>(n));
}

void Store(UtilPrinterStatus& status, unsigned long type, const QByteArray& data)
{
    Store(status, type, data, data.size());
}

// A standard reply that ends with these records.
QByteArray Reply(int count, const QByteArray& records)
{
    return QByteArray(30, '\0') + static_cast<char>(count) + records;
}

} // namespace

void SuppliesRecordsTest::recordTypes_data()
{
    QTest::addColumn<unsigned long>("type");
    QTest::addColumn<int>("capacity");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("value");

    for (const RecordType& number : c_numbers) {
        QTest::addRow("%s", number.raw) << number.type << number.capacity << QString::fromLatin1(number.raw)
                                        << QString::fromLatin1(number.value);
    }
}

void SuppliesRecordsTest::recordTypes()
{
    QFETCH(const unsigned long, type);
    QFETCH(const int, capacity);
    QFETCH(const QString, raw);
    QFETCH(const QString, value);

    UtilPrinterStatus status;
    Store(status, type, Hex("F1 E2 D3 C4").left(capacity));
    QCOMPARE(FilledFields(status), QStringList({raw, value}));
    QCOMPARE(RawField(status, raw), capacity == 2 ? Hex("F1 E2 00") : Hex("F1 E2 D3 C4 00"));
    QCOMPARE(Value(status, value), capacity == 2 ? 0xF1E2UL : 0xF1E2D3C4UL);
}

void SuppliesRecordsTest::serialNumber_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("kept");

    QTest::newRow("empty") << 0 << 0;
    QTest::newRow("short") << 10 << 10;
    QTest::newRow("one less than fits") << 63 << 63;
    QTest::newRow("as long as fits") << 64 << 64;
    QTest::newRow("one too long") << 65 << 64;
    QTest::newRow("longest record") << 255 << 64;
}

// Tests the record alone and as part of a reply.
void SuppliesRecordsTest::serialNumber()
{
    QFETCH(const int, length);
    QFETCH(const int, kept);
    const QByteArray text(length, 'S');
    const QByteArray expected = QByteArray(kept, 'S') + QByteArray(65 - kept, '\0');
    const QStringList filled = kept > 0 ? QStringList(QStringLiteral("szSupplySerialNumber")) : QStringList();

    UtilPrinterStatus alone;
    Store(alone, SerialNumberType, text);
    QCOMPARE(RawField(alone, QStringLiteral("szSupplySerialNumber")), expected);
    QCOMPARE(FilledFields(alone), filled);

    UtilPrinterStatus parsed;
    const QByteArray header = Hex("0000") + static_cast<char>(length);
    QCOMPARE(ParseStandard(parsed, Reply(2, header + text + Hex("1000 02 1F40"))), 1U);
    QCOMPARE(RawField(parsed, QStringLiteral("szSupplySerialNumber")), expected);
    QCOMPARE(parsed.dwSupplyType, 0UL);
    QCOMPARE(parsed.dwRemainingToner, 8000UL);
}

void SuppliesRecordsTest::dataLengths_data()
{
    QTest::addColumn<unsigned long>("type");
    QTest::addColumn<int>("capacity");
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("length");

    for (const RecordType& number : c_numbers) {
        for (const int length : {0, 1, 2, 3, 4, 5, 8, 64, 255}) {
            QTest::addRow("%s, %d bytes", number.raw, length)
                << number.type << number.capacity << QString::fromLatin1(number.raw)
                << QString::fromLatin1(number.value) << length;
        }
    }
}

// Data longer than the field are cut. The value is that of the whole data, or of the first byte alone if there are no
// data or more than four bytes.
void SuppliesRecordsTest::dataLengths()
{
    QFETCH(const unsigned long, type);
    QFETCH(const int, capacity);
    QFETCH(const QString, raw);
    QFETCH(const QString, value);
    QFETCH(const int, length);
    const QByteArray data = Hex("81 92 A3 B4 C5").leftJustified(255, '\x7E');
    const QMap<int, unsigned long> values{{2, 0x8192}, {3, 0x8192A3}, {4, 0x8192A3B4}};
    const int kept = qMin(length, capacity);

    UtilPrinterStatus status;
    Store(status, type, data.left(qMax(1, length)), length);
    QCOMPARE(Value(status, value), values.value(length, 0x81));
    QCOMPARE(RawField(status, raw), data.left(kept) + QByteArray(capacity + 1 - kept, '\0'));
    QCOMPARE(FilledFields(status), length > 0 ? QStringList({raw, value}) : QStringList({value}));
}

void SuppliesRecordsTest::shorterSecondRecordKeepsTheTail()
{
    UtilPrinterStatus status;
    const QByteArray records = Hex("1101 04 11223344  1101 02 5566  0000 06") + "TN-001" + Hex("0000 02") + "AB";
    QCOMPARE(ParseStandard(status, Reply(4, records)), 1U);
    QCOMPARE(RawField(status, QStringLiteral("byPrinterNumOfPages")), Hex("55 66 33 44 00"));
    QCOMPARE(status.dwPrinterNumOfPages, 0x5566UL);
    QCOMPARE(QByteArray(status.szSupplySerialNumber), QByteArray("AB-001"));
}

void SuppliesRecordsTest::unknownTypes_data()
{
    QTest::addColumn<unsigned long>("type");

    for (const unsigned long type : {0x0002UL, 0x0010UL, 0x0100UL, 0x0FFFUL, 0x1005UL, 0x10FFUL, 0x1103UL, 0x2000UL,
                                     0xFFFFUL, 0x10000UL, 0x11000UL}) {
        QTest::addRow("0x%04lX", type) << type;
    }
}

void SuppliesRecordsTest::unknownTypes()
{
    QFETCH(const unsigned long, type);

    UtilPrinterStatus status;
    Store(status, type, Hex("FFFFFFFF"));
    QCOMPARE(FilledFields(status), QStringList());

    const QByteArray wireType = QByteArray(1, static_cast<char>(type >> 8 & 0xFF)) + static_cast<char>(type & 0xFF);
    if (type <= 0xFFFF) {
        QCOMPARE(ParseStandard(status, Reply(2, wireType + Hex("03 FFFFFF  1001 02 0102"))), 1U);
        QCOMPARE(FilledFields(status), Names("bySupplyCount dwSupplyCount byWasteToner dwWasteToner"));
        QCOMPARE(status.dwWasteToner, 0x0102UL);
    }
}

void SuppliesRecordsTest::pagesAndPrints_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("records");
    QTest::addColumn<unsigned long>("pages");
    QTest::addColumn<unsigned long>("prints");
    QTest::addColumn<QByteArray>("rawPages");
    QTest::addColumn<QByteArray>("rawPrints");

    QTest::newRow("pages alone") << 1 << Hex("1003 04 0000012C") << 300UL << 300UL << Hex("0000012C00")
                                 << Hex("0000012C00");
    QTest::newRow("prints alone") << 1 << Hex("1004 04 0000012C") << 0UL << 300UL << Hex("0000000000")
                                  << Hex("0000012C00");
    QTest::newRow("prints after pages") << 2 << Hex("1003 04 0000012C 1004 04 00000007") << 300UL << 7UL
                                        << Hex("0000012C00") << Hex("0000000700");
    QTest::newRow("pages after prints") << 2 << Hex("1004 04 00000007 1003 04 0000012C") << 300UL << 300UL
                                        << Hex("0000012C00") << Hex("0000012C00");
    QTest::newRow("pages too long") << 1 << Hex("1003 05 0102030405") << 1UL << 1UL << Hex("0102030400")
                                    << Hex("0102030400");
    QTest::newRow("short pages after prints")
        << 2 << Hex("1004 04 11223344 1003 01 55") << 0x55UL << 0x55UL << Hex("5500000000") << Hex("5522334400");
    QTest::newRow("pages without data after another record")
        << 2 << Hex("1001 02 ABCD 1003 00") << 0xABUL << 0xABUL << Hex("0000000000") << Hex("0000000000");
    QTest::newRow("pages without data after pages and prints")
        << 3 << Hex("1003 04 0000012C 1004 04 11223344 1003 00") << 0x11UL << 0x11UL << Hex("0000012C00")
        << Hex("1122334400");
}

// Pages also count as prints until a record of prints follows.
void SuppliesRecordsTest::pagesAndPrints()
{
    QFETCH(const int, count);
    QFETCH(const QByteArray, records);
    QFETCH(const unsigned long, pages);
    QFETCH(const unsigned long, prints);
    QFETCH(const QByteArray, rawPages);
    QFETCH(const QByteArray, rawPrints);

    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, Reply(count, records)), 1U);
    QCOMPARE(status.dwNumberOfPages, pages);
    QCOMPARE(status.dwNumberOfPrint, prints);
    QCOMPARE(RawField(status, QStringLiteral("byNumberOfPages")), rawPages);
    QCOMPARE(RawField(status, QStringLiteral("byNumberOfPrint")), rawPrints);
}

void SuppliesRecordsTest::recordWithoutData_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QByteArray>("records");
    QTest::addColumn<unsigned long>("toner");

    QTest::newRow("one byte") << 1 << Hex("1000 01 50") << 80UL;
    QTest::newRow("none, first record") << 1 << Hex("1000 00") << 0UL;
    QTest::newRow("none, after another") << 2 << Hex("1001 02 ABCD  1000 00") << 0xABUL;
    QTest::newRow("none, after an unknown one") << 2 << Hex("2000 02 7788  1000 00") << 0x77UL;
    QTest::newRow("none, after a shorter one") << 3 << Hex("1101 04 11223344  1001 01 99  1000 00") << 0x99UL;
    QTest::newRow("none, after another such") << 3 << Hex("1001 02 ABCD  1002 00  1000 00") << 0xABUL;
    QTest::newRow("one byte, after another") << 2 << Hex("1001 02 ABCD  1000 01 50") << 80UL;
}

// A record without data takes the first byte that an earlier record left behind.
void SuppliesRecordsTest::recordWithoutData()
{
    QFETCH(const int, count);
    QFETCH(const QByteArray, records);
    QFETCH(const unsigned long, toner);

    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, Reply(count, records)), 1U);
    QCOMPARE(status.dwRemainingToner, toner);
}

// An empty text is not copied: the text before it stays, and its bytes become the value of the next record without
// data.
void SuppliesRecordsTest::serialNumberWithoutData()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, Reply(3, Hex("0000 03 414243  0000 00  1000 00"))), 1U);
    QCOMPARE(QByteArray(status.szSupplySerialNumber), QByteArray("ABC"));
    QCOMPARE(status.dwRemainingToner, 0x41UL);
}

void SuppliesRecordsTest::scratchStartsZeroedInEveryReply()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, Reply(1, Hex("1000 02 ABCD"))), 1U);
    QCOMPARE(ParseStandard(status, Reply(1, Hex("1000 00"))), 1U);
    QCOMPARE(status.dwRemainingToner, 0UL);
    QCOMPARE(RawField(status, QStringLiteral("byRemainingToner")), Hex("AB CD 00"));
}

void SuppliesRecordsTest::longRecordsInReply_data()
{
    QTest::addColumn<int>("length");

    for (const int length : {3, 4, 5, 63, 64, 65, 66, 128, 255}) {
        QTest::addRow("%d bytes", length) << length;
    }
}

void SuppliesRecordsTest::longRecordsInReply()
{
    QFETCH(const int, length);
    const QByteArray data = Hex("81 92 A3 B4").leftJustified(length, '\x7E', true);
    const QMap<int, unsigned long> values{{3, 0x8192A3}, {4, 0x8192A3B4}};

    UtilPrinterStatus status;
    const QByteArray header = Hex("1001") + static_cast<char>(length);
    QCOMPARE(ParseStandard(status, Reply(2, header + data + Hex("1002 02 0304"))), 1U);
    QCOMPARE(status.dwWasteToner, values.value(length, 0x81));
    QCOMPARE(RawField(status, QStringLiteral("byWasteToner")), Hex("81 92 00"));
    QCOMPARE(RawField(status, QStringLiteral("byOPCRotation")), Hex("03 04 00"));
    QCOMPARE(status.dwOPCRotation, 0x0304UL);
}

namespace {

QByteArray AllRecords()
{
    return Hex("0000 05") + "TN-77" +
        Hex("0001 04 00000002"
            "1000 02 2710"
            "1001 02 0102"
            "1002 02 0304"
            "1003 04 01020304"
            "1004 04 05060708"
            "1100 02 0506"
            "1101 04 0A0B0C0D"
            "1102 04 FFFFFFFF");
}

} // namespace

void SuppliesRecordsTest::allRecordsInReply()
{
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, Reply(10, AllRecords())), 1U);
    QCOMPARE(status.dwSupplyCount, 10UL);
    QCOMPARE(QByteArray(status.szSupplySerialNumber), QByteArray("TN-77"));
    QCOMPARE(status.dwSupplyType, 2UL);
    QCOMPARE(status.dwRemainingToner, 10000UL);
    QCOMPARE(status.dwWasteToner, 0x0102UL);
    QCOMPARE(status.dwOPCRotation, 0x0304UL);
    QCOMPARE(status.dwNumberOfPages, 0x01020304UL);
    QCOMPARE(status.dwNumberOfPrint, 0x05060708UL);
    QCOMPARE(status.dwPrintDotsCount, 0x0506UL);
    QCOMPARE(status.dwPrinterNumOfPages, 0x0A0B0C0DUL);
    QCOMPARE(status.dwPrinterNumOfPrint, 4294967295UL);
}

void SuppliesRecordsTest::cutRecords_data()
{
    QTest::addColumn<int>("bytes");

    for (int bytes = 0; bytes <= AllRecords().size(); ++bytes) {
        QTest::addRow("%d bytes", bytes) << bytes;
    }
}

void SuppliesRecordsTest::cutRecords()
{
    QFETCH(const int, bytes);

    UtilPrinterStatus status;
    const bool isWhole = bytes == AllRecords().size();
    QCOMPARE(ParseStandard(status, Reply(10, AllRecords().left(bytes))), isWhole ? 1U : 0U);
    QCOMPARE(status.dwSupplyCount, 10UL);
    QCOMPARE(status.dwRemainingToner, bytes < 20 ? 0UL : 10000UL);
    QCOMPARE(status.dwPrinterNumOfPrint, isWhole ? 4294967295UL : 0UL);
}

void SuppliesRecordsTest::mostRecords()
{
    const QByteArray records = Hex("1001 01 07").repeated(254) + Hex("1000 02 0102");
    UtilPrinterStatus status;
    QCOMPARE(ParseStandard(status, Reply(255, records)), 1U);
    QCOMPARE(status.dwRemainingToner, 0x0102UL);
    UtilPrinterStatus oneMissing;
    QCOMPARE(ParseStandard(oneMissing, Reply(255, records.mid(4))), 0U);
}

QTEST_GUILESS_MAIN(SuppliesRecordsTest)

#include "tst_suppliesrecords.moc"
