// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ProcessSample.h"

#include <QByteArray>

/// One line of a soak run's record.
struct SoakSample
{
    double seconds = 0; ///< since the first fault
    bool isSettled = false; ///< warmed up, and no storm of the printer list goes on or has just gone by
    int expectedWorkers = 0; ///< status workers that the lists seen so far account for
    ProcessSample process;
    double cpuPercent = 0; ///< of one core, since the sample before
    double answerMs = 0; ///< until the main thread answered a question on the session bus
};

QByteArray SoakCsvHeader();
QByteArray SoakCsvLine(const SoakSample& sample);
