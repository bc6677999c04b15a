// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

/// Calls the hook once, when this process next opens a status file. So a test can act in the middle of a cycle, after
/// the printer was copied from the list and before the write-back.
void OnNextStatusFile(const std::function<void()>& hook);
