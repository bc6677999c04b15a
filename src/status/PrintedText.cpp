// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/PrintedText.h"

#include <algorithm>

namespace {

constexpr int ColumnGap = 2;
constexpr uint LastByteSized = 0xFF;

int ColumnsOf(uint character)
{
    switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
        return 0;
    default:
        break;
    }
    // The blocks that terminals draw twice as wide: Hangul letters, CJK from radicals to compatibility forms,
    // fullwidth forms, pictographs and the supplementary ideographs.
    const bool isWide = (character >= 0x1100 && character <= 0x115F) || (character >= 0x2E80 && character <= 0xA4CF) ||
        (character >= 0xAC00 && character <= 0xD7A3) || (character >= 0xF900 && character <= 0xFAFF) ||
        (character >= 0xFE30 && character <= 0xFE6F) || (character >= 0xFF00 && character <= 0xFF60) ||
        (character >= 0xFFE0 && character <= 0xFFE6) || (character >= 0x1F300 && character <= 0x1FAFF) ||
        (character >= 0x20000 && character <= 0x3FFFD);
    return isWide ? 2 : 1;
}

QString Escaped(uint character)
{
    return character <= LastByteSized ? QString::asprintf("\\x%02X", character)
                                      : QString::asprintf("\\u%04X", character);
}

QString Painted(const QString& text, Colour colour)
{
    const auto sequence = [colour]() {
        switch (colour) {
        case Colour::Red:
            return "\033[31m";
        case Colour::Yellow:
            return "\033[33m";
        case Colour::Green:
            return "\033[32m";
        case Colour::Dim:
            return "\033[2m";
        case Colour::Bold:
            return "\033[1m";
        case Colour::None:
            break;
        }
        return "";
    };
    return colour == Colour::None ? text : QLatin1String(sequence()) + text + QLatin1String("\033[0m");
}

// A name may be as long as the printer list.
QString Beginning(QString text, int characters)
{
    text.truncate(characters);
    return text;
}

} // namespace

QString Pick(Language language, const char* english, const char* chinese)
{
    return QString::fromUtf8(language == Language::Chinese ? chinese : english);
}

QString Filled(const QString& pattern, const QStringList& values)
{
    QString text;
    for (int i = 0; i < pattern.size(); ++i) {
        const bool isPlace = pattern.at(i) == QLatin1Char('%') && i + 1 < pattern.size();
        const int place = isPlace ? pattern.at(i + 1).digitValue() - 1 : -1;
        if (place >= 0 && place < values.size()) {
            text += values.at(place);
            ++i;
        } else {
            text += pattern.at(i);
        }
    }
    return text;
}

QStringList SplitAtCommas(const QString& text)
{
    QStringList parts;
    const QList<QByteArray> bytes = text.toUtf8().split(',');
    for (const QByteArray& part : bytes) {
        parts.append(QString::fromUtf8(part));
    }
    return parts;
}

bool IsHarmful(uint character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

QString SafeText(const QString& text)
{
    QString safe;
    safe.reserve(text.size());
    const QVector<uint> characters = text.toUcs4();
    for (const char32_t character : characters) {
        if (IsHarmful(character)) {
            safe += Escaped(character);
        } else {
            safe += QString::fromUcs4(&character, 1);
        }
    }
    return safe;
}

int ColumnsOf(const QString& text)
{
    int columns = 0;
    const QVector<uint> characters = text.toUcs4();
    for (const uint character : characters) {
        columns += ColumnsOf(character);
    }
    return columns;
}

QString CutText(const QString& text, int columns)
{
    // No character has more than one column for each of its units, so most texts need no closer look.
    if (text.size() * 2 <= columns || ColumnsOf(text) <= columns) {
        return text;
    }
    QString cut;
    int used = 1; // the ellipsis
    const QVector<uint> characters = Beginning(text, columns * 2).toUcs4();
    for (const char32_t character : characters) {
        used += ColumnsOf(character);
        if (used > columns) {
            break;
        }
        cut += QString::fromUcs4(&character, 1);
    }
    return cut + QChar(0x2026);
}

QString Rfc3339(const std::optional<QDateTime>& time)
{
    constexpr int lastYear = 9999;
    if (!time || !time->isValid() || time->date().year() < 0 || time->date().year() > lastYear) {
        return {};
    }
    return time->toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz")) + QLatin1Char('Z');
}

QString FormatTable(const QVector<TableRow>& rows, bool isColoured, int cellColumns)
{
    QVector<QVector<QString>> texts;
    QVector<int> widths;
    for (const TableRow& row : rows) {
        QVector<QString> cells;
        for (const TableCell& cell : row) {
            cells.append(CutText(SafeText(Beginning(cell.text, cellColumns * 2)), cellColumns));
            const int column = cells.size() - 1;
            widths.resize(std::max(widths.size(), cells.size()));
            widths[column] = std::max(widths.at(column), ColumnsOf(cells.last()));
        }
        texts.append(cells);
    }
    QString table;
    for (int row = 0; row < rows.size(); ++row) {
        QString line;
        int blanks = 0;
        for (int column = 0; column < rows.at(row).size(); ++column) {
            const QString& text = texts.at(row).at(column);
            line += QString(text.isEmpty() ? 0 : blanks, QLatin1Char(' '));
            line += isColoured && !text.isEmpty() ? Painted(text, rows.at(row).at(column).colour) : text;
            blanks = (text.isEmpty() ? blanks : 0) + widths.at(column) - ColumnsOf(text) + ColumnGap;
        }
        table += line + QLatin1Char('\n');
    }
    return table;
}
