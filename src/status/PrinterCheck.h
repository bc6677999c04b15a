// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrinterReport.h"

#include <QStringList>

/// The exit codes of monitoring plug-ins.
enum class CheckState
{
    Ok = 0,
    Warning = 1,
    Critical = 2,
    Unknown = 3
};

/// "OK", "WARNING", "CRITICAL" or "UNKNOWN".
const char* CheckStateName(CheckState state);

struct CheckLimits
{
    double tonerWarning = 10; ///< percent
    double tonerCritical = 5; ///< percent
    CheckState offline = CheckState::Unknown;
};

struct CheckResult
{
    CheckState state = CheckState::Ok;
    QByteArray line; ///< text and performance data, with a line end
};

/// Judges the printers with these queue names, or all if there are none, in the manner of monitoring plug-ins: errors
/// are critical, warnings are warnings. The worst state counts; unknown is better than a warning.
CheckResult CheckPrinters(const PrinterReports& reports, const QStringList& queues, const CheckLimits& limits);

/// The line of a check that could not be made.
QByteArray UnknownCheck(const QString& reason);
