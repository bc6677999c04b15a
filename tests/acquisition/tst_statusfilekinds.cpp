// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Descriptors.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Tests which kinds of files can be in the place of a status file, and their names.
class StatusFileKindsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void notARegularFile_data();
    void notARegularFile();
    void fileTakesTheFifosPlace();
    void danglingLink();
    void linkToARegularFile();
    void noPermission();
    void forbiddenFolder();
    void names_data();
    void names();
    void zeroByteInTheName();
    void fileIsLeftAsItIs();
    void nothingStaysOpen();
};

namespace {

constexpr qint64 SomeTimeMs = 1700000000123;

const QString Name = QStringLiteral("Office_K4510A");

QByteArray LocalPath(const QString& name = Name)
{
    return QFile::encodeName(PrinterFolder::StatusFilePath(name));
}

} // namespace

void StatusFileKindsTest::init()
{
    PrinterFolder::Create();
}

void StatusFileKindsTest::notARegularFile_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"FIFO", "directory", "link to a FIFO", "link to a directory", "link to a device"}) {
        QTest::newRow(kind) << kind;
    }
}

// Such a file is treated like one that cannot be opened: it is skipped until its timestamp changes.
void StatusFileKindsTest::notARegularFile()
{
    QFETCH(QString, kind);
    const bool isLink = kind.startsWith(QLatin1String("link"));
    QByteArray path = isLink ? QByteArray("/opt/target") : LocalPath();
    unlink("/opt/target");
    rmdir("/opt/target");
    if (kind.endsWith(QLatin1String("FIFO"))) {
        QCOMPARE(mkfifo(path.constData(), 0600), 0);
    } else if (kind.endsWith(QLatin1String("directory"))) {
        QCOMPARE(mkdir(path.constData(), 0700), 0);
    } else {
        path = "/dev/zero";
    }
    if (isLink) {
        QCOMPARE(symlink(path.constData(), LocalPath().constData()), 0);
    }
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(Name);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), -1);
    QCOMPARE(Words(worker.stCurrent), Words(FilledPrinter(Name)));

    StatusWorker usbWorker;
    usbWorker.stCurrent = FilledPrinter(Name);
    QCOMPARE(usbWorker.GetPrinterStatusUSB(Name), -1);
    QCOMPARE(usbWorker.GetPrinterStatusUSB(Name), 1);
}

void StatusFileKindsTest::fileTakesTheFifosPlace()
{
    QCOMPARE(mkfifo(LocalPath().constData(), 0600), 0);
    PrinterFolder::SetModificationTime(PrinterFolder::StatusFilePath(Name), SomeTimeMs);
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady), SomeTimeMs);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), 0);
}

// A dangling link counts as a missing file.
void StatusFileKindsTest::danglingLink()
{
    QCOMPARE(symlink("/opt/absent", LocalPath().constData()), 0);
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), -1);
}

void StatusFileKindsTest::linkToARegularFile()
{
    const QString target = QStringLiteral("/opt/target");
    unlink("/opt/target");
    rmdir("/opt/target");
    PrinterFolder::WriteFile(target, StandardBytes(RawReady, 100), SomeTimeMs);
    QCOMPARE(symlink("/opt/target", LocalPath().constData()), 0);
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    // The timestamp is that of the target, not that of the link.
    PrinterFolder::WriteFile(target, StandardBytes(RawReady, 200), SomeTimeMs + 1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(worker.stCurrent.stState.dwRemainingToner, 200UL);
}

void StatusFileKindsTest::noPermission()
{
    if (geteuid() == 0) {
        QSKIP("root ignores file permissions");
    }
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady), SomeTimeMs);
    QCOMPARE(chmod(LocalPath().constData(), 0200), 0);
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), -1);
    // Changing the permissions alone leaves the timestamp, so only a forced read looks again.
    QCOMPARE(chmod(LocalPath().constData(), 0400), 0);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), 0);
}

// A file that cannot be looked up counts as missing, and its timestamp is forgotten.
void StatusFileKindsTest::forbiddenFolder()
{
    if (geteuid() == 0) {
        QSKIP("root ignores file permissions");
    }
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady), SomeTimeMs);
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(chmod(PrinterFolder::ConfigurationDirectory, 0600), 0);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), -1);
    QCOMPARE(chmod(PrinterFolder::ConfigurationDirectory, 0700), 0);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
}

void StatusFileKindsTest::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");

    const QString folder = QStringLiteral("/opt/tolmar/tolmar-printer-q727/cfg/");
    QTest::newRow("plain") << "Office_K4510A" << folder + QStringLiteral("Office_K4510A.dat");
    QTest::newRow("Chinese") << "办公室" << folder + QStringLiteral("办公室.dat");
    QTest::newRow("blanks") << " a b " << folder + QStringLiteral(" a b .dat");
    QTest::newRow("upper case") << "OFFICE" << folder + QStringLiteral("OFFICE.dat");
    QTest::newRow("percent sign") << "a%20b%1" << folder + QStringLiteral("a%20b%1.dat");
    QTest::newRow("line end") << "a\nb" << folder + QStringLiteral("a\nb.dat");
    QTest::newRow("with an extension") << "a.dat" << folder + QStringLiteral("a.dat.dat");
    QTest::newRow("empty") << "" << folder + QStringLiteral(".dat");
    QTest::newRow("slash") << "floor/office" << folder + QStringLiteral("floor/office.dat");
    QTest::newRow("upwards") << "../tool/office" << QStringLiteral("/opt/tolmar/tolmar-printer-q727/tool/office.dat");
}

void StatusFileKindsTest::names()
{
    QFETCH(QString, name);
    QFETCH(QString, path);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    PrinterFolder::WriteFile(path, StandardBytes(RawReady));
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusFile(name, false), 0);
    QVERIFY(QFile::remove(path));
    QCOMPARE(worker.GetPrinterStatusFile(name, false), -1);
}

// The name must not be cut at the zero byte, which would find another file.
void StatusFileKindsTest::zeroByteInTheName()
{
    const QString folder = QString::fromLatin1(PrinterFolder::ConfigurationDirectory);
    PrinterFolder::WriteFile(folder + QStringLiteral("Office"), StandardBytes(RawReady));
    PrinterFolder::WriteStatusFile(QStringLiteral("Office"), StandardBytes(RawReady));
    StatusWorker worker;
    const QString name = QStringLiteral("Office") + QChar(0) + QStringLiteral("x");
    QCOMPARE(worker.GetPrinterStatusFile(name, false), -1);
    QCOMPARE(worker.GetPrinterStatusFile(name, true), -1);
    QCOMPARE(worker.GetPrinterStatusFile(QString(1000, QLatin1Char('x')), false), -1); // a name that is too long
}

void StatusFileKindsTest::fileIsLeftAsItIs()
{
    const QByteArray content = StandardBytes(RawReady);
    PrinterFolder::WriteStatusFile(Name, content, SomeTimeMs);
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(Name);
    QCOMPARE(worker.GetPrinterStatusFile(Name, true), 0);
    QCOMPARE(worker.GetPrinterStatusUSB(Name), 1);
    QCOMPARE(PrinterFolder::ReadFile(PrinterFolder::StatusFilePath(Name)), content);
    QCOMPARE(PrinterFolder::ModificationTime(PrinterFolder::StatusFilePath(Name)), SomeTimeMs);
    // A missing file is not created.
    QCOMPARE(worker.GetPrinterStatusFile(QStringLiteral("absent"), true), -1);
    QVERIFY(!QFile::exists(PrinterFolder::StatusFilePath(QStringLiteral("absent"))));
}

void StatusFileKindsTest::nothingStaysOpen()
{
    const QString directory = QStringLiteral("directory");
    QVERIFY(QDir().mkpath(PrinterFolder::StatusFilePath(directory)));
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady));
    StatusWorker worker;
    const int lowestFree = LowestFreeDescriptor();
    for (const QString& name : {Name, directory, QStringLiteral("absent")}) {
        worker.GetPrinterStatusFile(name, true);
        QCOMPARE(LowestFreeDescriptor(), lowestFree);
    }
}

QTEST_GUILESS_MAIN(StatusFileKindsTest)
#include "tst_statusfilekinds.moc"
