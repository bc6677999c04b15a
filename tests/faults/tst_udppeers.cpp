// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests network printers that do not answer as they should. A thread beside the running window queries them.

#include "FaultRig.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"
#include "UdpPeer.h"

#include <QtTest>

#include <atomic>
#include <thread>

namespace {

constexpr char PeerAddress[] = "127.7.7.7";
constexpr char OtherAddress[] = "127.8.8.8";
constexpr qint64 TimeoutMs = 1000;
constexpr qint64 NoiseBytes = 131072;
constexpr int WarmUpMs = 1000;
constexpr int ManyQueries = 20;
constexpr int ManyQueriesTimeoutMs = 60000;
constexpr int Answered = 0;
constexpr int Rejected = -1;
constexpr int NoAnswer = -5;

const QString Name = QStringLiteral("Hall");
const QString Ready = QStringLiteral("80.00% 就绪");

struct Peer
{
    const char* name;
    bool isThere;
    QList<QByteArray> answers;
    int delayMs;
    const char* answersFrom; ///< null for the queried address
    int result;
};

QList<QByteArray> Flood(const QByteArray& first)
{
    QList<QByteArray> answers{first};
    for (int i = 0; i < 1000; ++i) {
        answers.append(QByteArray(1400, '\xFF'));
    }
    return answers;
}

QVector<Peer> Peers()
{
    const QByteArray good = EncodeStandardReply(FullReply());
    const QByteArray tooShort(7, '\0');
    return {
        {"well-behaved", true, {good}, 0, nullptr, Answered},
        {"not there", false, {}, 0, nullptr, NoAnswer},
        {"silent", true, {}, 0, nullptr, NoAnswer},
        {"late", true, {good}, 1500, nullptr, NoAnswer},
        {"empty", true, {QByteArray()}, 0, nullptr, NoAnswer},
        {"short, then whole", true, {tooShort, good}, 0, nullptr, NoAnswer},
        {"cut off", true, {RejectedBytes()}, 0, nullptr, Rejected},
        {"flood with the answer first", true, Flood(good), 0, nullptr, Answered},
        {"flood of nonsense", true, Flood(QByteArray(1400, '\xFF')), 0, nullptr, Rejected},
        {"greater than any reply", true, {QByteArray(60000, '\xFF')}, 0, nullptr, Rejected},
        {"another address", true, {good}, 0, OtherAddress, Answered},
    };
}

bool IsSlow(const Peer& peer)
{
    return peer.answers.isEmpty() || peer.delayMs > 0;
}

// Sends a number of queries from a worker whose record has another state.
class Asker
{
public:
    explicit Asker(int queries)
        : m_thread([this, queries] {
            QElapsedTimer timer;
            for (int i = 0; i < queries; ++i) {
                m_worker.stCurrent = FilledPrinter(Name);
                timer.start();
                const int result = m_worker.GetPrinterStatusUDP(QString::fromLatin1(PeerAddress));
                m_results.append(result);
                m_longestMs = std::max(m_longestMs, timer.elapsed());
            }
            m_isDone = true;
        })
    {
    }
    ~Asker()
    {
        m_thread.join();
    }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    bool isDone() const
    {
        return m_isDone;
    }
    // Only valid when isDone() is true.
    QList<int> results() const
    {
        return m_results;
    }
    qint64 longestMs() const
    {
        return m_longestMs;
    }
    stPrinterManager printer() const
    {
        return m_worker.stCurrent;
    }

private:
    StatusWorker m_worker;
    QList<int> m_results;
    qint64 m_longestMs = 0;
    std::atomic<bool> m_isDone{false};
    std::thread m_thread;
};

} // namespace

class UdpPeersTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void peer_data();
    void peer();
    void afterALateAnswer();
    void windowAnswers();
    void cleanupTestCase();

private:
    bool ask(const Asker& asker);

    std::unique_ptr<FaultRig> m_rig;
};

void UdpPeersTest::initTestCase()
{
    PrinterFolder::Create();
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(Name, QString::fromLatin1(PeerAddress), QString(), 2)});
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawReady));
    m_rig = std::make_unique<FaultRig>();
    QVERIFY(m_rig->waitForRows(1));
    QVERIFY(m_rig->waitUntilShown(0, Ready));
    {
        // Query once before measuring, so that one-time allocations do not count.
        const UdpPeer printer(PeerAddress, {EncodeStandardReply(FullReply())});
        const Asker asker(1);
        QVERIFY(ask(asker));
        m_rig->run(WarmUpMs);
    }
    m_rig->startRecord();
}

bool UdpPeersTest::ask(const Asker& asker)
{
    return m_rig->waitUntil([&asker] { return asker.isDone(); }, ManyQueriesTimeoutMs);
}

void UdpPeersTest::peer_data()
{
    QTest::addColumn<int>("index");
    const QVector<Peer> peers = Peers();
    for (int index = 0; index < peers.size(); ++index) {
        QTest::newRow(peers.at(index).name) << index;
    }
}

void UdpPeersTest::peer()
{
    QFETCH(int, index);
    const Peer peer = Peers().at(index);
    const ProcessUse use = ProcessUse::now();
    {
        std::unique_ptr<UdpPeer> printer;
        if (peer.isThere) {
            printer = std::make_unique<UdpPeer>(PeerAddress, peer.answers, peer.answersFrom, peer.delayMs);
        }
        const Asker asker(IsSlow(peer) ? 1 : ManyQueries);
        QVERIFY(ask(asker));
        QCOMPARE(asker.results().count(peer.result), asker.results().size());
        if (IsSlow(peer)) {
            QVERIFY2(asker.longestMs() >= TimeoutMs, qPrintable(QString::number(asker.longestMs())));
        }
        const stPrinterState expected = peer.result == Answered ? FullReplyState() : FilledState();
        QCOMPARE(Words(asker.printer().stState), Words(expected));
    }
    QVERIFY(m_rig->settlesAt(use, NoiseBytes));
}

// A late answer must reach nobody, least of all the next query.
void UdpPeersTest::afterALateAnswer()
{
    const UdpPeer late(PeerAddress, {StandardBytes(RawPrinting, 1111)}, nullptr, 1200);
    {
        const Asker asker(1);
        QVERIFY(ask(asker));
        QCOMPARE(asker.results(), QList<int>{NoAnswer});
    }
    const Asker asker(1);
    QVERIFY(ask(asker));
    QCOMPARE(asker.results(), QList<int>{NoAnswer});
    QCOMPARE(Words(asker.printer()), Words(FilledPrinter(Name)));
}

// The window takes its rows from the status files only.
void UdpPeersTest::windowAnswers()
{
    QCOMPARE(m_rig->record(0), QStringList(Ready));
    QCOMPARE(m_rig->signalsOf(0), 0);
    QVERIFY(m_rig->hasAnsweredInTime());
}

void UdpPeersTest::cleanupTestCase()
{
    m_rig.reset();
}

QTEST_MAIN(UdpPeersTest)
#include "tst_udppeers.moc"
