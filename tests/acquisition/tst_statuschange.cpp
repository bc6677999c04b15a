// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleRecords.h"
#include "StatusWorker.h"

#include <QtTest>

#include <functional>

// Tests which differences between two states cause a notification.
class StatusChangeTest : public QObject
{
    Q_OBJECT

private slots:
    void equalStates();
    void difference_data();
    void difference();
};

using Change = std::function<void(stPrinterState&)>;
Q_DECLARE_METATYPE(Change)

namespace {

void Row(const char* name, bool counts, const Change& change)
{
    QTest::newRow(name) << change << counts;
}

void AddRowsThatCount()
{
    Row("status", true, [](stPrinterState& state) { state.enCurrentStatus = PS_BUSY; });
    Row("toner, a unit more", true, [](stPrinterState& state) { ++state.dwRemainingToner; });
    Row("toner, a unit less", true, [](stPrinterState& state) { --state.dwRemainingToner; });
    Row("toner, in its upper half", true, [](stPrinterState& state) { state.dwRemainingToner += 1UL << 32U; });
    Row("one error more", true, [](stPrinterState& state) { state.listError.append(ERR_COOLING); });
    Row("one error less", true, [](stPrinterState& state) { state.listError.removeLast(); });
    Row("no errors", true, [](stPrinterState& state) { state.listError.clear(); });
    Row("another error", true, [](stPrinterState& state) { state.listError[1] = ERR_COOLING; });
    Row("errors in another order", true, [](stPrinterState& state) { state.listError.swapItemsAt(0, 1); });
    Row("an error of the same text", true, [](stPrinterState& state) { state.listError[0] = ERR_PRINTER_BREAKDOWN_2; });
    Row("one warning more", true, [](stPrinterState& state) { state.listWarning.append(ERR_COOLING); });
    Row("no warnings", true, [](stPrinterState& state) { state.listWarning.clear(); });
    Row("another warning", true, [](stPrinterState& state) { state.listWarning[0] = ERR_COOLING; });
    Row("warnings in another order", true, [](stPrinterState& state) { state.listWarning.swapItemsAt(0, 1); });
    Row("errors and warnings swapped", true, [](stPrinterState& state) { state.listError.swap(state.listWarning); });
}

void AddRowsThatDoNotCount()
{
    Row("serial number", false, [](stPrinterState& state) { state.strPrinterSerialNumber.clear(); });
    Row("firmware version", false, [](stPrinterState& state) { state.strFWVersion.clear(); });
    Row("vendor", false, [](stPrinterState& state) { state.strVenderName.clear(); });
    Row("product", false, [](stPrinterState& state) { state.strProductName.clear(); });
    Row("number of errors", false, [](stPrinterState& state) { ++state.iNumberOfError; });
    Row("number of warnings", false, [](stPrinterState& state) { ++state.iNumberOfWarning; });
    Row("supply serial number", false, [](stPrinterState& state) { state.strSupplySerialNumber.clear(); });
    Row("supply type", false, [](stPrinterState& state) { ++state.enSpplyType; });
    Row("waste toner", false, [](stPrinterState& state) { ++state.dwWasteToner; });
    Row("drum rotation", false, [](stPrinterState& state) { ++state.dwOPCRotation; });
    Row("pages", false, [](stPrinterState& state) { ++state.dwNumberOfPages; });
    Row("prints", false, [](stPrinterState& state) { ++state.dwNumberOfPrint; });
    Row("dots", false, [](stPrinterState& state) { ++state.dwPrintDotsCount; });
    Row("printer pages", false, [](stPrinterState& state) { ++state.dwPrinterNumOfPages; });
    Row("printer prints", false, [](stPrinterState& state) { ++state.dwPrinterNumOfPrint; });
    Row("failures", false, [](stPrinterState& state) { ++state.iFailCount; });
}

stPrinterState SomeState()
{
    stPrinterState state = FilledState();
    state.listError = {ERR_PRINTER_BREAKDOWN, ERR_TRAY_EMPTY};
    state.listWarning = {ERR_TONER_LOW, ERR_WASTE_TONER_NEAR_FULL};
    return state;
}

} // namespace

void StatusChangeTest::equalStates()
{
    StatusWorker worker;
    QCOMPARE(worker.CheckStatusChange(SomeState(), SomeState()), false);
    QCOMPARE(worker.CheckStatusChange(stPrinterState(), stPrinterState()), false);
}

void StatusChangeTest::difference_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("counts");
    AddRowsThatCount();
    AddRowsThatDoNotCount();
}

void StatusChangeTest::difference()
{
    QFETCH(Change, change);
    stPrinterState changed = SomeState();
    change(changed);
    QVERIFY(Words(changed) != Words(SomeState()));
    StatusWorker worker;
    QTEST(worker.CheckStatusChange(SomeState(), changed), "counts");
    QTEST(worker.CheckStatusChange(changed, SomeState()), "counts");
}

QTEST_GUILESS_MAIN(StatusChangeTest)
#include "tst_statuschange.moc"
