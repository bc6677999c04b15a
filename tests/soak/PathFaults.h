// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Chance.h"

#include <QString>
#include <QVector>

/// Something in a file's place that is not a printer list and, for most kinds, not a status reply.
struct PathFault
{
    const char* name = "";
    void (*put)(const QString& path, Chance& chance) = nullptr; ///< the path must be free
};

const QVector<PathFault>& PathFaults();

/// Removes whatever is at the path, including an empty folder.
void FreePath(const QString& path);
