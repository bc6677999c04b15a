// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/TrdDeviceManage.h"
#include "records/PrinterRecords.h"
#include "SampleRecords.h"
#include "texts/UtilLanguageCtrl.h"

#include <QtTest>

#include <type_traits>

// Tests the records that all subsystems share: enumeration values, order of the members, defaults, copies.
class PrinterRecordsTest : public QObject
{
    Q_OBJECT

private slots:
    void enumerations_data();
    void enumerations();
    void memberTypes();
    void memberOrderOfInfo();
    void memberOrderOfState();
    void freshRecords();
    void initPrinterInfo();
    void initPrinterState();
    void newStateReadsOffLine();
    void copyKeepsEveryMember();
    void copyIsIndependent();
    void copyOutOfTheSharedListAndBack();
};

namespace {

struct Named
{
    const char* name;
    int value;
    int expected;
};

constexpr Named c_enumerators[] = {
    {"PS_UNKNOWN", PS_UNKNOWN, 0},
    {"PS_VERSION_MISMATCH", PS_VERSION_MISMATCH, 1},
    {"PS_OFFLINE", PS_OFFLINE, 2},
    {"PS_READY", PS_READY, 3},
    {"PS_INITIALIZE", PS_INITIALIZE, 4},
    {"PS_BUSY", PS_BUSY, 5},
    {"PS_CANCELING_JOB", PS_CANCELING_JOB, 6},
    {"PS_ERROR", PS_ERROR, 7},
    {"PS_PRINTING", PS_PRINTING, 8},
    {"PS_SCANNING", PS_SCANNING, 9},
    {"PS_COPYING", PS_COPYING, 10},
    {"PS_REPORTING", PS_REPORTING, 11},
    {"ERR_UNKNOWN", ERR_UNKNOWN, 0},
    {"ERR_FIXER", ERR_FIXER, 1},
    {"ERR_LASER_DAMAGE", ERR_LASER_DAMAGE, 2},
    {"ERR_NO_SCANNER", ERR_NO_SCANNER, 3},
    {"ERR_PRINTER_BREAKDOWN", ERR_PRINTER_BREAKDOWN, 4},
    {"ERR_HIGH_TEMPERATURE", ERR_HIGH_TEMPERATURE, 5},
    {"ERR_FRONT_COVER_OPEN", ERR_FRONT_COVER_OPEN, 6},
    {"ERR_UNSUPPORTED_CARTRIDGE_SERIAL", ERR_UNSUPPORTED_CARTRIDGE_SERIAL, 7},
    {"ERR_CARTRIDGE_MISMATCH", ERR_CARTRIDGE_MISMATCH, 8},
    {"ERR_CARTRIDGE_INVALID", ERR_CARTRIDGE_INVALID, 9},
    {"ERR_CARTRIDGE", ERR_CARTRIDGE, 10},
    {"ERR_TONER_LOW", ERR_TONER_LOW, 11},
    {"ERR_TONER_EMPTY_LOW_QUALITY", ERR_TONER_EMPTY_LOW_QUALITY, 12},
    {"ERR_TONER_EMPTY_REPLACE", ERR_TONER_EMPTY_REPLACE, 13},
    {"ERR_TONER_RUNNING_OUT", ERR_TONER_RUNNING_OUT, 14},
    {"ERR_CARTRIDGE_NEAR_FULL", ERR_CARTRIDGE_NEAR_FULL, 15},
    {"ERR_CARTRIDGE_LIFE_FULL", ERR_CARTRIDGE_LIFE_FULL, 16},
    {"ERR_NO_CARTRIDGE", ERR_NO_CARTRIDGE, 17},
    {"ERR_WASTE_TONER_NEAR_FULL", ERR_WASTE_TONER_NEAR_FULL, 18},
    {"ERR_WASTE_TONER_FULL", ERR_WASTE_TONER_FULL, 19},
    {"ERR_CARTRIDGE_PAGES_NEAR_LIMIT", ERR_CARTRIDGE_PAGES_NEAR_LIMIT, 20},
    {"ERR_CARTRIDGE_PAGES_LIMIT", ERR_CARTRIDGE_PAGES_LIMIT, 21},
    {"ERR_PRINTER_LIFE_NEAR_END", ERR_PRINTER_LIFE_NEAR_END, 22},
    {"ERR_PRINTER_LIFE_EXCEEDED", ERR_PRINTER_LIFE_EXCEEDED, 23},
    {"ERR_MEMORY_OVERFLOW", ERR_MEMORY_OVERFLOW, 24},
    {"ERR_COOLING", ERR_COOLING, 25},
    {"ERR_ADF_PAPER_JAM", ERR_ADF_PAPER_JAM, 26},
    {"ERR_ADF_NO_PAPER", ERR_ADF_NO_PAPER, 27},
    {"ERR_ADF_FEED_FAILED", ERR_ADF_FEED_FAILED, 28},
    {"ERR_INVALID_SETTING", ERR_INVALID_SETTING, 29},
    {"ERR_TRAY_EMPTY", ERR_TRAY_EMPTY, 30},
    {"ERR_MANUAL_FEED_NO_PAPER", ERR_MANUAL_FEED_NO_PAPER, 31},
    {"ERR_MANUAL_FEED_STOP", ERR_MANUAL_FEED_STOP, 32},
    {"ERR_TRAY_MISMATCH", ERR_TRAY_MISMATCH, 33},
    {"ERR_JAM_INSIDE", ERR_JAM_INSIDE, 34},
    {"ERR_JAM_TRAY", ERR_JAM_TRAY, 35},
    {"ERR_JAM_REAR", ERR_JAM_REAR, 36},
    {"ERR_PAPER_SIZE_MISMATCH", ERR_PAPER_SIZE_MISMATCH, 37},
    {"ERR_INITIAL_SETUP", ERR_INITIAL_SETUP, 38},
    {"ERR_FLATBED_SCAN", ERR_FLATBED_SCAN, 39},
    {"ERR_ADF_SCAN_NO_PAPER", ERR_ADF_SCAN_NO_PAPER, 40},
    {"ERR_FILE_SIZE_LIMIT", ERR_FILE_SIZE_LIMIT, 41},
    {"ERR_PRINTER_BREAKDOWN_2", ERR_PRINTER_BREAKDOWN_2, 42},
    {"ERR_IP_SETTINGS", ERR_IP_SETTINGS, 43},
    {"ERR_IP_CONFLICT", ERR_IP_CONFLICT, 44},
    {"ERR_AUTH_FAILED", ERR_AUTH_FAILED, 45},
    {"ERR_AUTH_TIMEOUT", ERR_AUTH_TIMEOUT, 46},
    {"ERR_ADC_FAIL", ERR_ADC_FAIL, 47},
    {"ERR_24V_MOS_BREAKDOWN", ERR_24V_MOS_BREAKDOWN, 48},
    {"ERR_NETSEC_ON", ERR_NETSEC_ON, 49},
    {"ERR_PRINTING", ERR_PRINTING, 50},
    {"CONNECT_TYPE_USB", CONNECT_TYPE_USB, 1},
};

static_assert(sizeof(enPrinterStatus) == 4 && sizeof(enErrorStatus) == 4, "32 bits wherever they are held");

stPrinterInfo FilledInfo()
{
    stPrinterInfo info;
    info.strPrinterName = QStringLiteral("打印机-K4510A");
    info.enType = QStringLiteral("K4510A");
    info.iConnectType = CONNECT_TYPE_USB;
    info.strPort = QStringLiteral("192.168.1.20");
    info.strURI = QStringLiteral("usb://Tolmar/K4510A?serial=1");
    return info;
}

void CompareInfo(const stPrinterInfo& actual, const stPrinterInfo& expected)
{
    QCOMPARE(actual.strPrinterName, expected.strPrinterName);
    QCOMPARE(actual.enType, expected.enType);
    QCOMPARE(actual.iConnectType, expected.iConnectType);
    QCOMPARE(actual.strPort, expected.strPort);
    QCOMPARE(actual.strURI, expected.strURI);
}

void CompareDefaultInfo(const stPrinterInfo& info)
{
    QCOMPARE(info.strPrinterName, QString());
    QCOMPARE(info.enType, QStringLiteral("-1"));
    QCOMPARE(info.iConnectType, 0);
    QCOMPARE(info.strPort, QString());
    QCOMPARE(info.strURI, QString());
}

void CompareDefaultState(const stPrinterState& state)
{
    QCOMPARE(state.strPrinterSerialNumber, QString());
    QCOMPARE(state.enCurrentStatus, 2);
    QCOMPARE(state.strFWVersion, QString());
    QCOMPARE(state.strVenderName, QString());
    QCOMPARE(state.strProductName, QString());
    QCOMPARE(state.iNumberOfError, 0);
    QCOMPARE(state.iNumberOfWarning, 0);
    QCOMPARE(state.listError, QList<enErrorStatus>());
    QCOMPARE(state.listWarning, QList<enErrorStatus>());
    QCOMPARE(state.strSupplySerialNumber, QString());
    QCOMPARE(state.enSpplyType, 0);
    QCOMPARE(state.dwRemainingToner, 0UL);
    QCOMPARE(state.dwWasteToner, 0UL);
    QCOMPARE(state.dwOPCRotation, 0UL);
    QCOMPARE(state.dwNumberOfPages, 0UL);
    QCOMPARE(state.dwNumberOfPrint, 0UL);
    QCOMPARE(state.dwPrintDotsCount, 0UL);
    QCOMPARE(state.dwPrinterNumOfPages, 0UL);
    QCOMPARE(state.dwPrinterNumOfPrint, 0UL);
    QCOMPARE(state.iFailCount, 0);
}

// Compares with the literal values of FilledState().
void CompareFilledState(const stPrinterState& state)
{
    QCOMPARE(state.strPrinterSerialNumber, QStringLiteral("old serial"));
    QCOMPARE(state.enCurrentStatus, 3);
    QCOMPARE(state.strFWVersion, QStringLiteral("old firmware"));
    QCOMPARE(state.strVenderName, QStringLiteral("old vendor"));
    QCOMPARE(state.strProductName, QStringLiteral("old product"));
    QCOMPARE(state.iNumberOfError, -3);
    QCOMPARE(state.iNumberOfWarning, 255);
    QCOMPARE(state.listError, (QList<enErrorStatus>{ERR_FRONT_COVER_OPEN, ERR_TRAY_EMPTY}));
    QCOMPARE(state.listWarning, QList<enErrorStatus>{ERR_TONER_LOW});
    QCOMPARE(state.strSupplySerialNumber, QStringLiteral("old supply"));
    QCOMPARE(state.enSpplyType, -5);
    QCOMPARE(state.dwRemainingToner, 0x100000000UL);
    QCOMPARE(state.dwWasteToner, 0x1FFFFFFFFUL);
    QCOMPARE(state.dwOPCRotation, 0x123456789ABCUL);
    QCOMPARE(state.dwNumberOfPages, 0x7FFFFFFFFFFFFFFFUL);
    QCOMPARE(state.dwNumberOfPrint, 0x8000000000000000UL);
    QCOMPARE(state.dwPrintDotsCount, 0xFFFFFFFF00000000UL);
    QCOMPARE(state.dwPrinterNumOfPages, 0xFEDCBA9876543210UL);
    QCOMPARE(state.dwPrinterNumOfPrint, 0xFFFFFFFFFFFFFFFFUL);
    QCOMPARE(state.iFailCount, 7);
}

} // namespace

void PrinterRecordsTest::enumerations_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("expected");

    for (const Named& enumerator : c_enumerators) {
        QTest::newRow(enumerator.name) << enumerator.value << enumerator.expected;
    }
}

void PrinterRecordsTest::enumerations()
{
    QFETCH(const int, value);
    QFETCH(const int, expected);

    QCOMPARE(value, expected);
}

void PrinterRecordsTest::memberTypes()
{
    QVERIFY((std::is_same_v<decltype(stPrinterInfo::enType), QString>));
    QVERIFY((std::is_same_v<decltype(stPrinterInfo::iConnectType), int>));
    QVERIFY((std::is_same_v<decltype(stPrinterState::listError), QList<enErrorStatus>>));
    QVERIFY((std::is_same_v<decltype(stPrinterState::listWarning), QList<enErrorStatus>>));
    QCOMPARE(sizeof(stPrinterState::enCurrentStatus), std::size_t(4));
    QCOMPARE(sizeof(stPrinterState::enSpplyType), std::size_t(4));
    QCOMPARE(sizeof(stPrinterState::dwRemainingToner), std::size_t(8));
}

// Structured bindings follow the order of the members.
void PrinterRecordsTest::memberOrderOfInfo()
{
    const stPrinterManager element;
    const auto& [info, state] = element;
    QCOMPARE(&info, &element.stInfo);
    QCOMPARE(&state, &element.stState);
    const auto& [name, type, connectType, port, uri] = info;
    QCOMPARE(&name, &info.strPrinterName);
    QCOMPARE(&type, &info.enType);
    QCOMPARE(&connectType, &info.iConnectType);
    QCOMPARE(&port, &info.strPort);
    QCOMPARE(&uri, &info.strURI);
}

void PrinterRecordsTest::memberOrderOfState()
{
    const stPrinterState state;
    const auto& [serial, current, firmware, vender, product, errors, warnings, errorList, warningList, supplySerial,
                 supplyType, toner, waste, opc, pages, prints, dots, printerPages, printerPrints, fails] = state;
    QCOMPARE(&serial, &state.strPrinterSerialNumber);
    QCOMPARE(&current, &state.enCurrentStatus);
    QCOMPARE(&firmware, &state.strFWVersion);
    QCOMPARE(&vender, &state.strVenderName);
    QCOMPARE(&product, &state.strProductName);
    QCOMPARE(&errors, &state.iNumberOfError);
    QCOMPARE(&warnings, &state.iNumberOfWarning);
    QCOMPARE(&errorList, &state.listError);
    QCOMPARE(&warningList, &state.listWarning);
    QCOMPARE(&supplySerial, &state.strSupplySerialNumber);
    QCOMPARE(&supplyType, &state.enSpplyType);
    QCOMPARE(&toner, &state.dwRemainingToner);
    QCOMPARE(&waste, &state.dwWasteToner);
    QCOMPARE(&opc, &state.dwOPCRotation);
    QCOMPARE(&pages, &state.dwNumberOfPages);
    QCOMPARE(&prints, &state.dwNumberOfPrint);
    QCOMPARE(&dots, &state.dwPrintDotsCount);
    QCOMPARE(&printerPages, &state.dwPrinterNumOfPages);
    QCOMPARE(&printerPrints, &state.dwPrinterNumOfPrint);
    QCOMPARE(&fails, &state.iFailCount);
}

void PrinterRecordsTest::freshRecords()
{
    CompareDefaultInfo(stPrinterInfo());
    CompareDefaultState(stPrinterState());
}

void PrinterRecordsTest::initPrinterInfo()
{
    TrdDeviceManage manager(nullptr);
    stPrinterInfo info = FilledInfo();
    manager.InitStPrinterInfo(info);
    CompareDefaultInfo(info);
}

void PrinterRecordsTest::initPrinterState()
{
    TrdDeviceManage manager(nullptr);
    stPrinterState state = FilledState();
    manager.InitStPrinterState(state);
    CompareDefaultState(state);
}

void PrinterRecordsTest::newStateReadsOffLine()
{
    TrdDeviceManage manager(nullptr);
    stPrinterState state = FilledState();
    manager.InitStPrinterState(state);
    QCOMPARE(c_strStatusLanguageText[state.enCurrentStatus][0], QStringLiteral("Off-line"));
}

void PrinterRecordsTest::copyKeepsEveryMember()
{
    const stPrinterManager original{FilledInfo(), FilledState()};
    const stPrinterManager constructed(original);
    CompareInfo(constructed.stInfo, FilledInfo());
    CompareFilledState(constructed.stState);

    stPrinterManager assigned;
    assigned = original;
    CompareInfo(assigned.stInfo, FilledInfo());
    CompareFilledState(assigned.stState);
}

void PrinterRecordsTest::copyIsIndependent()
{
    stPrinterManager original{FilledInfo(), FilledState()};
    const stPrinterManager copy = original;
    original.stInfo.strPrinterName += QLatin1Char('x');
    original.stState.strFWVersion.clear();
    original.stState.listError.clear();
    original.stState.listWarning[0] = ERR_COOLING;
    original.stState.dwPrinterNumOfPrint = 1;
    CompareInfo(copy.stInfo, FilledInfo());
    CompareFilledState(copy.stState);
}

void PrinterRecordsTest::copyOutOfTheSharedListAndBack()
{
    QList<stPrinterManager> list{{}, {FilledInfo(), FilledState()}, {}};
    const stPrinterManager out = list.at(1);
    list[1] = stPrinterManager();
    CompareFilledState(out.stState);
    list[0] = out;
    const QList<stPrinterManager> wholeCopy = list;
    list.clear();
    CompareInfo(wholeCopy.at(0).stInfo, FilledInfo());
    CompareFilledState(wholeCopy.at(0).stState);
    CompareDefaultState(wholeCopy.at(1).stState);
}

QTEST_GUILESS_MAIN(PrinterRecordsTest)

#include "tst_printerrecords.moc"
