// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

#include <QByteArray>

#include <atomic>
#include <vector>

struct Walk;

// The floor of each figure: the least work that any correct program must do. The floors use no Qt unless the
// assistant's interfaces require it.

/// "file + walk": calls stat, opens, reads, closes and walks a status file.
bool ReadAndWalk(const char* path, Walk& walk);
/// "stat": the one call that an unchanged status file needs.
bool LookAtFile(const char* path);

/// "table": maps any code below 65536 to a condition with one read.
class ConditionTable
{
public:
    ConditionTable();
    enErrorStatus condition(unsigned long code) const;

private:
    std::vector<unsigned char> m_conditions;
};

/// "compare": compares the four deciding fields in place, without a copy of the states.
bool DiffersInPlace(const stPrinterState& a, const stPrinterState& b);

/// "read + compare": reads the printer list, splits each line at the first '=', and compares names and ports with
/// these, in order. Returns true if all are equal.
bool ListsThesePrinters(const char* path, const std::vector<QByteArray>& namesAndPorts);

/// "load + branch": the cost of a call that does nothing while a flag is false.
void AppendWhenOn(const std::atomic<bool>& isOn, const char* text);

/// "open + write + close": opens a file, reads its size, and appends a finished line.
bool AppendLine(const char* path, const QByteArray& line);
