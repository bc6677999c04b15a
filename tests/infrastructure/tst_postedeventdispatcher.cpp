// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/PostedEventDispatcher.h"

#include <QDir>
#include <QPointer>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

class PostedEventDispatcherTest : public QObject
{
    Q_OBJECT

private slots:
    void callsReachTheThread();
    void callsFromBeforeTheStart();
    void callFromWithinACall();
    void noCallIsOverslept();
    void callsFromManyThreads();
    void endsWhenAskedTo_data();
    void endsWhenAskedTo();
    void objectsAreDeletedLater();
    void needsNoDescriptor();
    void sleepsWhenNothingIsPosted();
};

// A thread with the dispatcher, which runs calls from other threads. The test's own lock guards the calls because the
// thread sanitizer does not see Qt's.
class Receiver : public QObject
{
    Q_OBJECT

public:
    Receiver()
    {
        m_thread.setEventDispatcher(new PostedEventDispatcher);
        m_object.moveToThread(&m_thread);
        connect(this, &Receiver::posted, &m_object, [this] { runNext(); });
    }
    ~Receiver() override
    {
        m_thread.quit();
        m_thread.wait();
    }

    void start()
    {
        m_thread.start();
    }
    void post(const std::function<void()>& call = [] {})
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_waiting.push_back(call);
        }
        emit posted();
    }
    QThread& thread()
    {
        return m_thread;
    }
    /// The number of calls that have run.
    int calls() const
    {
        return m_calls;
    }
    /// Whether every call ran in the thread.
    bool isInThread() const
    {
        return m_isInThread;
    }

signals:
    void posted();

private:
    void runNext()
    {
        std::function<void()> call;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            call = m_waiting.front();
            m_waiting.pop_front();
        }
        m_isInThread = m_isInThread && QThread::currentThread() == &m_thread;
        call();
        ++m_calls;
    }

    QThread m_thread;
    QObject m_object;
    std::mutex m_mutex;
    std::deque<std::function<void()>> m_waiting;
    std::atomic<int> m_calls{0};
    std::atomic<bool> m_isInThread{true};
};

namespace {

constexpr int TimeoutMs = 10000;

int OpenDescriptors()
{
    return QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot).size();
}

// User and system time of the whole process, in clock ticks.
qint64 ProcessorTicks()
{
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QList<QByteArray> fields = file.readAll().split(' ');
    return fields.value(13).toLongLong() + fields.value(14).toLongLong();
}

} // namespace

void PostedEventDispatcherTest::callsReachTheThread()
{
    Receiver receiver;
    receiver.start();
    for (int i = 1; i <= 3; ++i) {
        receiver.post();
        QTRY_COMPARE_WITH_TIMEOUT(receiver.calls(), i, TimeoutMs);
    }
    QVERIFY(receiver.isInThread());
}

void PostedEventDispatcherTest::callsFromBeforeTheStart()
{
    Receiver receiver;
    receiver.post();
    receiver.post();
    receiver.start();
    QTRY_COMPARE_WITH_TIMEOUT(receiver.calls(), 2, TimeoutMs);
}

void PostedEventDispatcherTest::callFromWithinACall()
{
    Receiver receiver;
    receiver.start();
    receiver.post([&receiver] { receiver.post(); });
    QTRY_COMPARE_WITH_TIMEOUT(receiver.calls(), 2, TimeoutMs);
}

// Posts each call as soon as the one before has run, which is when the thread is about to sleep.
void PostedEventDispatcherTest::noCallIsOverslept()
{
    Receiver receiver;
    receiver.start();
    QElapsedTimer timer;
    timer.start();
    for (int i = 1; i <= 200000; ++i) {
        receiver.post();
        while (receiver.calls() < i && !timer.hasExpired(6L * TimeoutMs)) {
            std::this_thread::yield();
        }
        QCOMPARE(receiver.calls(), i);
    }
}

void PostedEventDispatcherTest::callsFromManyThreads()
{
    constexpr int threadCount = 4;
    constexpr int callsPerThread = 5000;
    Receiver receiver;
    receiver.start();
    std::vector<std::thread> posters;
    posters.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        posters.emplace_back([&receiver] {
            for (int call = 0; call < callsPerThread; ++call) {
                receiver.post();
            }
        });
    }
    for (std::thread& poster : posters) {
        poster.join();
    }
    QTRY_COMPARE_WITH_TIMEOUT(receiver.calls(), threadCount * callsPerThread, TimeoutMs);
    QVERIFY(receiver.isInThread());
}

void PostedEventDispatcherTest::endsWhenAskedTo_data()
{
    QTest::addColumn<bool>("isAtWork");
    QTest::newRow("asleep") << false;
    QTest::newRow("within a call") << true;
}

void PostedEventDispatcherTest::endsWhenAskedTo()
{
    QFETCH(bool, isAtWork);
    Receiver receiver;
    receiver.start();
    receiver.post();
    QTRY_COMPARE_WITH_TIMEOUT(receiver.calls(), 1, TimeoutMs);
    if (isAtWork) {
        receiver.post([] { QThread::msleep(200); });
    }
    receiver.thread().quit();
    QVERIFY(receiver.thread().wait(TimeoutMs));
}

void PostedEventDispatcherTest::objectsAreDeletedLater()
{
    Receiver receiver;
    receiver.start();
    const QPointer<QObject> object = new QObject;
    object->moveToThread(&receiver.thread());
    object->deleteLater();
    QTRY_VERIFY_WITH_TIMEOUT(object.isNull(), TimeoutMs);
}

void PostedEventDispatcherTest::needsNoDescriptor()
{
    const int before = OpenDescriptors();
    std::vector<std::unique_ptr<Receiver>> receivers;
    for (int i = 0; i < 50; ++i) {
        receivers.push_back(std::make_unique<Receiver>());
        receivers.back()->start();
        receivers.back()->post();
    }
    for (const auto& receiver : receivers) {
        QTRY_COMPARE_WITH_TIMEOUT(receiver->calls(), 1, TimeoutMs);
    }
    QCOMPARE(OpenDescriptors(), before);
}

void PostedEventDispatcherTest::sleepsWhenNothingIsPosted()
{
    Receiver receiver;
    receiver.start();
    receiver.post();
    QTRY_COMPARE_WITH_TIMEOUT(receiver.calls(), 1, TimeoutMs);
    const qint64 before = ProcessorTicks();
    QThread::sleep(1);
    const qint64 ticks = ProcessorTicks() - before; // 10 ms each; a busy loop takes about 100
    QVERIFY2(ticks < 20, qPrintable(QString::number(ticks)));
}

QTEST_GUILESS_MAIN(PostedEventDispatcherTest)
#include "tst_postedeventdispatcher.moc"
