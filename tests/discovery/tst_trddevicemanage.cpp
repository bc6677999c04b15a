// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/TrdDeviceManage.h"
#include "MetaMethods.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// Tests the worker without its loop: the initial list, and which list files are read at all. tst_printerlistfile
// tests the content of list files.
class TrdDeviceManageTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void metaObject();
    void freshWorker();
    void stopSlotOnlySetsTheFlag();
    void initialListKeepsInfosAndOrder();
    void readsTheFileEachTime();
    void readsAFileOfTheSameSizeAndTime();
    void size_data();
    void size();
    void whatStandsInTheFilesPlace_data();
    void whatStandsInTheFilesPlace();
    void linkToARegularFile();
    void noPermission();
    void writesNothing();
};

namespace {

constexpr int MaximumBytes = 1048576;

QString ListPath()
{
    return QString::fromLatin1(PrinterFolder::PrinterListPath);
}

QByteArray LocalListPath()
{
    return QFile::encodeName(ListPath());
}

int PrinterCount()
{
    return TrdDeviceManage(nullptr).GetPrinterInfo(true).size();
}

void WriteThreePrinters()
{
    const auto name = [](int i) {
        return QStringLiteral("Office_%1").arg(i);
    };
    PrinterFolder::WritePrinterList(
        {PrinterFolder::Printer(name(0)), PrinterFolder::Printer(name(1)), PrinterFolder::Printer(name(2))});
}

} // namespace

void TrdDeviceManageTest::init()
{
    PrinterFolder::Create();
}

void TrdDeviceManageTest::metaObject()
{
    const QMetaObject& meta = TrdDeviceManage::staticMetaObject;
    QCOMPARE(meta.className(), "TrdDeviceManage");
    QCOMPARE(meta.superClass(), &UtilThreadBase::staticMetaObject);
    QCOMPARE(OwnMethods(meta),
             (QStringList{QStringLiteral("signal SgnUpdatePrinterList()"), QStringLiteral("slot SlotTaskStart()"),
                          QStringLiteral("slot SlotThreadQuit()")}));
}

void TrdDeviceManageTest::freshWorker()
{
    QObject parent;
    const auto* worker = new TrdDeviceManage(&parent);
    QCOMPARE(worker->parent(), &parent);
    QCOMPARE(worker->bTaskStarted, false);
    QCOMPARE(worker->bThreadQuit.load(), false);
}

void TrdDeviceManageTest::stopSlotOnlySetsTheFlag()
{
    TrdDeviceManage worker(nullptr);
    worker.SlotThreadQuit();
    QCOMPARE(worker.bThreadQuit.load(), true);
    QCOMPARE(worker.bTaskStarted, false);
}

void TrdDeviceManageTest::initialListKeepsInfosAndOrder()
{
    const stPrinterInfo first =
        PrinterFolder::Printer(QStringLiteral("B"), QStringLiteral("10.0.0.7"), QStringLiteral("socket://10.0.0.7"), 2);
    const stPrinterInfo second = PrinterFolder::Printer(QStringLiteral("A"));
    const QList<stPrinterManager> list = TrdDeviceManage(nullptr).GetInitPrinterList({first, second});
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.at(0).stInfo.strPrinterName, QStringLiteral("B"));
    QCOMPARE(list.at(0).stInfo.enType, QStringLiteral("K4510A"));
    QCOMPARE(list.at(0).stInfo.iConnectType, 2);
    QCOMPARE(list.at(0).stInfo.strPort, QStringLiteral("10.0.0.7"));
    QCOMPARE(list.at(0).stInfo.strURI, QStringLiteral("socket://10.0.0.7"));
    QCOMPARE(list.at(1).stInfo.strPrinterName, QStringLiteral("A"));
    QCOMPARE(Words(list.at(0).stState), Words(stPrinterState()));
    QCOMPARE(Words(list.at(1).stState), Words(stPrinterState()));
    QVERIFY(TrdDeviceManage(nullptr).GetInitPrinterList({}).isEmpty());
}

void TrdDeviceManageTest::readsTheFileEachTime()
{
    TrdDeviceManage worker(nullptr);
    const auto firstName = [&worker] {
        return worker.GetPrinterInfo(false).value(0).strPrinterName;
    };
    PrinterFolder::WritePrinterListText("[Main]\nCount=1\n[printer_0]\nName=one\n");
    QCOMPARE(firstName(), QStringLiteral("one"));
    PrinterFolder::WritePrinterListText("[Main]\nCount=1\n[printer_0]\nName=two\n");
    QCOMPARE(firstName(), QStringLiteral("two"));
    PrinterFolder::RemovePrinterList();
    QCOMPARE(worker.GetPrinterInfo(false).size(), 0);
    PrinterFolder::WritePrinterListText("[Main]\nCount=1\n[printer_0]\nName=three\n");
    QCOMPARE(firstName(), QStringLiteral("three"));
}

void TrdDeviceManageTest::readsAFileOfTheSameSizeAndTime()
{
    TrdDeviceManage worker(nullptr);
    PrinterFolder::WritePrinterListText("[Main]\nCount=1\n");
    QCOMPARE(worker.GetPrinterInfo(false).size(), 1);
    const qint64 modifiedMs = PrinterFolder::ModificationTime(ListPath());
    PrinterFolder::WritePrinterListText("[Main]\nCount=2\n");
    PrinterFolder::SetModificationTime(ListPath(), modifiedMs);
    QCOMPARE(worker.GetPrinterInfo(false).size(), 2);
}

void TrdDeviceManageTest::size_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("count");

    QTest::newRow("1 MiB") << MaximumBytes << 1;
    QTest::newRow("a byte over 1 MiB") << MaximumBytes + 1 << 0;
    QTest::newRow("50 MiB") << 50 * MaximumBytes << 0;
}

void TrdDeviceManageTest::size()
{
    QFETCH(int, bytes);
    const QByteArray text = "[Main]\nCount=1\n[printer_0]\nName=A\n";
    PrinterFolder::WritePrinterListText(text + QByteArray(bytes - text.size(), '\n'));
    QTEST(PrinterCount(), "count");
}

void TrdDeviceManageTest::whatStandsInTheFilesPlace_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"nothing", "directory", "FIFO", "dangling link", "link to a FIFO", "link to itself"}) {
        QTest::newRow(kind) << kind;
    }
}

void TrdDeviceManageTest::whatStandsInTheFilesPlace()
{
    QFETCH(QString, kind);
    const QByteArray fifo = LocalListPath() + ".fifo";
    if (kind == QLatin1String("directory")) {
        QVERIFY(QDir().mkpath(ListPath()));
    } else if (kind == QLatin1String("FIFO")) {
        QCOMPARE(mkfifo(LocalListPath().constData(), 0600), 0);
    } else if (kind == QLatin1String("dangling link")) {
        QCOMPARE(symlink("absent", LocalListPath().constData()), 0);
    } else if (kind == QLatin1String("link to a FIFO")) {
        QCOMPARE(mkfifo(fifo.constData(), 0600), 0);
        QCOMPARE(symlink(fifo.constData(), LocalListPath().constData()), 0);
    } else if (kind == QLatin1String("link to itself")) {
        QCOMPARE(symlink("printerlist.ini", LocalListPath().constData()), 0);
    }
    QCOMPARE(PrinterCount(), 0); // the call must return, too
}

void TrdDeviceManageTest::linkToARegularFile()
{
    WriteThreePrinters();
    const QByteArray target = LocalListPath() + ".real";
    QCOMPARE(rename(LocalListPath().constData(), target.constData()), 0);
    QCOMPARE(symlink(target.constData(), LocalListPath().constData()), 0);
    QCOMPARE(PrinterCount(), 3);
}

void TrdDeviceManageTest::noPermission()
{
    if (geteuid() == 0) {
        QSKIP("root ignores file permissions");
    }
    WriteThreePrinters();
    QCOMPARE(chmod(LocalListPath().constData(), 0200), 0);
    QCOMPARE(PrinterCount(), 0);
    QCOMPARE(chmod(LocalListPath().constData(), 0400), 0);
    QCOMPARE(PrinterCount(), 3);
}

void TrdDeviceManageTest::writesNothing()
{
    WriteThreePrinters();
    const QByteArray content = PrinterFolder::ReadFile(ListPath());
    const qint64 modifiedMs = PrinterFolder::ModificationTime(ListPath());
    QCOMPARE(PrinterCount(), 3);
    QCOMPARE(PrinterFolder::ReadFile(ListPath()), content);
    QCOMPARE(PrinterFolder::ModificationTime(ListPath()), modifiedMs);
    const QDir folder(QString::fromLatin1(PrinterFolder::ConfigurationDirectory));
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("printerlist.ini")});
}

QTEST_GUILESS_MAIN(TrdDeviceManageTest)
#include "tst_trddevicemanage.moc"
