// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "FolderTest.h"
#include "infrastructure/QtGenerations.h"

#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QtTest>

#include <csignal>
#include <sys/stat.h>

// Runs the simulator as a user does.
class PrinterSimulatorTest : public FolderTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void writesTheFilesOfTheStart();
    void followsTheSteps();
    void writesIntoTheFolderOfTheDriverPackage();
    void replacesFilesAtomically();
    void readersNeverSeeAPartlyWrittenFile();
    void stopSignalEndsIt_data();
    void stopSignalEndsIt();
    void badScenarioWritesNothing();
    void wrongUse_data();
    void wrongUse();
    void unwritableFolder_data();
    void unwritableFolder();
    void unremovableStatusFile();
    void helpTellsTheOptions();
    void everydayScenarioPlays();

private:
    QString WriteScenario(const QByteArray& text) const;
    void Start(const QStringList& arguments);
    void PlayToTheEnd(const QByteArray& scenario);
    void Stop();

    QScopedPointer<QTemporaryDir> m_sources; // holds the scenario
    QScopedPointer<QProcess> m_process;
};

namespace {

quint64 Inode(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_ino : 0;
}

// A standard reply with a status and nothing else.
QByteArray BareReply(char status)
{
    return QByteArray(20, '\0') + status + QByteArray(4, '\0') + QByteArray(5, '\0') +
        QByteArray::fromHex("0A 000000 00010400000000 10000200 00 10010200 00 10020200 00 10030400000000 10040400000000"
                            "1100020000 11010400000000 11020400000000");
}

} // namespace

void PrinterSimulatorTest::init()
{
    m_sources.reset(new QTemporaryDir);
    m_process.reset(new QProcess);
    QVERIFY(m_sources->isValid());
    QVERIFY(MakeFolder());
}

void PrinterSimulatorTest::cleanup()
{
    m_process.reset(); // ends a simulator that a failed test left running
}

QString PrinterSimulatorTest::WriteScenario(const QByteArray& text) const
{
    QFile file(m_sources->filePath(QStringLiteral("test.scenario")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        qWarning("cannot write %s", qPrintable(file.fileName()));
    }
    return file.fileName();
}

void PrinterSimulatorTest::Start(const QStringList& arguments)
{
    m_process->start(QStringLiteral(PRINTER_SIMULATOR), arguments);
    QVERIFY2(m_process->waitForStarted(), qPrintable(m_process->errorString()));
}

void PrinterSimulatorTest::PlayToTheEnd(const QByteArray& scenario)
{
    Start({QStringLiteral("--directory"), m_directory->path(), WriteScenario(scenario)});
    QVERIFY(m_process->waitForFinished());
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
}

void PrinterSimulatorTest::Stop()
{
    m_process->terminate();
    QVERIFY(m_process->waitForFinished());
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
}

void PrinterSimulatorTest::writesTheFilesOfTheStart()
{
    PlayToTheEnd("printer \"Front office, 2; \\\"new\\\"\"\n"
                 "  status printing\n"
                 "printer 办公室\n"
                 "printer Attic absent\n"
                 "printer Cellar\n"
                 "  vanish\n");
    QCOMPARE(Files(),
             QStringList({QStringLiteral("Front office, 2; \"new\".dat"), QStringLiteral("printerlist.ini"),
                          QString::fromUtf8("办公室.dat")}));
    QCOMPARE(Content(QStringLiteral("Front office, 2; \"new\".dat")).toHex(' '), BareReply(16).toHex(' '));
    QCOMPARE(Content(QString::fromUtf8("办公室.dat")).toHex(' '), BareReply(0).toHex(' '));

    QSettings list(Path(QStringLiteral("printerlist.ini")), QSettings::IniFormat);
    ReadAsUtf8(list);
    QCOMPARE(list.value(QStringLiteral("Main/Count")).toInt(), 3);
    QCOMPARE(list.value(QStringLiteral("printer_0/Name")).toString(), QStringLiteral("Front office, 2; \"new\""));
    QCOMPARE(list.value(QStringLiteral("printer_1/Name")).toString(), QString::fromUtf8("办公室"));
    QCOMPARE(list.value(QStringLiteral("printer_2/Name")).toString(), QStringLiteral("Cellar"));
}

void PrinterSimulatorTest::followsTheSteps()
{
    PlayToTheEnd("printer A\n"
                 "printer B\n"
                 "printer C\n"
                 "printer D\n"
                 "printer E absent\n"
                 "wait 0.05\n"
                 "status A busy\n"
                 "rename A A2\n"
                 "remove B\n"
                 "garbage C 010203\n"
                 "vanish D\n"
                 "add E\n"
                 "reorder E A2 C D\n");
    QCOMPARE(Files(),
             QStringList({QStringLiteral("A2.dat"), QStringLiteral("C.dat"), QStringLiteral("E.dat"),
                          QStringLiteral("printerlist.ini")}));
    QCOMPARE(Content(QStringLiteral("A2.dat")).toHex(' '), BareReply(2).toHex(' '));
    QCOMPARE(Content(QStringLiteral("C.dat")), QByteArray("\x01\x02\x03"));
    QCOMPARE(Content(QStringLiteral("E.dat")).toHex(' '), BareReply(0).toHex(' '));
    const QByteArray list = Content(QStringLiteral("printerlist.ini"));
    QVERIFY(list.startsWith("[Main]\nCount=4\n\n[printer_0]\nName=\"E\"\n"));
    QVERIFY(list.contains("[printer_1]\nName=\"A2\"\n"));
    QVERIFY(list.contains("[printer_2]\nName=\"C\"\n"));
    QVERIFY(list.contains("[printer_3]\nName=\"D\"\n"));
}

void PrinterSimulatorTest::writesIntoTheFolderOfTheDriverPackage()
{
    const QString folder = QStringLiteral("/opt/tolmar/tolmar-printer-q727/cfg");
    const QString listPath = folder + QStringLiteral("/printerlist.ini");
    if (QFile::exists(listPath)) {
        QSKIP("a driver package is installed here");
    }
    Start({WriteScenario("printer Simulated_K4510A\n")});
    QVERIFY(m_process->waitForFinished());
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    QVERIFY(QFile::remove(listPath));
    QVERIFY(QFile::remove(folder + QStringLiteral("/Simulated_K4510A.dat")));
}

void PrinterSimulatorTest::replacesFilesAtomically()
{
    Start({QStringLiteral("--directory"), m_directory->path(),
           WriteScenario("printer A\nwait 0.05\nstatus A busy\nport A USB2\nwait 60\n")});
    QTRY_COMPARE(Content(QStringLiteral("A.dat")).toHex(' '), BareReply(2).toHex(' '));
    QTRY_VERIFY(Content(QStringLiteral("printerlist.ini")).contains("USB2"));
    QCOMPARE(Files(), QStringList({QStringLiteral("A.dat"), QStringLiteral("printerlist.ini")}));
    Stop();
    // Keep the files open, so that the file system cannot reuse their inodes.
    QFile oldStatus(Path(QStringLiteral("A.dat")));
    QFile oldList(Path(QStringLiteral("printerlist.ini")));
    QVERIFY(oldStatus.open(QIODevice::ReadOnly));
    QVERIFY(oldList.open(QIODevice::ReadOnly));
    const quint64 statusInode = Inode(oldStatus.fileName());
    const quint64 listInode = Inode(oldList.fileName());

    PlayToTheEnd("printer A\n");
    QVERIFY(Inode(oldStatus.fileName()) != statusInode);
    QVERIFY(Inode(oldList.fileName()) != listInode);
    QCOMPARE(oldStatus.readAll().toHex(' '), BareReply(2).toHex(' '));
    QVERIFY(oldList.readAll().contains("USB2"));
    QCOMPARE(Files(), QStringList({QStringLiteral("A.dat"), QStringLiteral("printerlist.ini")}));
}

void PrinterSimulatorTest::readersNeverSeeAPartlyWrittenFile()
{
    const QByteArray large = QByteArray("AB").repeated(60000);
    Start({QStringLiteral("--directory"), m_directory->path(),
           WriteScenario("printer A\nwait 0.001\ngarbage A " + large + "\nwait 0.001\nrepeat\n")});
    QTRY_VERIFY(QFile::exists(Path(QStringLiteral("A.dat"))));
    int replies = 0;
    int garbage = 0;
    for (int i = 0; i < 2000 || ((replies == 0 || garbage == 0) && i < 100000); ++i) {
        const QByteArray content = Content(QStringLiteral("A.dat"));
        if (content.size() == 60000) {
            ++garbage;
        } else {
            QCOMPARE(content.toHex(' '), BareReply(0).toHex(' '));
            ++replies;
        }
    }
    QVERIFY(replies > 0);
    QVERIFY(garbage > 0);
    Stop();
}

void PrinterSimulatorTest::stopSignalEndsIt_data()
{
    QTest::addColumn<int>("signalNumber");

    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void PrinterSimulatorTest::stopSignalEndsIt()
{
    QFETCH(int, signalNumber);
    Start({QStringLiteral("--directory"), m_directory->path(), WriteScenario("printer A\nwait 3600\nrepeat\n")});
    QTRY_VERIFY(QFile::exists(Path(QStringLiteral("printerlist.ini"))));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(::kill(static_cast<pid_t>(m_process->processId()), signalNumber), 0);
    QVERIFY(m_process->waitForFinished());
    QVERIFY(timer.elapsed() < 3000);
    QCOMPARE(m_process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_process->exitCode(), 0);
    QCOMPARE(Files(), QStringList({QStringLiteral("A.dat"), QStringLiteral("printerlist.ini")}));
}

void PrinterSimulatorTest::badScenarioWritesNothing()
{
    const QString scenario = WriteScenario("printer A\ntoner 101\nwait 1\nstatus A tired\n");
    const QString folder = Path(QStringLiteral("new"));
    Start({QStringLiteral("--directory"), folder, scenario});
    QVERIFY(m_process->waitForFinished());
    QCOMPARE(m_process->exitCode(), 2);
    QCOMPARE(QString::fromUtf8(m_process->readAllStandardError()),
             QStringLiteral("%1:2: toner must be in percent, 0 to 100, with at most two decimals\n"
                            "%1:4: \"tired\" is not a status\n")
                 .arg(scenario));
    QVERIFY(!QFile::exists(folder));
}

void PrinterSimulatorTest::wrongUse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");

    const QString missing = QStringLiteral("/nonexistent/a.scenario");
    QTest::newRow("no scenario") << QStringList()
                                 << QByteArray("printer-simulator: give one scenario file; see --help\n");
    QTest::newRow("two scenarios") << QStringList({missing, missing})
                                   << QByteArray("printer-simulator: give one scenario file; see --help\n");
    QTest::newRow("unknown option") << QStringList({QStringLiteral("--loud"), missing})
                                    << QByteArray("printer-simulator: Unknown option 'loud'.\n");
    QTest::newRow("option without value") << QStringList({missing, QStringLiteral("--directory")})
                                          << QByteArray("printer-simulator: Missing value after '--directory'.\n");
    QTest::newRow("missing scenario") << QStringList(missing)
                                      << QByteArray("printer-simulator: cannot read /nonexistent/a.scenario: ");
    QTest::newRow("folder as scenario") << QStringList(QStringLiteral("/"))
                                        << QByteArray("printer-simulator: cannot read /: ");
    QTest::newRow("endless scenario")
        << QStringList(QStringLiteral("/dev/zero"))
        << QByteArray("printer-simulator: /dev/zero is longer than a scenario may be (16777216 bytes)\n");
}

void PrinterSimulatorTest::wrongUse()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, error);
    Start(arguments);
    QVERIFY(m_process->waitForFinished());
    QCOMPARE(m_process->exitCode(), 1);
    const QByteArray output = m_process->readAllStandardError();
    QVERIFY2(output.startsWith(error), output.constData()); // the system's message may follow
    QCOMPARE(output.count('\n'), 1);
}

void PrinterSimulatorTest::unwritableFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("error");

    // Nobody can create files in /proc, not even root.
    QTest::newRow("exists") << QStringLiteral("/proc") << QStringLiteral("cannot write /proc/A.dat: ");
    QTest::newRow("cannot be created") << QStringLiteral("/proc/new")
                                       << QStringLiteral("cannot create the folder /proc/new");
}

void PrinterSimulatorTest::unwritableFolder()
{
    QFETCH(QString, folder);
    QFETCH(QString, error);
    Start({QStringLiteral("--directory"), folder, WriteScenario("printer A\nwait 3600\nrepeat\n")});
    QVERIFY(m_process->waitForFinished());
    QCOMPARE(m_process->exitCode(), 1);
    const QString output = QString::fromUtf8(m_process->readAllStandardError());
    QVERIFY2(output.startsWith(QStringLiteral("printer-simulator: ") + error), qPrintable(output));
    QCOMPARE(output.count(QLatin1Char('\n')), 1);
}

void PrinterSimulatorTest::unremovableStatusFile()
{
    Start({QStringLiteral("--directory"), m_directory->path(),
           WriteScenario("printer A\nwait 0.3\nvanish A\nwait 3600\nrepeat\n")});
    QTRY_VERIFY(QFile::exists(Path(QStringLiteral("printerlist.ini"))));
    QVERIFY(QFile::remove(Path(QStringLiteral("A.dat"))));
    QVERIFY(QDir().mkpath(Path(QStringLiteral("A.dat/kept"))));
    QVERIFY(m_process->waitForFinished());
    QCOMPARE(m_process->exitCode(), 1);
    const QByteArray output = m_process->readAllStandardError();
    QVERIFY2(output.startsWith("printer-simulator: cannot remove "), output.constData());
    QCOMPARE(output.count('\n'), 1);
}

void PrinterSimulatorTest::helpTellsTheOptions()
{
    Start({QStringLiteral("--help")});
    QVERIFY(m_process->waitForFinished());
    QCOMPARE(m_process->exitCode(), 0);
    QCOMPARE(m_process->readAllStandardError(), QByteArray());
    const QByteArray output = m_process->readAllStandardOutput();
    QVERIFY(output.contains("--directory <folder>"));
    QVERIFY(output.contains("scenario"));
}

void PrinterSimulatorTest::everydayScenarioPlays()
{
    Start(
        {QStringLiteral("--directory"), m_directory->path(), QStringLiteral(SCENARIO_DIRECTORY "/everyday.scenario")});
    QTRY_VERIFY(QFile::exists(Path(QStringLiteral("printerlist.ini"))));
    QCOMPARE(Files(),
             QStringList({QStringLiteral("Desk_K4620A.dat"), QStringLiteral("Hall_J4500A.dat"),
                          QStringLiteral("Lab_J4990E.dat"), QStringLiteral("Office_K4510A.dat"),
                          QStringLiteral("printerlist.ini")}));
    QVERIFY(Content(QStringLiteral("Hall_J4500A.dat")).contains("QV J4500A"));
    QCOMPARE(Content(QStringLiteral("Lab_J4990E.dat")).toHex(' '),
             (QByteArray(36, '\0') + QByteArray::fromHex("04 00060101 0009020000 000C020000 001D03000040")).toHex(' '));
    Stop();
}

QTEST_GUILESS_MAIN(PrinterSimulatorTest)
#include "tst_printersimulator.moc"
