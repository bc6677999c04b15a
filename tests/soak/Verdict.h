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

/// What a run shows of a program that must neither grow nor tire; a pure function of the record.
///
/// Threads of workers are compared exactly. The threads beyond them must be no more in the last quarter of the run than
/// in the first; so must the descriptors, less one a worker at most, if that is what the first ones took. Memory,
/// processor and time to answer are judged by their trend over medians of windows of `windowSeconds`, inside stretches
/// of an equal number of workers, so that what workers cost does not count as growth: bad when even the lower
/// confidence bound of the trend exceeds the growth that a whole run may show. What a worker costs is bounded apart.
/// The share of all memory is not judged: other programs that map the same libraries move it.
QVector<Finding> Judge(const QVector<SoakSample>& samples, double windowSeconds);
