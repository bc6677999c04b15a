// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests the table as the driver package's files fill it, through the workers.

#include "DesktopMessages.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"
#include "TestWindow.h"

#include <QTableWidget>
#include <QtTest>

namespace {

struct StatusCase
{
    QString name; // of the printer
    QByteArray reply;
    QString tonerText;
    QString statusText;
    QString messageText; // empty for no message
    int urgency; // 1 warning, 2 error
};

QVector<StatusCase> StatusCases()
{
    const QString toner = QStringLiteral("碳粉不足");
    const QString cover = QStringLiteral("前盖已打开");
    const QString cartridge = QStringLiteral("没有检测到碳粉盒");
    return {
        {QStringLiteral("ready"), StandardBytes(0, 8750), QStringLiteral("87.50%"), QStringLiteral("就绪"), {}, 0},
        {QStringLiteral("initialize"), StandardBytes(1, 1), QStringLiteral("0.01%"), QStringLiteral("初始化"), {}, 0},
        {QStringLiteral("busy"), StandardBytes(2, 10000), QStringLiteral("100.00%"), QStringLiteral("忙碌"), {}, 0},
        {QStringLiteral("unknown4"), StandardBytes(4, 5), QStringLiteral("0.05%"), QStringLiteral("未知"), {}, 0},
        {QStringLiteral("unknown200"), StandardBytes(200, 10), QStringLiteral("0.10%"), QStringLiteral("未知"), {}, 0},
        {QStringLiteral("printing"),
         StandardBytes(16, 100),
         QStringLiteral("1.00%"),
         QStringLiteral("正在打印"),
         {},
         0},
        {QStringLiteral("scanning"),
         StandardBytes(17, 999),
         QStringLiteral("9.99%"),
         QStringLiteral("正在扫描"),
         {},
         0},
        {QStringLiteral("copying"),
         StandardBytes(18, 65535),
         QStringLiteral("655.35%"),
         QStringLiteral("正在复印"),
         {},
         0},
        {QStringLiteral("reporting"),
         StandardBytes(19, 0),
         QStringLiteral("0.00%"),
         QStringLiteral("正在打印报告"),
         {},
         0},
        {QStringLiteral("one error"), StandardBytes(RawReady, 100, {FrontCoverOpen}), QStringLiteral("1.00%"), cover,
         cover, 2},
        {QStringLiteral("two errors"), StandardBytes(RawReady, 100, {NoCartridge, FrontCoverOpen}),
         QStringLiteral("1.00%"), cartridge, cartridge, 2},
        {QStringLiteral("error beside warning"), StandardBytes(RawPrinting, 100, {FrontCoverOpen}, {TonerLow}),
         QStringLiteral("1.00%"), cover, cover, 2},
        {QStringLiteral("warning while ready"), StandardBytes(RawReady, 100, {}, {TonerLow, NoCartridge}),
         QStringLiteral("1.00%"), QStringLiteral("就绪"), toner, 1},
        {QStringLiteral("warning while printing"), StandardBytes(RawPrinting, 100, {}, {TonerLow, NoCartridge}),
         QStringLiteral("1.00%"), QStringLiteral("正在打印(碳粉不足)"), toner, 1},
        {QStringLiteral("J4990E ready"),
         QZItems({QZMachineState(1), QZToner(87)}),
         QStringLiteral("87.00%"),
         QStringLiteral("就绪"),
         {},
         0},
        {QStringLiteral("J4990E printing, toner low"), QZItems({QZJobState(2), QZToner(9), QZWarning(TonerLow)}),
         QStringLiteral("9.00%"), QStringLiteral("正在打印(碳粉不足)"), toner, 1},
        {QStringLiteral("J4990E 前盖"), QZItems({QZMachineState(3), QZToner(100), QZError(FrontCoverOpen)}),
         QStringLiteral("100.00%"), cover, cover, 2},
    };
}

} // namespace

class PrinterTableTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void emptyList();
    void nameAndConnection_data();
    void nameAndConnection();
    void statusesAndMessages();
    void statusChangesLive();
    void cancellingRunsCancelOnce();
    void listChange();
    void listVanishes();
    void rebuiltRowsStartOffline();
};

void PrinterTableTest::init()
{
    PrinterFolder::Create();
    ForgetDesktopMessages();
}

void PrinterTableTest::emptyList()
{
    PrinterFolder::WritePrinterList({});
    TestWindow window;
    window.SlotUpdatePrinterList();
    QCOMPARE(window.table().rowCount(), 0);
    QCOMPARE(window.startedWorkers(), 0);
}

void PrinterTableTest::nameAndConnection_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("connectType");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("connection");
    const QString address = QStringLiteral("192.168.1.20");
    QTest::newRow("USB") << QStringLiteral("K4510A") << 1 << QStringLiteral("usb001") << QStringLiteral("USB");
    QTest::newRow("network") << QStringLiteral("K4510A") << 2 << address << QStringLiteral("网络(192.168.1.20)");
    QTest::newRow("type 0") << QStringLiteral("K4510A") << 0 << address << QStringLiteral("网络(192.168.1.20)");
    QTest::newRow("type -1") << QStringLiteral("K4510A") << -1 << address << QStringLiteral("网络(192.168.1.20)");
    QTest::newRow("no address") << QStringLiteral("K4510A") << 2 << QString() << QStringLiteral("网络()");
    QTest::newRow("Chinese name") << QStringLiteral("三楼 打印机") << 1 << QString() << QStringLiteral("USB");
    QTest::newRow("per cent signs") << QStringLiteral("50%s%n") << 3 << QStringLiteral("%d")
                                    << QStringLiteral("网络(%d)");
}

void PrinterTableTest::nameAndConnection()
{
    QFETCH(const QString, name);
    QFETCH(const int, connectType);
    QFETCH(const QString, port);
    QFETCH(const QString, connection);
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(name, port, QStringLiteral("usb://Tolmar"), connectType)});
    const TestWindow window;
    QTRY_COMPARE(window.table().rowCount(), 1);
    QCOMPARE(window.row(0), (QStringList{name, connection, QStringLiteral("0.00%"), QStringLiteral("脱机")}));
}

void PrinterTableTest::statusesAndMessages()
{
    const QVector<StatusCase> cases = StatusCases();
    QList<stPrinterInfo> printers;
    QMap<QString, StatusCase> announced;
    for (const StatusCase& printer : cases) {
        printers.append(PrinterFolder::Printer(printer.name));
        PrinterFolder::WriteStatusFile(printer.name, printer.reply);
        if (!printer.messageText.isEmpty()) {
            announced.insert(printer.name, printer);
        }
    }
    PrinterFolder::WritePrinterList(printers);
    const TestWindow window;
    QTRY_COMPARE(window.table().rowCount(), cases.size());
    for (int row = 0; row < cases.size(); ++row) {
        const StatusCase& printer = cases.at(row);
        QTRY_COMPARE(window.row(row),
                     (QStringList{printer.name, QStringLiteral("USB"), printer.tonerText, printer.statusText}));
    }
    QTRY_COMPARE(DesktopMessages().size(), announced.size());
    // Two further cycles of the workers bring no change, so no message.
    QTest::qWait(2200);
    QCOMPARE(DesktopMessages().size(), announced.size());
    const QList<DesktopMessage> messages = DesktopMessages();
    for (const DesktopMessage& message : messages) {
        QVERIFY2(announced.contains(message.title), qPrintable(message.title));
        const StatusCase expected = announced.take(message.title);
        QCOMPARE(message.body, expected.messageText);
        QCOMPARE(message.urgency, expected.urgency);
        QCOMPARE(message.timeoutMs, 3000);
        QCOMPARE(message.icon,
                 expected.urgency == 2 ? QStringLiteral("dialog-error") : QStringLiteral("dialog-warning"));
        QCOMPARE(message.app, QStringLiteral("tst_printertable"));
    }
}

void PrinterTableTest::statusChangesLive()
{
    const QString name = QStringLiteral("PrnA");
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(name)});
    PrinterFolder::WriteStatusFile(name, StandardBytes(RawReady, 5000));
    const TestWindow window;
    const auto toner = [&window]() {
        return window.row(0).at(2);
    };
    const auto status = [&window]() {
        return window.row(0).at(3);
    };
    QTRY_COMPARE(window.table().rowCount(), 1);
    QTRY_COMPARE(status(), QStringLiteral("就绪"));
    QCOMPARE(toner(), QStringLiteral("50.00%"));
    PrinterFolder::WriteStatusFile(name, StandardBytes(RawPrinting, 4900, {}, {TonerLow}));
    QTRY_COMPARE(status(), QStringLiteral("正在打印(碳粉不足)"));
    QCOMPARE(toner(), QStringLiteral("49.00%"));
    PrinterFolder::WriteStatusFile(name, StandardBytes(RawPrinting, 4900, {NoCartridge}));
    QTRY_COMPARE(status(), QStringLiteral("没有检测到碳粉盒"));
    PrinterFolder::WriteStatusFile(name, StandardBytes(RawReady, 4900));
    QTRY_COMPARE(status(), QStringLiteral("就绪"));
    QTRY_COMPARE(DesktopMessages().size(), 2);
    QCOMPARE(DesktopMessages().at(0).body, QStringLiteral("碳粉不足"));
    QCOMPARE(DesktopMessages().at(1).body, QStringLiteral("没有检测到碳粉盒"));
}

void PrinterTableTest::cancellingRunsCancelOnce()
{
    const FakeCommand cancel(QStringLiteral("cancel"));
    const QString name = QStringLiteral("PrnA");
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(name)});
    PrinterFolder::WriteStatusFile(name, StandardBytes(3, 5000));
    const TestWindow window;
    QTRY_COMPARE(window.table().rowCount(), 1);
    QTRY_COMPARE(window.row(0).at(3), QStringLiteral("正在取消任务"));
    PrinterFolder::WriteStatusFile(name, StandardBytes(3, 4000));
    QTRY_COMPARE(window.row(0).at(2), QStringLiteral("40.00%"));
    QCOMPARE(cancel.calls(), (QList<QStringList>{{name}}));
}

void PrinterTableTest::listChange()
{
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(QStringLiteral("PrnA"))});
    const TestWindow window;
    QTRY_COMPARE(window.table().rowCount(), 1);
    PrinterFolder::WritePrinterList(
        {PrinterFolder::Printer(QStringLiteral("PrnB")), PrinterFolder::Printer(QStringLiteral("PrnA"))});
    QTRY_COMPARE(window.table().rowCount(), 2);
    QCOMPARE(window.row(0).constFirst(), QStringLiteral("PrnB"));
    QCOMPARE(window.row(1).constFirst(), QStringLiteral("PrnA"));
}

void PrinterTableTest::listVanishes()
{
    PrinterFolder::WritePrinterList(
        {PrinterFolder::Printer(QStringLiteral("PrnA")), PrinterFolder::Printer(QStringLiteral("PrnB"))});
    const TestWindow window;
    QTRY_COMPARE(window.table().rowCount(), 2);
    PrinterFolder::RemovePrinterList();
    QTRY_COMPARE(window.table().rowCount(), 0);
    QCOMPARE(window.startedWorkers(), 2);
}

// The rows ignore what is known of a printer. Only its worker's next change fills the row again.
void PrinterTableTest::rebuiltRowsStartOffline()
{
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(QStringLiteral("PrnA"))});
    PrinterFolder::WriteStatusFile(QStringLiteral("PrnA"), StandardBytes(RawPrinting, 5000));
    TestWindow window;
    QTRY_COMPARE(window.table().rowCount(), 1);
    QTRY_COMPARE(window.row(0).at(3), QStringLiteral("正在打印"));
    window.SlotUpdatePrinterList();
    QCOMPARE(
        window.row(0),
        (QStringList{QStringLiteral("PrnA"), QStringLiteral("USB"), QStringLiteral("0.00%"), QStringLiteral("脱机")}));
}

QTEST_MAIN(PrinterTableTest)
#include "tst_printertable.moc"
