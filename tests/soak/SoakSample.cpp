// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SoakSample.h"

#include <QString>

QByteArray SoakCsvHeader()
{
    return "seconds,settled,expected_workers,worker_threads,threads,descriptors,pss_kib,pss_anonymous_kib,rss_kib,"
           "private_kib,"
           "cpu_seconds,cpu_percent,answer_ms\n";
}

QByteArray SoakCsvLine(const SoakSample& sample)
{
    const ProcessSample& process = sample.process;
    return QString::asprintf("%.3f,%d,%d,%d,%d,%d,%.0f,%.0f,%.0f,%.0f,%.6f,%.3f,%.3f\n", sample.seconds,
                             sample.isSettled ? 1 : 0, sample.expectedWorkers, process.workerThreads, process.threads,
                             process.descriptors, process.pssKib, process.pssAnonymousKib, process.rssKib,
                             process.privateKib, process.cpuSeconds, sample.cpuPercent, sample.answerMs)
        .toLatin1();
}
