// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <chrono>

/// Waits until a tray can take an icon, at most `limit`: until a StatusNotifier host is registered on the session bus,
/// or a tray of the older kind is on the X display and there has been no StatusNotifierWatcher for 3 s. Qt asks this
/// once, when a program starts. Returns at once when there is neither a bus nor a display to wait for.
///
/// The looks happen on a thread of their own, which is left behind when a bus or an X server does not answer: the
/// caller is to end or to become another program soon.
void WaitForTray(std::chrono::milliseconds limit);
