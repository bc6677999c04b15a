// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Switches the process-wide diagnostic log on or off; it is off at start.
///
/// Switching on takes the log file's name from the current second and makes its directory; the first line creates the
/// file. Call this on the main thread before any worker runs: it sets names that writers read, and takes no lock.
void SetLogEnable(bool bEnable);

/// Returns whether lines are written. Callers check this before they format texts.
bool IsLogEnabled();

/// Appends one line "[date time] (file@line function) message" to the log; does nothing while the log is off.
///
/// `format` and the arguments are printf-style; text arguments are in the local 8-bit encoding. A message is cut to
/// 1023 bytes. When a file has grown past 1 MiB, the next line starts a new file. A line that cannot be written is
/// lost. A null `file` or `function` leaves its field empty. May be called from any thread.
// The format is passed by value: va_start on a reference is undefined.
void WriteStringLog(const char* file, int line, const char* function, QString format, ...);
