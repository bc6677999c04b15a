// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include "Scenario.h"

#include <QByteArray>
#include <QVector>

struct ParsedScenario
{
    Scenario scenario = {}; // valid only if there are no errors
    QVector<ScenarioError> errors = {}; // in the order of lines, at most one for each line
};

// Parses the scenario language (docs/printer-simulator.md). A pure function: any input gives a scenario or errors.
ParsedScenario ParseScenario(const QByteArray& text);
