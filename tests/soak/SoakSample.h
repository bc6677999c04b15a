// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ProcessSample.h"

#include <QByteArray>

/// One line of a soak run's record.
struct SoakSample
{
    double seconds = 0; ///< since the first fault
    bool isSettled = false; ///< false during the warm-up and during and shortly after a storm of the printer list
    int expectedWorkers = 0; ///< status workers that the lists so far have caused
    ProcessSample process;
    double cpuPercent = 0; ///< of one core, since the previous sample
    double answerMs = 0; ///< response time of the main thread to a call on the session bus
};

QByteArray SoakCsvHeader();
QByteArray SoakCsvLine(const SoakSample& sample);
