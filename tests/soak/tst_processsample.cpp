// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "OpenedFiles.h"
#include "ProcessSample.h"

#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <cstdio>
#include <ctime>
#include <thread>
#include <unistd.h>

namespace {

constexpr int KibPerMib = 1024;
constexpr int BytesPerKib = 1024;
constexpr int BlockMib = 16;

} // namespace

class ProcessSampleTest : public QObject
{
    Q_OBJECT

private slots:
    void memory();
    void descriptors();
    void threads();
    void processorTime();
    void noSuchProcess();
    void openedFilesInTheirOrder();
};

void ProcessSampleTest::memory()
{
    const ProcessSample before = OwnProcess();
    QVERIFY(before.privateKib > 0);
    QVERIFY(before.rssKib > before.privateKib);
    QVERIFY(before.pssKib >= before.pssAnonymousKib);
    const QByteArray block(BlockMib * KibPerMib * BytesPerKib, 'x');
    const ProcessSample after = OwnProcess();
    // The share shrinks if other programs begin to share memory meanwhile.
    QVERIFY(after.pssKib - before.pssKib > (BlockMib - 8) * KibPerMib);
    QVERIFY(after.pssKib - before.pssKib < (BlockMib + 8) * KibPerMib);
    for (const double growth : {after.pssAnonymousKib - before.pssAnonymousKib, after.rssKib - before.rssKib,
                                after.privateKib - before.privateKib}) {
        QVERIFY2(growth >= BlockMib * KibPerMib, qPrintable(QString::number(growth)));
        QVERIFY2(growth < (BlockMib + 8) * KibPerMib, qPrintable(QString::number(growth)));
    }
    QCOMPARE(block.back(), 'x');
}

void ProcessSampleTest::descriptors()
{
    const int before = OwnProcess().descriptors;
    int ends[2] = {};
    QCOMPARE(pipe(ends), 0);
    QCOMPARE(OwnProcess().descriptors, before + 2);
    close(ends[0]);
    close(ends[1]);
    QCOMPARE(OwnProcess().descriptors, before);
}

void ProcessSampleTest::threads()
{
    const ProcessSample before = OwnProcess();
    QThread named;
    named.setObjectName(QStringLiteral("named"));
    named.start();
    QThread plain;
    plain.start();
    QTRY_COMPARE(OwnProcess().workerThreads, before.workerThreads + 1);
    QTRY_COMPARE(OwnProcess().threads, before.threads + 2);
    for (QThread* thread : {&named, &plain}) {
        thread->quit();
        thread->wait();
    }
    QTRY_COMPARE(OwnProcess().threads, before.threads);
    QCOMPARE(OwnProcess().workerThreads, before.workerThreads);
}

void ProcessSampleTest::processorTime()
{
    const ProcessSample before = OwnProcess();
    QThread::msleep(600); // sleeping does not count
    std::thread([]() {
        // The thread's own processor time, which does not depend on what else the machine does.
        timespec used{};
        while (used.tv_sec == 0 && used.tv_nsec < 200'000'000) {
            clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        }
    }).join();
    const double used = OwnProcess().cpuSeconds - before.cpuSeconds;
    QVERIFY2(used > 0.15 && used < 0.5, qPrintable(QString::number(used)));
}

void ProcessSampleTest::noSuchProcess()
{
    ProcessSample sample;
    const qint64 largestPid = 4194304;
    QVERIFY(!ReadProcess(largestPid, sample));
}

void ProcessSampleTest::openedFilesInTheirOrder()
{
    const QTemporaryDir folder;
    const auto write = [&folder](const char* name) {
        QString path = folder.filePath(QString::fromLatin1(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            qFatal("cannot write %s", qPrintable(path));
        }
        return path;
    };
    const auto open = [](const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly);
    };
    const QString a = write("a");
    const QString b = write("b");
    const QString shared = folder.filePath(QStringLiteral("shared"));
    OpenedFiles opened({a, b});
    QCOMPARE(opened.take(), QVector<int>());
    QVERIFY(open(b));
    QVERIFY(open(a));
    QVERIFY(QFile::exists(b)); // checked, not opened
    QCOMPARE(opened.take(), (QVector<int>{1, 0}));
    // One name, first of one file and then of the other.
    for (const QString& path : {a, b}) {
        const QByteArray name = QFile::encodeName(shared + QStringLiteral(".new"));
        QCOMPARE(link(QFile::encodeName(path).constData(), name.constData()), 0);
        QCOMPARE(rename(name.constData(), QFile::encodeName(shared).constData()), 0);
        QVERIFY(open(shared));
    }
    QCOMPARE(opened.take(), (QVector<int>{0, 1}));
    QCOMPARE(opened.take(), QVector<int>());
}

QTEST_GUILESS_MAIN(ProcessSampleTest)
#include "tst_processsample.moc"
