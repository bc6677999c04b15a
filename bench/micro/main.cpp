// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FloorCheck.h"
#include "PrinterFolder.h"

#include <QDir>

#include <benchmark/benchmark.h>
#include <cstdio>

int main(int argc, char** argv)
{
    // The benchmarks make the driver package's folder anew: where there is one, it is somebody's.
    if (QDir(QString::fromLatin1(PrinterFolder::ConfigurationDirectory)).exists()) {
        fputs("micro bench: the printers' folder exists; to be run in tests/support/sandbox\n", stderr);
        return 2;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    if (!FloorsDecodeTheSamples()) {
        fputs("micro bench: the floors do not find in the sample replies what the decoders find\n", stderr);
        return 1;
    }
    PrinterFolder::Create();
    benchmark::RunSpecifiedBenchmarks();
    PrinterFolder::Remove();
    return 0;
}
