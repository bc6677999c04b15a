// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Switches the process-wide diagnostic log on or off; it is off at start.
///
/// Switching on names the log file of this run after the present second and makes its directory, but opens nothing:
/// the first line creates the file. To be called on the main thread before any worker runs: the names that it sets
/// are read by writers without a lock of their own.
void SetLogEnable(bool bEnable);

/// Whether lines are written, for callers that would format texts in vain.
bool IsLogEnabled();

/// Appends one line "[date time] (file@line function) message" to the log; does nothing while the log is off.
///
/// `format` and the arguments are printf-style; text arguments are in the local 8-bit encoding. A message is cut to
/// 1023 bytes. A file that has grown past 1 MiB is continued in the next one. Failures lose the line silently.
/// Null `file` or `function` leave their field empty. May be called from any thread.
// The format is passed by value: va_start on a reference is undefined.
void WriteStringLog(const char* file, int line, const char* function, QString format, ...);
