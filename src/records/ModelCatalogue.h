// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

#include <QStringList>

#include <array>

constexpr int SupportedModelCount = 8;

/// The supported models that are attached by USB; see docs/contract.md. Built before main() and never written, so
/// readable from every thread.
extern const std::array<stModelInfo, SupportedModelCount> c_stModelInfoList;
/// The supported models on the network. The rows are the same; the table is separate so that it can diverge.
extern const std::array<stModelInfo, SupportedModelCount> c_stModelInfoList_net;
/// Model codes of the QZ family, whose status replies have their own format. Never destroyed: a worker that was left
/// running may ask for a name while static objects are being destroyed.
extern const QStringList& QZModelName;

/// Returns whether the queue name `name` contains a model code of the QZ family; case matters.
bool IsQZPrinterName(const QString& name);

/// Finds the USB identifiers of a further group of devices by product name. Always sets `vid`. Sets `pid` and returns
/// true only if the name contains a known pattern.
bool FindVidPid(const QString& productName, int& vid, int& pid);
