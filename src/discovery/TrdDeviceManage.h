// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"
#include "SharedPrinterList.h"
#include "UtilThreadBase.h"

class QTextCodec;

/// Reads the driver package's printer list every three seconds and, when the set of printers has changed, replaces
/// the shared printer list and says so.
///
/// Lives on a thread of its own; its loop runs inside SlotTaskStart(). A list file that is missing or cannot be used
/// lists no printers; nothing is reported.
class TrdDeviceManage : public UtilThreadBase
{
    Q_OBJECT

public:
    explicit TrdDeviceManage(QObject* parent);

    /// Gives the worker the shared list, which stays the caller's; to be called before the loop starts. With null,
    /// also while the loop runs, the worker lets go of the list and never touches it again.
    void Init(QList<stPrinterManager>* list);
    /// The printers of the list file, one record a section, in order; missing sections and keys give empty texts
    /// and 0. The argument has no effect.
    QList<stPrinterInfo> GetPrinterInfo(bool reserved);
    /// The same printers as elements of the shared list, each in the default state.
    QList<stPrinterManager> GetInitPrinterList(QList<stPrinterInfo> printers);
    void InitStPrinterInfo(stPrinterInfo& info);
    void InitStPrinterState(stPrinterState& state);

signals:
    /// The shared list has been replaced. Emitted with the list's lock held: for queued connections.
    void SgnUpdatePrinterList();

public slots:
    /// Loops until a stop is requested. A second call does nothing.
    void SlotTaskStart();
    void SlotThreadQuit();

private:
    /// Returns whether the list was replaced.
    bool ReplaceListIfChanged(const QList<stPrinterInfo>& printers);

    SharedPrinterList pPrinterList; ///< none until Init()
    QTextCodec* pTextCodec; ///< UTF-8; see docs/contract.md
};
