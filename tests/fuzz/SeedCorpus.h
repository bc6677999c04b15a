// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// The encoders' seeds: contents by path below the corpus folder.
QMap<QString, QByteArray> SeedCorpus();
