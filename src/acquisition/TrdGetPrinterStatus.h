// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"
#include "SharedPrinterList.h"
#include "StatusFile.h"
#include "UtilThreadBase.h"

#include <atomic>

/// Keeps the status of one printer up to date: about once a second it reads the printer's status file, writes the
/// result into the shared printer list and says when something has changed that a user must see.
///
/// Lives on a thread of its own; its loop runs inside SlotTaskStart(). The printer is the one at the worker's index
/// of the shared list.
class TrdGetPrinterStatus : public UtilThreadBase
{
    Q_OBJECT

public:
    explicit TrdGetPrinterStatus(QObject* parent);

    /// Gives the worker its place in the shared list, which stays the caller's; to be called before the loop starts.
    /// With -1 and null, also while the loop runs, the worker lets go of the list and never touches it again.
    void Init(int index, QList<stPrinterManager>* list);
    /// Whether the current printer is worth a query now, and in which `interval` (ms) to ask again; see
    /// docs/contract.md.
    bool CheckNeedStatus(int& interval);
    /// Whether the queue called `name` belongs to the QZ family.
    bool isQZPrinter(QString name);
    /// USB identifiers by product name; see docs/contract.md.
    bool GetPrinterVidPid(QString productName, int& vid, int& pid);

    /// Reads and evaluates the status file of the printer called `name` unless its modification time is the one
    /// remembered; `force` reads it all the same. Returns 0 when it was evaluated, 1 when it is unchanged, -1 when it
    /// is missing, cannot be read or was rejected; also 0 after an exception, which is logged.
    int GetPrinterStatusFile(QString name, bool force);
    /// Reads, but does not evaluate, the current printer's status file; the argument has no effect. Returns 1 when it
    /// is unchanged, 0 after an exception and otherwise -1. See docs/contract.md.
    int GetPrinterStatusUSB(QString name);
    /// Asks the printer at the IPv4 `address` with one datagram and evaluates the answer as one of the standard
    /// family; blocks for up to a second. Returns 0 when evaluated, -1 for an empty address or a rejected answer,
    /// -2 without a socket, -3 when sending failed, -4 when the time-out could not be set, -5 without an answer of
    /// more than 7 bytes. See docs/contract.md.
    int GetPrinterStatusUDP(QString address);

    /// Evaluates a reply of `len` bytes of the standard or the QZ family. Returns 0 when the current state was
    /// replaced, -1 when the decoder rejected the reply, which leaves the state as it was.
    int CheckPrinterStatus(unsigned char* buf, unsigned long len);
    int CheckPrinterStatus_QZ(unsigned char* buf, unsigned long len);
    /// Whether two states differ in what users are told: status, remaining toner, errors and warnings.
    bool CheckStatusChange(stPrinterState a, stPrinterState b);

signals:
    /// The state of the printer at `index` of the shared list has changed.
    void SgnUpdatePrinterStatus(int index);

public slots:
    /// Polls until a stop is requested. A second call does nothing.
    void SlotTaskStart();
    void SlotThreadQuit();

protected:
    /// The printer and state that the running cycle works on.
    stPrinterManager stCurrent;

private:
    void PollPrinter();
    void CountFailedRead();

    static constexpr unsigned long ReplyBufferBytes = 2048;

    std::atomic<int> iPrinterIndex{-1};
    SharedPrinterList pPrinterList; ///< none until Init() and after letting go
    unsigned char byReplyBuffer[ReplyBufferBytes] = {};
    StatusFile statusFile;
};
