// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "SoakSample.h"

#include <QString>
#include <QVector>

struct Finding
{
    bool isGood = false;
    QString text;
};

/// Judges whether the assistant grew or became slower during a run. A pure function of the record.
///
/// The number of worker threads must match exactly. Other threads must be no more in the last quarter of the run than
/// in the first; nor must descriptors, after subtracting at most one per worker if the first workers took that many.
/// Memory, processor and response time are judged by their trend over medians of windows of `windowSeconds`, in
/// stretches with the same number of workers, so that the cost of workers does not count as growth. A trend is bad if
/// even its lower confidence bound exceeds the growth allowed for a whole run. The cost of a worker has its own limit.
/// The share of all memory is not judged because it depends on other programs that map the same libraries.
QVector<Finding> Judge(const QVector<SoakSample>& samples, double windowSeconds);
