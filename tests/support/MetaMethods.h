// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMetaMethod>
#include <QStringList>

/// The signals and slots that the class itself declares, in meta-object order, as "signal Name(types)" and "slot
/// Name(types)".
inline QStringList OwnMethods(const QMetaObject& meta)
{
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const bool isSignal = meta.method(i).methodType() == QMetaMethod::Signal;
        methods += (isSignal ? QStringLiteral("signal ") : QStringLiteral("slot ")) +
            QString::fromLatin1(meta.method(i).methodSignature());
    }
    return methods;
}
