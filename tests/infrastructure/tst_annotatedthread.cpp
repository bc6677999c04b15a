// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/AnnotatedThread.h"

#include <QtTest>

// After waiting for a thread, its data may be read without a report of the thread sanitizer, even if the thread ended
// long before.
class AnnotatedThreadTest : public QObject
{
    Q_OBJECT

private slots:
    void leavesItsWorkToTheWaiter();
    void waitMayFail();
};

namespace {

constexpr unsigned long EndTimeoutMs = 30000;

} // namespace

void AnnotatedThreadTest::leavesItsWorkToTheWaiter()
{
    AnnotatedThread thread;
    QObject worker;
    int written = 0;
    worker.moveToThread(&thread);
    QMetaObject::invokeMethod(&worker, [&thread, &written] {
        written = 1;
        thread.quit();
    });
    thread.start();
    QTRY_VERIFY(thread.isFinished());
    QVERIFY(thread.wait(EndTimeoutMs));
    ++written;
    QCOMPARE(written, 2);
}

void AnnotatedThreadTest::waitMayFail()
{
    AnnotatedThread thread;
    thread.start();
    QVERIFY(!thread.wait(1));
    thread.quit();
    QVERIFY(thread.wait(EndTimeoutMs));
}

QTEST_GUILESS_MAIN(AnnotatedThreadTest)
#include "tst_annotatedthread.moc"
