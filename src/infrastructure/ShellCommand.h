// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Formats a command printf-style, text arguments in the local 8-bit encoding, and runs it with the C library's
/// system(), waiting for its end. Returns what system() returned. A command that does not fit into 255 bytes is not
/// run: the log says so, and the result is -1. The arguments reach a shell as they are: whoever calls this answers for
/// them.
__attribute__((format(printf, 1, 2))) int RunShellCommand(const char* format, ...);
