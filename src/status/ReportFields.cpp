// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/ReportFields.h"

#include "status/ConditionNames.h"
#include "texts/UtilLanguageCtrl.h"

#include <algorithm>
#include <array>

namespace {

using Report = PrinterReport;
using Time = QDateTime;

QString TextIn(const QString (&texts)[TextLanguages], Language language)
{
    return texts[static_cast<int>(language)];
}

QString NumberIf(std::optional<unsigned long> number)
{
    return number ? QString::number(*number) : QString();
}

QString Counter(const Report& report, ReplyField field, unsigned long number)
{
    return report.reply.contains(field) ? QString::number(number) : QString();
}

QString WithUnit(const QString& number, Language language, const char* english, const char* chinese)
{
    return number.isEmpty() ? number : number + QLatin1Char(' ') + Pick(language, english, chinese);
}

QString ConnectionSpoken(const Report& report, const Time& /*now*/, Language language)
{
    if (!report.isNetwork()) {
        return QStringLiteral("USB");
    }
    return Pick(language, "network", "网络") + QLatin1Char('(') + report.info.strPort + QLatin1Char(')');
}

QString TonerPlain(const Report& report, const Time& /*now*/)
{
    const std::optional<double> ratio = report.reply.tonerRatio();
    return ratio ? QString::number(*ratio, 'f', 4) : QString();
}

QString TonerSpoken(const Report& report, const Time& /*now*/, Language /*language*/)
{
    const std::optional<double> ratio = report.reply.tonerRatio();
    return ratio ? QString::asprintf("%.2f%%", *ratio * 100) : QString();
}

QString StatusSpoken(const Report& report, const Time& /*now*/, Language language)
{
    return TextIn(c_strStatusLanguageText[report.reply.state.enCurrentStatus], language);
}

// The most urgent condition: errors come before warnings.
std::optional<enErrorStatus> FirstCondition(const Report& report)
{
    const QList<enErrorStatus> conditions = report.reply.state.listError + report.reply.state.listWarning;
    return conditions.isEmpty() ? std::nullopt : std::make_optional(conditions.first());
}

QString ConditionPlain(const Report& report, const Time& /*now*/)
{
    const std::optional<enErrorStatus> condition = FirstCondition(report);
    return condition ? QString::fromLatin1(ConditionName(*condition)) : QString();
}

QString ConditionSpoken(const Report& report, const Time& /*now*/, Language language)
{
    const std::optional<enErrorStatus> condition = FirstCondition(report);
    return condition ? TextIn(c_strErrorDescText[*condition], language) : OfflineReason(report, language);
}

QString Codes(const std::vector<unsigned long>& codes)
{
    QStringList texts;
    std::transform(codes.begin(), codes.end(), std::back_inserter(texts), CodeText);
    return texts.join(QLatin1Char(','));
}

// A timestamp in the future gives 0.
qint64 AgeSeconds(const Report& report, const Time& now)
{
    return std::max<qint64>(report.modified->secsTo(now), 0);
}

QString AgePlain(const Report& report, const Time& now)
{
    return report.modified ? QString::number(AgeSeconds(report, now)) : QString();
}

QString AgeSpoken(const Report& report, const Time& now, Language language)
{
    struct Unit
    {
        qint64 seconds;
        const char* english;
        const char* chinese;
    };
    static constexpr std::array<Unit, 4> c_units{
        {{86400, "d", "天"}, {3600, "h", "小时"}, {60, "min", "分钟"}, {1, "s", "秒"}}};
    if (!report.modified) {
        return {};
    }
    const qint64 age = AgeSeconds(report, now);
    const auto* const unit = std::find_if(c_units.begin(), c_units.end() - 1,
                                          [age](const Unit& candidate) { return age >= candidate.seconds; });
    return WithUnit(QString::number(age / unit->seconds), language, unit->english, unit->chinese);
}

QString ModifiedSpoken(const Report& report, const Time& /*now*/, Language /*language*/)
{
    return report.modified ? report.modified->toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) : QString();
}

QString ResultSpoken(const Report& report, const Time& /*now*/, Language language)
{
    return report.isOnline() ? Pick(language, "accepted", "有效") : OfflineReason(report, language);
}

// A field that is one expression of `report`.
#define PLAIN(expression)                                                                                              \
    [](const Report& report, const Time& /*now*/) -> QString {                                                         \
        return expression;                                                                                             \
    }
#define COUNTED(expression, english, chinese)                                                                          \
    PLAIN(expression), [](const Report& report, const Time& /*now*/, Language language) {                              \
        return WithUnit(expression, language, english, chinese);                                                       \
    }
#define OF_STATE(field, member) Counter(report, ReplyField::field, report.reply.state.member)

QVector<ReportField> MakeFields()
{
    return {
        {"name", "Name", "打印机名称", PLAIN(report.info.strPrinterName), nullptr},
        {"model", "Model", "型号", PLAIN(report.info.enType), nullptr},
        {"connection", "Connection", "连接方式", PLAIN(QString::fromLatin1(ConnectionName(report))), ConnectionSpoken},
        {"port", "Port", "端口", PLAIN(report.info.strPort), nullptr},
        {"uri", "URI", "URI", PLAIN(report.info.strURI), nullptr},
        {"family", "Family", "系列", PLAIN(QString::fromLatin1(FamilyName(*report.reply.family))), nullptr},
        {"toner", "Toner", "剩余碳粉量", TonerPlain, TonerSpoken},
        {"toner-raw", "Toner (raw)", "碳粉量原始值", PLAIN(NumberIf(report.reply.rawToner())), nullptr},
        {"status", "Status", "状态", PLAIN(QString::fromLatin1(StatusName(report.reply.state.enCurrentStatus))),
         StatusSpoken},
        {"status-raw", "Status (raw)", "状态原始值", PLAIN(NumberIf(report.reply.rawStatus())), nullptr},
        {"condition", "Condition", "首要情况", ConditionPlain, ConditionSpoken},
        {"errors", "Errors", "错误", PLAIN(Codes(report.reply.errorCodes())), nullptr},
        {"warnings", "Warnings", "警告", PLAIN(Codes(report.reply.warningCodes())), nullptr},
        {"result", "Report", "状态文件", PLAIN(QString::fromLatin1(ResultName(report.result))), ResultSpoken},
        {"modified", "Reported at", "报告时间", PLAIN(Rfc3339(report.modified)), ModifiedSpoken},
        {"age", "Age", "报告距今", AgePlain, AgeSpoken},
        {"vendor", "Vendor", "厂商", PLAIN(report.reply.state.strVenderName), nullptr},
        {"product", "Product", "产品", PLAIN(report.reply.state.strProductName), nullptr},
        {"firmware", "Firmware", "固件版本", PLAIN(report.reply.state.strFWVersion), nullptr},
        {"serial", "Serial number", "序列号", PLAIN(report.reply.state.strPrinterSerialNumber), nullptr},
        {"printer-pages", "Pages of the printer", "打印机页数",
         COUNTED(OF_STATE(PrinterPages, dwPrinterNumOfPages), "pages", "页")},
        {"printer-prints", "Prints of the printer", "打印机印次",
         COUNTED(OF_STATE(PrinterPrints, dwPrinterNumOfPrint), "prints", "次")},
        {"dots", "Printed dots", "打印点数", COUNTED(OF_STATE(PrintedDots, dwPrintDotsCount), "dots", "点")},
        {"cartridge-serial", "Cartridge's serial number", "碳粉盒序列号",
         PLAIN(report.reply.state.strSupplySerialNumber), nullptr},
        {"cartridge-pages", "Pages of the cartridge", "碳粉盒页数",
         COUNTED(OF_STATE(CartridgePages, dwNumberOfPages), "pages", "页")},
        {"cartridge-prints", "Prints of the cartridge", "碳粉盒印次",
         COUNTED(NumberIf(report.reply.cartridgePrints()), "prints", "次")},
        {"waste-toner", "Waste toner (raw)", "废粉计数", PLAIN(OF_STATE(WasteToner, dwWasteToner)), nullptr},
        {"drum-rotation", "Drum rotations", "感光鼓转数",
         COUNTED(OF_STATE(DrumRotation, dwOPCRotation), "rotations", "转")},
    };
}

QString EscapedField(const QString& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char(':'), QLatin1String("\\:"));
    return SafeText(escaped);
}

} // namespace

const QVector<ReportField>& ReportFields()
{
    static const QVector<ReportField> fields = MakeFields();
    return fields;
}

QStringList ReportFieldNames()
{
    QStringList names;
    std::transform(ReportFields().begin(), ReportFields().end(), std::back_inserter(names),
                   [](const ReportField& field) { return QString::fromLatin1(field.name); });
    return names;
}

QVector<const ReportField*> ReportFieldsNamed(const QStringList& names)
{
    QVector<const ReportField*> fields;
    const QStringList known = ReportFieldNames();
    for (const QString& name : names) {
        fields.append(&ReportFields().at(known.indexOf(name)));
    }
    return fields;
}

QStringList ListFieldNames()
{
    return SplitAtCommas(QStringLiteral("name,model,connection,toner,status,condition,age"));
}

QString SpokenText(const ReportField& field, const PrinterReport& report, const QDateTime& now, Language language)
{
    return field.spoken == nullptr ? field.plain(report, now) : field.spoken(report, now, language);
}

Colour ColourOf(const PrinterReport& report)
{
    // Most off-line printers are only switched off.
    if (!report.isOnline()) {
        return Colour::Dim;
    }
    if (!report.reply.state.listError.isEmpty()) {
        return Colour::Red;
    }
    return report.reply.state.listWarning.isEmpty() ? Colour::Green : Colour::Yellow;
}

QString OfflineReason(const PrinterReport& report, Language language)
{
    switch (report.result) {
    case ReportResult::Missing:
        return Pick(language, "no status file", "没有状态文件");
    case ReportResult::Unreadable:
        return Pick(language, "status file cannot be read", "状态文件无法读取");
    case ReportResult::Rejected:
        return Pick(language, "invalid reply", "状态应答无效");
    case ReportResult::Accepted:
        break;
    }
    return {};
}

QByteArray FormatTerse(const PrinterReports& reports, const QVector<const ReportField*>& fields, const QDateTime& now)
{
    QByteArray text;
    for (const PrinterReport& report : reports.printers) {
        QStringList values;
        for (const ReportField* field : fields) {
            values.append(EscapedField(field->plain(report, now)));
        }
        text += values.join(QLatin1Char(':')).toUtf8() + '\n';
    }
    return text;
}

QByteArray FormatList(const PrinterReports& reports, const QVector<const ReportField*>& fields, const QDateTime& now,
                      Language language, bool isColoured)
{
    QVector<TableRow> rows(1);
    for (const ReportField* field : fields) {
        rows.first().append({Pick(language, field->english, field->chinese), Colour::Bold});
    }
    for (const PrinterReport& report : reports.printers) {
        TableRow row;
        for (const ReportField* field : fields) {
            const QString text = SpokenText(*field, report, now, language);
            const bool isState = field->spoken == StatusSpoken || field->spoken == ConditionSpoken;
            row.append({text, isState ? ColourOf(report) : Colour::None});
        }
        rows.append(row);
    }
    return FormatTable(rows, isColoured).toUtf8();
}
