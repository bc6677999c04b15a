// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/StatusFile.h"
#include "PrinterFolder.h"
#include "ReadHook.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QtTest>

#include <vector>

// Tests status files that cannot be read in one go, and changes between a read and its write-back.
class StatusFileReadsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void inPieces();
    void zerosFollowTheFile();
    void failing_data();
    void failing();
    void secondWorkerReadsNewerState();
    void secondWorkerCancels();
    void secondWorkerIsSlower();
    void rejectedFileCountsOnceEach();
};

namespace {

const QString Name = QStringLiteral("Office_K4510A");

// A printer with two workers, the result of a list that shrank and grew again.
struct TwoWorkers
{
    TwoWorkers()
    {
        first.Init(0, &list);
        second.Init(0, &list);
    }

    QList<stPrinterManager> list{FilledPrinter(Name)};
    StatusWorker first;
    StatusWorker second;
};

} // namespace

void StatusFileReadsTest::init()
{
    PrinterFolder::Create();
}

void StatusFileReadsTest::cleanup()
{
    ReadHook::AfterNextFile(nullptr);
    ReadHook::Disturb(0, -1);
}

void StatusFileReadsTest::inPieces()
{
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    StatusWorker worker;
    ReadHook::Disturb(1, -1);
    QCOMPARE(worker.GetPrinterStatusFile(Name, false), 0);
    QCOMPARE(Words(worker.stCurrent.stState), Words(FullReplyState()));
}

// A shorter file must not be followed by the rest of a longer one that was read before.
void StatusFileReadsTest::zerosFollowTheFile()
{
    PrinterFolder::WriteStatusFile(Name, QByteArray("abc"));
    QByteArray buffer(16, 'x');
    unsigned long length = 0;
    StatusFile file;
    const auto read = [&](unsigned long capacity) {
        return file.read(Name, false, reinterpret_cast<unsigned char*>(buffer.data()), capacity, length);
    };
    QCOMPARE(read(10), StatusFile::Read::Done);
    QCOMPARE(length, 3UL);
    QCOMPARE(buffer, QByteArray("abc") + QByteArray(7, '\0') + QByteArray(6, 'x'));
    buffer.fill('x');
    QCOMPARE(read(10), StatusFile::Read::Unchanged);
    QCOMPARE(buffer, QByteArray(16, 'x'));
}

void StatusFileReadsTest::failing_data()
{
    QTest::addColumn<int>("bytes");
    QTest::newRow("at once") << 0;
    QTest::newRow("after a byte") << 1;
    QTest::newRow("before the last byte") << static_cast<int>(EncodeStandardReply(FullReply()).size()) - 1;
}

// A failing read acts like a truncated file: the last good state stays, and the file is skipped until it changes.
void StatusFileReadsTest::failing()
{
    QFETCH(const int, bytes);
    QList<stPrinterManager> list{FilledPrinter(Name)};
    stPrinterState expected = list.first().stState;
    StatusWorker worker;
    worker.Init(0, &list);
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    ReadHook::Disturb(0, bytes);
    for (int cycle = 0; cycle < 2; ++cycle) {
        QCOMPARE(worker.runCycle(), 0);
        expected.iFailCount = FilledState().iFailCount + 1;
        QCOMPARE(Words(list.first().stState), Words(expected));
    }
    ReadHook::Disturb(0, -1);
    QCOMPARE(worker.runCycle(), 0);
    PrinterFolder::WriteStatusFile(Name, EncodeStandardReply(FullReply()));
    QCOMPARE(worker.runCycle(), 1);
    QCOMPARE(Words(list.first().stState), Words(FullReplyState()));
}

void StatusFileReadsTest::secondWorkerReadsNewerState()
{
    TwoWorkers both;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady, 100));
    ReadHook::AfterNextFile([&both] {
        PrinterFolder::WriteStatusFile(Name, StandardBytes(RawBusy, 200));
        QCOMPARE(both.second.runCycle(), 1);
    });
    QCOMPARE(both.first.runCycle(), 0);
    QCOMPARE(both.list.first().stState.dwRemainingToner, 200UL);
    for (int cycle = 0; cycle < 2; ++cycle) {
        QCOMPARE(both.first.runCycle(), 0);
        QCOMPARE(both.second.runCycle(), 0);
    }
    QCOMPARE(both.list.first().stState.dwRemainingToner, 200UL);
}

void StatusFileReadsTest::secondWorkerCancels()
{
    const FakeCommand cancel(QStringLiteral("cancel"));
    TwoWorkers both;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady, 100));
    ReadHook::AfterNextFile([&both] {
        PrinterFolder::WriteStatusFile(Name, StandardBytes(RawCancelling, 100));
        QCOMPARE(both.second.runCycle(), 1);
    });
    QCOMPARE(both.first.runCycle(), 0);
    for (int cycle = 0; cycle < 2; ++cycle) {
        QCOMPARE(both.first.runCycle(), 0);
        QCOMPARE(both.second.runCycle(), 0);
    }
    QCOMPARE(both.list.first().stState.enCurrentStatus, 6);
    QCOMPARE(cancel.calls().size(), 1);
}

// The slower worker writes its unchanged state first. What the first worker has read is written one cycle later, not
// lost.
void StatusFileReadsTest::secondWorkerIsSlower()
{
    TwoWorkers both;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady, 100));
    QCOMPARE(both.second.runCycle(), 1);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady, 200));
    ReadHook::AfterNextFile([&both] {
        // Another worker writes back its copy, which it may do after it has found the old file unchanged.
        stPrinterManager printer;
        SharedPrinterList shared(&both.list);
        SharedPrinterList::Origin origin;
        QVERIFY(shared.copy(0, printer, &origin));
        QCOMPARE(shared.writeBack(printer, false, origin), SharedPrinterList::WriteBack::Unchanged);
    });
    QCOMPARE(both.first.runCycle(), 0);
    QCOMPARE(both.list.first().stState.dwRemainingToner, 100UL);
    QCOMPARE(both.first.runCycle(), 1);
    QCOMPARE(both.list.first().stState.dwRemainingToner, 200UL);
    QCOMPARE(both.second.runCycle(), 0);
}

// A worker that finds nothing new and is overtaken must not read the file again.
void StatusFileReadsTest::rejectedFileCountsOnceEach()
{
    TwoWorkers both;
    both.list.first().stState.iFailCount = 0;
    PrinterFolder::WriteStatusFile(Name, RejectedBytes());
    for (int cycle = 0; cycle < 12; ++cycle) {
        ReadHook::AfterNextFile([&both] { both.second.runCycle(); });
        both.first.runCycle();
        both.second.runCycle();
    }
    QVERIFY2(both.list.first().stState.iFailCount <= 2, qPrintable(Words(both.list.first().stState)));
    QCOMPARE(both.list.first().stState.enCurrentStatus, 3);
}

QTEST_GUILESS_MAIN(StatusFileReadsTest)
#include "tst_statusfilereads.moc"
