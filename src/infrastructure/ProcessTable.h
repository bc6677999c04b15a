// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// The length to which the process table cuts names.
constexpr int ProcessNameCharacters = 15;

/// How many processes of all users, zombies and the caller too, have the name `name` in any case; 0 when the process
/// table cannot be read. `name` has at most ProcessNameCharacters characters.
int CountProcesses(const QString& name);
