// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

/// What a screen reader finds in a program's windows. The program must have been started with
/// QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1, on a machine that has an accessibility bus.
struct AccessibleObject
{
    QString service; ///< on the accessibility bus
    QString path;
    QString name; ///< the text
};

/// Whether there is an accessibility bus.
bool IsAccessibilityAvailable();
/// All objects of the program called `name`, windows before what they hold; empty while it is not registered.
QList<AccessibleObject> AccessibleObjects(const QString& name);
/// Does an object's first action, e.g. presses a button.
bool DoAction(const AccessibleObject& object);
