// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "records/PrinterRecords.h"
#include "texts/UtilLanguageCtrl.h"

#include <QtTest>

#include <array>
#include <type_traits>

// Tests every text that users see, to the character, in both languages.
class UtilLanguageCtrlTest : public QObject
{
    Q_OBJECT

private slots:
    void statusNames_data();
    void statusNames();
    void errorDescriptions_data();
    void errorDescriptions();
    void errorSolutions_data();
    void errorSolutions();
    void emptyRows();
    void statusOfNewPrinter();
    void sharedTexts();
};

namespace {

struct Texts
{
    const char* english;
    const char* chinese; // UTF-8
};

static_assert(std::is_same_v<decltype(c_strStatusLanguageText), const QString[13][2]>, "status value, language");
static_assert(std::is_same_v<decltype(c_strErrorDescText), const QString[51][2]>, "condition, language");
static_assert(std::is_same_v<decltype(c_strErrorSolutionText), const QString[51][2]>, "condition, language");

constexpr std::array<Texts, 13> c_statusNames{{
    {"Unknown", "未知"},
    {"Version mismatch", "数据格式错误或版本不匹配"},
    {"Off-line", "脱机"},
    {"Ready", "就绪"},
    {"Initialize", "初始化"},
    {"Busy", "忙碌"},
    {"Canceling job", "正在取消任务"},
    {"Error", "错误"},
    {"Printing", "正在打印"},
    {"Scanning", "正在扫描"},
    {"Copying", "正在复印"},
    {"Reporting", "正在打印报告"},
    {"", ""},
}};

constexpr std::array<Texts, 51> c_errorDescriptions{{
    {"Unknown error status", "错误状态未知"},
    {"Fixer error", "定影器错误"},
    {"Laser damage", "激光损坏"},
    {"No scanner detected", "未检测到扫描仪"},
    {"Printer breakdown", "打印机故障"},
    {"High temperature printer", "打印机温度较高"},
    {"Front cover open", "前盖已打开"},
    {"Cartridge with an unsupported serial number inserted", "插入了不支持的序列号的碳粉盒"},
    {"Printer and cartridge do not match", "打印机和碳粉盒不匹配"},
    {"Toner cartridge is invalid", "碳粉盒无效"},
    {"Cartridge error", "碳粉盒错误"},
    {"Toner low", "碳粉不足"},
    {"Toner empty, low quality", "碳粉已用完，继续打印将影响质量"},
    {"Toner empty, replace cartridge", "碳粉已用完，请更换碳粉盒"},
    {"Toner is running out", "碳粉不足"},
    {"Cartridge will be full", "碳粉盒寿命将要耗尽"},
    {"Cartridge's life is full", "碳粉盒寿命已耗尽"},
    {"No toner cartridge is placed", "没有检测到碳粉盒"},
    {"The waste toner will be full", "废粉箱将满"},
    {"The waste toner full", "废粉箱已满"},
    {"Cartridge printing paper near the upper limit", "碳粉盒打印页数将达到极限"},
    {"Cartridge prints page limit reached", "打印页数已达到极限"},
    {"The printer will exceed the design life!", "本机将要超过设计寿命！"},
    {"The printer has exceeded the design life!", "本机已超过设计寿命！"},
    {"Printer memory overflow", "设备内存不足"},
    {"Cooling", "设备温度太高"},
    {"ADF paper jam", "ADF卡纸"},
    {"ADF no paper", "ADF中无纸"},
    {"ADF feed failed", "ADF抽纸失败"},
    {"Invalid setting error", "设置无效"},
    {"Paper tray is empty", "纸盘中无纸"},
    {"Manual feeder does not put paper", "手动进纸器中无纸"},
    {"Manual feeder stop", "手动进纸器异常"},
    {"Tray does not match", "纸张来源不匹配"},
    {"Paper jam inside", "设备内卡纸"},
    {"Paper jam in tray", "纸盒内卡纸"},
    {"Paper jam rear", "设备后部卡纸"},
    {"Paper size does not match", "纸张尺寸不匹配"},
    {"Initial setup error", "初始设置错误"},
    {"Tablet scan error", "平板扫描出错"},
    {"ADF scan without paper", "ADF无纸"},
    {"File size exceeds limit", "文件大小超过限制"},
    {"Printer breakdown", "打印机故障"},
    {"IP settings error", "IP设置错误"},
    {"IP conflict", "IP地址冲突"},
    {"Authentication failed", "身份识别失败"},
    {"Authentication Timeout", "打印用户已失效"},
    {"ADC fail", "系统错误 1302"},
    {"24Vmos breakdown", "系统错误 1303"},
    {"netsec on", "违规外连安全防护已开启"},
    {"Printing", "正在打印"},
}};

constexpr std::array<Texts, 51> c_errorSolutions{{
    {"", ""},
    {"Restart/contact service", "重启/联系客服"},
    {"Restart/contact service", "重启/联系客服"},
    {"Restart/contact service", "重启/联系客服"},
    {"Restart/contact service", "重启/联系客服"},
    {"Stop Printing/Shut Down Waiting for Cooling/Contacting service", "停止打印/关机等待冷却/联系客服"},
    {"Close the front cover", "关闭前盖板"},
    {"Please check the toner cartridge", "请检查碳粉盒"},
    {"Please check the toner cartridge", "请检查碳粉盒"},
    {"Please check the toner cartridge", "请检查碳粉盒"},
    {"Please check the toner cartridge", "请检查碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"Replace the toner cartridge", "请更换碳粉盒"},
    {"", ""},
    {"Contact service", "联系客服"},
    {"Restart/contact service", "重启/联系客服"},
    {"Waiting for cooling", "请等待冷却"},
    {"Please pull out the paper", "请拉出纸张"},
    {"Please insert the paper", "请插入文稿"},
    {"Check ADF", "检查ADF"},
    {"Re-setting", "重新进行设置"},
    {"Please insert the paper", "请插入文稿"},
    {"Check the manual feeder", "请检查手动进纸器"},
    {"Please send paper from manual feeder", "请从手动进纸器送纸"},
    {"Insert tray", "插入纸盘"},
    {"Pull out the paper", "请拉出纸张"},
    {"Pull out the paper", "请拉出纸张"},
    {"Pull out the paper", "请拉出纸张"},
    {"Please check the paper setting and actual paper size", "请检查纸张设置和实际纸张尺寸"},
    {"Restart/contact service", "重启/联系客服"},
    {"Restart/contact service", "重启/联系客服"},
    {"Check the ADF paper placement", "检查ADF纸张放入位置"},
    {"Reset the paper size", "重新设置纸张大小"},
    {"Restart/contact service", "重启/联系客服"},
    {"Reset IP", "重新设置IP"},
    {"Reset IP", "重新设置IP"},
    {"Check user info", "检查用户信息，并重新登录"},
    {"Log in again", "请重新登录"},
    {"Restart/contact service", "重启/联系客服"},
    {"Restart/contact service", "重启/联系客服"},
    {"Ethnet disabled", "网络功能已禁用"},
    {"Printing", "按照步骤翻页后放回进纸盒，按OK键继续打印"},
}};

template <std::size_t Rows> void AddRows(const std::array<Texts, Rows>& table)
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("chinese");

    for (std::size_t row = 0; row < table.size(); ++row) {
        QTest::addRow("%zu %s", row, table[row].english)
            << static_cast<int>(row) << QString::fromUtf8(table[row].english) << QString::fromUtf8(table[row].chinese);
    }
}

void CompareRow(const QString (&texts)[2])
{
    QFETCH(const QString, english);
    QFETCH(const QString, chinese);

    QCOMPARE(texts[0], english);
    QCOMPARE(texts[1], chinese);
}

} // namespace

void UtilLanguageCtrlTest::statusNames_data()
{
    AddRows(c_statusNames);
}

void UtilLanguageCtrlTest::statusNames()
{
    QFETCH(const int, row);

    CompareRow(c_strStatusLanguageText[row]);
}

void UtilLanguageCtrlTest::errorDescriptions_data()
{
    AddRows(c_errorDescriptions);
}

void UtilLanguageCtrlTest::errorDescriptions()
{
    QFETCH(const int, row);

    CompareRow(c_strErrorDescText[row]);
}

void UtilLanguageCtrlTest::errorSolutions_data()
{
    AddRows(c_errorSolutions);
}

void UtilLanguageCtrlTest::errorSolutions()
{
    QFETCH(const int, row);

    CompareRow(c_strErrorSolutionText[row]);
}

// Only these rows are empty, in either language.
void UtilLanguageCtrlTest::emptyRows()
{
    for (int language = 0; language < 2; ++language) {
        for (int row = 0; row < 13; ++row) {
            QCOMPARE(c_strStatusLanguageText[row][language].isEmpty(), row == 12);
        }
        for (int row = 0; row < 51; ++row) {
            QVERIFY(!c_strErrorDescText[row][language].isEmpty());
            QCOMPARE(c_strErrorSolutionText[row][language].isEmpty(), row == 0 || row == 22);
        }
    }
}

void UtilLanguageCtrlTest::statusOfNewPrinter()
{
    const stPrinterState state;
    QCOMPARE(c_strStatusLanguageText[state.enCurrentStatus][0], QStringLiteral("Off-line"));
    QCOMPARE(c_strStatusLanguageText[state.enCurrentStatus][1], QStringLiteral("脱机"));
}

// Looks the texts up by enumerator, as the program does.
void UtilLanguageCtrlTest::sharedTexts()
{
    QCOMPARE(c_strErrorDescText[ERR_TONER_RUNNING_OUT][1], c_strErrorDescText[ERR_TONER_LOW][1]);
    QVERIFY(c_strErrorDescText[ERR_TONER_RUNNING_OUT][0] != c_strErrorDescText[ERR_TONER_LOW][0]);
    for (int language = 0; language < 2; ++language) {
        QCOMPARE(c_strErrorDescText[ERR_PRINTER_BREAKDOWN_2][language],
                 c_strErrorDescText[ERR_PRINTER_BREAKDOWN][language]);
        QCOMPARE(c_strErrorSolutionText[ERR_PRINTER_BREAKDOWN_2][language],
                 c_strErrorSolutionText[ERR_PRINTER_BREAKDOWN][language]);
    }
}

QTEST_GUILESS_MAIN(UtilLanguageCtrlTest)

#include "tst_utillanguagectrl.moc"
