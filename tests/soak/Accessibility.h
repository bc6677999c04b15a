// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

/// An object that a screen reader finds in a program's windows. The program must have been started with
/// QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1, and the machine must have an accessibility bus.
struct AccessibleObject
{
    QString service; ///< on the accessibility bus
    QString path;
    QString name; ///< the text
};

/// All objects of the program called `name`, each window before its content. Empty until the program is registered.
QList<AccessibleObject> AccessibleObjects(const QString& name);
