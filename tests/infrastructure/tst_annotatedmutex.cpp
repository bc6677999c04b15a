// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/AnnotatedMutex.h"

#include <QtTest>

#include <mutex>
#include <thread>
#include <vector>

// Counts under the mutex: no count is lost, and the thread sanitizer reports no race.
class AnnotatedMutexTest : public QObject
{
    Q_OBJECT

private slots:
    void guardsPlainVariables();
};

void AnnotatedMutexTest::guardsPlainVariables()
{
    constexpr int threadCount = 4;
    constexpr int roundsPerThread = 20000;
    AnnotatedMutex mutex;
    int count = 0;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&mutex, &count] {
            for (int round = 0; round < roundsPerThread; ++round) {
                const std::lock_guard<AnnotatedMutex> lock(mutex);
                const int before = count;
                std::this_thread::yield(); // gives another thread a chance to interfere
                count = before + 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(count, threadCount * roundsPerThread);
}

QTEST_GUILESS_MAIN(AnnotatedMutexTest)
#include "tst_annotatedmutex.moc"
