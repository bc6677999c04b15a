// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "FixedPaths.h"
#include "LateWakeUps.h"
#include "ModelCatalogue.h"
#include "PrinterListLock.h"
#include "ShellCommand.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <set>

namespace {

constexpr int PollingIntervalMs = 1000;
constexpr int MaximumFailedReads = 10;

constexpr int UsbQueryIntervalMs = 100;
constexpr int IdleQueryIntervalMs = 100;
constexpr int OfflineQueryIntervalMs = 10000;
constexpr int ActiveQueryIntervalMs = 1000;

// Labels under which support looks these lines up in logs; they do not follow the source.
constexpr char LogSource[] = "../TrdGetPrinterStatus";
constexpr int CancelLogLine = 513;
constexpr int CancelRefusedLogLine = 514;

// A shell gets bytes: in GBK and its like one of the characters may be the second byte of a Chinese one.
bool HoldsAnyOf(const QString& name, const QString& characters)
{
    const QByteArray bytes = name.toLocal8Bit();
    return std::any_of(name.begin(), name.end(), [](QChar c) { return c.category() == QChar::Other_Control; }) ||
        std::any_of(bytes.begin(), bytes.end(), [&characters](char c) { return characters.contains(QLatin1Char(c)); });
}

// Unquoted in the command, such a name would name another queue or start another program, never its own. Its words are
// arguments: one with a dash is an option, which may mean the jobs of all queues, and none at all means the default
// queue.
bool IsRefusedUnquoted(const QString& name)
{
    const QLatin1Char blank(' ');
    return name.count(blank) == name.size() || (blank + name).contains(QLatin1String(" -")) ||
        HoldsAnyOf(name, QStringLiteral(R"(;&|<>()$`\"'#)"));
}

// In double quotes a shell still gives these characters a meaning.
bool IsRefusedQuoted(const QString& name)
{
    return HoldsAnyOf(name, QStringLiteral(R"($`\")"));
}

// The printers whose job is being cancelled; guarded by PrinterListMutex(). Where the list has shrunk and grown again a
// printer has several workers, all of which see it start cancelling: while one runs the command, the others must not
// take the next job as well. Never deleted: a command may last longer than main().
std::set<TrdGetPrinterStatus::PrinterPlace>& PrintersCancelling()
{
    static auto* const s_printers = new std::set<TrdGetPrinterStatus::PrinterPlace>;
    return *s_printers;
}

// Only the first line tells of the queue itself; it is in the language of the desktop.
bool SaysPrinting(const QString& lpstatOutputPath)
{
    QFile output(lpstatOutputPath);
    if (!output.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return false;
    }
    const QString firstLine = QString::fromLocal8Bit(output.readLine().constData());
    return firstLine.contains(QStringLiteral("printing")) || firstLine.contains(QStringLiteral("正在打印"));
}

} // namespace

TrdGetPrinterStatus::TrdGetPrinterStatus(QObject* parent)
    : UtilThreadBase(parent)
{
    stCurrent.stInfo.enType.clear();
}

void TrdGetPrinterStatus::Init(int index, QList<stPrinterManager>* list)
{
    const std::lock_guard<std::mutex> lock(PrinterListMutex());
    iPrinterIndex = index;
    pPrinterList = list;
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
        // What was signalled meanwhile waits in this thread's queue, and each start of another worker asks this one to
        // start as well: left there, the requests would pile up for as long as the printer list keeps changing.
        // All of the queue, since Qt keeps the places of events that are picked out of it.
        QCoreApplication::sendPostedEvents();
    } while (!WaitForSleep(PollingIntervalMs));
}

void TrdGetPrinterStatus::SlotThreadQuit()
{
    bThreadQuit = true;
}

void TrdGetPrinterStatus::PollPrinter()
{
    if (!CopyFromList()) {
        return;
    }
    const bool isOffline = stCurrent.stState.enCurrentStatus == PS_OFFLINE;
    if (GetPrinterStatusFile(stCurrent.stInfo.strPrinterName, isOffline) < 0) {
        CountFailedRead();
    }
    WriteBackAndTell();
}

// The list may be rebuilt at any time between the copy and the write-back; then the cycle's result is dropped.
void TrdGetPrinterStatus::WriteBackAndTell()
{
    bool hasChanged = false;
    bool startsCancelling = false;
    PrinterPlace place;
    {
        // Compared and written under one lock: a rebuild in between would reset the row with no signal to follow.
        const std::lock_guard<std::mutex> lock(PrinterListMutex());
        if (!IsStillListed()) {
            return;
        }
        place = {pPrinterList, iPrinterIndex, stCurrent.stInfo.strPrinterName};
        const stPrinterState& listed = pPrinterList->at(iPrinterIndex).stState;
        hasChanged = CheckStatusChange(stCurrent.stState, listed);
        startsCancelling = hasChanged && listed.enCurrentStatus != PS_CANCELING_JOB &&
            stCurrent.stState.enCurrentStatus == PS_CANCELING_JOB;
        if (!startsCancelling) {
            (*pPrinterList)[iPrinterIndex] = stCurrent;
        } else if (!PrintersCancelling().insert(place).second) {
            return;
        }
    }
    if (startsCancelling && !CancelAndWriteBack(place)) {
        return;
    }
    if (hasChanged) {
        emit SgnUpdatePrinterStatus(std::get<int>(place));
    }
}

bool TrdGetPrinterStatus::CopyFromList()
{
    const std::lock_guard<std::mutex> lock(PrinterListMutex());
    if (pPrinterList == nullptr || iPrinterIndex < 0 || iPrinterIndex >= pPrinterList->size()) {
        return false;
    }
    stCurrent = pPrinterList->at(iPrinterIndex);
    return true;
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

// To be called with PrinterListMutex() held.
bool TrdGetPrinterStatus::IsStillListed() const
{
    if (pPrinterList == nullptr || iPrinterIndex >= pPrinterList->size()) {
        return false;
    }
    const stPrinterInfo& listed = pPrinterList->at(iPrinterIndex).stInfo;
    return listed.strPrinterName == stCurrent.stInfo.strPrinterName && listed.strURI == stCurrent.stInfo.strURI;
}

// The command may take long: the list may be another by its end, or the program may be ending.
bool TrdGetPrinterStatus::CancelAndWriteBack(const PrinterPlace& place)
{
    CancelPrintJob();
    const std::lock_guard<std::mutex> lock(PrinterListMutex());
    PrintersCancelling().erase(place);
    if (bThreadQuit || !IsStillListed()) {
        return false;
    }
    (*pPrinterList)[iPrinterIndex] = stCurrent;
    return true;
}

void TrdGetPrinterStatus::CancelPrintJob() const
{
    const QString& name = stCurrent.stInfo.strPrinterName;
    const QByteArray localName = name.toLocal8Bit();
    WriteStringLog(LogSource, CancelLogLine, "SlotTaskStart", QStringLiteral("cancel by printer %s"),
                   localName.constData());
    if (IsRefusedUnquoted(name)) {
        WriteStringLog(LogSource, CancelRefusedLogLine, "SlotTaskStart",
                       QStringLiteral("cancel refused: the name %s is not fit for a shell"), localName.constData());
        return;
    }
    RunShellCommand("cancel %s", localName.constData());
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
        if (!IsQueuePrinting()) {
            return false;
        }
        interval = ActiveQueryIntervalMs;
        return true;
    default:
        interval = ActiveQueryIntervalMs;
        return true;
    }
}

// Asks the print system, through a file in the tool directory that is removed in every case.
bool TrdGetPrinterStatus::IsQueuePrinting() const
{
    const QString& name = stCurrent.stInfo.strPrinterName;
    const QString outputPath =
        QString::fromLatin1(FixedPaths::ToolDirectory) + QString::asprintf("printer_%d.tmp", iPrinterIndex);
    // A command that was not run says nothing, whatever an earlier one has left in the file.
    const bool isAsked = !IsRefusedQuoted(name) &&
        RunShellCommand("lpstat -p \"%s\"> %s", name.toLocal8Bit().constData(), outputPath.toLocal8Bit().constData()) !=
            -1;
    const bool isPrinting = isAsked && SaysPrinting(outputPath);
    QFile::remove(outputPath);
    return isPrinting;
}
