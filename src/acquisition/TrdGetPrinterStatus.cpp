// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/TrdGetPrinterStatus.h"

#include "acquisition/NetworkQuery.h"
#include "acquisition/PrintQueue.h"
#include "acquisition/StatusEvaluation.h"
#include "infrastructure/FixedPaths.h"
#include "infrastructure/LateWakeUps.h"
#include "infrastructure/UtilLog.h"
#include "records/ModelCatalogue.h"

#include <QCoreApplication>

namespace {

constexpr int PollingIntervalMs = 1000;
constexpr int MaximumFailedReads = 10;

constexpr int UsbQueryIntervalMs = 100;
constexpr int IdleQueryIntervalMs = 100;
constexpr int OfflineQueryIntervalMs = 10000;
constexpr int ActiveQueryIntervalMs = 1000;

// Support scripts find the log lines by these labels; see docs/contract.md.
constexpr char LogSource[] = "../TrdGetPrinterStatus";
constexpr int FileErrorLogLine = 268;
constexpr int UsbErrorLogLine = 216;

// Results of GetPrinterStatusFile() and GetPrinterStatusUSB().
constexpr int Evaluated = 0;
constexpr int Unchanged = 1;
constexpr int Failed = -1;

} // namespace

TrdGetPrinterStatus::TrdGetPrinterStatus(QObject* parent)
    : UtilThreadBase(parent)
{
    stCurrent.stInfo.enType.clear();
}

// A running loop that sees only one of the two changes finds no printer either.
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
        // after each poll, or it grows as long as the list keeps changing. Drain all of it: Qt does not free the
        // entries of events that are picked out singly.
        QCoreApplication::sendPostedEvents();
    } while (!WaitForSleep(PollingIntervalMs));
}

void TrdGetPrinterStatus::SlotThreadQuit()
{
    bThreadQuit = true;
}

// The result is dropped if the list was replaced after the copy, or if another worker of this printer has written
// first. In the second case the next poll reads the file again: a state that only this worker has seen would otherwise
// be lost.
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

// A printer keeps its status for ten failed reads. The eleventh makes it off-line; toner, counters and texts keep their
// values.
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
