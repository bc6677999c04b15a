// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

/// A tray message as the desktop received it.
struct DesktopMessage
{
    QString app;
    QString icon;
    QString title;
    QString body;
    int urgency = 0; ///< 0 low, 1 normal, 2 critical
    int timeoutMs = 0;
};

/// The messages since the start of the test program or since the last ForgetDesktopMessages(), in order.
QList<DesktopMessage> DesktopMessages();
void ForgetDesktopMessages();
