// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Formats a command in printf style, with text arguments in the local 8-bit encoding, runs it with the C library's
/// system() and waits for its end. Returns the result of system(). A command of more than 255 bytes is not run but
/// logged, and the result is -1. Arguments are not quoted: the caller must make them safe for a shell.
__attribute__((format(printf, 1, 2))) int RunShellCommand(const char* format, ...);
