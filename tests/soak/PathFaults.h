// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Chance.h"

#include <QString>
#include <QVector>

/// Something that lies in a file's place and holds neither a printer list nor, for most kinds, a status reply.
struct PathFault
{
    const char* name = "";
    void (*put)(const QString& path, Chance& chance) = nullptr; ///< expects a free path
};

const QVector<PathFault>& PathFaults();

/// Removes whatever lies at the path; an empty folder too.
void FreePath(const QString& path);
