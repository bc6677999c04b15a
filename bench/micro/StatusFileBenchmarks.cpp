// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "Allocations.h"
#include "Floors.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"
#include "StatusWorker.h"
#include "WalkedReply.h"

#include <QFile>

#include <array>

namespace {

// Files of two times: whichever of them is asked for after the other has changed.
const std::array<QString, 2> c_names{{QStringLiteral("Office_K4510A"), QStringLiteral("Lobby_K4620A")}};

void WriteStatusFiles()
{
    for (const QString& name : c_names) {
        PrinterFolder::WriteStatusFile(name, EncodeStandardReply(FullReply()));
    }
}

void ReadChangedFile(benchmark::State& state)
{
    WriteStatusFiles();
    StatusWorker worker;
    const AllocationNote note(state);
    std::size_t i = 0;
    for (auto _ : state) {
        if (worker.GetPrinterStatusFile(c_names[i++ % c_names.size()], false) != 0) {
            state.SkipWithError("the status file was not evaluated");
        }
    }
}

void ReadAndWalkFile(benchmark::State& state)
{
    WriteStatusFiles();
    const std::array<QByteArray, 2> paths{{QFile::encodeName(PrinterFolder::StatusFilePath(c_names[0])),
                                           QFile::encodeName(PrinterFolder::StatusFilePath(c_names[1]))}};
    Walk walk;
    const AllocationNote note(state);
    std::size_t i = 0;
    for (auto _ : state) {
        if (!ReadAndWalk(paths[i++ % paths.size()].constData(), walk)) {
            state.SkipWithError("the status file was not read");
        }
    }
}

// A whole cycle of the polling loop, but for its pause.
void RunUnchangedCycle(benchmark::State& state)
{
    WriteStatusFiles();
    QList<stPrinterManager> list{FilledPrinter(c_names[0])};
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
    WriteStatusFiles();
    const QByteArray path = QFile::encodeName(PrinterFolder::StatusFilePath(c_names[0]));
    const AllocationNote note(state);
    for (auto _ : state) {
        benchmark::DoNotOptimize(LookAtFile(path.constData()));
    }
}

void CopyRecordOutAndIn(benchmark::State& state)
{
    QList<stPrinterManager> list{FilledPrinter(c_names[0])};
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
