// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "shell/ScreenScale.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace {

constexpr int LayoutDesktopWidth = 1920;

// Qt loads OpenGL with a program's first window, in case a widget draws with it: 10 MiB of private memory and half of
// the start-up time. No widget here does. The attribute must be set before the application object exists. Every window
// of this library needs this file, so a program that links the library contains it.
void DrawWithoutOpenGL()
{
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
}
Q_CONSTRUCTOR_FUNCTION(DrawWithoutOpenGL)

} // namespace

QSize ScreenScale::DesktopSize()
{
    QRect desktop;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens) {
        desktop |= screen->geometry();
    }
    return desktop.size();
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
