// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>

class QWidget;

/// The windows are laid out for a desktop that is 1920 pixels wide. On a wider desktop all geometry grows with it. Call
/// these functions on the main thread only.
namespace ScreenScale {

/// Returns the size of the desktop in logical pixels, all screens together.
QSize DesktopSize();
/// Returns whether the desktop is wider than 1920 pixels.
bool IsScaled();
/// Returns the desktop width / 1920.
float Factor();
/// Returns `length` times the factor, truncated.
int Scaled(int length);
/// Removes the maximise button and fixes the window at its current size.
void FixSize(QWidget& window);
/// Moves the window's frame to the middle of the desktop.
void Centre(QWidget& window);

} // namespace ScreenScale
