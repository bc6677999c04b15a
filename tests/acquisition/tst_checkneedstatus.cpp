// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "PrinterFolder.h"
#include "StatusWorker.h"

#include <QtTest>

#include <memory>

// Tests which printers are worth a query and how `lpstat` is called for them.
class CheckNeedStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void usbPrinter_data();
    void usbPrinter();
    void networkPrinter_data();
    void networkPrinter();
    void output_data();
    void output();
    void command_data();
    void command();
    void refusedNames_data();
    void refusedNames();
    void commandLength_data();
    void commandLength();
    void outputFile_data();
    void outputFile();
    void outputFileCannotBeMade();
};

namespace {

// An impossible value, so that the test notices if it is not replaced.
constexpr int NoInterval = -4711;
constexpr char FilesAtTheCall[] = "/tmp/files-at-the-call";

void MakeNetworkPrinter(StatusWorker& worker, const QString& name, int status)
{
    worker.stCurrent.stInfo = PrinterFolder::Printer(name, QStringLiteral("10.0.0.7"), QStringLiteral("socket://x"), 2);
    worker.stCurrent.stState.enCurrentStatus = status;
}

QStringList ToolFiles()
{
    return QDir(QString::fromLatin1(PrinterFolder::ToolDirectory)).entryList(QDir::Files | QDir::Hidden);
}

// Leaves the output file of an earlier query that was interrupted.
void LeaveOutput(const QString& fileName)
{
    PrinterFolder::WriteFile(QString::fromLatin1(PrinterFolder::ToolDirectory) + fileName,
                             "printer x now printing x-1");
}

QStringList Lpstat(const QString& name)
{
    return {QStringLiteral("-p"), name};
}

} // namespace

void CheckNeedStatusTest::init()
{
    PrinterFolder::Create();
}

void CheckNeedStatusTest::usbPrinter_data()
{
    QTest::addColumn<int>("status");
    for (int status = 0; status <= 11; ++status) {
        QTest::newRow(qPrintable(QString::number(status))) << status;
    }
}

void CheckNeedStatusTest::usbPrinter()
{
    QFETCH(int, status);
    const FakeCommand lpstat(QStringLiteral("lpstat"));
    StatusWorker worker;
    MakeNetworkPrinter(worker, QStringLiteral("Office"), status);
    worker.stCurrent.stInfo.iConnectType = 1;
    int interval = NoInterval;
    QCOMPARE(worker.CheckNeedStatus(interval), true);
    QCOMPARE(interval, 100);
    QCOMPARE(lpstat.calls().size(), 0);
}

void CheckNeedStatusTest::networkPrinter_data()
{
    QTest::addColumn<int>("connectType");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("interval");

    QTest::newRow("off-line") << 2 << 2 << 10000;
    for (const int status : {0, 1, 4, 5, 6, 7, 8, 9, 10, 11, 12, -1}) {
        QTest::newRow(qPrintable(QStringLiteral("status %1").arg(status))) << 2 << status << 1000;
    }
    for (const int connectType : {0, -1, 3, 2147483647}) {
        QTest::newRow(qPrintable(QStringLiteral("type %1, off-line").arg(connectType))) << connectType << 2 << 10000;
    }
}

void CheckNeedStatusTest::networkPrinter()
{
    QFETCH(int, connectType);
    QFETCH(int, status);
    const FakeCommand lpstat(QStringLiteral("lpstat"), QStringLiteral("echo printing"));
    StatusWorker worker;
    MakeNetworkPrinter(worker, QStringLiteral("Office"), status);
    worker.stCurrent.stInfo.iConnectType = connectType;
    int interval = NoInterval;
    QCOMPARE(worker.CheckNeedStatus(interval), true);
    QTEST(interval, "interval");
    QCOMPARE(lpstat.calls().size(), 0);
}

void CheckNeedStatusTest::output_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<bool>("isPrinting");

    QTest::newRow("printing") << "echo 'printer Office now printing Office-12.  enabled since today'" << true;
    QTest::newRow("idle") << "echo 'printer Office is idle.  enabled since today'" << false;
    QTest::newRow("printing, in Chinese") << "echo '打印机 Office 正在打印 Office-12。'" << true;
    QTest::newRow("idle, in Chinese") << "echo '打印机 Office 目前空闲。'" << false;
    QTest::newRow("without a line end") << "printf printing" << true;
    QTest::newRow("other case") << "echo 'Printing PRINTING'" << false;
    QTest::newRow("within a word") << "echo 'xprintingx'" << true;
    QTest::newRow("in the second line") << "echo idle; echo printing" << false;
    QTest::newRow("after an empty line") << "echo; echo printing" << false;
    QTest::newRow("in the first of two lines") << "echo printing; echo idle" << true;
    QTest::newRow("after a zero byte") << "printf 'idle\\000printing\\n'" << false;
    QTest::newRow("before a zero byte") << "printf 'printing\\000idle\\n'" << true;
    QTest::newRow("far out in a long line") << "printf '%05000d' 0; echo printing" << true;
    QTest::newRow("nothing") << "" << false;
    QTest::newRow("to the other output") << "echo printing >&2" << false;
    QTest::newRow("failed, nothing said") << "exit 1" << false;
    QTest::newRow("failed after its answer") << "echo printing; exit 1" << true;
}

void CheckNeedStatusTest::output()
{
    QFETCH(QString, body);
    QFETCH(bool, isPrinting);
    const FakeCommand lpstat(QStringLiteral("lpstat"), body);
    StatusWorker worker;
    MakeNetworkPrinter(worker, QStringLiteral("Office"), PS_READY);
    int interval = NoInterval;
    QCOMPARE(worker.CheckNeedStatus(interval), isPrinting);
    QCOMPARE(interval, isPrinting ? 1000 : 100);
    QCOMPARE(lpstat.calls(), QList<QStringList>{Lpstat(QStringLiteral("Office"))});
    QCOMPARE(ToolFiles(), QStringList());
}

void CheckNeedStatusTest::command_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"Office_K4510A", "办公室", "with blanks  in it", "A&B", "Off(2)", "a;b|c<d>e", "it's",
                             "#1", "S*r", "W~1", "-d", "100%s"}) {
        QTest::newRow(name) << QString::fromUtf8(name);
    }
}

// Inside double quotes most characters have no special meaning.
void CheckNeedStatusTest::command()
{
    QFETCH(QString, name);
    const FakeCommand lpstat(QStringLiteral("lpstat"), QStringLiteral("echo printing"));
    StatusWorker worker;
    MakeNetworkPrinter(worker, name, PS_READY);
    int interval = NoInterval;
    QCOMPARE(worker.CheckNeedStatus(interval), true);
    QCOMPARE(lpstat.calls(), QList<QStringList>{Lpstat(name)});
}

void CheckNeedStatusTest::refusedNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("dollar sign") << "P$x";
    QTest::newRow("command") << "$(echo x)";
    QTest::newRow("backquote") << "P`echo x`";
    QTest::newRow("backslash") << "P\\x";
    QTest::newRow("double quote") << "P\"x";
    QTest::newRow("line end") << "P\nx";
    QTest::newRow("tabulator") << "P\tx";
    QTest::newRow("escape") << "P\x1Bx";
    QTest::newRow("delete") << "P\x7Fx";
    QTest::newRow("C1 control") << QStringLiteral("P\u0085x");
    QTest::newRow("zero byte") << (QStringLiteral("P") + QChar(0) + QStringLiteral("x"));
}

void CheckNeedStatusTest::refusedNames()
{
    QFETCH(QString, name);
    const FakeCommand lpstat(QStringLiteral("lpstat"), QStringLiteral("echo printing"));
    StatusWorker worker;
    MakeNetworkPrinter(worker, name, PS_READY);
    LeaveOutput(QStringLiteral("printer_-1.tmp"));
    int interval = NoInterval;
    QCOMPARE(worker.CheckNeedStatus(interval), false);
    QCOMPARE(interval, 100);
    QCOMPARE(lpstat.calls().size(), 0);
    QCOMPARE(ToolFiles(), QStringList());
}

void CheckNeedStatusTest::commandLength_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("isRun");
    QTest::newRow("255 bytes") << 255 << true;
    QTest::newRow("256 bytes") << 256 << false;
    QTest::newRow("1000 bytes") << 1000 << false;
}

void CheckNeedStatusTest::commandLength()
{
    QFETCH(int, bytes);
    QFETCH(bool, isRun);
    const int rest = static_cast<int>(qstrlen("lpstat -p \"\"> /opt/tolmar/tolmar-printer-q727/tool/printer_0.tmp"));
    const FakeCommand lpstat(QStringLiteral("lpstat"), QStringLiteral("echo printing"));
    QList<stPrinterManager> list;
    StatusWorker worker;
    worker.Init(0, &list);
    MakeNetworkPrinter(worker, QString(bytes - rest, QLatin1Char('x')), PS_READY);
    LeaveOutput(QStringLiteral("printer_0.tmp"));
    int interval = NoInterval;
    QCOMPARE(worker.CheckNeedStatus(interval), isRun);
    QCOMPARE(lpstat.calls().size(), isRun ? 1 : 0);
    QCOMPARE(ToolFiles(), QStringList());
}

void CheckNeedStatusTest::outputFile_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("before Init") << -1 << QByteArray("printer_-1.tmp\n");
    QTest::newRow("0") << 0 << QByteArray("printer_0.tmp\n");
    QTest::newRow("123") << 123 << QByteArray("printer_123.tmp\n");
}

void CheckNeedStatusTest::outputFile()
{
    QFETCH(int, index);
    const FakeCommand lpstat(
        QStringLiteral("lpstat"),
        QStringLiteral("ls %1 >%2")
            .arg(QString::fromLatin1(PrinterFolder::ToolDirectory), QLatin1String(FilesAtTheCall)));
    QList<stPrinterManager> list;
    StatusWorker worker;
    if (index >= 0) {
        worker.Init(index, &list);
    }
    MakeNetworkPrinter(worker, QStringLiteral("Office"), PS_READY);
    // The query overwrites what an earlier run has left.
    const QString left =
        QString::fromLatin1(PrinterFolder::ToolDirectory) + QStringLiteral("printer_%1.tmp").arg(index);
    PrinterFolder::WriteFile(left, "printing\n");
    int interval = NoInterval;
    QCOMPARE(worker.CheckNeedStatus(interval), false);
    QTEST(PrinterFolder::ReadFile(QString::fromLatin1(FilesAtTheCall)), "file");
    QCOMPARE(ToolFiles(), QStringList());
}

void CheckNeedStatusTest::outputFileCannotBeMade()
{
    PrinterFolder::Remove();
    const FakeCommand lpstat(QStringLiteral("lpstat"), QStringLiteral("echo printing"));
    StatusWorker worker;
    MakeNetworkPrinter(worker, QStringLiteral("Office"), PS_READY);
    int interval = NoInterval;
    QCOMPARE(worker.CheckNeedStatus(interval), false);
    QCOMPARE(interval, 100);
}

QTEST_GUILESS_MAIN(CheckNeedStatusTest)
#include "tst_checkneedstatus.moc"
