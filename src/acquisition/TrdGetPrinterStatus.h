// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "acquisition/StatusFile.h"
#include "infrastructure/UtilThreadBase.h"
#include "records/PrinterRecords.h"
#include "records/SharedPrinterList.h"

#include <atomic>

/// Keeps the status of one printer up to date: about once a second it reads the printer's status file, writes its
/// record back to the shared list and signals changes that the user must see.
///
/// Lives on its own thread; its loop runs inside SlotTaskStart(). Its printer is the one at its index of the shared
/// list.
class TrdGetPrinterStatus : public UtilThreadBase
{
    Q_OBJECT

public:
    explicit TrdGetPrinterStatus(QObject* parent);

    /// Sets the worker's index and the shared list, which the caller owns. Call this before the loop starts. With -1
    /// and null, also while the loop runs, the worker lets go of the list and never touches it again.
    void Init(int index, QList<stPrinterManager>* list);
    /// Returns whether the current printer should be queried now, and sets the `interval` (ms) until the next query.
    /// May block while a command runs. See docs/contract.md.
    bool CheckNeedStatus(int& interval);
    /// Returns whether the queue called `name` belongs to the QZ family.
    bool isQZPrinter(QString name);
    /// Finds USB identifiers by product name; see FindVidPid() and docs/contract.md.
    bool GetPrinterVidPid(QString productName, int& vid, int& pid);

    /// Reads and evaluates the status file of the printer called `name` unless it has the remembered timestamp; `force`
    /// reads it in any case. Returns 0 when the file was evaluated, 1 when it is unchanged, and -1 when it is missing,
    /// unreadable or rejected. Also returns 0 after an exception, which is logged.
    int GetPrinterStatusFile(QString name, bool force);
    /// Reads the current printer's status file but does not evaluate it; the argument has no effect. Returns 1 when the
    /// file is unchanged, 0 after an exception and -1 otherwise. See docs/contract.md.
    int GetPrinterStatusUSB(QString name);
    /// Queries the printer at the IPv4 `address` and evaluates the answer as a reply of the standard family; blocks for
    /// up to a second. Returns 0 when the answer was evaluated, -1 for an empty address or a rejected answer, and
    /// otherwise the error of QueryPrinter(). See docs/contract.md.
    int GetPrinterStatusUDP(QString address);

    /// Evaluates a reply of `len` bytes of the standard or the QZ family. Returns 0 when the current state was
    /// replaced. Returns -1 and keeps the state when the decoder rejected the reply.
    int CheckPrinterStatus(unsigned char* buf, unsigned long len);
    int CheckPrinterStatus_QZ(unsigned char* buf, unsigned long len);
    /// Returns whether two states differ in what users see: status, remaining toner, errors or warnings.
    bool CheckStatusChange(stPrinterState a, stPrinterState b);

signals:
    /// The state of the printer at `index` of the shared list has changed.
    void SgnUpdatePrinterStatus(int index);

public slots:
    /// Polls until a stop is requested. A second call does nothing.
    void SlotTaskStart();
    void SlotThreadQuit();

protected:
    /// The record that the current poll works on.
    stPrinterManager stCurrent;

private:
    void PollPrinter();
    void CountFailedRead();

    static constexpr unsigned long ReplyBufferBytes = 2048;

    std::atomic<int> iPrinterIndex{-1};
    SharedPrinterList pPrinterList; ///< no list before Init() and after letting go
    unsigned char byReplyBuffer[ReplyBufferBytes] = {};
    StatusFile statusFile;
};
