// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>

class QWidget;

/// Windows are laid out for a desktop 1920 pixels wide; on a wider one every geometry grows with it.
/// Main thread only, as all functions that look at the desktop.
namespace ScreenScale {

/// The whole desktop in logical pixels, all screens together.
QSize DesktopSize();
/// Whether the desktop is wider than the one that the windows are laid out for.
bool IsScaled();
/// Desktop width / 1920.
float Factor();
/// `length` times the factor, truncated.
int Scaled(int length);
/// Removes the maximise button and fixes the window at its present size.
void FixSize(QWidget& window);
/// Moves the window's frame to the middle of the desktop.
void Centre(QWidget& window);

} // namespace ScreenScale
