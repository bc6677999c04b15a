// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Allocations.h"
#include "Floors.h"
#include "infrastructure/UtilLog.h"

namespace {

void WriteOneLine()
{
    WriteStringLog("brelprintertoolwidget", 42, "DebugOutputPrinterStatus", QStringLiteral("%s: dwRemainingToner=%lu"),
                   "Office_K4510A", 7890UL);
}

void LogOff(benchmark::State& state)
{
    SetLogEnable(false);
    const AllocationNote note(state);
    for (auto _ : state) {
        WriteOneLine();
    }
}

void LoadAndBranch(benchmark::State& state)
{
    const std::atomic<bool> isOn{false};
    for (auto _ : state) {
        AppendWhenOn(isOn, "");
    }
}

void LogOn(benchmark::State& state)
{
    SetLogEnable(true);
    const AllocationNote note(state);
    for (auto _ : state) {
        WriteOneLine();
    }
    SetLogEnable(false);
}

void AppendLines(benchmark::State& state)
{
    const QByteArray line("[2024-05-06 07:08:09.010] (brelprintertoolwidget@42 DebugOutputPrinterStatus) "
                          "Office_K4510A: dwRemainingToner=7890\n");
    const AllocationNote note(state);
    for (auto _ : state) {
        if (!AppendLine("/opt/tolmar/tolmar-printer-q727/tool/floor.log", line)) {
            state.SkipWithError("no line was written");
        }
    }
}

BENCHMARK(LogOff)->Name("log off");
BENCHMARK(LoadAndBranch)->Name("load + branch");
BENCHMARK(LogOn)->Name("log on");
BENCHMARK(AppendLines)->Name("open + write + close");

} // namespace
