// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include "SimulatedPrinter.h"

#include <QString>
#include <QVector>

#include <chrono>

// The whole picture at one moment. Printers appear in the order of the printer list; those that are not listed
// may stand anywhere.
struct ScenarioFrame
{
    std::chrono::milliseconds delay = std::chrono::milliseconds::zero(); // since the frame before
    QVector<SimulatedPrinter> printers = {};
};

struct Scenario
{
    QVector<ScenarioFrame> frames = {}; // the first one is the start
    bool repeats = false; // from the start again, after the last frame
};

struct ScenarioError
{
    int line = 0; // from 1
    QString reason = {};
};
