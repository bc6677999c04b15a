// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/Commands.h"
#include "status/PrinterCheck.h"

namespace {

constexpr double MaximumPercent = 100;

// Returns whether the option is absent or a number of percent.
bool ReadPercent(const CommandLine& line, const QString& option, double& percent)
{
    if (!line.options.contains(option)) {
        return true;
    }
    bool isNumber = false;
    const double value = line.options.value(option).toDouble(&isNumber);
    if (!isNumber || !(value >= 0 && value <= MaximumPercent)) {
        return false;
    }
    percent = value;
    return true;
}

void ReadState(const CommandLine& line, const QString& option, CheckState& state)
{
    for (const CheckState candidate :
         {CheckState::Ok, CheckState::Warning, CheckState::Critical, CheckState::Unknown}) {
        if (line.options.value(option) == QString::fromLatin1(CheckStateName(candidate)).toLower()) {
            state = candidate;
        }
    }
}

// Returns what is wrong with the options; empty if nothing is.
QString ReadLimits(const CommandLine& line, CheckLimits& limits)
{
    if (!ReadPercent(line, QStringLiteral("toner-warning"), limits.tonerWarning)) {
        return QStringLiteral("--toner-warning takes percent, 0 to 100");
    }
    if (!ReadPercent(line, QStringLiteral("toner-critical"), limits.tonerCritical)) {
        return QStringLiteral("--toner-critical takes percent, 0 to 100");
    }
    ReadState(line, QStringLiteral("offline"), limits.offline);
    return {};
}

} // namespace

int RunCheck(const CommandLine& line)
{
    CheckLimits limits;
    const QString error = ReadLimits(line, limits);
    if (!error.isEmpty()) {
        return RefuseCheck(error);
    }
    int ignored = ExitDone; // an unreadable file is part of the result
    const CheckResult result = CheckPrinters(ReadReports(line, ignored), line.arguments, limits);
    return static_cast<int>(Print(result.line) ? result.state : CheckState::Unknown);
}

int RefuseCheck(const QString& reason)
{
    Print(UnknownCheck(reason));
    return static_cast<int>(CheckState::Unknown);
}
