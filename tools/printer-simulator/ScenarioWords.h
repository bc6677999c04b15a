// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

struct ScenarioWords
{
    QStringList words = {};
    QString reason = {}; // error message; empty if the line could be read
};

// Splits a line at blanks. A word in double quotes may contain blanks; inside it, \" and \\ stand for " and \.
// A # at the beginning of a word starts a comment.
ScenarioWords SplitScenarioLine(const QByteArray& utf8Line);

// Parses a decimal number without sign or exponent, in units of the last decimal: with two decimals, "12.5" is 1250.
// Returns nothing if the word is not such a number, has more decimals, or exceeds the maximum (in the same units).
std::optional<quint32> ParseDecimal(const QString& word, int decimals, quint32 maximum);

// Parses "0x" and one to four hexadecimal digits.
std::optional<quint16> ParseCode(const QString& word);
