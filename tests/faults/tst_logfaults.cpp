// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests a log that is switched on but cannot be written: lines are lost, and nothing else happens.

#include "FaultRig.h"
#include "infrastructure/UtilLog.h"
#include "LogFolder.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"

#include <QtTest>

#include <functional>
#include <unistd.h>

namespace {

constexpr char SmallDisk[] = "/tmp/small-disk";
constexpr char ReadOnlyDisk[] = "/tmp/read-only-disk";
constexpr char Filler[] = "/tmp/small-disk/filler";
// Without the final slash, so that the path names the link itself.
constexpr char ToolDirectory[] = "/opt/tolmar/tolmar-printer-q727/tool";
constexpr qint64 NoiseBytes = 131072;

const QString Name = QStringLiteral("Office_K4510A");

using Action = std::function<bool()>;

// Replaces the tool directory by a link to a folder on another disk.
bool PutToolDirectoryOn(const char* folder)
{
    return unlink(ToolDirectory) == 0 && symlink(folder, ToolDirectory) == 0;
}

// Fills the disk to the last byte.
bool FillSmallDisk()
{
    QFile filler(QString::fromLatin1(Filler));
    if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return false;
    }
    for (const int bytes : {4096, 1}) {
        while (filler.write(QByteArray(bytes, 'x')) == bytes) { }
    }
    return true;
}

bool EmptySmallDisk()
{
    return unlink(Filler) == 0;
}

struct Fault
{
    const char* name;
    Action strike;
    Action heal;
};

QVector<Fault> Faults()
{
    const auto toSmallDisk = [] {
        return PutToolDirectoryOn(SmallDisk);
    };
    return {
        {"disk full", FillSmallDisk, EmptySmallDisk},
        {"read-only disk", [] { return PutToolDirectoryOn(ReadOnlyDisk); }, toSmallDisk},
        {"no folder", [] { return unlink(ToolDirectory) == 0; },
         [] {
             return symlink(SmallDisk, ToolDirectory) == 0;
         }},
        {"a file in its place",
         [] {
             const bool isGone = unlink(ToolDirectory) == 0;
             PrinterFolder::WriteFile(QString::fromLatin1(ToolDirectory), "in the way");
             return isGone;
         },
         toSmallDisk},
    };
}

QByteArray LogText()
{
    const QStringList names = LogFolder::Names();
    return names.isEmpty() ? QByteArray() : PrinterFolder::ReadFile(LogFolder::Path(names.last()));
}

} // namespace

class LogFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fault_data();
    void fault();

private:
    bool shows(quint32 percent);
    bool cancels(quint32 percent);

    std::unique_ptr<FaultRig> m_rig;
};

void LogFaultsTest::init()
{
    PrinterFolder::Create();
    QVERIFY(QDir().rmdir(QString::fromLatin1(ToolDirectory)));
    QVERIFY(QDir(QString::fromLatin1(SmallDisk)).removeRecursively() || QDir(QString::fromLatin1(SmallDisk)).isEmpty());
    QCOMPARE(symlink(SmallDisk, ToolDirectory), 0);
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(Name)});
    m_rig = std::make_unique<FaultRig>();
    SetLogEnable(true); // the window switches the log off when it starts, before its first status worker
}

void LogFaultsTest::cleanup()
{
    m_rig.reset();
    SetLogEnable(false);
}

void LogFaultsTest::fault_data()
{
    QTest::addColumn<int>("index");
    const QVector<Fault> faults = Faults();
    for (int index = 0; index < faults.size(); ++index) {
        QTest::newRow(faults.at(index).name) << index;
    }
}

// Reports a new state, whose fields the window writes to the log, and waits until it is shown.
bool LogFaultsTest::shows(quint32 percent)
{
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady, percent * 100));
    return m_rig->waitUntilShown(0, QStringLiteral("%1.00% 就绪").arg(percent));
}

bool LogFaultsTest::cancels(quint32 percent)
{
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawCancelling, percent * 100));
    return m_rig->waitUntilShown(0, QStringLiteral("%1.00% 正在取消任务").arg(percent));
}

void LogFaultsTest::fault()
{
    QFETCH(int, index);
    const Fault fault = Faults().at(index);
    const FakeCommand cancel(QStringLiteral("cancel"));
    QVERIFY(m_rig->waitForRows(1));
    // What is shown for the first time takes memory that stays, so each status is shown once before the measurement.
    QVERIFY(shows(5));
    QVERIFY(cancels(5));
    QVERIFY(shows(10));
    const QByteArray before = LogText();
    QVERIFY(before.endsWith("dwPrinterNumOfPrint=0\n"));
    const ProcessUse use = ProcessUse::now();

    QVERIFY(fault.strike());
    QVERIFY(shows(20));
    QVERIFY(cancels(20));
    QCOMPARE(cancel.calls(), (QList<QStringList>{{Name}, {Name}}));
    QVERIFY(shows(30));

    QVERIFY(fault.heal());
    QCOMPARE(LogText().left(before.size()), before);
    QVERIFY(shows(40));
    const QByteArray after = LogText();
    QCOMPARE(after.left(before.size()), before);
    QCOMPARE(LogFolder::Names().size(), 1);
    // No state in between is completely logged; the last one is.
    QCOMPARE(after.count("dwPrinterNumOfPrint=0\n"), before.count("dwPrinterNumOfPrint=0\n") + 1);
    QVERIFY(after.endsWith("dwPrinterNumOfPrint=0\n"));
    QVERIFY(after.mid(before.size()).contains("dwRemainingToner=4000\n"));
    QVERIFY(m_rig->settlesAt(use, NoiseBytes));
    QVERIFY(m_rig->hasAnsweredInTime());
}

QTEST_MAIN(LogFaultsTest)
#include "tst_logfaults.moc"
