// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests a printer list that another program is writing all the time.

#include "discovery/TrdDeviceManage.h"
#include "FaultRig.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"
#include "StoppableThread.h"

#include <QTableWidget>
#include <QtTest>

#include <algorithm>
#include <array>
#include <chrono>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int ManyLooksTimeoutMs = 60000;
constexpr qint64 NoiseBytes = 262144;
constexpr qint64 WorkerBytes = 32768; // on the heap

const QString Ready = QStringLiteral("80.00% 就绪");

QList<stPrinterInfo> Printers(int count)
{
    QList<stPrinterInfo> printers;
    for (int i = 0; i < count; ++i) {
        printers.append(PrinterFolder::Printer(QStringLiteral("Printer%1").arg(i)));
    }
    return printers;
}

QByteArray ListText(int count)
{
    PrinterFolder::WritePrinterList(Printers(count));
    return PrinterFolder::ReadFile(QString::fromLatin1(PrinterFolder::PrinterListPath));
}

QString Names(const QList<stPrinterInfo>& printers)
{
    QStringList names;
    for (const stPrinterInfo& printer : printers) {
        names.append(printer.strPrinterName);
    }
    return names.join(QLatin1Char(','));
}

// What the reader finds in the list when it is cut at any byte.
QSet<QString> NamesInAnyPart(const QByteArray& text)
{
    QSet<QString> names;
    TrdDeviceManage reader(nullptr);
    for (int length = 0; length <= text.size(); ++length) {
        PrinterFolder::WritePrinterListText(text.left(length));
        names.insert(Names(reader.GetPrinterInfo(true)));
    }
    return names;
}

// Writes the file in place, byte by byte.
void WriteSlowly(const QByteArray& text)
{
    const int file = open(PrinterFolder::PrinterListPath, O_WRONLY | O_TRUNC | O_CLOEXEC);
    for (const char byte : text) {
        if (write(file, &byte, 1) != 1) {
            qFatal("cannot write the list");
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    close(file);
}

// The successive lists that the table has shown.
class ShownLists
{
public:
    explicit ShownLists(FaultRig& rig)
        : m_rig(rig)
    {
        look();
    }
    void look()
    {
        QStringList names;
        for (int row = 0; row < m_rig.window().table().rowCount(); ++row) {
            names.append(m_rig.window().row(row).constFirst());
        }
        const QString text = names.join(QLatin1Char(','));
        if (m_lists.isEmpty() || m_lists.last() != text) {
            m_workers += std::max(0, static_cast<int>(names.size()) - m_lastCount);
            m_growths += names.size() > m_lastCount ? 1 : 0;
            m_lastCount = names.size();
            m_lists.append(text);
        }
    }
    const QStringList& lists() const
    {
        return m_lists;
    }
    /// The number of workers that these lists cause: each growth starts workers for the new rows, and none ever ends.
    int workers() const
    {
        return m_workers;
    }
    int growths() const
    {
        return m_growths;
    }

private:
    FaultRig& m_rig;
    QStringList m_lists;
    int m_lastCount = 0;
    int m_workers = 0;
    int m_growths = 0;
};

} // namespace

class MovingListTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void rewrittenSlowly();
    void changingTenTimesASecond();

private:
    struct Start
    {
        ProcessUse use;
        int workers;
    };
    static bool isFlat(FaultRig& rig, const Start& start);
};

void MovingListTest::init()
{
    PrinterFolder::Create();
    const QList<stPrinterInfo> printers = Printers(7);
    for (const stPrinterInfo& printer : printers) {
        PrinterFolder::WriteStatusFile(printer.strPrinterName, StandardBytes(RawReady));
    }
}

bool MovingListTest::isFlat(FaultRig& rig, const Start& start)
{
    const int moreWorkers = rig.window().startedWorkers() - start.workers;
    ProcessUse allowed = start.use;
    allowed.threads += moreWorkers;
    return rig.settlesAt(allowed, NoiseBytes + moreWorkers * WorkerBytes);
}

// Half a list may announce printers without names, but must not show anything that is not in the file.
void MovingListTest::rewrittenSlowly()
{
    const QByteArray text = ListText(4);
    const QSet<QString> possible = NamesInAnyPart(text);
    PrinterFolder::WritePrinterListText(text);
    FaultRig rig;
    QVERIFY(rig.waitUntil([&rig] { return rig.shown().count(Ready) == 4; }));
    ShownLists shown(rig);
    Start start{ProcessUse::now(), shown.workers()};
    StoppableThread writer([&text](const std::atomic<bool>& isEnding) {
        while (!isEnding) {
            WriteSlowly(text);
        }
    });
    const auto hasShown = [&rig, &shown](int lists) {
        return rig.waitUntil(
            [&shown, lists] {
                shown.look();
                return shown.lists().size() >= lists;
            },
            ManyLooksTimeoutMs);
    };
    QVERIFY(hasShown(2));
    start.use.heapBytes = ProcessUse::now().heapBytes; // everything has been drawn once
    QVERIFY(hasShown(4));
    writer.stop();
    QVERIFY(rig.waitUntil([&] {
        shown.look();
        return rig.shown() == QStringList({Ready, Ready, Ready, Ready});
    }));
    for (const QString& list : shown.lists()) {
        QVERIFY2(possible.contains(list), qPrintable(list));
    }
    QCOMPARE(shown.lists().last(), Names(Printers(4)));
    QCOMPARE(rig.window().startedWorkers(), shown.workers());
    QVERIFY(isFlat(rig, start));
    QVERIFY(rig.hasAnsweredInTime());
}

// The sizes differ at every third place, so that each poll sees another one.
void MovingListTest::changingTenTimesASecond()
{
    constexpr std::array<int, 7> sizes{{3, 1, 4, 0, 5, 2, 6}};
    PrinterFolder::WritePrinterList(Printers(3));
    FaultRig rig;
    QVERIFY(rig.waitUntil([&rig] { return rig.shown().count(Ready) == 3; }));
    ShownLists shown(rig);
    Start start{ProcessUse::now(), shown.workers()};
    StoppableThread writer([&sizes](const std::atomic<bool>& isEnding) {
        for (std::size_t turn = 0; !isEnding; ++turn) {
            PrinterFolder::WritePrinterList(Printers(sizes.at(turn % sizes.size())));
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    });
    const auto hasGrown = [&rig, &shown](int times) {
        return rig.waitUntil(
            [&shown, times] {
                shown.look();
                return shown.growths() >= times;
            },
            ManyLooksTimeoutMs);
    };
    QVERIFY(hasGrown(2)); // the first growth was the start
    start.use.heapBytes = ProcessUse::now().heapBytes;
    QVERIFY(hasGrown(4));
    writer.stop();
    PrinterFolder::WritePrinterList(Printers(3));
    QVERIFY(rig.waitUntil([&] {
        shown.look();
        return rig.shown() == QStringList({Ready, Ready, Ready});
    }));
    QCOMPARE(rig.window().startedWorkers(), shown.workers());
    QVERIFY(isFlat(rig, start));
    QVERIFY(rig.hasAnsweredInTime());
}

QTEST_MAIN(MovingListTest)
#include "tst_movinglist.moc"
