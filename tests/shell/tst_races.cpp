// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/TrdDeviceManage.h"
#include "PrinterFolder.h"
#include "records/SharedPrinterList.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"
#include "StoppableThread.h"
#include "TestWindow.h"

#include <QLocale>
#include <QTableWidget>
#include <QtTest>

#include <chrono>
#include <memory>
#include <vector>

// Runs everything that shares the printer list at once, while the list is replaced many times a second. The thread
// sanitizer looks for races. Without it the tests show that no printer gets another one's data and that none is lost.
class RacesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void windowAndItsWorkers();
    void workersOnAListOfAnyLength();
};

namespace {

constexpr int WorkerCount = 50;
constexpr int LongestList = 60;
constexpr std::chrono::milliseconds ReplacementInterval(20);
constexpr int DefaultSeconds = 5;
constexpr int MsPerSecond = 1000;
// An idle machine makes fifty.
constexpr int LeastReplacementsPerSecond = 5;
constexpr int SettleTimeoutMs = 30000;
constexpr int TonerOfFirst = 1000;

int RaceSeconds()
{
    const int seconds = qEnvironmentVariableIntValue("RACE_SECONDS");
    return seconds > 0 ? seconds : DefaultSeconds;
}

QString NameOf(int printer)
{
    return QStringLiteral("Prn%1").arg(printer);
}

int TonerOf(const QString& name)
{
    return TonerOfFirst + QLocale::c().toInt(QStringView(name).mid(3));
}

// Alternates between ready and printing, so that there is a change to signal. The toner identifies the printer.
void RewriteStatusFile(int printer, int round)
{
    const QString name = NameOf(printer);
    const RawStatus status = round / LongestList % 2 == 0 ? RawPrinting : RawReady;
    PrinterFolder::WriteStatusFile(name, StandardBytes(status, static_cast<quint32>(TonerOf(name))));
}

// Printers 0 to count - 1, starting with another one in each round.
QList<stPrinterInfo> TurnedList(int count, int round)
{
    QList<stPrinterInfo> printers;
    for (int i = 0; i < count; ++i) {
        printers.append(PrinterFolder::Printer(NameOf((i + round) % count)));
    }
    return printers;
}

QList<stPrinterInfo> FullTurnedList(int round)
{
    return TurnedList(WorkerCount, round);
}

QList<stPrinterInfo> ListOfAnyLength(int round)
{
    constexpr int step = 7;
    return TurnedList(round * step % (LongestList + 1), round);
}

// Plays the driver package and, on its own thread, the device manager. Every 20 ms it writes the list file, runs one
// pass of the manager's loop without the pause of three seconds, and rewrites one of the status files.
class ListReplacer
{
public:
    using ListOfRound = QList<stPrinterInfo> (*)(int round);

    /// If there is a `window`, it receives the signals of its device manager from here, too.
    ListReplacer(QList<stPrinterManager>* list, ListOfRound listOfRound, BrelPrinterToolWidget* window = nullptr)
        : m_thread([this, list, listOfRound, window](const std::atomic<bool>& isEnding) {
            run(isEnding, list, listOfRound, window);
        })
    {
    }

    /// Stops the thread. Returns how often the list was replaced.
    int stop()
    {
        m_thread.stop();
        return m_replacements;
    }

private:
    void run(const std::atomic<bool>& isEnding, QList<stPrinterManager>* list, ListOfRound listOfRound,
             BrelPrinterToolWidget* window)
    {
        TrdDeviceManage manager(nullptr);
        manager.Init(list);
        QObject::connect(&manager, &TrdDeviceManage::SgnUpdatePrinterList, &manager, [this] { ++m_replacements; });
        if (window != nullptr) {
            QObject::connect(&manager, &TrdDeviceManage::SgnUpdatePrinterList, window,
                             &BrelPrinterToolWidget::SlotUpdatePrinterList);
        }
        auto next = std::chrono::steady_clock::now();
        for (int round = 1; !isEnding; ++round) {
            PrinterFolder::WritePrinterList(listOfRound(round));
            // The stop is requested beforehand, so that the pass ends before the pause.
            manager.bThreadQuit = true;
            manager.bTaskStarted = false;
            manager.SlotTaskStart();
            RewriteStatusFile(round % LongestList, round);
            next += ReplacementInterval;
            std::this_thread::sleep_until(next);
        }
    }

    int m_replacements = 0; ///< owned by the thread until it has ended
    StoppableThread m_thread; ///< the last member: it uses the others
};

// Copies the list repeatedly, as the window does, and checks that each printer has its own toner level or none.
class ListReader
{
public:
    explicit ListReader(QList<stPrinterManager>& list)
        : m_thread([this, &list](const std::atomic<bool>& isEnding) {
            while (!isEnding) {
                for (int i = 0; i < LongestList && look(list, i); ++i) { }
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        })
    {
    }

    void stop()
    {
        m_thread.stop();
    }
    /// Only valid after stop(): the number of records that a worker had filled, and the last wrong one.
    int filledRecords() const
    {
        return m_filledRecords;
    }
    QString mixedUp() const
    {
        return m_mixedUp;
    }

private:
    bool look(QList<stPrinterManager>& list, int index)
    {
        stPrinterManager printer;
        if (!SharedPrinterList(&list).copy(index, printer)) {
            return false;
        }
        const auto toner = static_cast<int>(printer.stState.dwRemainingToner);
        m_filledRecords += toner == 0 ? 0 : 1;
        if (toner != 0 && toner != TonerOf(printer.stInfo.strPrinterName)) {
            m_mixedUp = Words(printer);
        }
        return true;
    }

    int m_filledRecords = 0; ///< like the next member, owned by the thread until it has ended
    QString m_mixedUp;
    StoppableThread m_thread;
};

bool HasEveryRowItsToner(const TestWindow& window)
{
    for (int row = 0; row < window.table().rowCount(); ++row) {
        const QStringList texts = window.row(row);
        if (texts.at(2) != QString::asprintf("%.2f%%", TonerOf(texts.at(0)) / 100.0)) {
            return false;
        }
    }
    return true;
}

} // namespace

void RacesTest::init()
{
    PrinterFolder::Create();
    for (int printer = 0; printer < LongestList; ++printer) {
        RewriteStatusFile(printer, 0);
    }
}

// The list keeps its length because a list that shrinks and grows would start more and more workers.
void RacesTest::windowAndItsWorkers()
{
    PrinterFolder::WritePrinterList(FullTurnedList(0));
    TestWindow window;
    QTRY_COMPARE_WITH_TIMEOUT(window.table().rowCount(), WorkerCount, SettleTimeoutMs);
    ListReplacer replacer(window.sharedList(), FullTurnedList, &window);
    QTest::qWait(RaceSeconds() * MsPerSecond);
    const int replacements = replacer.stop();
    qInfo("the list was replaced %d times in %d s", replacements, RaceSeconds());
    QVERIFY(replacements >= LeastReplacementsPerSecond * RaceSeconds());
    QCOMPARE(window.startedWorkers(), WorkerCount);
    QTRY_VERIFY_WITH_TIMEOUT(HasEveryRowItsToner(window), SettleTimeoutMs);
    QCOMPARE(window.table().rowCount(), WorkerCount);
}

void RacesTest::workersOnAListOfAnyLength()
{
    QList<stPrinterManager> list;
    std::vector<std::unique_ptr<RunningStatusWorker>> workers;
    for (int i = 0; i < WorkerCount; ++i) {
        workers.push_back(std::make_unique<RunningStatusWorker>(i, &list));
        workers.back()->start();
    }
    ListReader reader(list);
    ListReplacer replacer(&list, ListOfAnyLength);
    std::this_thread::sleep_for(std::chrono::seconds(RaceSeconds()));
    const int replacements = replacer.stop();
    reader.stop();
    for (const auto& running : workers) {
        running->worker().bThreadQuit = true; // all workers end their pauses together
    }
    for (const auto& running : workers) {
        QVERIFY(running->stop());
    }
    qInfo("the list was replaced %d times in %d s; %d records were filled when they were looked at", replacements,
          RaceSeconds(), reader.filledRecords());
    QVERIFY(replacements >= LeastReplacementsPerSecond * RaceSeconds());
    QVERIFY(reader.filledRecords() > 0);
    QCOMPARE(reader.mixedUp(), QString());
}

QTEST_MAIN(RacesTest)
#include "tst_races.moc"
