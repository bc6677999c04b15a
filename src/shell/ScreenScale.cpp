// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "ScreenScale.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QWidget>

namespace {

constexpr int LayoutDesktopWidth = 1920;

// With a program's first window Qt loads OpenGL, in case a widget in it draws that way: 10 MiB of private memory and
// half of the start. No widget here does. Qt has to know before there is an application object, and every window of
// this library needs this file.
void DrawWithoutOpenGL()
{
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
}
Q_CONSTRUCTOR_FUNCTION(DrawWithoutOpenGL)

} // namespace

QSize ScreenScale::DesktopSize()
{
    return QApplication::desktop()->size();
}

bool ScreenScale::IsScaled()
{
    return DesktopSize().width() > LayoutDesktopWidth;
}

float ScreenScale::Factor()
{
    return static_cast<float>(DesktopSize().width() / static_cast<double>(LayoutDesktopWidth));
}

int ScreenScale::Scaled(int length)
{
    return static_cast<int>(static_cast<float>(length) * Factor());
}

void ScreenScale::FixSize(QWidget& window)
{
    window.setWindowFlags(window.windowFlags() & ~Qt::WindowMaximizeButtonHint);
    window.setFixedSize(window.size());
}

void ScreenScale::Centre(QWidget& window)
{
    const QSize desktop = DesktopSize();
    window.move((desktop.width() - window.width()) / 2, (desktop.height() - window.height()) / 2);
}
