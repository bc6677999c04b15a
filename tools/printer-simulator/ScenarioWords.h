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
    QString reason = {}; // why the line cannot be read; empty when it can
};

// Splits one line at blanks. A word in double quotes may hold blanks, and \" and \\ stand for " and \ in it.
// A # at the beginning of a word starts a comment.
ScenarioWords SplitScenarioLine(const QByteArray& utf8Line);

// A plain decimal number without sign or exponent, in units of its last decimal: with two decimals, "12.5" is 1250.
// Nothing when the word is no such number, has more decimals, or lies above the maximum (in the same units).
std::optional<quint32> ParseDecimal(const QString& word, int decimals, quint32 maximum);

// "0x" and one to four hexadecimal digits.
std::optional<quint16> ParseCode(const QString& word);
