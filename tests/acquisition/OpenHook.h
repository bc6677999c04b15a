// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

/// Called once, when this process next opens a status file; then forgotten. So a test acts in the middle of a cycle,
/// when the printer has been copied from the list and nothing written back.
void OnNextStatusFile(const std::function<void()>& hook);
