// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include "Scenario.h"

#include <QByteArray>
#include <QVector>

struct ParsedScenario
{
    Scenario scenario = {}; // to be used only when there are no errors
    QVector<ScenarioError> errors = {}; // in the order of lines, at most one a line
};

// Reads the scenario language (docs/printer-simulator.md). A pure function: any bytes give a scenario or errors.
ParsedScenario ParseScenario(const QByteArray& text);
