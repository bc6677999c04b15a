// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "infrastructure/UtilThreadBase.h"
#include "records/PrinterRecords.h"
#include "records/SharedPrinterList.h"

class QTextCodec;

/// Reads the printer list every three seconds. When the printers have changed, it replaces the shared list and signals
/// this.
///
/// Lives on its own thread; its loop runs inside SlotTaskStart(). A list file that is missing or not usable contains no
/// printers; nothing is reported.
class TrdDeviceManage : public UtilThreadBase
{
    Q_OBJECT

public:
    explicit TrdDeviceManage(QObject* parent);

    /// Sets the shared list, which the caller owns. Call this before the loop starts. With null, also while the loop
    /// runs, the worker lets go of the list and never touches it again.
    void Init(QList<stPrinterManager>* list);
    /// Reads the printers of the list file, one for each section, in order, at most 1000. Missing sections and keys
    /// give empty texts and 0. The argument has no effect.
    QList<stPrinterInfo> GetPrinterInfo(bool reserved);
    /// Returns a record for each printer, in the initial state.
    QList<stPrinterManager> GetInitPrinterList(QList<stPrinterInfo> printers);
    void InitStPrinterInfo(stPrinterInfo& info);
    void InitStPrinterState(stPrinterState& state);

signals:
    /// The shared list has been replaced. Emitted with the list's lock held: use queued connections only.
    void SgnUpdatePrinterList();

public slots:
    /// Loops until a stop is requested. A second call does nothing.
    void SlotTaskStart();
    void SlotThreadQuit();

private:
    /// Returns whether the list was replaced.
    bool ReplaceListIfChanged(const QList<stPrinterInfo>& printers);

    SharedPrinterList pPrinterList; ///< no list before Init() and after letting go
    QTextCodec* pTextCodec; ///< UTF-8, null with Qt 6; see docs/contract.md
};
