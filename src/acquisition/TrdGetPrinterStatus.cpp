// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "TrdGetPrinterStatus.h"

#include "FixedPaths.h"
#include "LateWakeUps.h"
#include "ModelCatalogue.h"
#include "NetworkQuery.h"
#include "PrintQueue.h"
#include "StatusEvaluation.h"
#include "UtilLog.h"

#include <QCoreApplication>

namespace {

constexpr int PollingIntervalMs = 1000;
constexpr int MaximumFailedReads = 10;

constexpr int UsbQueryIntervalMs = 100;
constexpr int IdleQueryIntervalMs = 100;
constexpr int OfflineQueryIntervalMs = 10000;
constexpr int ActiveQueryIntervalMs = 1000;

// Labels under which support finds these lines in logs; see docs/contract.md.
constexpr char LogSource[] = "../TrdGetPrinterStatus";
constexpr int FileErrorLogLine = 268;
constexpr int UsbErrorLogLine = 216;

// Results of the two reads of the status file.
constexpr int Evaluated = 0;
constexpr int Unchanged = 1;
constexpr int Failed = -1;

} // namespace

TrdGetPrinterStatus::TrdGetPrinterStatus(QObject* parent)
    : UtilThreadBase(parent)
{
    stCurrent.stInfo.enType.clear();
}

// A running loop that sees only half of a letting go finds no printer either way.
void TrdGetPrinterStatus::Init(int index, QList<stPrinterManager>* list)
{
    iPrinterIndex = index;
    pPrinterList.assign(list);
}

bool TrdGetPrinterStatus::isQZPrinter(QString name)
{
    return IsQZPrinterName(name);
}

bool TrdGetPrinterStatus::GetPrinterVidPid(QString productName, int& vid, int& pid)
{
    return FindVidPid(productName, vid, pid);
}

void TrdGetPrinterStatus::SlotTaskStart()
{
    if (bTaskStarted) {
        return;
    }
    bTaskStarted = true;
    AllowLateWakeUps();
    do {
        PollPrinter();
        // Signals received while polling are queued, including one start request for every new worker. Drain the queue
        // each cycle, or it grows as long as the list keeps changing. All of the queue, since Qt keeps the places of
        // events that are picked out of it.
        QCoreApplication::sendPostedEvents();
    } while (!WaitForSleep(PollingIntervalMs));
}

void TrdGetPrinterStatus::SlotThreadQuit()
{
    bThreadQuit = true;
}

// The list may be rebuilt at any time between the copy and the write-back; then the cycle's result is dropped. The same
// holds when another worker of this printer was faster; then the next cycle reads the file again, or what this one has
// seen first would be lost.
void TrdGetPrinterStatus::PollPrinter()
{
    using WriteBack = SharedPrinterList::WriteBack;
    SharedPrinterList::Origin origin;
    if (!pPrinterList.copy(iPrinterIndex, stCurrent, &origin)) {
        return;
    }
    const bool isOffline = stCurrent.stState.enCurrentStatus == PS_OFFLINE;
    const int result = GetPrinterStatusFile(stCurrent.stInfo.strPrinterName, isOffline);
    if (result < 0) {
        CountFailedRead();
    }
    WriteBack outcome = pPrinterList.writeBack(stCurrent, result == Evaluated, origin);
    if (outcome == WriteBack::CancelFirst) {
        CancelJobOfQueue(stCurrent.stInfo.strPrinterName);
        outcome = pPrinterList.writeBackCancelled(stCurrent, origin);
    }
    if (outcome == WriteBack::Overtaken && result != Unchanged) {
        statusFile.forgetTime();
    }
    if (outcome == WriteBack::Changed) {
        emit SgnUpdatePrinterStatus(origin.index);
    }
}

// A printer that does not answer for a while keeps its last status; then it counts as off-line. Toner, counters and
// texts stay as they were last seen.
void TrdGetPrinterStatus::CountFailedRead()
{
    stPrinterState& state = stCurrent.stState;
    ++state.iFailCount;
    if (state.iFailCount > MaximumFailedReads) {
        state.enCurrentStatus = PS_OFFLINE;
        state.iNumberOfError = 0;
        state.iNumberOfWarning = 0;
        state.listError.clear();
        state.listWarning.clear();
        state.iFailCount = 0;
    }
}

int TrdGetPrinterStatus::GetPrinterStatusFile(QString name, bool force)
{
    try {
        unsigned long length = 0;
        switch (statusFile.read(name, force, byReplyBuffer, sizeof byReplyBuffer, length)) {
        case StatusFile::Read::Unchanged:
            return Unchanged;
        case StatusFile::Read::Done:
            return EvaluateReply(FamilyOf(name), byReplyBuffer, length, stCurrent.stState) ? Evaluated : Failed;
        case StatusFile::Read::Missing:
        case StatusFile::Read::Unreadable:
            return Failed;
        }
        return Failed;
    } catch (...) {
        WriteStringLog(LogSource, FileErrorLogLine, "GetPrinterStatusFile", QStringLiteral("throw error"));
        return Evaluated;
    }
}

int TrdGetPrinterStatus::GetPrinterStatusUSB(QString /*name*/)
{
    try {
        unsigned long length = 0;
        const StatusFile::Read result =
            statusFile.read(stCurrent.stInfo.strPrinterName, false, byReplyBuffer, sizeof byReplyBuffer, length);
        return result == StatusFile::Read::Unchanged ? Unchanged : Failed;
    } catch (...) {
        WriteStringLog(LogSource, UsbErrorLogLine, "GetPrinterStatusUSB", QStringLiteral("throw error"));
        return Evaluated;
    }
}

int TrdGetPrinterStatus::GetPrinterStatusUDP(QString address)
{
    unsigned long length = 0;
    const int result = QueryPrinter(address, byReplyBuffer, sizeof byReplyBuffer, length);
    return result == 0 ? CheckPrinterStatus(byReplyBuffer, length) : result;
}

int TrdGetPrinterStatus::CheckPrinterStatus(unsigned char* buf, unsigned long len)
{
    return EvaluateReply(StandardFamily(), buf, len, stCurrent.stState) ? Evaluated : Failed;
}

int TrdGetPrinterStatus::CheckPrinterStatus_QZ(unsigned char* buf, unsigned long len)
{
    return EvaluateReply(QZFamily(), buf, len, stCurrent.stState) ? Evaluated : Failed;
}

bool TrdGetPrinterStatus::CheckStatusChange(stPrinterState a, stPrinterState b)
{
    return DifferForUsers(a, b);
}

bool TrdGetPrinterStatus::CheckNeedStatus(int& interval)
{
    if (stCurrent.stInfo.iConnectType == CONNECT_TYPE_USB) {
        interval = UsbQueryIntervalMs;
        return true;
    }
    interval = IdleQueryIntervalMs;
    switch (stCurrent.stState.enCurrentStatus) {
    case PS_OFFLINE:
        interval = OfflineQueryIntervalMs;
        return true;
    case PS_READY:
        if (!IsQueuePrinting(stCurrent.stInfo.strPrinterName,
                             QString::fromLatin1(FixedPaths::ToolDirectory) +
                                 QString::asprintf("printer_%d.tmp", iPrinterIndex.load()))) {
            return false;
        }
        interval = ActiveQueryIntervalMs;
        return true;
    default:
        interval = ActiveQueryIntervalMs;
        return true;
    }
}
