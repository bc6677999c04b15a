// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "OpenHook.h"
#include "PrinterFolder.h"
#include "records/SharedPrinterList.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QtTest>

#include <functional>
#include <limits>
#include <sys/prctl.h>
#include <thread>

// Tests single cycles: what is read, counted, written back and signalled.
class PollingCycleTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void indexOutsideTheList_data();
    void indexOutsideTheList();
    void withoutAList();
    void secondStartIsIgnored();
    void mayWakeUpLate();
    void successIsWrittenBack();
    void onlyTheOwnRecordIsTouched();
    void signalOnChangeOnly_data();
    void signalOnChangeOnly();
    void listIsUpToDateWhenTheSignalComes();
    void eleventhFailureGoesOffline();
    void eleventhFailureOfAnOfflinePrinter();
    void successResetsTheCount();
    void rejectedFileCountsOnce();
    void rejectedFileOfAnOfflinePrinterCountsEachTime();
    void offlinePrinterIsReadEachTime();
    void resetRecordIsFilledAgain();
    void listChangedMeanwhile_data();
    void listChangedMeanwhile();
    void wholeRecordIsWrittenBack();
};

using ListChange = std::function<void(QList<stPrinterManager>&, StatusWorker&)>;
Q_DECLARE_METATYPE(ListChange)

namespace {

const QString Name = QStringLiteral("Office_K4510A");

// Three filled printers, a worker for the one in the middle.
struct Setting
{
    Setting()
    {
        worker.Init(1, &list);
    }

    stPrinterState& state()
    {
        return list[1].stState;
    }

    QList<stPrinterManager> list{FilledPrinter(QStringLiteral("first")), FilledPrinter(Name),
                                 FilledPrinter(QStringLiteral("last"))};
    StatusWorker worker;
};

QString AllWords(const QList<stPrinterManager>& list)
{
    QStringList words;
    for (const stPrinterManager& printer : list) {
        words.append(Words(printer));
    }
    return words.join(QLatin1Char('\n'));
}

// The state after eleven failures.
stPrinterState OfflineState(stPrinterState state)
{
    state.enCurrentStatus = PS_OFFLINE;
    state.iNumberOfError = 0;
    state.iNumberOfWarning = 0;
    state.listError.clear();
    state.listWarning.clear();
    state.iFailCount = 0;
    return state;
}

} // namespace

void PollingCycleTest::init()
{
    PrinterFolder::Create();
    OnNextStatusFile(nullptr);
}

void PollingCycleTest::indexOutsideTheList_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("-1") << -1;
    QTest::newRow("smallest") << std::numeric_limits<int>::min();
    QTest::newRow("one beyond the end") << 3;
    QTest::newRow("greatest") << std::numeric_limits<int>::max();
}

void PollingCycleTest::indexOutsideTheList()
{
    QFETCH(int, index);
    Setting setting;
    for (const QString& name : {Name, QStringLiteral("first"), QStringLiteral("last"), QString()}) {
        PrinterFolder::WriteStatusFile(name, StandardBytes(RawBusy));
    }
    const QList<stPrinterManager> before = setting.list;
    StatusWorker worker;
    worker.Init(index, &setting.list);
    for (int cycle = 0; cycle < 12; ++cycle) {
        QCOMPARE(worker.runCycle(), 0);
    }
    QVERIFY(setting.list.isSharedWith(before)); // the list was never written to
    QCOMPARE(Words(worker.stCurrent.stInfo), QStringLiteral("name '' model '' type 0 port '' uri ''"));
}

void PollingCycleTest::withoutAList()
{
    StatusWorker fresh;
    QCOMPARE(fresh.runCycle(), 0);
    fresh.Init(0, nullptr);
    QCOMPARE(fresh.runCycle(), 0);

    Setting setting;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy));
    setting.worker.Init(-1, nullptr);
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(Words(setting.list.at(1)), Words(FilledPrinter(Name)));
}

void PollingCycleTest::secondStartIsIgnored()
{
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy));
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(setting.worker.bTaskStarted, true);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawPrinting));
    setting.worker.SlotTaskStart();
    QCOMPARE(setting.state().enCurrentStatus, 5);
}

void PollingCycleTest::mayWakeUpLate()
{
    std::thread([] {
        Setting setting;
        setting.worker.runCycle();
        QCOMPARE(prctl(PR_GET_TIMERSLACK), 5000000);
    }).join();
}

void PollingCycleTest::successIsWrittenBack()
{
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(Words(setting.state()), Words(FullReplyState()));
    QCOMPARE(Words(setting.list.at(1).stInfo), Words(FilledPrinter(Name).stInfo));
    // An unchanged file changes nothing.
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(Words(setting.state()), Words(FullReplyState()));
}

void PollingCycleTest::onlyTheOwnRecordIsTouched()
{
    Setting setting;
    const QList<stPrinterManager> copy = setting.list;
    for (const char* name : {"first", "Office_K4510A", "last"}) {
        PrinterFolder::WriteStatusFile(QString::fromLatin1(name), EncodeStandardReply(FullReply()));
    }
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(setting.list.size(), 3);
    QCOMPARE(Words(setting.list.at(0)), Words(FilledPrinter(QStringLiteral("first"))));
    QCOMPARE(Words(setting.list.at(2)), Words(FilledPrinter(QStringLiteral("last"))));
    // An earlier copy of the list does not change.
    QCOMPARE(Words(copy.at(1)), Words(FilledPrinter(Name)));
}

void PollingCycleTest::signalOnChangeOnly_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("signals");

    const auto bytes = [](const std::function<void(StandardReply&)>& change) {
        StandardReply reply = FullReply();
        change(reply);
        return EncodeStandardReply(reply);
    };
    QTest::newRow("nothing") << bytes([](StandardReply&) {}) << 0;
    QTest::newRow("status") << bytes([](StandardReply& reply) { reply.status = RawReady; }) << 1;
    QTest::newRow("toner") << bytes([](StandardReply& reply) {
        reply.supplies[2] = SupplyValue(SupplyField::RemainingToner, 7889);
    }) << 1;
    QTest::newRow("errors") << bytes([](StandardReply& reply) { reply.errorCodes = {0x1106}; }) << 1;
    QTest::newRow("order of the errors") << bytes([](StandardReply& reply) {
        reply.errorCodes = {0x11A0, 0x1106};
    }) << 1;
    QTest::newRow("warnings") << bytes([](StandardReply& reply) { reply.warningCodes.clear(); }) << 1;
    QTest::newRow("another code of the same error")
        << bytes([](StandardReply& reply) { reply.warningCodes[1] = 0x1121; }) << 0;
    QTest::newRow("text") << bytes([](StandardReply& reply) { reply.firmwareVersion = "9.9"; }) << 0;
    QTest::newRow("counter") << bytes([](StandardReply& reply) {
        reply.supplies[8] = SupplyValue(SupplyField::PrinterPages, 70001);
    }) << 0;
}

void PollingCycleTest::signalOnChangeOnly()
{
    QFETCH(QByteArray, reply);
    Setting setting;
    setting.state() = FullReplyState();
    setting.state().iFailCount = 3;
    PrinterFolder::WriteStatusFile(Name, reply);
    StatusWorker reference;
    QCOMPARE(reference.GetPrinterStatusFile(Name, true), 0);

    QTEST(setting.worker.runCycle(), "signals");
    // The state is written back in either case.
    QCOMPARE(Words(setting.state()), Words(reference.stCurrent.stState));
    QCOMPARE(setting.worker.runCycle(), 0);
}

void PollingCycleTest::listIsUpToDateWhenTheSignalComes()
{
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    int index = -1;
    QString seen;
    connect(&setting.worker, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, this, [&](int i) {
        index = i;
        seen = Words(Listed(setting.list, i).stState); // Listed() needs the lock, so it is free
    });
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(index, 1);
    QCOMPARE(seen, Words(FullReplyState()));
}

void PollingCycleTest::eleventhFailureGoesOffline()
{
    Setting setting;
    setting.state().iFailCount = 0;
    stPrinterState expected = setting.state();
    for (int failure = 1; failure <= 10; ++failure) {
        QCOMPARE(setting.worker.runCycle(), 0);
        expected.iFailCount = failure;
        QCOMPARE(Words(setting.state()), Words(expected));
    }
    QCOMPARE(setting.worker.runCycle(), 1);
    expected = OfflineState(expected); // toner, counters and texts are kept
    QCOMPARE(Words(setting.state()), Words(expected));
    QCOMPARE(setting.state().dwRemainingToner, FilledState().dwRemainingToner);
    QCOMPARE(setting.state().strVenderName, QStringLiteral("old vendor"));
    // The count starts again from 0.
    for (int failure = 1; failure <= 10; ++failure) {
        QCOMPARE(setting.worker.runCycle(), 0);
        expected.iFailCount = failure;
        QCOMPARE(Words(setting.state()), Words(expected));
    }
}

void PollingCycleTest::eleventhFailureOfAnOfflinePrinter()
{
    Setting setting;
    setting.state() = OfflineState(FilledState());
    for (int cycle = 1; cycle <= 23; ++cycle) {
        QCOMPARE(setting.worker.runCycle(), 0); // no visible change
        QCOMPARE(setting.state().iFailCount, cycle % 11);
    }
    // Clearing errors that something else has left in the list is a change.
    setting.state().listError = {ERR_COOLING};
    setting.state().iFailCount = 10;
    QCOMPARE(setting.worker.runCycle(), 1);
    QVERIFY(setting.state().listError.isEmpty());
}

void PollingCycleTest::successResetsTheCount()
{
    Setting setting;
    setting.state().iFailCount = 10;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady));
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(setting.state().iFailCount, 0);
    // An unchanged file is neither a failure nor a success.
    setting.state().iFailCount = 10;
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(setting.state().iFailCount, 10);
    PrinterFolder::RemoveStatusFile(Name);
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(setting.state().enCurrentStatus, 2);
}

void PollingCycleTest::rejectedFileCountsOnce()
{
    Setting setting;
    setting.state().iFailCount = 0;
    PrinterFolder::WriteStatusFile(Name, RejectedBytes());
    for (int cycle = 0; cycle < 15; ++cycle) {
        QCOMPARE(setting.worker.runCycle(), 0);
        QCOMPARE(setting.state().iFailCount, 1);
        QCOMPARE(setting.state().enCurrentStatus, 3);
    }
    PrinterFolder::WriteStatusFile(Name, RejectedBytes());
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(setting.state().iFailCount, 2);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady));
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(setting.state().iFailCount, 0);
}

void PollingCycleTest::rejectedFileOfAnOfflinePrinterCountsEachTime()
{
    Setting setting;
    setting.state() = OfflineState(FilledState());
    PrinterFolder::WriteStatusFile(Name, RejectedBytes());
    for (int cycle = 1; cycle <= 12; ++cycle) {
        QCOMPARE(setting.worker.runCycle(), 0);
        QCOMPARE(setting.state().iFailCount, cycle % 11);
    }
}

void PollingCycleTest::offlinePrinterIsReadEachTime()
{
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy, 100), 1700000000000);
    QCOMPARE(setting.worker.runCycle(), 1);
    // New content with the old timestamp is not noticed ...
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy, 200), 1700000000000);
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(setting.state().dwRemainingToner, 100UL);
    // ... unless the printer is off-line in the list.
    setting.state().enCurrentStatus = PS_OFFLINE;
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(setting.state().dwRemainingToner, 200UL);
    QCOMPARE(setting.state().enCurrentStatus, 5);
}

// The device manager leaves such a record when a printer is added.
void PollingCycleTest::resetRecordIsFilledAgain()
{
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    QCOMPARE(setting.worker.runCycle(), 1);
    setting.state() = stPrinterState();
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(Words(setting.state()), Words(FullReplyState()));
}

void PollingCycleTest::listChangedMeanwhile_data()
{
    QTest::addColumn<ListChange>("change");
    const auto row = [](const char* name, const ListChange& change) {
        QTest::newRow(name) << change;
    };

    row("another name", [](auto& list, auto&) { list[1].stInfo.strPrinterName = QStringLiteral("other"); });
    row("the name in other case",
        [](auto& list, auto&) { list[1].stInfo.strPrinterName = QStringLiteral("office_k4510a"); });
    row("another URI", [](auto& list, auto&) { list[1].stInfo.strURI = QStringLiteral("usb://other"); });
    row("the URI in other case", [](auto& list, auto&) { list[1].stInfo.strURI = QStringLiteral("USB://Tolmar"); });
    row("another order", [](auto& list, auto&) { list.swapItemsAt(1, 2); });
    row("the first is gone", [](auto& list, auto&) { list.removeFirst(); });
    row("shorter", [](auto& list, auto&) { list = {list.first()}; });
    row("empty", [](auto& list, auto&) { list.clear(); });
    row("the worker is told to let go", [](auto&, auto& worker) { worker.Init(-1, nullptr); });
}

void PollingCycleTest::listChangedMeanwhile()
{
    QFETCH(ListChange, change);
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    QString changed;
    OnNextStatusFile([&] {
        SharedPrinterList(&setting.list).copyInfos(); // the lock is free during a read
        change(setting.list, setting.worker);
        changed = AllWords(setting.list);
    });
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(AllWords(setting.list), changed);
    QCOMPARE(Words(setting.worker.stCurrent.stState), Words(FullReplyState())); // the file was read
}

// The printer is the same by name and URI, so the worker's whole record replaces the one in the list.
void PollingCycleTest::wholeRecordIsWrittenBack()
{
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    OnNextStatusFile([&] {
        setting.list[1].stInfo.strPort = QStringLiteral("other");
        setting.list[1].stInfo.enType = QStringLiteral("other");
        setting.list[1].stInfo.iConnectType = 2;
        setting.list[1].stState = stPrinterState();
    });
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(Words(setting.list.at(1).stInfo), Words(FilledPrinter(Name).stInfo));
    QCOMPARE(Words(setting.state()), Words(FullReplyState()));
}

QTEST_GUILESS_MAIN(PollingCycleTest)
#include "tst_pollingcycle.moc"
