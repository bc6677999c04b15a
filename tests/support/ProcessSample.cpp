// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "ProcessSample.h"

#include <QDir>
#include <QFile>

#include <ctime>
#include <unistd.h>

namespace {

constexpr double NanosecondsPerSecond = 1e9;

// Reads a line of smaps_rollup such as "Pss:   1234 kB".
double KibOf(const QByteArray& rollup, const QByteArray& field)
{
    const int begin = rollup.indexOf('\n' + field + ':');
    if (begin < 0) {
        return 0;
    }
    const int value = begin + field.size() + 2;
    return rollup.mid(value, rollup.indexOf("kB", value) - value).trimmed().toDouble();
}

bool ReadMemory(const QString& folder, ProcessSample& sample)
{
    QFile file(folder + QStringLiteral("/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray rollup = file.readAll();
    sample.pssKib = KibOf(rollup, "Pss");
    sample.pssAnonymousKib = KibOf(rollup, "Pss_Anon") + KibOf(rollup, "Pss_Shmem");
    sample.rssKib = KibOf(rollup, "Rss");
    sample.privateKib = KibOf(rollup, "Private_Dirty");
    return sample.rssKib > 0;
}

// Threads may end while they are counted.
void CountThreads(const QString& folder, ProcessSample& sample)
{
    const QDir tasks(folder + QStringLiteral("/task"));
    const QStringList entries = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString& entry : entries) {
        QFile name(tasks.filePath(entry) + QStringLiteral("/comm"));
        if (name.open(QIODevice::ReadOnly)) {
            ++sample.threads;
            sample.workerThreads += name.readAll() == "QThread\n" ? 1 : 0;
        }
    }
}

bool ReadCpuTime(qint64 pid, ProcessSample& sample)
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(static_cast<pid_t>(pid), &clock) != 0 || clock_gettime(clock, &time) != 0) {
        return false;
    }
    sample.cpuSeconds = static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / NanosecondsPerSecond;
    return true;
}

} // namespace

bool ReadProcess(qint64 pid, ProcessSample& sample)
{
    const QString folder = QStringLiteral("/proc/%1").arg(pid);
    sample = ProcessSample();
    if (!ReadMemory(folder, sample) || !ReadCpuTime(pid, sample)) {
        return false;
    }
    CountThreads(folder, sample);
    const QDir descriptors(folder + QStringLiteral("/fd"));
    sample.descriptors = descriptors.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Unsorted).size();
    return true;
}

ProcessSample OwnProcess()
{
    ProcessSample sample;
    if (!ReadProcess(getpid(), sample)) {
        qFatal("cannot inspect this process");
    }
    return sample;
}
