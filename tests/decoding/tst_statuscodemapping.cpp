// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/UtilPrinterStatus.h"

#include <QtTest>

#include <array>
#include <limits>
#include <set>
#include <vector>

// Tests the mappings of raw codes to enumerations, code by code. Expected values are numbers because they are part of
// the printers' tables, whatever the enumerators' names.
class StatusCodeMappingTest : public QObject
{
    Q_OBJECT

private slots:
    void standardStatus_data();
    void standardStatus();
    void qzStatus_data();
    void qzStatus();
    void errorCodeByRow_data();
    void errorCodeByRow();
    void everyErrorCode();
    void errorCodesAbove16Bits();
    void conditionsThatCodesReach();
    void tonerType_data();
    void tonerType();
};

namespace {

constexpr unsigned long Codes16Bit = 0x10000;
constexpr unsigned long Largest = std::numeric_limits<unsigned long>::max();

static_assert(sizeof(GetPrinterStatusEnum(0)) == 4 && sizeof(GetPrinterStatusEnum_QZ(0)) == 4, "32 bits wide");
static_assert(sizeof(GetErrorStatusEnum(0)) == 4 && sizeof(GetTonerTypeEnum(0)) == 4, "32 bits wide");

constexpr std::array<int, 20> c_standard{{3, 4, 5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 8, 9, 10, 11}};
constexpr std::array<int, 19> c_qz{{0, 0, 2, 3, 4, 5, 6, 0, 8, 9, 10, 0, 0, 0, 0, 0, 0, 0, 11}};

struct ErrorCodes
{
    unsigned long first;
    unsigned long last;
    int condition;
};

constexpr std::array<ErrorCodes, 64> c_errors{{
    {0x0100, 0x0101, 4}, // ERR_PRINTER_BREAKDOWN
    {0x0110, 0x0110, 38}, // ERR_INITIAL_SETUP
    {0x0200, 0x0200, 4}, // ERR_PRINTER_BREAKDOWN
    {0x0202, 0x0202, 4}, // ERR_PRINTER_BREAKDOWN
    {0x1106, 0x1106, 6}, // ERR_FRONT_COVER_OPEN
    {0x1108, 0x1108, 4}, // ERR_PRINTER_BREAKDOWN
    {0x1109, 0x110C, 10}, // ERR_CARTRIDGE
    {0x110D, 0x110D, 11}, // ERR_TONER_LOW
    {0x110E, 0x110E, 12}, // ERR_TONER_EMPTY_LOW_QUALITY
    {0x110F, 0x110F, 13}, // ERR_TONER_EMPTY_REPLACE
    {0x1110, 0x1110, 17}, // ERR_NO_CARTRIDGE
    {0x1111, 0x1111, 19}, // ERR_WASTE_TONER_FULL
    {0x1112, 0x1114, 21}, // ERR_CARTRIDGE_PAGES_LIMIT
    {0x1115, 0x1115, 23}, // ERR_PRINTER_LIFE_EXCEEDED
    {0x1121, 0x1121, 18}, // ERR_WASTE_TONER_NEAR_FULL
    {0x1122, 0x1122, 20}, // ERR_CARTRIDGE_PAGES_NEAR_LIMIT
    {0x1123, 0x1123, 12}, // ERR_TONER_EMPTY_LOW_QUALITY
    {0x1124, 0x1124, 20}, // ERR_CARTRIDGE_PAGES_NEAR_LIMIT
    {0x1125, 0x1125, 19}, // ERR_WASTE_TONER_FULL
    {0x1126, 0x1126, 22}, // ERR_PRINTER_LIFE_NEAR_END
    {0x1127, 0x1127, 23}, // ERR_PRINTER_LIFE_EXCEEDED
    {0x1128, 0x1129, 22}, // ERR_PRINTER_LIFE_NEAR_END
    {0x112F, 0x112F, 12}, // ERR_TONER_EMPTY_LOW_QUALITY
    {0x1130, 0x1130, 24}, // ERR_MEMORY_OVERFLOW
    {0x1132, 0x1132, 29}, // ERR_INVALID_SETTING
    {0x1133, 0x1133, 33}, // ERR_TRAY_MISMATCH
    {0x1140, 0x1140, 25}, // ERR_COOLING
    {0x11A0, 0x11A0, 30}, // ERR_TRAY_EMPTY
    {0x11A1, 0x11A1, 31}, // ERR_MANUAL_FEED_NO_PAPER
    {0x11A2, 0x11A2, 32}, // ERR_MANUAL_FEED_STOP
    {0x11B0, 0x11B8, 34}, // ERR_JAM_INSIDE
    {0x11C0, 0x11C6, 35}, // ERR_JAM_TRAY
    {0x11D0, 0x11D6, 36}, // ERR_JAM_REAR
    {0x11E0, 0x11E3, 37}, // ERR_PAPER_SIZE_MISMATCH
    {0x11EA, 0x11EA, 14}, // ERR_TONER_RUNNING_OUT
    {0x11EE, 0x11EF, 12}, // ERR_TONER_EMPTY_LOW_QUALITY
    {0x11F0, 0x11F0, 45}, // ERR_AUTH_FAILED
    {0x11F1, 0x11F1, 46}, // ERR_AUTH_TIMEOUT
    {0x11F2, 0x11F2, 49}, // ERR_NETSEC_ON
    {0x1200, 0x1200, 1}, // ERR_FIXER
    {0x1201, 0x1202, 4}, // ERR_PRINTER_BREAKDOWN
    {0x1203, 0x1203, 2}, // ERR_LASER_DAMAGE
    {0x1204, 0x1207, 4}, // ERR_PRINTER_BREAKDOWN
    {0x1209, 0x120B, 4}, // ERR_PRINTER_BREAKDOWN
    {0x1211, 0x1211, 4}, // ERR_PRINTER_BREAKDOWN
    {0x1212, 0x1212, 5}, // ERR_HIGH_TEMPERATURE
    {0x1213, 0x121F, 4}, // ERR_PRINTER_BREAKDOWN
    {0x1302, 0x1302, 47}, // ERR_ADC_FAIL
    {0x1303, 0x1303, 48}, // ERR_24V_MOS_BREAKDOWN
    {0x2100, 0x2100, 26}, // ERR_ADF_PAPER_JAM
    {0x2102, 0x2102, 27}, // ERR_ADF_NO_PAPER
    {0x2103, 0x2103, 28}, // ERR_ADF_FEED_FAILED
    {0x2200, 0x2200, 3}, // ERR_NO_SCANNER
    {0x4100, 0x4100, 42}, // ERR_PRINTER_BREAKDOWN_2
    {0x4200, 0x4201, 42}, // ERR_PRINTER_BREAKDOWN_2
    {0x4210, 0x4210, 42}, // ERR_PRINTER_BREAKDOWN_2
    {0x4211, 0x4211, 39}, // ERR_FLATBED_SCAN
    {0x4212, 0x4212, 42}, // ERR_PRINTER_BREAKDOWN_2
    {0x4213, 0x4213, 40}, // ERR_ADF_SCAN_NO_PAPER
    {0x4214, 0x4214, 41}, // ERR_FILE_SIZE_LIMIT
    {0x4F00, 0x4F00, 42}, // ERR_PRINTER_BREAKDOWN_2
    {0x5000, 0x5000, 44}, // ERR_IP_CONFLICT
    {0x6800, 0x6800, 50}, // ERR_PRINTING
    {0xE100, 0xE100, 43}, // ERR_IP_SETTINGS
}};

// Codes beyond a table of `size` entries, including those that would be in it if high bits were lost.
void AddCodesBeyond(unsigned long size)
{
    for (unsigned long code = size; code < 300; ++code) {
        QTest::addRow("%lu", code) << code << 0;
    }
    for (const unsigned long high : {0x100UL, 0x10000UL, 0x80000000UL, 0x100000000UL, 0x8000000000000000UL}) {
        for (unsigned long low = 0; low < size; ++low) {
            if (high + low >= 300) {
                QTest::addRow("0x%lX", high + low) << high + low << 0;
            }
        }
    }
    for (const unsigned long code : {Codes16Bit - 1, 0xFFFFFFFFUL, Largest - 1, Largest}) {
        QTest::addRow("0x%lX", code) << code << 0;
    }
}

template <std::size_t Size> void AddTable(const std::array<int, Size>& table)
{
    QTest::addColumn<unsigned long>("code");
    QTest::addColumn<int>("expected");

    for (std::size_t code = 0; code < table.size(); ++code) {
        QTest::addRow("%zu", code) << static_cast<unsigned long>(code) << table[code];
    }
    AddCodesBeyond(Size);
}

} // namespace

void StatusCodeMappingTest::standardStatus_data()
{
    AddTable(c_standard);
}

void StatusCodeMappingTest::standardStatus()
{
    QFETCH(const unsigned long, code);
    QFETCH(const int, expected);

    QCOMPARE(static_cast<int>(GetPrinterStatusEnum(code)), expected);
}

void StatusCodeMappingTest::qzStatus_data()
{
    AddTable(c_qz);
}

void StatusCodeMappingTest::qzStatus()
{
    QFETCH(const unsigned long, code);
    QFETCH(const int, expected);

    QCOMPARE(static_cast<int>(GetPrinterStatusEnum_QZ(code)), expected);
}

void StatusCodeMappingTest::errorCodeByRow_data()
{
    QTest::addColumn<unsigned long>("first");
    QTest::addColumn<unsigned long>("last");
    QTest::addColumn<int>("condition");

    for (const ErrorCodes& codes : c_errors) {
        QTest::addRow("0x%04lX to 0x%04lX", codes.first, codes.last) << codes.first << codes.last << codes.condition;
    }
    QTest::newRow("0x1116 to 0x1120") << 0x1116UL << 0x1120UL << 0;
    QTest::newRow("0x1208") << 0x1208UL << 0x1208UL << 0;
    QTest::newRow("0x120C to 0x1210") << 0x120CUL << 0x1210UL << 0;
    QTest::newRow("0x1220 to 0x1301") << 0x1220UL << 0x1301UL << 0;
    QTest::newRow("0x11B9") << 0x11B9UL << 0x11B9UL << 0;
    QTest::newRow("0x11C7") << 0x11C7UL << 0x11C7UL << 0;
    QTest::newRow("0") << 0UL << 0UL << 0;
    QTest::newRow("0xFFFF") << 0xFFFFUL << 0xFFFFUL << 0;
}

void StatusCodeMappingTest::errorCodeByRow()
{
    QFETCH(const unsigned long, first);
    QFETCH(const unsigned long, last);
    QFETCH(const int, condition);

    for (unsigned long code = first; code <= last; ++code) {
        QCOMPARE(static_cast<int>(GetErrorStatusEnum(code)), condition);
    }
}

void StatusCodeMappingTest::everyErrorCode()
{
    std::vector<int> expected(Codes16Bit, 0);
    for (const ErrorCodes& codes : c_errors) {
        for (unsigned long code = codes.first; code <= codes.last; ++code) {
            expected[code] = codes.condition;
        }
    }
    for (unsigned long code = 0; code < Codes16Bit; ++code) {
        const int actual = GetErrorStatusEnum(code);
        if (actual != expected[code]) {
            QFAIL(qPrintable(QStringLiteral("0x%1 gives %2 instead of %3")
                                 .arg(code, 4, 16, QLatin1Char('0'))
                                 .arg(actual)
                                 .arg(expected[code])));
        }
    }
}

// The argument has 64 bits. Bits above the sixteenth must not be lost.
void StatusCodeMappingTest::errorCodesAbove16Bits()
{
    for (const ErrorCodes& codes : c_errors) {
        for (int bit = 16; bit < 64; ++bit) {
            QCOMPARE(static_cast<int>(GetErrorStatusEnum(codes.first | 1UL << bit)), 0);
            QCOMPARE(static_cast<int>(GetErrorStatusEnum(codes.last | 1UL << bit)), 0);
        }
    }
    for (const unsigned long code : {Codes16Bit, 0xFFFFFFFFUL, 0x100000000UL, Largest}) {
        QCOMPARE(static_cast<int>(GetErrorStatusEnum(code)), 0);
    }
}

// Codes exist for every condition except the five that only have texts.
void StatusCodeMappingTest::conditionsThatCodesReach()
{
    std::set<int> expected;
    for (int condition = 0; condition <= 50; ++condition) {
        expected.insert(condition);
    }
    for (const int unreached : {7, 8, 9, 15, 16}) {
        expected.erase(unreached);
    }
    std::set<int> reached;
    for (unsigned long code = 0; code < Codes16Bit; ++code) {
        reached.insert(GetErrorStatusEnum(code));
    }
    QCOMPARE(reached, expected);
}

void StatusCodeMappingTest::tonerType_data()
{
    QTest::addColumn<unsigned long>("value");

    for (const unsigned long value : {0UL, 1UL, 2UL, 3UL, 255UL, 0xFFFFFFFFUL, 0x100000000UL, Largest}) {
        QTest::addRow("%lu", value) << value;
    }
}

void StatusCodeMappingTest::tonerType()
{
    QFETCH(const unsigned long, value);

    QCOMPARE(static_cast<int>(GetTonerTypeEnum(value)), 0);
}

QTEST_GUILESS_MAIN(StatusCodeMappingTest)

#include "tst_statuscodemapping.moc"
