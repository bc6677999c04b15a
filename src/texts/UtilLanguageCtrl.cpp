// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "UtilLanguageCtrl.h"

// String literals carry their own storage: building the tables at start-up copies no text.

const QString c_strStatusLanguageText[StatusTextRows][TextLanguages] = {
    {QStringLiteral("Unknown"), QStringLiteral("未知")}, // PS_UNKNOWN
    {QStringLiteral("Version mismatch"), QStringLiteral("数据格式错误或版本不匹配")}, // PS_VERSION_MISMATCH
    {QStringLiteral("Off-line"), QStringLiteral("脱机")}, // PS_OFFLINE
    {QStringLiteral("Ready"), QStringLiteral("就绪")}, // PS_READY
    {QStringLiteral("Initialize"), QStringLiteral("初始化")}, // PS_INITIALIZE
    {QStringLiteral("Busy"), QStringLiteral("忙碌")}, // PS_BUSY
    {QStringLiteral("Canceling job"), QStringLiteral("正在取消任务")}, // PS_CANCELING_JOB
    {QStringLiteral("Error"), QStringLiteral("错误")}, // PS_ERROR
    {QStringLiteral("Printing"), QStringLiteral("正在打印")}, // PS_PRINTING
    {QStringLiteral("Scanning"), QStringLiteral("正在扫描")}, // PS_SCANNING
    {QStringLiteral("Copying"), QStringLiteral("正在复印")}, // PS_COPYING
    {QStringLiteral("Reporting"), QStringLiteral("正在打印报告")}, // PS_REPORTING
    {QString(), QString()}, // no status has this value
};

const QString c_strErrorDescText[ErrorTextRows][TextLanguages] = {
    {QStringLiteral("Unknown error status"), QStringLiteral("错误状态未知")}, // ERR_UNKNOWN
    {QStringLiteral("Fixer error"), QStringLiteral("定影器错误")}, // ERR_FIXER
    {QStringLiteral("Laser damage"), QStringLiteral("激光损坏")}, // ERR_LASER_DAMAGE
    {QStringLiteral("No scanner detected"), QStringLiteral("未检测到扫描仪")}, // ERR_NO_SCANNER
    {QStringLiteral("Printer breakdown"), QStringLiteral("打印机故障")}, // ERR_PRINTER_BREAKDOWN
    {QStringLiteral("High temperature printer"), QStringLiteral("打印机温度较高")}, // ERR_HIGH_TEMPERATURE
    {QStringLiteral("Front cover open"), QStringLiteral("前盖已打开")}, // ERR_FRONT_COVER_OPEN
    {QStringLiteral("Cartridge with an unsupported serial number inserted"),
     QStringLiteral("插入了不支持的序列号的碳粉盒")}, // ERR_UNSUPPORTED_CARTRIDGE_SERIAL
    {QStringLiteral("Printer and cartridge do not match"),
     QStringLiteral("打印机和碳粉盒不匹配")}, // ERR_CARTRIDGE_MISMATCH
    {QStringLiteral("Toner cartridge is invalid"), QStringLiteral("碳粉盒无效")}, // ERR_CARTRIDGE_INVALID
    {QStringLiteral("Cartridge error"), QStringLiteral("碳粉盒错误")}, // ERR_CARTRIDGE
    {QStringLiteral("Toner low"), QStringLiteral("碳粉不足")}, // ERR_TONER_LOW
    {QStringLiteral("Toner empty, low quality"),
     QStringLiteral("碳粉已用完，继续打印将影响质量")}, // ERR_TONER_EMPTY_LOW_QUALITY
    {QStringLiteral("Toner empty, replace cartridge"),
     QStringLiteral("碳粉已用完，请更换碳粉盒")}, // ERR_TONER_EMPTY_REPLACE
    {QStringLiteral("Toner is running out"), QStringLiteral("碳粉不足")}, // ERR_TONER_RUNNING_OUT
    {QStringLiteral("Cartridge will be full"), QStringLiteral("碳粉盒寿命将要耗尽")}, // ERR_CARTRIDGE_NEAR_FULL
    {QStringLiteral("Cartridge's life is full"), QStringLiteral("碳粉盒寿命已耗尽")}, // ERR_CARTRIDGE_LIFE_FULL
    {QStringLiteral("No toner cartridge is placed"), QStringLiteral("没有检测到碳粉盒")}, // ERR_NO_CARTRIDGE
    {QStringLiteral("The waste toner will be full"), QStringLiteral("废粉箱将满")}, // ERR_WASTE_TONER_NEAR_FULL
    {QStringLiteral("The waste toner full"), QStringLiteral("废粉箱已满")}, // ERR_WASTE_TONER_FULL
    {QStringLiteral("Cartridge printing paper near the upper limit"),
     QStringLiteral("碳粉盒打印页数将达到极限")}, // ERR_CARTRIDGE_PAGES_NEAR_LIMIT
    {QStringLiteral("Cartridge prints page limit reached"),
     QStringLiteral("打印页数已达到极限")}, // ERR_CARTRIDGE_PAGES_LIMIT
    {QStringLiteral("The printer will exceed the design life!"),
     QStringLiteral("本机将要超过设计寿命！")}, // ERR_PRINTER_LIFE_NEAR_END
    {QStringLiteral("The printer has exceeded the design life!"),
     QStringLiteral("本机已超过设计寿命！")}, // ERR_PRINTER_LIFE_EXCEEDED
    {QStringLiteral("Printer memory overflow"), QStringLiteral("设备内存不足")}, // ERR_MEMORY_OVERFLOW
    {QStringLiteral("Cooling"), QStringLiteral("设备温度太高")}, // ERR_COOLING
    {QStringLiteral("ADF paper jam"), QStringLiteral("ADF卡纸")}, // ERR_ADF_PAPER_JAM
    {QStringLiteral("ADF no paper"), QStringLiteral("ADF中无纸")}, // ERR_ADF_NO_PAPER
    {QStringLiteral("ADF feed failed"), QStringLiteral("ADF抽纸失败")}, // ERR_ADF_FEED_FAILED
    {QStringLiteral("Invalid setting error"), QStringLiteral("设置无效")}, // ERR_INVALID_SETTING
    {QStringLiteral("Paper tray is empty"), QStringLiteral("纸盘中无纸")}, // ERR_TRAY_EMPTY
    {QStringLiteral("Manual feeder does not put paper"),
     QStringLiteral("手动进纸器中无纸")}, // ERR_MANUAL_FEED_NO_PAPER
    {QStringLiteral("Manual feeder stop"), QStringLiteral("手动进纸器异常")}, // ERR_MANUAL_FEED_STOP
    {QStringLiteral("Tray does not match"), QStringLiteral("纸张来源不匹配")}, // ERR_TRAY_MISMATCH
    {QStringLiteral("Paper jam inside"), QStringLiteral("设备内卡纸")}, // ERR_JAM_INSIDE
    {QStringLiteral("Paper jam in tray"), QStringLiteral("纸盒内卡纸")}, // ERR_JAM_TRAY
    {QStringLiteral("Paper jam rear"), QStringLiteral("设备后部卡纸")}, // ERR_JAM_REAR
    {QStringLiteral("Paper size does not match"), QStringLiteral("纸张尺寸不匹配")}, // ERR_PAPER_SIZE_MISMATCH
    {QStringLiteral("Initial setup error"), QStringLiteral("初始设置错误")}, // ERR_INITIAL_SETUP
    {QStringLiteral("Tablet scan error"), QStringLiteral("平板扫描出错")}, // ERR_FLATBED_SCAN
    {QStringLiteral("ADF scan without paper"), QStringLiteral("ADF无纸")}, // ERR_ADF_SCAN_NO_PAPER
    {QStringLiteral("File size exceeds limit"), QStringLiteral("文件大小超过限制")}, // ERR_FILE_SIZE_LIMIT
    {QStringLiteral("Printer breakdown"), QStringLiteral("打印机故障")}, // ERR_PRINTER_BREAKDOWN_2
    {QStringLiteral("IP settings error"), QStringLiteral("IP设置错误")}, // ERR_IP_SETTINGS
    {QStringLiteral("IP conflict"), QStringLiteral("IP地址冲突")}, // ERR_IP_CONFLICT
    {QStringLiteral("Authentication failed"), QStringLiteral("身份识别失败")}, // ERR_AUTH_FAILED
    {QStringLiteral("Authentication Timeout"), QStringLiteral("打印用户已失效")}, // ERR_AUTH_TIMEOUT
    {QStringLiteral("ADC fail"), QStringLiteral("系统错误 1302")}, // ERR_ADC_FAIL
    {QStringLiteral("24Vmos breakdown"), QStringLiteral("系统错误 1303")}, // ERR_24V_MOS_BREAKDOWN
    {QStringLiteral("netsec on"), QStringLiteral("违规外连安全防护已开启")}, // ERR_NETSEC_ON
    {QStringLiteral("Printing"), QStringLiteral("正在打印")}, // ERR_PRINTING
};

const QString c_strErrorSolutionText[ErrorTextRows][TextLanguages] = {
    {QString(), QString()}, // ERR_UNKNOWN
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_FIXER
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_LASER_DAMAGE
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_NO_SCANNER
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_PRINTER_BREAKDOWN
    {QStringLiteral("Stop Printing/Shut Down Waiting for Cooling/Contacting service"),
     QStringLiteral("停止打印/关机等待冷却/联系客服")}, // ERR_HIGH_TEMPERATURE
    {QStringLiteral("Close the front cover"), QStringLiteral("关闭前盖板")}, // ERR_FRONT_COVER_OPEN
    {QStringLiteral("Please check the toner cartridge"),
     QStringLiteral("请检查碳粉盒")}, // ERR_UNSUPPORTED_CARTRIDGE_SERIAL
    {QStringLiteral("Please check the toner cartridge"), QStringLiteral("请检查碳粉盒")}, // ERR_CARTRIDGE_MISMATCH
    {QStringLiteral("Please check the toner cartridge"), QStringLiteral("请检查碳粉盒")}, // ERR_CARTRIDGE_INVALID
    {QStringLiteral("Please check the toner cartridge"), QStringLiteral("请检查碳粉盒")}, // ERR_CARTRIDGE
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_TONER_LOW
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_TONER_EMPTY_LOW_QUALITY
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_TONER_EMPTY_REPLACE
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_TONER_RUNNING_OUT
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_CARTRIDGE_NEAR_FULL
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_CARTRIDGE_LIFE_FULL
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_NO_CARTRIDGE
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_WASTE_TONER_NEAR_FULL
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_WASTE_TONER_FULL
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_CARTRIDGE_PAGES_NEAR_LIMIT
    {QStringLiteral("Replace the toner cartridge"), QStringLiteral("请更换碳粉盒")}, // ERR_CARTRIDGE_PAGES_LIMIT
    {QString(), QString()}, // ERR_PRINTER_LIFE_NEAR_END
    {QStringLiteral("Contact service"), QStringLiteral("联系客服")}, // ERR_PRINTER_LIFE_EXCEEDED
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_MEMORY_OVERFLOW
    {QStringLiteral("Waiting for cooling"), QStringLiteral("请等待冷却")}, // ERR_COOLING
    {QStringLiteral("Please pull out the paper"), QStringLiteral("请拉出纸张")}, // ERR_ADF_PAPER_JAM
    {QStringLiteral("Please insert the paper"), QStringLiteral("请插入文稿")}, // ERR_ADF_NO_PAPER
    {QStringLiteral("Check ADF"), QStringLiteral("检查ADF")}, // ERR_ADF_FEED_FAILED
    {QStringLiteral("Re-setting"), QStringLiteral("重新进行设置")}, // ERR_INVALID_SETTING
    {QStringLiteral("Please insert the paper"), QStringLiteral("请插入文稿")}, // ERR_TRAY_EMPTY
    {QStringLiteral("Check the manual feeder"), QStringLiteral("请检查手动进纸器")}, // ERR_MANUAL_FEED_NO_PAPER
    {QStringLiteral("Please send paper from manual feeder"),
     QStringLiteral("请从手动进纸器送纸")}, // ERR_MANUAL_FEED_STOP
    {QStringLiteral("Insert tray"), QStringLiteral("插入纸盘")}, // ERR_TRAY_MISMATCH
    {QStringLiteral("Pull out the paper"), QStringLiteral("请拉出纸张")}, // ERR_JAM_INSIDE
    {QStringLiteral("Pull out the paper"), QStringLiteral("请拉出纸张")}, // ERR_JAM_TRAY
    {QStringLiteral("Pull out the paper"), QStringLiteral("请拉出纸张")}, // ERR_JAM_REAR
    {QStringLiteral("Please check the paper setting and actual paper size"),
     QStringLiteral("请检查纸张设置和实际纸张尺寸")}, // ERR_PAPER_SIZE_MISMATCH
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_INITIAL_SETUP
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_FLATBED_SCAN
    {QStringLiteral("Check the ADF paper placement"), QStringLiteral("检查ADF纸张放入位置")}, // ERR_ADF_SCAN_NO_PAPER
    {QStringLiteral("Reset the paper size"), QStringLiteral("重新设置纸张大小")}, // ERR_FILE_SIZE_LIMIT
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_PRINTER_BREAKDOWN_2
    {QStringLiteral("Reset IP"), QStringLiteral("重新设置IP")}, // ERR_IP_SETTINGS
    {QStringLiteral("Reset IP"), QStringLiteral("重新设置IP")}, // ERR_IP_CONFLICT
    {QStringLiteral("Check user info"), QStringLiteral("检查用户信息，并重新登录")}, // ERR_AUTH_FAILED
    {QStringLiteral("Log in again"), QStringLiteral("请重新登录")}, // ERR_AUTH_TIMEOUT
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_ADC_FAIL
    {QStringLiteral("Restart/contact service"), QStringLiteral("重启/联系客服")}, // ERR_24V_MOS_BREAKDOWN
    {QStringLiteral("Ethnet disabled"), QStringLiteral("网络功能已禁用")}, // ERR_NETSEC_ON
    {QStringLiteral("Printing"), QStringLiteral("按照步骤翻页后放回进纸盒，按OK键继续打印")}, // ERR_PRINTING
};
