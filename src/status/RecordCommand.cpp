// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/StopSignals.h"
#include "status/Commands.h"
#include "status/ScenarioRecorder.h"
#include "status/StatusFolder.h"

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// Shorter than the assistant's interval of a second, so that the order of changes is not lost.
constexpr milliseconds PollingInterval(200);
constexpr int PollsPerList = 5;
constexpr milliseconds SavingInterval = std::chrono::minutes(1);
// What printer-simulator reads at most, less the largest step.
constexpr int LargestRecordBytes = 14 << 20;

PrinterReports WithoutSerialNumbers(PrinterReports reports)
{
    for (PrinterReport& report : reports.printers) {
        HideSerialNumbers(report);
    }
    return reports;
}

int Summarise(const ScenarioRecorder& recorder, bool isFull, const CommandLine& line)
{
    if (isFull) {
        Complain(Pick(line.language, "the record is full", "记录已满"));
    }
    for (const QString& name : recorder.refusedNames()) {
        Complain(Pick(line.language, "cannot record a printer called \"%1\"", "无法记录名为“%1”的打印机").arg(name));
    }
    Complain(Filled(Pick(line.language, "%1 steps recorded in %2", "已记录 %1 步到 %2"),
                    {QString::number(recorder.stepCount()), line.arguments.first()}));
    return recorder.refusedNames().isEmpty() ? ExitDone : ExitNotRead;
}

} // namespace

int RunRecord(const CommandLine& line)
{
    const StopSignals stopSignals;
    StatusFolder folder(line.directory);
    ScenarioRecorder recorder;
    PrinterReports last;
    const Clock::time_point start = Clock::now();
    const auto elapsed = [start]() {
        return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
    };
    milliseconds lastSaved(0);
    int savedSteps = -1; // nothing is saved yet
    Complain(Pick(line.language, "recording in %1; Ctrl-C ends it", "正在记录到 %1，按 Ctrl-C 结束")
                 .arg(line.arguments.first()));
    for (int poll = 0;; poll = (poll + 1) % PollsPerList) {
        const PrinterReports& reports = folder.read(poll == 0);
        if (savedSteps < 0 && !reports.isListReadable) {
            ComplainAboutList(line);
        }
        if (savedSteps < 0 || !reports.printers.isSharedWith(last.printers)) {
            last = reports;
            recorder.record(line.hidesSerialNumbers ? WithoutSerialNumbers(reports) : reports, elapsed());
        }
        const bool isFull = recorder.sizeBytes() > LargestRecordBytes;
        const bool isEnd = isFull || !stopSignals.sleep(PollingInterval);
        if (isEnd) {
            recorder.end(elapsed());
        }
        const bool isDue = recorder.stepCount() > savedSteps && elapsed() - lastSaved >= SavingInterval;
        if (isEnd || isDue || savedSteps < 0) {
            if (!SaveFile(line.arguments.first(), recorder.text())) {
                return ExitNotRead;
            }
            savedSteps = recorder.stepCount();
            lastSaved = elapsed();
        }
        if (isEnd) {
            return Summarise(recorder, isFull, line);
        }
    }
}
