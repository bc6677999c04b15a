// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/ReportJson.h"

#include "status/ConditionNames.h"
#include "status/PrintedText.h"
#include "texts/UtilLanguageCtrl.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

constexpr int MajorVersion = 1;
constexpr int MinorVersion = 0;

// Half a surrogate pair, which the escape sequences of a printer list can express, is no text: UTF-8 has none.
QJsonValue Text(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    return QString::fromUtf8(utf8.constData(), utf8.size());
}

QJsonValue TextOrNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : Text(text);
}

QJsonValue NumberOrNull(std::optional<unsigned long> number)
{
    return number ? QJsonValue(static_cast<double>(*number)) : QJsonValue();
}

// The empty text of a condition without remedy becomes null.
QJsonValue BothLanguages(const QString (&texts)[TextLanguages])
{
    if (texts[0].isEmpty()) {
        return {};
    }
    return QJsonObject{{QStringLiteral("en"), texts[0]}, {QStringLiteral("zh"), texts[1]}};
}

QJsonArray ConditionsJson(const QList<enErrorStatus>& conditions, const std::vector<unsigned long>& codes)
{
    QJsonArray json;
    for (int i = 0; i < conditions.size(); ++i) {
        const enErrorStatus condition = conditions.at(i);
        json.append(QJsonObject{{QStringLiteral("code"), static_cast<double>(codes.at(static_cast<std::size_t>(i)))},
                                {QStringLiteral("value"), condition},
                                {QStringLiteral("name"), QLatin1String(ConditionName(condition))},
                                {QStringLiteral("description"), BothLanguages(c_strErrorDescText[condition])},
                                {QStringLiteral("remedy"), BothLanguages(c_strErrorSolutionText[condition])}});
    }
    return json;
}

QJsonObject ConnectionJson(const PrinterReport& report)
{
    return {{QStringLiteral("type"), report.isNetwork() ? QStringLiteral("network") : QStringLiteral("usb")},
            {QStringLiteral("port"), TextOrNull(report.info.strPort)},
            {QStringLiteral("uri"), TextOrNull(report.info.strURI)}};
}

QJsonValue NumberJson(const DecodedReply& reply, ReplyField field, unsigned long value)
{
    return reply.contains(field) ? QJsonValue(static_cast<double>(value)) : QJsonValue();
}

QJsonObject CartridgeJson(const DecodedReply& reply)
{
    const stPrinterState& state = reply.state;
    const bool hasPrints = reply.contains(ReplyField::CartridgePages) || reply.contains(ReplyField::CartridgePrints);
    return {
        {QStringLiteral("serial"), TextOrNull(state.strSupplySerialNumber)},
        {QStringLiteral("type"), NumberOrNull(reply.supplyType())},
        {QStringLiteral("waste_toner"), NumberJson(reply, ReplyField::WasteToner, state.dwWasteToner)},
        {QStringLiteral("drum_rotation"), NumberJson(reply, ReplyField::DrumRotation, state.dwOPCRotation)},
        {QStringLiteral("pages"), NumberJson(reply, ReplyField::CartridgePages, state.dwNumberOfPages)},
        {QStringLiteral("prints"), hasPrints ? QJsonValue(static_cast<double>(state.dwNumberOfPrint)) : QJsonValue()}};
}

QJsonObject CountersJson(const DecodedReply& reply)
{
    const stPrinterState& state = reply.state;
    return {{QStringLiteral("dots"), NumberJson(reply, ReplyField::PrintedDots, state.dwPrintDotsCount)},
            {QStringLiteral("pages"), NumberJson(reply, ReplyField::PrinterPages, state.dwPrinterNumOfPages)},
            {QStringLiteral("prints"), NumberJson(reply, ReplyField::PrinterPrints, state.dwPrinterNumOfPrint)}};
}

} // namespace

QJsonArray FormatVersion()
{
    return {MajorVersion, MinorVersion};
}

QJsonObject StatusJson(const DecodedReply& reply)
{
    const int status = reply.state.enCurrentStatus;
    return {{QStringLiteral("value"), status},
            {QStringLiteral("name"), QLatin1String(StatusName(status))},
            {QStringLiteral("raw"), NumberOrNull(reply.rawStatus())},
            {QStringLiteral("text"), BothLanguages(c_strStatusLanguageText[status])}};
}

QJsonObject ReplyJson(const DecodedReply& reply)
{
    const std::optional<double> toner = reply.tonerRatio();
    return {{QStringLiteral("family"), QLatin1String(FamilyName(*reply.family))},
            {QStringLiteral("status"), StatusJson(reply)},
            {QStringLiteral("toner"),
             QJsonObject{{QStringLiteral("ratio"), toner ? QJsonValue(*toner) : QJsonValue()},
                         {QStringLiteral("raw"), NumberOrNull(reply.rawToner())}}},
            {QStringLiteral("errors"), ConditionsJson(reply.state.listError, reply.errorCodes())},
            {QStringLiteral("warnings"), ConditionsJson(reply.state.listWarning, reply.warningCodes())},
            {QStringLiteral("vendor"), TextOrNull(reply.state.strVenderName)},
            {QStringLiteral("product"), TextOrNull(reply.state.strProductName)},
            {QStringLiteral("firmware"), TextOrNull(reply.state.strFWVersion)},
            {QStringLiteral("serial"), TextOrNull(reply.state.strPrinterSerialNumber)},
            {QStringLiteral("cartridge"), CartridgeJson(reply)},
            {QStringLiteral("counters"), CountersJson(reply)}};
}

QJsonObject PrinterJson(const PrinterReport& report)
{
    QJsonObject json = ReplyJson(report.reply);
    json.insert(QStringLiteral("name"), Text(report.info.strPrinterName));
    json.insert(QStringLiteral("model"), TextOrNull(report.info.enType));
    json.insert(QStringLiteral("connection"), ConnectionJson(report));
    json.insert(QStringLiteral("online"), report.isOnline());
    json.insert(QStringLiteral("report"),
                QJsonObject{{QStringLiteral("result"), QLatin1String(ResultName(report.result))},
                            {QStringLiteral("modified"), TextOrNull(Rfc3339(report.modified))}});
    return json;
}

QJsonObject ReportsJson(const PrinterReports& reports, const QString& directory)
{
    QJsonArray printers;
    for (const PrinterReport& report : reports.printers) {
        printers.append(PrinterJson(report));
    }
    return {{QStringLiteral("format_version"), FormatVersion()},
            {QStringLiteral("list"),
             QJsonObject{{QStringLiteral("directory"), Text(directory)},
                         {QStringLiteral("readable"), reports.isListReadable}}},
            {QStringLiteral("printers"), printers}};
}

// QJsonDocument escapes only the control characters below U+0020. The others can stand only inside strings.
QByteArray JsonText(const QJsonObject& document, bool isIndented)
{
    const QJsonDocument::JsonFormat format = isIndented ? QJsonDocument::Indented : QJsonDocument::Compact;
    const QByteArray json = QJsonDocument(document).toJson(format).trimmed();
    QString text;
    text.reserve(json.size());
    const QVector<uint> characters = QString::fromUtf8(json).toUcs4();
    for (const uint character : characters) {
        const QString unit = QString::fromUcs4(&character, 1);
        if (character == '\n' || !IsHarmful(character)) {
            text += unit;
            continue;
        }
        for (const QChar half : unit) {
            text += QString::asprintf("\\u%04x", half.unicode());
        }
    }
    return text.toUtf8() + '\n';
}
