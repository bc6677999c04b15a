// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"

#include <QStringList>

#include <array>

constexpr int SupportedModelCount = 8;

/// The supported models when attached by USB; see docs/contract.md. Built before main() and never written: readable
/// from every thread.
extern const std::array<stModelInfo, SupportedModelCount> c_stModelInfoList;
/// The supported models on the network: the same rows, but a table of its own, so that it can diverge.
extern const std::array<stModelInfo, SupportedModelCount> c_stModelInfoList_net;
/// Model codes of the QZ family, whose status replies have a format of their own. Never destroyed: a worker that was
/// let go may ask for a name while static objects are being destroyed.
extern const QStringList& QZModelName;

/// Whether the print queue `name` holds a model code of the QZ family, anywhere and in exactly that case.
bool IsQZPrinterName(const QString& name);

/// USB identifiers of a further group of devices by product name. `vid` is set in every case, `pid` only when the
/// name holds a known pattern; returns whether it does.
bool FindVidPid(const QString& productName, int& vid, int& pid);
