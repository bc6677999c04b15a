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
    return JsonObject({{"en", texts[0]}, {"zh", texts[1]}});
}

QJsonArray ConditionsJson(const QList<enErrorStatus>& conditions, const std::vector<unsigned long>& codes)
{
    QJsonArray json;
    for (int i = 0; i < conditions.size(); ++i) {
        const enErrorStatus condition = conditions.at(i);
        json.append(JsonObject({{"code", static_cast<double>(codes.at(static_cast<std::size_t>(i)))},
                                {"value", condition},
                                {"name", QLatin1String(ConditionName(condition))},
                                {"description", BothLanguages(c_strErrorDescText[condition])},
                                {"remedy", BothLanguages(c_strErrorSolutionText[condition])}}));
    }
    return json;
}

QJsonObject ConnectionJson(const PrinterReport& report)
{
    return JsonObject({{"type", QLatin1String(ConnectionName(report))},
                       {"port", TextOrNull(report.info.strPort)},
                       {"uri", TextOrNull(report.info.strURI)}});
}

QJsonValue NumberJson(const DecodedReply& reply, ReplyField field, unsigned long value)
{
    return reply.contains(field) ? QJsonValue(static_cast<double>(value)) : QJsonValue();
}

QJsonObject CartridgeJson(const DecodedReply& reply)
{
    const stPrinterState& state = reply.state;
    return JsonObject({{"serial", TextOrNull(state.strSupplySerialNumber)},
                       {"type", NumberOrNull(reply.supplyType())},
                       {"waste_toner", NumberJson(reply, ReplyField::WasteToner, state.dwWasteToner)},
                       {"drum_rotation", NumberJson(reply, ReplyField::DrumRotation, state.dwOPCRotation)},
                       {"pages", NumberJson(reply, ReplyField::CartridgePages, state.dwNumberOfPages)},
                       {"prints", NumberOrNull(reply.cartridgePrints())}});
}

QJsonObject CountersJson(const DecodedReply& reply)
{
    const stPrinterState& state = reply.state;
    return JsonObject({{"dots", NumberJson(reply, ReplyField::PrintedDots, state.dwPrintDotsCount)},
                       {"pages", NumberJson(reply, ReplyField::PrinterPages, state.dwPrinterNumOfPages)},
                       {"prints", NumberJson(reply, ReplyField::PrinterPrints, state.dwPrinterNumOfPrint)}});
}

} // namespace

QJsonObject JsonObject(std::initializer_list<JsonMember> members)
{
    QJsonObject object;
    for (const JsonMember& member : members) {
        object.insert(QString::fromLatin1(member.name), member.value);
    }
    return object;
}

QJsonArray FormatVersion()
{
    QJsonArray version;
    version.append(MajorVersion);
    version.append(MinorVersion);
    return version;
}

QJsonObject StatusJson(const DecodedReply& reply)
{
    const int status = reply.state.enCurrentStatus;
    return JsonObject({{"value", status},
                       {"name", QLatin1String(StatusName(status))},
                       {"raw", NumberOrNull(reply.rawStatus())},
                       {"text", BothLanguages(c_strStatusLanguageText[status])}});
}

QJsonObject ReplyJson(const DecodedReply& reply)
{
    const std::optional<double> toner = reply.tonerRatio();
    return JsonObject(
        {{"family", QLatin1String(FamilyName(*reply.family))},
         {"status", StatusJson(reply)},
         {"toner",
          JsonObject({{"ratio", toner ? QJsonValue(*toner) : QJsonValue()}, {"raw", NumberOrNull(reply.rawToner())}})},
         {"errors", ConditionsJson(reply.state.listError, reply.errorCodes())},
         {"warnings", ConditionsJson(reply.state.listWarning, reply.warningCodes())},
         {"vendor", TextOrNull(reply.state.strVenderName)},
         {"product", TextOrNull(reply.state.strProductName)},
         {"firmware", TextOrNull(reply.state.strFWVersion)},
         {"serial", TextOrNull(reply.state.strPrinterSerialNumber)},
         {"cartridge", CartridgeJson(reply)},
         {"counters", CountersJson(reply)}});
}

QJsonObject PrinterJson(const PrinterReport& report)
{
    QJsonObject json = ReplyJson(report.reply);
    json.insert(QStringLiteral("name"), Text(report.info.strPrinterName));
    json.insert(QStringLiteral("model"), TextOrNull(report.info.enType));
    json.insert(QStringLiteral("connection"), ConnectionJson(report));
    json.insert(QStringLiteral("online"), report.isOnline());
    json.insert(QStringLiteral("report"),
                JsonObject({{"result", QLatin1String(ResultName(report.result))},
                            {"modified", TextOrNull(Rfc3339(report.modified))}}));
    return json;
}

QJsonObject ReportsJson(const PrinterReports& reports, const QString& directory)
{
    QJsonArray printers;
    for (const PrinterReport& report : reports.printers) {
        printers.append(PrinterJson(report));
    }
    return JsonObject({{"format_version", FormatVersion()},
                       {"list", JsonObject({{"directory", Text(directory)}, {"readable", reports.isListReadable}})},
                       {"printers", printers}});
}

// QJsonDocument escapes only the control characters below U+0020. The others can stand only inside strings.
QByteArray JsonText(const QJsonObject& document, bool isIndented)
{
    const QJsonDocument::JsonFormat format = isIndented ? QJsonDocument::Indented : QJsonDocument::Compact;
    const QByteArray json = QJsonDocument(document).toJson(format).trimmed();
    QString text;
    text.reserve(json.size());
    const QVector<uint> characters = QString::fromUtf8(json).toUcs4();
    for (const char32_t character : characters) {
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
