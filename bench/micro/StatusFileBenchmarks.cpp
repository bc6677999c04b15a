// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Allocations.h"
#include "FloorCheck.h"
#include "Floors.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "StatusWorker.h"
#include "WalkedReply.h"

#include <QFile>

namespace {

const QString Name = QStringLiteral("Office_K4510A");

QByteArray WriteStatusFile()
{
    PrinterFolder::WriteStatusFile(Name, StandardSample());
    return QFile::encodeName(PrinterFolder::StatusFilePath(Name));
}

// The forced read does the work of a changed file except for the comparison of two timestamps.
void ReadChangedFile(benchmark::State& state)
{
    WriteStatusFile();
    StatusWorker worker;
    const AllocationNote note(state);
    for (auto _ : state) {
        if (worker.GetPrinterStatusFile(Name, true) != 0) {
            state.SkipWithError("the status file was not evaluated");
        }
    }
}

void ReadAndWalkFile(benchmark::State& state)
{
    const QByteArray path = WriteStatusFile();
    Walk walk;
    const AllocationNote note(state);
    for (auto _ : state) {
        if (!ReadAndWalk(path.constData(), walk)) {
            state.SkipWithError("the status file was not read");
        }
    }
}

// A whole poll without its pause.
void RunUnchangedCycle(benchmark::State& state)
{
    WriteStatusFile();
    QList<stPrinterManager> list{FilledPrinter(Name)};
    StatusWorker worker;
    worker.Init(0, &list);
    worker.runCycle();
    const AllocationNote note(state);
    for (auto _ : state) {
        if (worker.runCycle() != 0) {
            state.SkipWithError("the status file has changed");
        }
    }
}

void Look(benchmark::State& state)
{
    const QByteArray path = WriteStatusFile();
    const AllocationNote note(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(LookAtFile(path.constData()));
    }
}

void CopyRecordOutAndIn(benchmark::State& state)
{
    QList<stPrinterManager> list{FilledPrinter(Name)};
    stPrinterManager current;
    const AllocationNote note(state);
    for (auto _ : state) {
        current = list.at(0);
        list[0] = current;
        benchmark::ClobberMemory();
    }
}

BENCHMARK(ReadChangedFile)->Name("changed file");
BENCHMARK(ReadAndWalkFile)->Name("file + walk");
BENCHMARK(RunUnchangedCycle)->Name("unchanged cycle");
BENCHMARK(Look)->Name("stat");
BENCHMARK(CopyRecordOutAndIn)->Name("record out and in");

} // namespace
