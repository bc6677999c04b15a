// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>

/// Waits up to `limit` until a tray can take an icon: until a StatusNotifier host is registered on the session bus, or
/// the X display has a tray of the older kind and there has been no StatusNotifierWatcher for 3 s. Qt looks for a tray
/// only once, when a program starts. Returns at once if there is neither a bus nor a display.
///
/// A separate thread does the checks. It is left running if a bus or an X server does not answer, so the caller must
/// soon end or become another program.
void WaitForTray(std::chrono::milliseconds limit);
