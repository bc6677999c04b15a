// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

// What depends on the number is not constant, and a list of smaller integers would not accept it.
#pragma GCC diagnostic ignored "-Wnarrowing"

/// Returns whether the environment variable MUTANT chooses the mutant of this number. If MUTANTS_REACHED names a file,
/// its byte of this number becomes 1: the place of the mutant was reached.
extern "C" bool MutantIs(int index);
