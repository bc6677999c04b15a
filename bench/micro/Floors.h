// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"

#include <QByteArray>

#include <atomic>
#include <vector>

struct Walk;

// What each figure is measured against: the least work that any correct program has to do. Written without Qt where
// the assistant's interfaces leave the choice.

/// "file + walk": a status file looked at, opened, read, closed and taken apart.
bool ReadAndWalk(const char* path, Walk& walk);
/// "stat": the one look at an unchanged status file.
bool LookAtFile(const char* path);

/// "table": any code below 65536 to a condition by one read.
class ConditionTable
{
public:
    ConditionTable();
    enErrorStatus condition(unsigned long code) const;

private:
    std::vector<unsigned char> m_conditions;
};

/// "compare": the four fields that decide, where they lie, without a copy of the states.
bool DiffersInPlace(const stPrinterState& a, const stPrinterState& b);

/// "read + compare": the printer list file read, each line parted at its first '=', and the names and ports compared
/// with these, in order. True when all are the same.
bool ListsThesePrinters(const char* path, const std::vector<QByteArray>& namesAndPorts);

/// "load + branch": what a call that does nothing while a flag is false must cost.
void AppendWhenOn(const std::atomic<bool>& isOn, const char* text);

/// "open + write + close": a finished line appended to a file that is opened for it, whose size is looked at.
bool AppendLine(const char* path, const QByteArray& line);
