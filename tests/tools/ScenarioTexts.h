// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ScenarioParser.h"

#include <QStringList>

// For scenarios that must be accepted: a refusal ends the test program.
inline Scenario Parse(const QByteArray& text)
{
    const ParsedScenario parsed = ParseScenario(text);
    if (!parsed.errors.isEmpty()) {
        qFatal("line %d: %s", parsed.errors.first().line, qPrintable(parsed.errors.first().reason));
    }
    return parsed.scenario;
}

inline QString ErrorTexts(const ParsedScenario& parsed)
{
    QStringList texts;
    for (const ScenarioError& error : parsed.errors) {
        texts.append(QStringLiteral("%1: %2").arg(QString::number(error.line), error.reason));
    }
    return texts.join(QLatin1Char('\n'));
}
