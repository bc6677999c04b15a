// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTime>
#include <QStringList>
#include <QVector>

#include <optional>

/// The language of what people read. The values are the columns of the text tables. Output for programs has none.
enum class Language
{
    English = 0,
    Chinese = 1
};

QString Pick(Language language, const char* english, const char* chinese);
// These two replace functions of QString. A program that uses those does not start with Qt 5.11.
/// Replaces %1 to %9 by the values.
QString Filled(const QString& pattern, const QStringList& values);
QStringList SplitAtCommas(const QString& text);

/// Whether a character can do more on a terminal than show itself: control and formatting characters (which can colour,
/// move, reverse or answer), line ends and unpaired surrogates.
bool IsHarmful(uint character);
/// Replaces harmful characters by escape sequences such as \x1B or \u202E.
QString SafeText(const QString& text);
/// Cuts a text to `columns` and ends it with an ellipsis if it was longer.
QString CutText(const QString& text, int columns);
/// The columns that a text takes on a terminal: Chinese characters take two, combining characters none.
int ColumnsOf(const QString& text);
/// RFC 3339 in UTC with milliseconds; a null text if there is no such time or RFC 3339 cannot express its year.
QString Rfc3339(const std::optional<QDateTime>& time);

enum class Colour
{
    None,
    Red,
    Yellow,
    Green,
    Dim,
    Bold
};

struct TableCell
{
    QString text;
    Colour colour = Colour::None;
};
using TableRow = QVector<TableCell>;

constexpr int CellColumns = 60;

/// Lays out rows in columns, two blanks apart. Escapes all texts and cuts them to `cellColumns`. Colours only if
/// `isColoured`.
QString FormatTable(const QVector<TableRow>& rows, bool isColoured, int cellColumns = CellColumns);
