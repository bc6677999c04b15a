// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// The process table cuts names to this length.
constexpr int ProcessNameCharacters = 15;

/// Returns how many processes have the name `name`, ignoring case: of all users, with zombies and the caller. Returns 0
/// when the process table cannot be read. `name` has at most ProcessNameCharacters characters.
int CountProcesses(const QString& name);
