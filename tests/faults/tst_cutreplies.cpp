// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests status replies that are cut at every byte.

#include "FaultRig.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QtTest>

#include <algorithm>
#include <functional>
#include <optional>

namespace {

constexpr int QZHeaderBytes = 37;
constexpr int QZItemHeaderBytes = 3;
// A shorter reply of the QZ family is empty but valid.
constexpr int QZLeastBytes = QZHeaderBytes + QZItemHeaderBytes;
constexpr int CyclesMs = 3500;

const QString Good = QStringLiteral("80.00% 就绪");
const QString Other = QStringLiteral("60.00% 就绪");
const QString Unknown = QStringLiteral("0.00% 未知");

// The number of items that can be read from a QZ reply of `length` bytes; no value for a rejected reply.
std::optional<int> ReadableItems(const QVector<ReplyRecord>& items, int length)
{
    if (length < QZLeastBytes) {
        return 0;
    }
    int position = QZHeaderBytes;
    for (int i = 0; i < items.size(); ++i) {
        if (position + QZItemHeaderBytes > length) {
            return i; // cut between two items
        }
        position += QZItemHeaderBytes + items.at(i).data.size();
        if (position > length) {
            return {};
        }
    }
    return items.size();
}

stPrinterState StateOf(const QVector<ReplyRecord>& items)
{
    StatusWorker worker;
    worker.evaluate(&StatusWorker::CheckPrinterStatus_QZ, QZItems(items));
    return worker.stCurrent.stState;
}

} // namespace

class CutRepliesTest : public QObject
{
    Q_OBJECT

private slots:
    void standardReply();
    void qzReply();
    void shownInTheWindow();
};

// The last byte belongs to a supplies record.
void CutRepliesTest::standardReply()
{
    const QByteArray reply = EncodeStandardReply(FullReply());
    for (int length = 0; length <= reply.size(); ++length) {
        StatusWorker worker;
        worker.stCurrent = FilledPrinter(QStringLiteral("Office"));
        const bool isWhole = length == reply.size();
        QCOMPARE(worker.evaluate(&StatusWorker::CheckPrinterStatus, reply.left(length)), isWhole ? 0 : -1);
        QCOMPARE(Words(worker.stCurrent.stState), Words(isWhole ? FullReplyState() : FilledState()));
    }
}

void CutRepliesTest::qzReply()
{
    const QVector<ReplyRecord> items{QZToner(55),       QZMachineState(3), QZError(0x1106),
                                     QZWarning(0x110D), QZJobState(2),     QZError(0x11A0)};
    const QByteArray reply = QZItems(items);
    int rejected = 0;
    for (int length = 0; length <= reply.size(); ++length) {
        StatusWorker worker;
        worker.stCurrent = FilledPrinter(QStringLiteral("J4990E"));
        const std::optional<int> readable = ReadableItems(items, length);
        QCOMPARE(worker.evaluate(&StatusWorker::CheckPrinterStatus_QZ, reply.left(length)), readable ? 0 : -1);
        const stPrinterState expected = readable ? StateOf(items.mid(0, *readable)) : FilledState();
        QCOMPARE(Words(worker.stCurrent.stState), Words(expected));
        rejected += readable ? 0 : 1;
    }
    QVERIFY2(rejected > 10, qPrintable(QString::number(rejected)));
    QCOMPARE(StateOf({}).enCurrentStatus, int(PS_UNKNOWN));
}

// The list has a printer for every length, for both families.
void CutRepliesTest::shownInTheWindow()
{
    const QByteArray standard = StandardBytes(RawReady, 6000);
    const QByteArray qz = QZBytes(60);
    QList<stPrinterInfo> printers;
    QStringList expected;
    QList<std::function<void()>> cuts;
    const auto add = [&](const QString& name, const QByteArray& good, const QByteArray& cut, const QString& text) {
        printers.append(PrinterFolder::Printer(name));
        PrinterFolder::WriteStatusFile(name, good);
        cuts.append([name, cut] { PrinterFolder::WriteStatusFile(name, cut); });
        expected.append(text);
    };
    PrinterFolder::Create();
    for (int length = 0; length <= standard.size(); ++length) {
        add(QStringLiteral("Std_%1").arg(length), StandardBytes(RawReady), standard.left(length),
            length < standard.size() ? Good : Other);
    }
    const QStringList afterItems{Unknown, QStringLiteral("0.00% 就绪"), Other};
    for (int length = 0; length <= qz.size(); ++length) {
        const std::optional<int> readable = ReadableItems({QZMachineState(1), QZToner(60)}, length);
        add(QStringLiteral("J4990E_%1").arg(length), QZBytes(), qz.left(length),
            readable ? afterItems.at(*readable) : Good);
    }
    PrinterFolder::WritePrinterList(printers);
    FaultRig rig;
    QVERIFY(rig.waitForRows(printers.size()));
    QVERIFY(rig.waitUntil([&] { return rig.shown().count(Good) == printers.size(); }));
    rig.startRecord();
    std::for_each(cuts.begin(), cuts.end(), [](const auto& cut) { cut(); });
    QVERIFY(rig.waitUntil([&] { return rig.shown() == expected; }));
    rig.run(CyclesMs);
    for (int row = 0; row < printers.size(); ++row) {
        QStringList seen{Good, expected.at(row)};
        seen.removeDuplicates();
        QVERIFY2(rig.record(row) == seen,
                 qPrintable(printers.at(row).strPrinterName + rig.record(row).join(QStringLiteral(", "))));
        QCOMPARE(rig.signalsOf(row), seen.size() - 1);
    }
    QVERIFY(rig.hasAnsweredInTime());
}

QTEST_MAIN(CutRepliesTest)
#include "tst_cutreplies.moc"
