// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/RegularFile.h"
#include "status/Commands.h"
#include "status/FieldMeaning.h"
#include "status/PrintedText.h"
#include "status/ReportJson.h"

#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int BytesInTable = 16;
constexpr int MeaningColumns = 200;

// A file that somebody mailed.
struct MailedReply
{
    QString file;
    qint64 size = 0; // of the file; the assistant reads no more than ReplyLimitBytes
    DecodedReply reply;
    bool hidesSerialNumbers = false;
};

// Returns nothing if the file cannot be read. Of the standard input, `size` is what was read.
std::optional<QByteArray> ReadBytes(const QString& name, qint64& size)
{
    QByteArray bytes(ReplyLimitBytes + 1, '\0');
    std::size_t count = 0;
    if (name == QLatin1String("-")) {
        count = std::fread(bytes.data(), 1, static_cast<std::size_t>(bytes.size()), stdin);
        size = static_cast<qint64>(count);
    } else {
        const RegularFile file(name);
        if (!file.isOpen()) {
            return std::nullopt;
        }
        size = file.size();
        count = file.read(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<unsigned long>(bytes.size()));
    }
    bytes.truncate(static_cast<int>(count));
    return bytes;
}

const PrinterFamily& FamilyFor(const QString& file, const CommandLine& line)
{
    const QString family = line.options.value(QStringLiteral("family"));
    if (family.isEmpty()) {
        return FamilyOf(QFileInfo(file).fileName());
    }
    return family == QLatin1String("qz") ? QZFamily() : StandardFamily();
}

QJsonValue MeaningJson(const FieldMeaning& meaning)
{
    if (meaning.english.isEmpty()) {
        return {};
    }
    return JsonObject({{"en", meaning.english}, {"zh", meaning.chinese}});
}

QJsonArray FieldsJson(const MailedReply& mailed)
{
    QJsonArray json;
    const QVector<FieldMeaning> meanings = MeaningsOf(mailed.reply);
    for (int i = 0; i < meanings.size(); ++i) {
        const PlacedField& placed = mailed.reply.layout.fields.at(i);
        const bool isHidden = mailed.hidesSerialNumbers && IsSerialNumber(placed.field);
        const QByteArray bytes = mailed.reply.bytes.mid(placed.offset, placed.size).toHex();
        json.append(JsonObject({{"offset", placed.offset},
                                {"size", placed.size},
                                {"field", QLatin1String(NameOf(placed.field).key)},
                                {"bytes", isHidden ? QJsonValue() : QJsonValue(QString::fromLatin1(bytes))},
                                {"value", isHidden ? QJsonValue() : QJsonValue::fromVariant(meanings.at(i).value)},
                                {"meaning", MeaningJson(meanings.at(i))}}));
    }
    return json;
}

QJsonValue FaultJson(const std::optional<ReplyFault>& fault)
{
    if (!fault) {
        return {};
    }
    return JsonObject({{"field", QLatin1String(NameOf(fault->field).key)},
                       {"offset", fault->offset},
                       {"needed", fault->needed},
                       {"left", fault->left}});
}

QJsonObject MailedJson(const MailedReply& mailed)
{
    const DecodedReply& reply = mailed.reply;
    return JsonObject({{"file", mailed.file},
                       {"size", static_cast<double>(mailed.size)},
                       {"family", QLatin1String(FamilyName(*reply.family))},
                       {"accepted", reply.isAccepted},
                       {"fault", FaultJson(reply.layout.fault)},
                       {"fields", FieldsJson(mailed)},
                       {"reply", reply.isAccepted ? QJsonValue(ReplyJson(reply)) : QJsonValue()}});
}

QString Verdict(const MailedReply& mailed, Language language)
{
    const std::optional<ReplyFault>& fault = mailed.reply.layout.fault;
    if (mailed.reply.isAccepted || !fault) {
        return Pick(language, "accepted", "有效");
    }
    const FieldName& name = NameOf(fault->field);
    return Filled(Pick(language, "rejected: at offset %1, \"%2\" needs %3 bytes, but %4 are left",
                       "无效：偏移 %1 处的“%2”需要 %3 字节，但只剩 %4 字节"),
                  {QString::number(fault->offset), Pick(language, name.english, name.chinese),
                   QString::number(fault->needed), QString::number(fault->left)});
}

QString Headline(const MailedReply& mailed, Language language)
{
    const QString bytes = Pick(language, "%1 bytes", "%1 字节").arg(mailed.size);
    QString line = mailed.file + QStringLiteral(": ") + bytes + QStringLiteral(", ") +
        QString::fromLatin1(FamilyName(*mailed.reply.family)) + QStringLiteral(", ") + Verdict(mailed, language);
    if (mailed.size > ReplyLimitBytes) {
        line += Pick(language, " (only the first %1 bytes are read)", "（只读取前 %1 字节）").arg(ReplyLimitBytes);
    }
    return SafeText(line) + QLatin1Char('\n');
}

QString MeaningText(const FieldMeaning& meaning, Language language)
{
    const QString value = meaning.value.userType() == QMetaType::QString ? meaning.value.toString()
        : meaning.value.isValid() ? QString::number(meaning.value.toDouble(), 'f', 0)
                                  : QString();
    const QString text = language == Language::Chinese ? meaning.chinese : meaning.english;
    return text.isEmpty() ? value : value + QStringLiteral(" = ") + text;
}

// A row of the table; the bytes of serial numbers can be hidden.
TableRow FieldRow(const MailedReply& mailed, const PlacedField& placed, const QString& meaning, Language language)
{
    const bool isHidden = mailed.hidesSerialNumbers && IsSerialNumber(placed.field);
    const QByteArray bytes = mailed.reply.bytes.mid(placed.offset, std::min(placed.size, BytesInTable)).toHex(' ');
    const QString shown = QString::fromLatin1(bytes) + (placed.size > BytesInTable ? QStringLiteral(" …") : QString());
    return {{QString::number(placed.offset)},
            {isHidden ? QStringLiteral("*") : shown},
            {Pick(language, NameOf(placed.field).english, NameOf(placed.field).chinese)},
            {isHidden ? QString() : meaning}};
}

QString MailedTable(const MailedReply& mailed, const CommandLine& line)
{
    const auto title = [&line](const char* english, const char* chinese) {
        return TableCell{Pick(line.language, english, chinese), Colour::Bold};
    };
    QVector<TableRow> rows{
        {title("Offset", "偏移"), title("Bytes", "字节"), title("Field", "字段"), title("Meaning", "含义")}};
    const ReplyLayout& layout = mailed.reply.layout;
    const QVector<FieldMeaning> meanings = MeaningsOf(mailed.reply);
    for (int i = 0; i < meanings.size(); ++i) {
        const QString meaning = MeaningText(meanings.at(i), line.language);
        rows.append(FieldRow(mailed, layout.fields.at(i), meaning, line.language));
    }
    if (layout.fault) {
        const PlacedField rest{layout.fault->field, layout.fault->offset, layout.fault->left};
        rows.append(FieldRow(mailed, rest, Pick(line.language, "cut off", "不完整"), line.language));
        rows.last().last().colour = Colour::Red;
    }
    return Headline(mailed, line.language) + FormatTable(rows, line.isColoured, MeaningColumns);
}

} // namespace

int RunDecode(const CommandLine& line)
{
    int exitCode = ExitDone;
    QJsonArray replies;
    QString table;
    for (const QString& name : line.arguments) {
        MailedReply mailed;
        mailed.file = name;
        mailed.hidesSerialNumbers = line.hidesSerialNumbers;
        const std::optional<QByteArray> bytes = ReadBytes(name, mailed.size);
        if (!bytes) {
            Complain(Pick(line.language, "cannot read %1", "无法读取 %1").arg(name));
            exitCode = ExitNotRead;
            continue;
        }
        mailed.reply = DecodeReply(FamilyFor(name, line), *bytes);
        exitCode = mailed.reply.isAccepted ? exitCode : ExitNotRead;
        if (line.hidesSerialNumbers) {
            HideSerialNumbers(mailed.reply);
        }
        if (line.format == OutputFormat::Json) {
            replies.append(MailedJson(mailed));
        } else {
            table += (table.isEmpty() ? QString() : QStringLiteral("\n")) + MailedTable(mailed, line);
        }
    }
    const QByteArray text = line.format == OutputFormat::Json
        ? JsonText(JsonObject({{"format_version", FormatVersion()}, {"replies", replies}}), true)
        : table.toUtf8();
    return Print(text) ? exitCode : ExitNotRead;
}
