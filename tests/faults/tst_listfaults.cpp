// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests what a user sees when the printer list goes wrong: one window, one fault after another. Each step takes up to
// the three seconds between two polls. A good list separates two faults that both leave an empty table.

#include "FaultRig.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"

#include <QTableWidget>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int HugeBytes = 50 * 1024 * 1024;
constexpr int GreatestPrinterCount = 1000;
constexpr int AllStartedTimeoutMs = 120000; // sanitizers on a busy machine are slow
constexpr int SeveralCyclesMs = 3000;
constexpr qint64 StopLimitMs = 5000; // half a second to notice the stop; the rest is a margin for a busy machine
// Heap of a thread and its worker, without the stack.
constexpr qint64 WorkerBytes = 32768;
constexpr qint64 NoiseBytes = 524288;
// Heap of a worker's queue after a thousand start requests at once; Qt keeps it for later ones.
constexpr qint64 QueueBytes = 65536;

const QStringList NoRows;
const QString Hall = QStringLiteral("Hall|USB|80.00%|就绪");
const QString Office = QStringLiteral("J4990E Office|网络(10.0.0.7)|55.00%|就绪");
const QString Attic = QStringLiteral("阁楼|USB|70.00%|就绪");
const QString Nameless = QStringLiteral("|网络()|0.00%|脱机");

QByteArray Section(int number, const char* keys)
{
    return "[printer_" + QByteArray::number(number) + "]\n" + keys;
}

constexpr char HallKeys[] = "Name=Hall\nModel=K4510A\nConnectType=1\nPort=usb0\nURI=usb://hall\n";
constexpr char OfficeKeys[] = "Name=J4990E Office\nModel=J4990E\nConnectType=2\nPort=10.0.0.7\nURI=socket://o\n";
constexpr char AtticKeys[] = "Name=阁楼\nModel=K4620A\nConnectType=1\nPort=usb1\nURI=usb://attic\n";

QByteArray ListText(const QByteArray& count)
{
    return "[Main]\nCount=" + count + '\n' + Section(0, HallKeys) + Section(1, OfficeKeys) + Section(2, AtticKeys);
}

using Change = std::function<void()>;

struct Step
{
    const char* name;
    Change change;
    QStringList rows;
};

Change Text(const QByteArray& text)
{
    return [text] {
        PrinterFolder::WritePrinterListText(text);
    };
}

Change Nothing()
{
    return [] {
        PrinterFolder::RemovePrinterList();
    };
}

// Whatever is in the list's place must be removed before another file can take it.
Change Good()
{
    return [] {
        rmdir(PrinterFolder::PrinterListPath);
        PrinterFolder::WritePrinterListText(ListText("3"));
    };
}

Change InItsPlace(const std::function<bool(const char* path)>& make)
{
    return [make] {
        if (unlink(PrinterFolder::PrinterListPath) != 0 || !make(PrinterFolder::PrinterListPath)) {
            qFatal("cannot damage the list");
        }
    };
}

// Pseudo-random bytes of every value, the same in every run.
QByteArray Binary()
{
    QByteArray bytes;
    quint32 state = 1;
    for (int i = 0; i < 100000; ++i) {
        state = state * 1664525 + 1013904223;
        bytes.append(static_cast<char>(state >> 24));
    }
    return bytes;
}

QVector<Step> Steps()
{
    const QStringList all{Hall, Office, Attic};
    const auto directory = InItsPlace([](const char* path) { return mkdir(path, S_IRWXU) == 0; });
    const auto fifo = InItsPlace([](const char* path) { return mkfifo(path, S_IRUSR | S_IWUSR) == 0; });
    const auto link = InItsPlace([](const char* path) {
        PrinterFolder::WriteFile(QStringLiteral("/opt/list"), ListText("3"));
        return symlink("/opt/list", path) == 0;
    });
    const QByteArray comments = QByteArray(";" + QByteArray(1023, 'x') + '\n').repeated(HugeBytes / 1025);
    return {
        {"missing", Nothing(), NoRows},
        {"there again", Good(), all},
        {"empty", Text({}), NoRows},
        {"a section missing",
         Text("[Main]\nCount=3\n" + Section(0, HallKeys) + Section(2, AtticKeys)),
         {Hall, Nameless, Attic}},
        {"garbage", Text("%!PS-Adobe-3.0\n]][[ =Count=\n[Main\nCount\n<html>\n"), NoRows},
        {"a printer twice",
         Text("[Main]\nCount=3\n" + Section(0, HallKeys) + Section(1, HallKeys) + Section(2, OfficeKeys)),
         {Hall, Hall, Office}},
        {"binary", Text(Binary()), NoRows},
        {"a section twice, the second one counts",
         Text("[Main]\nCount=1\n" + Section(0, HallKeys) + Section(0, AtticKeys)),
         {Attic}},
        {"FIFO", fifo, NoRows},
        {"link to a list", [link] { PrinterFolder::WritePrinterListText({}), link(); }, all},
        {"50 MiB, most of it comments", [comments] { PrinterFolder::WritePrinterListText(ListText("3") + comments); },
         NoRows},
        {"of a handy size again", Good(), all},
        {"negative count", Text(ListText("-3")), NoRows},
        {"positive again", Good(), all},
        {"count in words", Text(ListText("three")), NoRows},
        {"in digits again", Good(), all},
        {"directory", directory, NoRows},
        {"file again", Good(), all},
    };
}

} // namespace

class ListFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void step_data();
    void step();
    void nothingIsHeldOn();
    void windowAnswers();
    void forbidden();
    void greatestCount();

private:
    static QStringList rows(FaultRig& rig);
    static bool fillsAndEmpties(FaultRig& rig, const ProcessUse& before, int workers);

    const QVector<Step> m_steps = Steps();
    std::unique_ptr<FaultRig> m_rig;
    ProcessUse m_atStart;
    int m_expectedWorkers = 0;
    int m_lastRowCount = 0;
};

QStringList ListFaultsTest::rows(FaultRig& rig)
{
    QStringList rows;
    for (int row = 0; row < rig.window().table().rowCount(); ++row) {
        rows.append(rig.window().row(row).join(QLatin1Char('|')));
    }
    return rows;
}

void ListFaultsTest::initTestCase()
{
    PrinterFolder::Create();
    PrinterFolder::WriteStatusFile(QStringLiteral("Hall"), StandardBytes(RawReady, 8000));
    PrinterFolder::WriteStatusFile(QStringLiteral("J4990E Office"), QZBytes(55));
    PrinterFolder::WriteStatusFile(QStringLiteral("阁楼"), StandardBytes(RawReady, 7000));
    Good()();
    m_rig = std::make_unique<FaultRig>();
    QVERIFY(m_rig->waitUntil([this] { return rows(*m_rig) == QStringList({Hall, Office, Attic}); }));
    m_expectedWorkers = m_lastRowCount = 3;
    m_rig->run(SeveralCyclesMs); // everything has been drawn once
    m_atStart = ProcessUse::now();
}

// The windows must not outlive the application, whichever test functions were selected.
void ListFaultsTest::cleanupTestCase()
{
    m_rig.reset();
}

void ListFaultsTest::step_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < m_steps.size(); ++index) {
        QTest::newRow(m_steps.at(index).name) << index;
    }
}

void ListFaultsTest::step()
{
    QFETCH(int, index);
    const Step& step = m_steps.at(index);
    step.change();
    const bool isShown = m_rig->waitUntil([this, &step] { return rows(*m_rig) == step.rows; });
    QVERIFY2(isShown, qPrintable(rows(*m_rig).join(QLatin1Char('\n'))));
    // A list that grows again starts workers for the new rows, in addition to the old ones.
    m_expectedWorkers += std::max(0, static_cast<int>(step.rows.size()) - m_lastRowCount);
    m_lastRowCount = step.rows.size();
    QCOMPARE(m_rig->window().startedWorkers(), m_expectedWorkers);
}

void ListFaultsTest::nothingIsHeldOn()
{
    const int more = m_expectedWorkers - 3;
    ProcessUse allowed = m_atStart;
    allowed.threads += more;
    QVERIFY(m_rig->settlesAt(allowed, NoiseBytes + more * WorkerBytes));
}

void ListFaultsTest::windowAnswers()
{
    QVERIFY(m_rig->hasAnsweredInTime());
    const qint64 ms = m_rig->endWindow();
    QVERIFY2(ms < StopLimitMs, qPrintable(QString::number(ms)));
}

void ListFaultsTest::forbidden()
{
    if (geteuid() == 0) {
        QSKIP("root ignores file permissions");
    }
    Good()();
    FaultRig rig;
    QVERIFY(rig.waitForRows(3));
    QCOMPARE(chmod(PrinterFolder::PrinterListPath, S_IWUSR), 0);
    QVERIFY(rig.waitForRows(0));
    QCOMPARE(chmod(PrinterFolder::PrinterListPath, S_IRUSR), 0);
    QVERIFY(rig.waitUntil([&rig] { return rows(rig) == QStringList({Hall, Office, Attic}); }));
    QVERIFY(rig.hasAnsweredInTime());
}

// Writes a list of the greatest count, waits for all expected workers, and empties the list.
bool ListFaultsTest::fillsAndEmpties(FaultRig& rig, const ProcessUse& before, int workers)
{
    PrinterFolder::WritePrinterListText(ListText("2147483647"));
    const auto isFilled = [&rig, workers] {
        return rig.window().startedWorkers() == workers && rig.window().table().rowCount() == GreatestPrinterCount &&
            rows(rig).mid(0, 4) == QStringList({Hall, Office, Attic, Nameless});
    };
    const bool isRight = rig.waitUntil(isFilled, AllStartedTimeoutMs);
    Nothing()();
    if (!isRight || !rig.waitForRows(0)) {
        return false;
    }
    rig.run(SeveralCyclesMs);
    ProcessUse allowed = before;
    allowed.threads += workers;
    return rig.settlesAt(allowed, workers * (WorkerBytes + QueueBytes));
}

// Filled twice, because then each start is also signalled to all workers of the first time. Freeing a million signals
// takes the heap 0.2 s, so the window's response is judged before that.
void ListFaultsTest::greatestCount()
{
    FaultRig rig;
    const ProcessUse before = ProcessUse::now();
    QVERIFY(fillsAndEmpties(rig, before, GreatestPrinterCount));
    QVERIFY(rig.hasAnsweredInTime());
    QVERIFY(fillsAndEmpties(rig, before, 2 * GreatestPrinterCount));
    const qint64 ms = rig.endWindow();
    QVERIFY2(ms < StopLimitMs, qPrintable(QString::number(ms)));
}

QTEST_MAIN(ListFaultsTest)
#include "tst_listfaults.moc"
