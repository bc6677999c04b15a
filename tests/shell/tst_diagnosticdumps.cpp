// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilLog.h"
#include "LocalCodec.h"
#include "LogFolder.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "TestWindow.h"

#include <QRegularExpression>
#include <QTableWidget>
#include <QtTest>

#include <memory>

namespace {

const QString c_chineseName = QStringLiteral("三楼 K4510A");
const QString c_formatName = QStringLiteral("50%s%n%d");

struct LogLine
{
    QString source;
    int sourceLine = 0;
    QString function;
    QString message;
};

QList<stPrinterInfo> ListedPrinters()
{
    stPrinterInfo networkPrinter = PrinterFolder::Printer(c_formatName, QStringLiteral("地址%d"), QString(), 2);
    networkPrinter.enType = QStringLiteral("型号%s");
    return {PrinterFolder::Printer(c_chineseName, QStringLiteral("usb0"), QStringLiteral("usb://secret")),
            networkPrinter};
}

QStringList Messages(const QVector<LogLine>& lines)
{
    QStringList messages;
    for (const LogLine& line : lines) {
        messages.append(line.message);
    }
    return messages;
}

} // namespace

class DiagnosticDumpsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    void printers();
    void noPrinters();
    void freshState();
    void fullState();
    void latin1Texts();
    void formatCharactersInName();
    void listLengthsNotReportedCounts();
    void lineNumbers();
    void lastStepOfTheSlots();
    void localEncoding();
    void switchedOff();
    void recordThatIsShown();
    void indexOutOfRange();

private:
    // Returns and removes what the log contains.
    static QVector<LogLine> takeLog();
    QVector<LogLine> dumpStatus(int row, const stPrinterState& state);

    std::unique_ptr<TestWindow> m_window;
};

// One window for all tests. Its workers poll once and then leave the list and the log alone.
void DiagnosticDumpsTest::initTestCase()
{
    PrinterFolder::Create();
    PrinterFolder::WritePrinterList(ListedPrinters());
    m_window = std::make_unique<TestWindow>();
    m_window->letWorkersPollOnce();
    QTRY_COMPARE(m_window->table().rowCount(), 2);
    QTRY_COMPARE(m_window->printers().at(0).stState.iFailCount, 1);
    QTRY_COMPARE(m_window->printers().at(1).stState.iFailCount, 1);
    SetLogEnable(true);
}

void DiagnosticDumpsTest::cleanupTestCase()
{
    SetLogEnable(false);
    m_window.reset();
}

void DiagnosticDumpsTest::cleanup()
{
    takeLog();
}

QVector<LogLine> DiagnosticDumpsTest::takeLog()
{
    QVector<LogLine> lines;
    const QRegularExpression pattern(QStringLiteral(R"(^\((\S+)@(\d+) (\S+)\) (.*)$)"));
    const QList<QByteArray> texts = LogFolder::Lines();
    for (const QByteArray& text : texts) {
        const QRegularExpressionMatch match = pattern.match(QString::fromLocal8Bit(LogFolder::WithoutTime(text)));
        lines.append({match.captured(1), match.captured(2).toInt(), match.captured(3), match.captured(4)});
    }
    QFile::remove(LogFolder::Path(LogFolder::Names().value(0)));
    return lines;
}

QVector<LogLine> DiagnosticDumpsTest::dumpStatus(int row, const stPrinterState& state)
{
    m_window->setState(row, state);
    m_window->DebugOutputPrinterStatus(row);
    return takeLog();
}

void DiagnosticDumpsTest::printers()
{
    m_window->DebugOutputPrinterInfo();
    const QVector<LogLine> lines = takeLog();
    QCOMPARE(Messages(lines),
             (QStringList{
                 QStringLiteral("printer number=2"),
                 QStringLiteral("printer[0] 三楼 K4510A=usb0"),
                 QStringLiteral("三楼 K4510A: enType=K4510A"),
                 QStringLiteral("三楼 K4510A: iConnectType=1"),
                 QStringLiteral("printer[1] 50%s%n%d=地址%d"),
                 QStringLiteral("50%s%n%d: enType=型号%s"),
                 QStringLiteral("50%s%n%d: iConnectType=2"),
             }));
    for (const LogLine& line : lines) {
        QCOMPARE(line.source, QStringLiteral("brelprintertoolwidget"));
        QCOMPARE(line.function, QStringLiteral("DebugOutputPrinterInfo"));
    }
}

void DiagnosticDumpsTest::noPrinters()
{
    cleanupTestCase();
    PrinterFolder::RemovePrinterList();
    {
        TestWindow window;
        SetLogEnable(true);
        window.DebugOutputPrinterInfo();
        QCOMPARE(Messages(takeLog()), QStringList{QStringLiteral("printer number=0")});
        SetLogEnable(false);
    }
    initTestCase();
}

void DiagnosticDumpsTest::freshState()
{
    QCOMPARE(Messages(dumpStatus(0, stPrinterState())),
             (QStringList{
                 QStringLiteral("printer[0]=三楼 K4510A"),
                 QStringLiteral("三楼 K4510A: strPrinterSerialNumber="),
                 QStringLiteral("三楼 K4510A: enCurrentStatus=2"),
                 QStringLiteral("三楼 K4510A: strFWVersion="),
                 QStringLiteral("三楼 K4510A: strVenderName="),
                 QStringLiteral("三楼 K4510A: strProductName="),
                 QStringLiteral("三楼 K4510A: iNumberOfError=0"),
                 QStringLiteral("三楼 K4510A: iNumberOfWarning=0"),
                 QStringLiteral("三楼 K4510A: error code="),
                 QStringLiteral("三楼 K4510A: warning code="),
                 QStringLiteral("三楼 K4510A: strSupplySerialNumber="),
                 QStringLiteral("三楼 K4510A: enSpplyType=0"),
                 QStringLiteral("三楼 K4510A: dwRemainingToner=0"),
                 QStringLiteral("三楼 K4510A: dwWasteToner=0"),
                 QStringLiteral("三楼 K4510A: dwOPCRotation=0"),
                 QStringLiteral("三楼 K4510A: dwNumberOfPages=0"),
                 QStringLiteral("三楼 K4510A: dwNumberOfPrint=0"),
                 QStringLiteral("三楼 K4510A: dwPrintDotsCount=0"),
                 QStringLiteral("三楼 K4510A: dwPrinterNumOfPages=0"),
                 QStringLiteral("三楼 K4510A: dwPrinterNumOfPrint=0"),
             }));
}

void DiagnosticDumpsTest::fullState()
{
    QCOMPARE(Messages(dumpStatus(1, FilledState())),
             (QStringList{
                 QStringLiteral("printer[1]=50%s%n%d"),
                 QStringLiteral("50%s%n%d: strPrinterSerialNumber=old serial"),
                 QStringLiteral("50%s%n%d: enCurrentStatus=3"),
                 QStringLiteral("50%s%n%d: strFWVersion=old firmware"),
                 QStringLiteral("50%s%n%d: strVenderName=old vendor"),
                 QStringLiteral("50%s%n%d: strProductName=old product"),
                 QStringLiteral("50%s%n%d: iNumberOfError=2"),
                 QStringLiteral("50%s%n%d: iNumberOfWarning=1"),
                 QStringLiteral("50%s%n%d: error code=6,30"),
                 QStringLiteral("50%s%n%d: warning code=11"),
                 QStringLiteral("50%s%n%d: strSupplySerialNumber=old supply"),
                 QStringLiteral("50%s%n%d: enSpplyType=-5"),
                 QStringLiteral("50%s%n%d: dwRemainingToner=4294967296"),
                 QStringLiteral("50%s%n%d: dwWasteToner=8589934591"),
                 QStringLiteral("50%s%n%d: dwOPCRotation=20015998343868"),
                 QStringLiteral("50%s%n%d: dwNumberOfPages=9223372036854775807"),
                 QStringLiteral("50%s%n%d: dwNumberOfPrint=9223372036854775808"),
                 QStringLiteral("50%s%n%d: dwPrintDotsCount=18446744069414584320"),
                 QStringLiteral("50%s%n%d: dwPrinterNumOfPages=18364758544493064720"),
                 QStringLiteral("50%s%n%d: dwPrinterNumOfPrint=18446744073709551615"),
             }));
}

// Characters outside Latin-1 are lost in these five texts and in no others.
void DiagnosticDumpsTest::latin1Texts()
{
    stPrinterState state;
    state.strPrinterSerialNumber = QStringLiteral("序A");
    state.strFWVersion = QStringLiteral("版é");
    state.strVenderName = QStringLiteral("厂商ü%s");
    state.strProductName = QStringLiteral("产品");
    state.strSupplySerialNumber = QStringLiteral("碳粉ß");
    const QStringList messages = Messages(dumpStatus(0, state));
    QCOMPARE(messages.at(0), QStringLiteral("printer[0]=三楼 K4510A"));
    QCOMPARE(messages.at(1), QStringLiteral("三楼 K4510A: strPrinterSerialNumber=?A"));
    QCOMPARE(messages.at(3), QStringLiteral("三楼 K4510A: strFWVersion=?é"));
    QCOMPARE(messages.at(4), QStringLiteral("三楼 K4510A: strVenderName=??ü%s"));
    QCOMPARE(messages.at(5), QStringLiteral("三楼 K4510A: strProductName=??"));
    QCOMPARE(messages.at(10), QStringLiteral("三楼 K4510A: strSupplySerialNumber=??ß"));
}

void DiagnosticDumpsTest::formatCharactersInName()
{
    const QVector<LogLine> lines = dumpStatus(1, stPrinterState());
    QCOMPARE(lines.size(), 20);
    QCOMPARE(lines.first().message, QStringLiteral("printer[1]=50%s%n%d"));
    for (int i = 1; i < lines.size(); ++i) {
        QVERIFY(lines.at(i).message.startsWith(QStringLiteral("50%s%n%d: ")));
    }
}

void DiagnosticDumpsTest::listLengthsNotReportedCounts()
{
    stPrinterState state;
    state.iNumberOfError = 3;
    state.iNumberOfWarning = 5;
    state.listError = {ERR_FIXER, ERR_COOLING};
    const QStringList messages = Messages(dumpStatus(0, state));
    QCOMPARE(messages.at(6), QStringLiteral("三楼 K4510A: iNumberOfError=2"));
    QCOMPARE(messages.at(7), QStringLiteral("三楼 K4510A: iNumberOfWarning=0"));
}

void DiagnosticDumpsTest::lineNumbers()
{
    const QVector<LogLine> lines = dumpStatus(0, stPrinterState());
    QCOMPARE(lines.size(), 20);
    int last = 0;
    for (const LogLine& line : lines) {
        QCOMPARE(line.source, QStringLiteral("brelprintertoolwidget"));
        QCOMPARE(line.function, QStringLiteral("DebugOutputPrinterStatus"));
        QVERIFY(line.sourceLine > last); // each call has its own number
        last = line.sourceLine;
    }
}

void DiagnosticDumpsTest::lastStepOfTheSlots()
{
    QVector<bool> wasLogEmpty;
    QObject observer; // ends the connections with the test
    const auto look = [&wasLogEmpty] {
        wasLogEmpty.append(LogFolder::Names().isEmpty());
    };
    connect(m_window.get(), &BrelPrinterToolWidget::SgnStatusThreadStart, &observer, look);
    connect(&m_window->table(), &QTableWidget::itemChanged, &observer, look);
    // One more printer starts one more worker.
    PrinterFolder::WritePrinterList(ListedPrinters() << PrinterFolder::Printer(QStringLiteral("another")));
    QTRY_COMPARE(m_window->table().rowCount(), 3);
    QCOMPARE(wasLogEmpty, QVector<bool>(3 * 4 + 1, true)); // cells of all rows, and one start
    QTRY_COMPARE(m_window->printers().at(2).stState.iFailCount, 1);
    PrinterFolder::WritePrinterList(ListedPrinters());
    QTRY_COMPARE(m_window->table().rowCount(), 2);
    takeLog();

    m_window->SlotUpdatePrinterList();
    QStringList messages = Messages(takeLog());
    QCOMPARE(messages.size(), 7);
    QCOMPARE(messages.first(), QStringLiteral("printer number=2"));
    stPrinterState state;
    state.enCurrentStatus = PS_READY;
    state.dwRemainingToner = 5000;
    m_window->setState(1, state);
    wasLogEmpty.clear();
    m_window->SlotUpdatePrinterStatus(1);
    QCOMPARE(wasLogEmpty, (QVector<bool>{true, true})); // toner and status
    messages = Messages(takeLog());
    QCOMPARE(messages.size(), 20);
    QCOMPARE(messages.first(), QStringLiteral("printer[1]=50%s%n%d"));
}

// In GBK the second byte of a Chinese character can equal an ASCII letter.
void DiagnosticDumpsTest::localEncoding()
{
    auto gbk = std::make_unique<LocalCodec>("GBK");
    if (!gbk->isUsed()) {
        QSKIP("The local encoding is always UTF-8 with Qt 6");
    }
    m_window->DebugOutputPrinterInfo();
    m_window->DebugOutputPrinterStatus(0);
    const QByteArray bytes = LogFolder::Lines().join('\n');
    const QStringList messages = Messages(takeLog());
    gbk.reset();
    QVERIFY(bytes.contains("printer[0] \xC8\xFD\xC2\xA5 K4510A=usb0"));
    QCOMPARE(messages.size(), 7 + 20);
    QCOMPARE(messages.at(1), QStringLiteral("printer[0] 三楼 K4510A=usb0"));
    QCOMPARE(messages.at(4), QStringLiteral("printer[1] 50%s%n%d=地址%d"));
    QCOMPARE(messages.at(7), QStringLiteral("printer[0]=三楼 K4510A"));
    for (int i = 8; i < messages.size(); ++i) {
        QVERIFY(messages.at(i).startsWith(QStringLiteral("三楼 K4510A: ")));
    }
}

void DiagnosticDumpsTest::switchedOff()
{
    auto codec = std::make_unique<LocalCodec>("UTF-8");
    const bool isCounting = codec->isUsed();
    SetLogEnable(false);
    m_window->SlotUpdatePrinterList();
    m_window->SlotUpdatePrinterStatus(0);
    m_window->DebugOutputPrinterInfo();
    m_window->DebugOutputPrinterStatus(0);
    const int conversionsWhileOff = codec->conversions();
    const QStringList filesWhileOff = LogFolder::Names();
    SetLogEnable(true);
    m_window->DebugOutputPrinterStatus(0);
    const int conversions = codec->conversions();
    codec.reset();
    QCOMPARE(conversionsWhileOff, 0);
    QCOMPARE(filesWhileOff, QStringList());
    QVERIFY(conversions >= 20 || !isCounting); // proves that the codec counts
}

// A worker may write its next state while the window still shows the previous one.
void DiagnosticDumpsTest::recordThatIsShown()
{
    stPrinterState next;
    next.enCurrentStatus = PS_BUSY;
    next.dwRemainingToner = 1200;
    QObject observer;
    connect(&m_window->table(), &QTableWidget::itemChanged, &observer, [&] { m_window->setState(1, next); });
    stPrinterState shown;
    shown.enCurrentStatus = PS_PRINTING;
    shown.dwRemainingToner = 3400;
    m_window->setState(1, shown);
    m_window->SlotUpdatePrinterStatus(1);
    QCOMPARE(m_window->printers().at(1).stState.enCurrentStatus, static_cast<int>(PS_BUSY));
    QCOMPARE(m_window->row(1).at(2), QStringLiteral("34.00%"));
    const QStringList messages = Messages(takeLog());
    QCOMPARE(messages.at(2), QStringLiteral("50%s%n%d: enCurrentStatus=8"));
    QCOMPARE(messages.at(12), QStringLiteral("50%s%n%d: dwRemainingToner=3400"));
}

void DiagnosticDumpsTest::indexOutOfRange()
{
    m_window->DebugOutputPrinterStatus(-1);
    m_window->DebugOutputPrinterStatus(2);
    QVERIFY(takeLog().isEmpty());
}

QTEST_MAIN(DiagnosticDumpsTest)
#include "tst_diagnosticdumps.moc"
