// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests how the window shows one record of the shared list, including states that no printer sends.

#include "DesktopMessages.h"
#include "PrinterFolder.h"
#include "TestWindow.h"

#include <QDir>
#include <QProcess>
#include <QTableWidget>
#include <QtTest>

#include <clocale>
#include <limits>
#include <memory>

namespace {

constexpr int StandardRow = 0;
constexpr int QZRow = 1;
constexpr int MarkerRow = 2;
constexpr int PrinterCount = 3;

stPrinterState State(int status, const QList<enErrorStatus>& errors, const QList<enErrorStatus>& warnings)
{
    stPrinterState state;
    state.enCurrentStatus = status;
    state.listError = errors;
    state.listWarning = warnings;
    return state;
}

QString Percentage(TestWindow& window, int row, unsigned long toner)
{
    stPrinterState state;
    state.dwRemainingToner = toner;
    window.setState(row, state);
    window.SlotUpdatePrinterStatus(row);
    return window.row(row).at(2);
}

// Compiles a locale with a decimal comma for the C library, because most machines lack one, and activates it.
bool SwitchToCommaLocale()
{
    QDir().mkpath(QStringLiteral("/tmp/locales"));
    QProcess localedef;
    localedef.start(QStringLiteral("localedef"),
                    {QStringLiteral("-i"), QStringLiteral("de_DE"), QStringLiteral("-f"), QStringLiteral("UTF-8"),
                     QStringLiteral("/tmp/locales/de_DE.UTF-8")});
    localedef.waitForFinished();
    qputenv("LOCPATH", "/tmp/locales");
    return setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr && localeconv()->decimal_point[0] == ',';
}

} // namespace

class StatusDisplayTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void everyStatus_data();
    void everyStatus();
    void warningInEveryStatus_data();
    void warningInEveryStatus();
    void errorInEveryStatus_data();
    void errorInEveryStatus();
    void firstOfSeveral();
    void codesWithSharedTexts_data();
    void codesWithSharedTexts();
    void everyCallAnnounces();
    void reportedCountsAreNotTrusted();
    void iconIsSetAgainWhenClear();
    void onlyTonerAndStatusChange();
    void percentage_data();
    void percentage();
    void percentageInCommaLocaleOfQt();
    void percentageInCommaLocaleOfC();
    void indexOutOfRange_data();
    void indexOutOfRange();
    void rowNotYetThere();

private:
    // The messages for this state. A message of another printer marks their end.
    QList<DesktopMessage> announce(int row, const stPrinterState& state);

    std::unique_ptr<TestWindow> m_window;
};

void StatusDisplayTest::initTestCase()
{
    PrinterFolder::Create();
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(QStringLiteral("三楼K4510A")),
                                     PrinterFolder::Printer(QStringLiteral("J4990E")),
                                     PrinterFolder::Printer(QStringLiteral("Marker"))});
    m_window = std::make_unique<TestWindow>();
    m_window->letWorkersPollOnce();
    // Without a status file each worker's only poll counts as a failure.
    const auto looks = [this]() {
        int count = 0;
        const QList<stPrinterManager> printers = m_window->printers();
        for (const stPrinterManager& printer : printers) {
            count += printer.stState.iFailCount;
        }
        return count;
    };
    QTRY_COMPARE(m_window->table().rowCount(), PrinterCount);
    QTRY_COMPARE(looks(), PrinterCount);
}

void StatusDisplayTest::cleanupTestCase()
{
    m_window.reset();
}

QList<DesktopMessage> StatusDisplayTest::announce(int row, const stPrinterState& state)
{
    ForgetDesktopMessages();
    m_window->setState(row, state);
    m_window->SlotUpdatePrinterStatus(row);
    m_window->setState(MarkerRow, State(PS_READY, {ERR_COOLING}, {}));
    m_window->SlotUpdatePrinterStatus(MarkerRow);
    QList<DesktopMessage> messages;
    const bool isAnswered = QTest::qWaitFor([&messages]() {
        messages = DesktopMessages();
        return !messages.isEmpty() && messages.last().title == QLatin1String("Marker");
    });
    if (!isAnswered) {
        qFatal("the desktop received no message");
    }
    messages.removeLast();
    return messages;
}

void StatusDisplayTest::everyStatus_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::newRow("unknown") << 0 << QStringLiteral("未知");
    QTest::newRow("version mismatch") << 1 << QStringLiteral("数据格式错误或版本不匹配");
    QTest::newRow("off-line") << 2 << QStringLiteral("脱机");
    QTest::newRow("ready") << 3 << QStringLiteral("就绪");
    QTest::newRow("initialize") << 4 << QStringLiteral("初始化");
    QTest::newRow("busy") << 5 << QStringLiteral("忙碌");
    QTest::newRow("cancelling job") << 6 << QStringLiteral("正在取消任务");
    QTest::newRow("error") << 7 << QStringLiteral("错误");
    QTest::newRow("printing") << 8 << QStringLiteral("正在打印");
    QTest::newRow("scanning") << 9 << QStringLiteral("正在扫描");
    QTest::newRow("copying") << 10 << QStringLiteral("正在复印");
    QTest::newRow("reporting") << 11 << QStringLiteral("正在打印报告");
}

void StatusDisplayTest::everyStatus()
{
    QFETCH(const int, status);
    QFETCH(const QString, text);
    QCOMPARE(announce(StandardRow, State(status, {}, {})).size(), 0);
    QCOMPARE(m_window->row(StandardRow).at(3), text);
}

void StatusDisplayTest::warningInEveryStatus_data()
{
    everyStatus_data();
}

void StatusDisplayTest::warningInEveryStatus()
{
    QFETCH(const int, status);
    QFETCH(const QString, text);
    const QList<DesktopMessage> messages = announce(StandardRow, State(status, {}, {ERR_WASTE_TONER_FULL}));
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().title, QStringLiteral("三楼K4510A"));
    QCOMPARE(messages.first().body, QStringLiteral("废粉箱已满"));
    QCOMPARE(messages.first().urgency, 1);
    QCOMPARE(messages.first().icon, QStringLiteral("dialog-warning"));
    QCOMPARE(messages.first().timeoutMs, 3000);
    QCOMPARE(m_window->row(StandardRow).at(3), status == 8 ? QStringLiteral("正在打印(废粉箱已满)") : text);
}

void StatusDisplayTest::errorInEveryStatus_data()
{
    everyStatus_data();
}

void StatusDisplayTest::errorInEveryStatus()
{
    QFETCH(const int, status);
    const QList<DesktopMessage> messages =
        announce(StandardRow, State(status, {ERR_JAM_INSIDE}, {ERR_WASTE_TONER_FULL}));
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().title, QStringLiteral("三楼K4510A"));
    QCOMPARE(messages.first().body, QStringLiteral("设备内卡纸"));
    QCOMPARE(messages.first().urgency, 2);
    QCOMPARE(messages.first().icon, QStringLiteral("dialog-error"));
    QCOMPARE(messages.first().timeoutMs, 3000);
    QCOMPARE(m_window->row(StandardRow).at(3), QStringLiteral("设备内卡纸"));
}

void StatusDisplayTest::firstOfSeveral()
{
    QList<DesktopMessage> messages = announce(StandardRow, State(PS_ERROR, {ERR_JAM_REAR, ERR_FIXER, ERR_COOLING}, {}));
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().body, QStringLiteral("设备后部卡纸"));
    messages = announce(StandardRow, State(PS_PRINTING, {}, {ERR_COOLING, ERR_FIXER}));
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().body, QStringLiteral("设备温度太高"));
    QCOMPARE(m_window->row(StandardRow).at(3), QStringLiteral("正在打印(设备温度太高)"));
}

void StatusDisplayTest::codesWithSharedTexts_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("first row") << 0 << QStringLiteral("错误状态未知");
    QTest::newRow("toner low") << 11 << QStringLiteral("碳粉不足");
    QTest::newRow("toner is running out") << 14 << QStringLiteral("碳粉不足");
    QTest::newRow("with a blank and a number") << 47 << QStringLiteral("系统错误 1302");
    QTest::newRow("last row") << 50 << QStringLiteral("正在打印");
}

void StatusDisplayTest::codesWithSharedTexts()
{
    QFETCH(const int, code);
    QFETCH(const QString, text);
    const auto error = static_cast<enErrorStatus>(code);
    const QList<DesktopMessage> messages = announce(StandardRow, State(PS_READY, {error}, {}));
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().body, text);
    QCOMPARE(m_window->row(StandardRow).at(3), text);
}

// The worker decides whether there is news. The window announces every call.
void StatusDisplayTest::everyCallAnnounces()
{
    const stPrinterState state = State(PS_READY, {}, {ERR_TONER_LOW});
    QCOMPARE(announce(QZRow, state).size(), 1);
    QCOMPARE(announce(QZRow, state).size(), 1);
}

void StatusDisplayTest::reportedCountsAreNotTrusted()
{
    stPrinterState state = State(PS_READY, {}, {});
    state.iNumberOfError = 1;
    state.iNumberOfWarning = 1;
    QCOMPARE(announce(QZRow, state).size(), 0);
    QCOMPARE(m_window->row(QZRow).at(3), QStringLiteral("就绪"));
}

void StatusDisplayTest::iconIsSetAgainWhenClear()
{
    const QSize size(22, 22);
    QPixmap otherPixmap(size);
    otherPixmap.fill(Qt::red);
    const QImage other = otherPixmap.toImage();
    const auto shown = [this, size]() {
        return m_window->trayIcon().icon().pixmap(size).toImage();
    };
    m_window->trayIcon().setIcon(QIcon(otherPixmap));
    m_window->setState(StandardRow, State(PS_READY, {ERR_FIXER}, {}));
    m_window->SlotUpdatePrinterStatus(StandardRow);
    QCOMPARE(shown(), other);
    m_window->setState(StandardRow, State(PS_READY, {}, {ERR_FIXER}));
    m_window->SlotUpdatePrinterStatus(StandardRow);
    QCOMPARE(shown(), other);
    m_window->setState(StandardRow, State(PS_OFFLINE, {}, {}));
    m_window->SlotUpdatePrinterStatus(StandardRow);
    QCOMPARE(shown(), QIcon(QStringLiteral(":/Icon/Resource/Tolmar.png")).pixmap(size).toImage());
}

void StatusDisplayTest::onlyTonerAndStatusChange()
{
    const QStringList otherRow = m_window->row(QZRow);
    const QTableWidgetItem* toner = m_window->table().item(StandardRow, 2);
    const QTableWidgetItem* status = m_window->table().item(StandardRow, 3);
    stPrinterState state = State(PS_COPYING, {}, {});
    state.dwRemainingToner = 42;
    m_window->setState(StandardRow, state);
    m_window->SlotUpdatePrinterStatus(StandardRow);
    QCOMPARE(m_window->row(StandardRow),
             (QStringList{QStringLiteral("三楼K4510A"), QStringLiteral("USB"), QStringLiteral("0.42%"),
                          QStringLiteral("正在复印")}));
    QCOMPARE(m_window->table().item(StandardRow, 2), toner); // the text is replaced, the item is not
    QCOMPARE(m_window->table().item(StandardRow, 3), status);
    QCOMPARE(m_window->row(QZRow), otherRow);
}

void StatusDisplayTest::percentage_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<qulonglong>("toner");
    QTest::addColumn<QString>("text");
    QTest::newRow("standard, nothing") << StandardRow << 0ULL << QStringLiteral("0.00%");
    QTest::newRow("standard, least") << StandardRow << 1ULL << QStringLiteral("0.01%");
    QTest::newRow("standard") << StandardRow << 8750ULL << QStringLiteral("87.50%");
    QTest::newRow("standard, full") << StandardRow << 10000ULL << QStringLiteral("100.00%");
    QTest::newRow("standard, 32 bits") << StandardRow << 4294967296ULL << QStringLiteral("42949672.96%");
    QTest::newRow("QZ, nothing") << QZRow << 0ULL << QStringLiteral("0.00%");
    QTest::newRow("QZ") << QZRow << 87ULL << QStringLiteral("87.00%");
    QTest::newRow("QZ, beyond full") << QZRow << 255ULL << QStringLiteral("255.00%");
}

void StatusDisplayTest::percentage()
{
    QFETCH(const int, row);
    QFETCH(const qulonglong, toner);
    QFETCH(const QString, text);
    QCOMPARE(Percentage(*m_window, row, toner), text);
}

void StatusDisplayTest::percentageInCommaLocaleOfQt()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QString text = Percentage(*m_window, StandardRow, 123456);
    QLocale::setDefault(before);
    QCOMPARE(text, QStringLiteral("1234.56%"));
}

void StatusDisplayTest::percentageInCommaLocaleOfC()
{
    if (!SwitchToCommaLocale()) {
        QSKIP("this machine has no locale with a decimal comma (package locales)");
    }
    const QString text = Percentage(*m_window, StandardRow, 123456);
    setlocale(LC_NUMERIC, "C");
    QCOMPARE(text, QStringLiteral("1234.56%"));
}

void StatusDisplayTest::indexOutOfRange_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("just below") << -1;
    QTest::newRow("just above") << PrinterCount;
    QTest::newRow("least") << std::numeric_limits<int>::min();
    QTest::newRow("greatest") << std::numeric_limits<int>::max();
}

void StatusDisplayTest::indexOutOfRange()
{
    QFETCH(const int, index);
    const QStringList first = m_window->row(0);
    m_window->SlotUpdatePrinterStatus(index);
    m_window->DebugOutputPrinterStatus(index);
    QCOMPARE(m_window->table().rowCount(), PrinterCount);
    QCOMPARE(m_window->row(0), first);
    QCOMPARE(announce(StandardRow, State(PS_READY, {}, {})).size(), 0);
}

// The worker's signal arrives after the list was replaced but before the table is rebuilt.
void StatusDisplayTest::rowNotYetThere()
{
    m_window->table().setRowCount(QZRow);
    m_window->setState(QZRow, State(PS_READY, {ERR_FIXER}, {}));
    m_window->SlotUpdatePrinterStatus(QZRow);
    QCOMPARE(m_window->table().rowCount(), QZRow);
    m_window->SlotUpdatePrinterList();
    QCOMPARE(m_window->table().rowCount(), PrinterCount);
}

QTEST_MAIN(StatusDisplayTest)
#include "tst_statusdisplay.moc"
