// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/NetworkQuery.h"
#include "Descriptors.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "SocketCalls.h"
#include "StatusWorker.h"
#include "UdpPeer.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

class NetworkStatusChannelTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void requestOnTheWire();
    void emptyAddressSendsNothing();
    void replyIsEvaluated();
    void replySize_data();
    void replySize();
    void zerosFollowTheReply();
    void qzFamilyIsNotDistinguished();
    void silence();
    void silentPeer();
    void lateReply();
    void onlyTheFirstDatagramCounts();
    void answerFromAnotherAddress();
    void unparsableAddress_data();
    void unparsableAddress();
    void noSocket();
    void standardInputIsClosed();
    void notSent_data();
    void notSent();
    void notSentWhole();
    void timeoutCannotBeSet();
    void timeoutIsSetAfterSending();
    void everySocketIsClosed();
};

namespace {

constexpr char PeerAddress[] = "127.7.7.7";
constexpr int TimeoutMs = 1000;

const QString Address = QString::fromLatin1(PeerAddress);

// The request of every query: start, length, request, zeros.
QByteArray Request()
{
    return QByteArray::fromHex("A5 000C 50E0740803 00000000000000");
}

StatusWorker& FilledWorker(StatusWorker& worker)
{
    worker.stCurrent = FilledPrinter(QStringLiteral("Office"));
    return worker;
}

QString UntouchedWords()
{
    return Words(FilledPrinter(QStringLiteral("Office")));
}

} // namespace

void NetworkStatusChannelTest::init()
{
    SocketCalls::Reset(SocketCalls::Failure::None);
}

void NetworkStatusChannelTest::requestOnTheWire()
{
    UdpPeer peer(PeerAddress, {StandardBytes(RawReady)});
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusUDP(Address), 0);
    const QList<QByteArray> requests = peer.takeRequests();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().toHex(' '), Request().toHex(' '));
    QCOMPARE(requests.first().size(), 15);
}

void NetworkStatusChannelTest::emptyAddressSendsNothing()
{
    UdpPeer peer("127.0.0.1", {StandardBytes(RawReady)});
    StatusWorker worker;
    QCOMPARE(FilledWorker(worker).GetPrinterStatusUDP(QString()), -1);
    QCOMPARE(worker.GetPrinterStatusUDP(QLatin1String("")), -1);
    QCOMPARE(peer.takeRequests().size(), 0);
    QVERIFY(SocketCalls::Order().empty());
    QCOMPARE(Words(worker.stCurrent), UntouchedWords());
    unsigned char reply = 'x';
    unsigned long length = 7;
    QCOMPARE(QueryPrinter(QString(), &reply, 1, length), -1);
    QCOMPARE(length, 7UL);
}

void NetworkStatusChannelTest::replyIsEvaluated()
{
    const UdpPeer peer(PeerAddress, {EncodeStandardReply(FullReply())});
    StatusWorker worker;
    QCOMPARE(FilledWorker(worker).GetPrinterStatusUDP(Address), 0);
    QCOMPARE(Words(worker.stCurrent.stState), Words(FullReplyState()));
    QCOMPARE(Words(worker.stCurrent.stInfo), Words(FilledPrinter(QStringLiteral("Office")).stInfo));
}

void NetworkStatusChannelTest::replySize_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("result");

    QTest::newRow("0 bytes") << QByteArray() << -5;
    QTest::newRow("1 byte") << QByteArray(1, '\0') << -5;
    QTest::newRow("7 bytes") << QByteArray(7, '\0') << -5;
    QTest::newRow("8 bytes, evaluated and rejected") << QByteArray(8, '\0') << -1;
    QTest::newRow("cut off") << RejectedBytes() << -1;
    QTest::newRow("whole") << StandardBytes(RawReady) << 0;
    QTest::newRow("whole, with a rest") << StandardBytes(RawReady) + QByteArray(100, '\xFF') << 0;
    QTest::newRow("2048 bytes") << StandardBytesOfSize(2048) << 0;
    QTest::newRow("2049 bytes, the last is lost") << StandardBytesOfSize(2049) << -1;
}

void NetworkStatusChannelTest::replySize()
{
    QFETCH(QByteArray, reply);
    QFETCH(int, result);
    const UdpPeer peer(PeerAddress, {reply});
    StatusWorker worker;
    QCOMPARE(FilledWorker(worker).GetPrinterStatusUDP(Address), result);
    if (result == 0) {
        QCOMPARE(worker.stCurrent.stState.dwRemainingToner, 8000UL);
    } else {
        QCOMPARE(Words(worker.stCurrent), UntouchedWords());
    }
}

void NetworkStatusChannelTest::zerosFollowTheReply()
{
    const UdpPeer peer(PeerAddress, {QByteArray(8, 'a')});
    QByteArray buffer(16, 'x');
    unsigned long length = 0;
    QCOMPARE(QueryPrinter(Address, reinterpret_cast<unsigned char*>(buffer.data()), 12, length), 0);
    QCOMPARE(length, 8UL);
    QCOMPARE(buffer, QByteArray(8, 'a') + QByteArray(4, '\0') + QByteArray(4, 'x'));
}

void NetworkStatusChannelTest::qzFamilyIsNotDistinguished()
{
    const UdpPeer peer(PeerAddress, {StandardBytes(RawReady)});
    StatusWorker worker;
    worker.stCurrent = FilledPrinter(QStringLiteral("J4990E"));
    QCOMPARE(worker.GetPrinterStatusUDP(Address), 0);
    QCOMPARE(worker.stCurrent.stState.dwRemainingToner, 8000UL);
    QCOMPARE(worker.stCurrent.stState.iNumberOfError, 0); // the QZ family always has 1
}

void NetworkStatusChannelTest::silence()
{
    StatusWorker worker;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(FilledWorker(worker).GetPrinterStatusUDP(Address), -5);
    QVERIFY2(timer.elapsed() >= TimeoutMs, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(Words(worker.stCurrent), UntouchedWords());
}

void NetworkStatusChannelTest::silentPeer()
{
    UdpPeer peer(PeerAddress, {});
    StatusWorker worker;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(worker.GetPrinterStatusUDP(Address), -5);
    QVERIFY2(timer.elapsed() >= TimeoutMs, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(peer.takeRequests().size(), 1); // asked only once
}

void NetworkStatusChannelTest::lateReply()
{
    const UdpPeer peer(PeerAddress, {StandardBytes(RawReady)}, nullptr, 1500);
    StatusWorker worker;
    QCOMPARE(FilledWorker(worker).GetPrinterStatusUDP(Address), -5);
    QCOMPARE(Words(worker.stCurrent), UntouchedWords());
}

void NetworkStatusChannelTest::onlyTheFirstDatagramCounts()
{
    const UdpPeer peer(PeerAddress, {QByteArray(7, '\0'), StandardBytes(RawReady)});
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusUDP(Address), -5);
    const UdpPeer otherPeer("127.7.7.8", {StandardBytes(RawReady, 1), StandardBytes(RawReady, 2)});
    QCOMPARE(worker.GetPrinterStatusUDP(QStringLiteral("127.7.7.8")), 0);
    QCOMPARE(worker.stCurrent.stState.dwRemainingToner, 1UL);
}

void NetworkStatusChannelTest::answerFromAnotherAddress()
{
    const UdpPeer peer(PeerAddress, {StandardBytes(RawBusy)}, "127.9.9.9");
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusUDP(Address), 0);
    QCOMPARE(worker.stCurrent.stState.enCurrentStatus, 5);
}

void NetworkStatusChannelTest::unparsableAddress_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("name") << "printer.local";
    QTest::newRow("blank") << " ";
    QTest::newRow("number too great") << "256.1.1.1";
    QTest::newRow("three numbers") << "127.7.7";
    QTest::newRow("blank before") << " 127.7.7.7";
    QTest::newRow("with the port") << "127.7.7.7:9300";
    QTest::newRow("IPv6") << "::1";
    QTest::newRow("Chinese") << "打印机";
}

// An address that cannot be parsed becomes 0.0.0.0, which is this machine.
void NetworkStatusChannelTest::unparsableAddress()
{
    QFETCH(QString, address);
    UdpPeer peer("127.0.0.1", {StandardBytes(RawBusy)});
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusUDP(address), 0);
    QCOMPARE(peer.takeRequests().size(), 1);
    QCOMPARE(worker.stCurrent.stState.enCurrentStatus, 5);
}

void NetworkStatusChannelTest::noSocket()
{
    StatusWorker worker;
    FilledWorker(worker);
    rlimit before = {};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{static_cast<rlim_t>(LowestFreeDescriptor()), before.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &none), 0);
    const int result = worker.GetPrinterStatusUDP(Address);
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &before), 0);
    QCOMPARE(result, -2);
    QCOMPARE(Words(worker.stCurrent), UntouchedWords());
}

// The socket is then descriptor 0.
void NetworkStatusChannelTest::standardInputIsClosed()
{
    const UdpPeer peer(PeerAddress, {StandardBytes(RawReady)});
    const int kept = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(STDIN_FILENO);
    StatusWorker worker;
    const int result = worker.GetPrinterStatusUDP(Address);
    dup2(kept, STDIN_FILENO);
    close(kept);
    QCOMPARE(result, 0);
}

void NetworkStatusChannelTest::notSent_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("no way there") << "203.0.113.1"; // in a network reserved for documentation
    QTest::newRow("broadcast") << "255.255.255.255";
}

void NetworkStatusChannelTest::notSent()
{
    QFETCH(QString, address);
    StatusWorker worker;
    QCOMPARE(FilledWorker(worker).GetPrinterStatusUDP(address), -3);
    QCOMPARE(Words(worker.stCurrent), UntouchedWords());
}

void NetworkStatusChannelTest::notSentWhole()
{
    const UdpPeer peer(PeerAddress, {StandardBytes(RawReady)});
    SocketCalls::Reset(SocketCalls::Failure::ShortSend);
    StatusWorker worker;
    QCOMPARE(FilledWorker(worker).GetPrinterStatusUDP(Address), -3);
    QCOMPARE(SocketCalls::Order(), std::vector<std::string>{"sendto"});
    QCOMPARE(Words(worker.stCurrent), UntouchedWords());
}

void NetworkStatusChannelTest::timeoutCannotBeSet()
{
    UdpPeer peer(PeerAddress, {StandardBytes(RawReady)});
    SocketCalls::Reset(SocketCalls::Failure::Timeout);
    StatusWorker worker;
    QCOMPARE(FilledWorker(worker).GetPrinterStatusUDP(Address), -4);
    QCOMPARE(peer.takeRequests().size(), 1); // the request was sent nevertheless
    QCOMPARE(Words(worker.stCurrent), UntouchedWords());
}

void NetworkStatusChannelTest::timeoutIsSetAfterSending()
{
    const UdpPeer peer(PeerAddress, {StandardBytes(RawReady)});
    StatusWorker worker;
    QCOMPARE(worker.GetPrinterStatusUDP(Address), 0);
    QCOMPARE(SocketCalls::Order(), (std::vector<std::string>{"sendto", "setsockopt"}));
}

void NetworkStatusChannelTest::everySocketIsClosed()
{
    const UdpPeer peer(PeerAddress, {StandardBytes(RawReady)});
    const UdpPeer emptyPeer("127.7.7.8", {QByteArray()});
    StatusWorker worker;
    const int lowestFree = LowestFreeDescriptor();
    QCOMPARE(worker.GetPrinterStatusUDP(Address), 0);
    QCOMPARE(LowestFreeDescriptor(), lowestFree);
    QCOMPARE(worker.GetPrinterStatusUDP(QStringLiteral("127.7.7.8")), -5);
    QCOMPARE(LowestFreeDescriptor(), lowestFree);
    const UdpPeer rejectedPeer("127.7.7.9", {RejectedBytes()});
    const int lowestFreeBesideIt = LowestFreeDescriptor();
    QCOMPARE(worker.GetPrinterStatusUDP(QStringLiteral("127.7.7.9")), -1);
    QCOMPARE(LowestFreeDescriptor(), lowestFreeBesideIt);
    QCOMPARE(worker.GetPrinterStatusUDP(QStringLiteral("203.0.113.1")), -3);
    QCOMPARE(LowestFreeDescriptor(), lowestFreeBesideIt);
    SocketCalls::Reset(SocketCalls::Failure::Timeout);
    QCOMPARE(worker.GetPrinterStatusUDP(Address), -4);
    QCOMPARE(LowestFreeDescriptor(), lowestFreeBesideIt);
}

QTEST_GUILESS_MAIN(NetworkStatusChannelTest)
#include "tst_networkstatuschannel.moc"
