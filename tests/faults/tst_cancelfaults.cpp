// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests faults of the `cancel` command. It runs before the printer's new state is written back, so a hanging command
// freezes its own printer's row and no other.

#include "FaultRig.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"

#include <QTableWidget>
#include <QtTest>

#include <csignal>
#include <unistd.h>

namespace {

constexpr int SeveralCyclesMs = 3500;
constexpr int CommandTimeoutMs = 30000;
// The window waits one second for a hanging worker and half a second for the others. The rest is a margin for a busy
// machine.
constexpr qint64 StopLimitMs = 5000;
constexpr qint64 NoiseBytes = 131072;
constexpr int CancellingRow = 0;
constexpr int OtherRow = 1;

const QString CancellingName = QStringLiteral("Office_K4510A");
const QString OtherName = QStringLiteral("Hall_K4620A");
const QString Ready = QStringLiteral("80.00% 就绪");
const QString Offline = QStringLiteral("0.00% 脱机");
const QString Cancelling = QStringLiteral("80.00% 正在取消任务");
const QString CommandPid = QStringLiteral("/tmp/cancel-pid");
const QString HangForAMinute = QStringLiteral("echo $$ >/tmp/cancel-pid; exec sleep 60");

// Kills the hanging command.
bool EndCommand()
{
    const pid_t pid = PrinterFolder::ReadFile(CommandPid).trimmed().toInt();
    return pid > 1 && kill(pid, SIGKILL) == 0;
}

// While an object exists, no command is found.
class NoCommands
{
public:
    NoCommands()
    {
        qputenv("PATH", "/tmp/no-commands");
    }
    ~NoCommands()
    {
        qputenv("PATH", m_path);
    }
    NoCommands(const NoCommands&) = delete;
    NoCommands& operator=(const NoCommands&) = delete;

private:
    const QByteArray m_path = qgetenv("PATH");
};

} // namespace

class CancelFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void failing_data();
    void failing();
    void missing();
    void hanging();
    void hangingAtTheEnd();

private:
    void startWindow();
    bool cancelsAgain(int times);

    std::unique_ptr<FaultRig> m_rig;
};

// Makes Qt start its own threads before they are counted.
void CancelFaultsTest::initTestCase()
{
    PrinterFolder::Create();
    FaultRig rig;
    rig.run(200);
}

void CancelFaultsTest::init()
{
    PrinterFolder::Create();
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(CancellingName), PrinterFolder::Printer(OtherName)});
    PrinterFolder::WriteStatusFile(CancellingName, StandardBytes(RawReady));
    PrinterFolder::WriteStatusFile(OtherName, StandardBytes(RawReady));
}

void CancelFaultsTest::cleanup()
{
    m_rig.reset();
}

void CancelFaultsTest::startWindow()
{
    m_rig = std::make_unique<FaultRig>();
    QVERIFY(m_rig->waitUntil([this] { return m_rig->shown() == QStringList({Ready, Ready}); }));
    m_rig->startRecord();
}

// Lets the printer cancel a job and become ready again, `times` times.
bool CancelFaultsTest::cancelsAgain(int times)
{
    bool isShown = true;
    for (int i = 0; i < times && isShown; ++i) {
        PrinterFolder::WriteStatusFile(CancellingName, StandardBytes(RawCancelling));
        isShown = m_rig->waitUntilShown(CancellingRow, Cancelling);
        PrinterFolder::WriteStatusFile(CancellingName, StandardBytes(RawReady));
        isShown = isShown && m_rig->waitUntilShown(CancellingRow, Ready);
    }
    return isShown;
}

void CancelFaultsTest::failing_data()
{
    QTest::addColumn<QString>("body");
    QTest::newRow("exit code") << "exit 3";
    QTest::newRow("killed") << "kill -9 $$";
}

void CancelFaultsTest::failing()
{
    QFETCH(QString, body);
    const FakeCommand cancel(QStringLiteral("cancel"), body);
    startWindow();
    QVERIFY(cancelsAgain(1));
    const ProcessUse use = ProcessUse::now();
    QVERIFY(cancelsAgain(1));
    QCOMPARE(cancel.calls(), (QList<QStringList>{{CancellingName}, {CancellingName}}));
    QCOMPARE(m_rig->record(CancellingRow), QStringList({Ready, Cancelling, Ready, Cancelling, Ready}));
    QCOMPARE(m_rig->record(OtherRow), QStringList(Ready));
    QVERIFY(m_rig->settlesAt(use, NoiseBytes));
    QVERIFY(m_rig->hasAnsweredInTime());
}

void CancelFaultsTest::missing()
{
    const NoCommands noCommands;
    startWindow();
    QVERIFY(cancelsAgain(1));
    const ProcessUse use = ProcessUse::now();
    QVERIFY(cancelsAgain(1));
    QCOMPARE(m_rig->record(CancellingRow), QStringList({Ready, Cancelling, Ready, Cancelling, Ready}));
    QVERIFY(m_rig->settlesAt(use, NoiseBytes));
    QVERIFY(m_rig->hasAnsweredInTime());
}

void CancelFaultsTest::hanging()
{
    const FakeCommand cancel(QStringLiteral("cancel"), HangForAMinute);
    startWindow();
    PrinterFolder::WriteStatusFile(CancellingName, StandardBytes(RawCancelling));
    QVERIFY(m_rig->waitUntil([&cancel] { return !cancel.calls().isEmpty(); }, CommandTimeoutMs));
    const ProcessUse use = ProcessUse::now();
    for (const quint32 percent : {81, 82, 83}) {
        PrinterFolder::WriteStatusFile(OtherName, StandardBytes(RawReady, percent * 100));
        QVERIFY(m_rig->waitUntilShown(OtherRow, QStringLiteral("%1.00% 就绪").arg(percent)));
    }
    QCOMPARE(m_rig->record(CancellingRow), QStringList(Ready));
    QVERIFY(m_rig->settlesAt(use, NoiseBytes));
    QCOMPARE(cancel.calls().size(), 1);
    // The status from before the command appears when the command has ended.
    QVERIFY(EndCommand());
    QVERIFY(m_rig->waitUntilShown(CancellingRow, Cancelling));
    m_rig->run(SeveralCyclesMs);
    QCOMPARE(cancel.calls().size(), 1);
    QCOMPARE(m_rig->record(CancellingRow), QStringList({Ready, Cancelling}));
    QCOMPARE(m_rig->signalsOf(CancellingRow), 1);
    QVERIFY(m_rig->hasAnsweredInTime());
}

// Neither a new list nor the end of the program waits for the command. Only the row of its worker does.
void CancelFaultsTest::hangingAtTheEnd()
{
    const int threads = ProcessUse::now().threads;
    const FakeCommand cancel(QStringLiteral("cancel"), HangForAMinute);
    startWindow();
    PrinterFolder::WriteStatusFile(CancellingName, StandardBytes(RawCancelling));
    QVERIFY(m_rig->waitUntil([&cancel] { return !cancel.calls().isEmpty(); }, CommandTimeoutMs));
    const QString thirdName = QStringLiteral("Attic");
    PrinterFolder::WriteStatusFile(thirdName, StandardBytes(RawReady));
    PrinterFolder::WritePrinterList(
        {PrinterFolder::Printer(CancellingName), PrinterFolder::Printer(OtherName), PrinterFolder::Printer(thirdName)});
    QVERIFY(m_rig->waitUntil([this] { return m_rig->shown() == QStringList({Offline, Ready, Ready}); }));
    QVERIFY(m_rig->hasAnsweredInTime());
    const qint64 ms = m_rig->endWindow();
    QVERIFY2(ms < StopLimitMs, qPrintable(QString::number(ms)));
    m_rig.reset();
    QVERIFY(EndCommand());
    QTRY_COMPARE_WITH_TIMEOUT(ProcessUse::now().threads, threads, CommandTimeoutMs);
    QCOMPARE(cancel.calls().size(), 1);
}

QTEST_MAIN(CancelFaultsTest)
#include "tst_cancelfaults.moc"
