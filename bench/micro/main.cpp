// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FloorCheck.h"
#include "PrinterFolder.h"

#include <QDir>

#include <benchmark/benchmark.h>
#include <cstdio>

int main(int argc, char** argv)
{
    // The benchmarks replace the driver package's folder, so an existing one must not be touched.
    if (QDir(QString::fromLatin1(PrinterFolder::ConfigurationDirectory)).exists()) {
        fputs("micro bench: the driver package's folder exists; run this in tests/support/sandbox\n", stderr);
        return 2;
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 2;
    }
    if (!FloorsDecodeTheSamples()) {
        fputs("micro bench: floors and decoders find different values in the sample replies\n", stderr);
        return 1;
    }
    PrinterFolder::Create();
    benchmark::RunSpecifiedBenchmarks();
    PrinterFolder::Remove();
    return 0;
}
