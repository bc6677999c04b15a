// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Verdict.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

namespace {

constexpr double WindowSeconds = 10;
constexpr int RunSeconds = 1800;
constexpr int ShortRunSeconds = 45;
constexpr double ShortWindowSeconds = 1;
constexpr int StormSeconds = 300;
constexpr int Printers = 100;
constexpr int ListSeenAtSeconds = 3;

using Change = std::function<void(SoakSample&)>;

// A good run: workers start when the list is seen, every storm (five minutes apart) adds workers, caches fill, values
// are noisy and some descriptors are short-lived.
QVector<SoakSample> Run(
    int seconds, const Change& change = [](SoakSample&) {})
{
    std::mt19937 engine(static_cast<quint32>(seconds));
    std::normal_distribution<double> noise(0, 1);
    QVector<SoakSample> samples;
    for (int second = 1; second <= seconds; ++second) {
        SoakSample sample;
        sample.seconds = second + 0.02 * noise(engine);
        const int storms = second / StormSeconds;
        sample.isSettled = second > seconds / 10 && (storms == 0 || second % StormSeconds > 40);
        sample.expectedWorkers = Printers * (1 + storms);
        sample.process.workerThreads = (second < ListSeenAtSeconds ? 0 : sample.expectedWorkers) + 1;
        sample.process.threads = sample.process.workerThreads + 5;
        sample.process.descriptors = sample.process.workerThreads + 14 + (second % 7 == 0 ? 1 : 0);
        sample.process.privateKib = 17000 + 60 * sample.expectedWorkers + 300 * (1 - std::exp(-second / 120.0)) +
            4 * std::round(2 * noise(engine));
        sample.process.pssAnonymousKib = sample.process.privateKib + 350;
        sample.process.rssKib = sample.process.privateKib + 76000;
        sample.process.pssKib = second * 50; // the effect of other programs
        sample.cpuPercent = 0.7 + 0.3 * std::fabs(noise(engine)) + 0.002 * sample.expectedWorkers;
        sample.answerMs = second % 50 == 0 ? 150 : 0.7;
        change(sample);
        samples.append(sample);
    }
    return samples;
}

QStringList BadFindings(const QVector<SoakSample>& samples, double windowSeconds = WindowSeconds)
{
    QStringList bad;
    const QVector<Finding> findings = Judge(samples, windowSeconds);
    for (const Finding& finding : findings) {
        if (!finding.isGood) {
            bad.append(finding.text.section(QLatin1Char(':'), 0, 0));
        }
    }
    return bad;
}

} // namespace

Q_DECLARE_METATYPE(Change)

class VerdictTest : public QObject
{
    Q_OBJECT

private slots:
    void goodRun();
    void goodShortRun();
    void badRun_data();
    void badRun();
    void badShortRun_data();
    void badShortRun();
    void workersWithoutDescriptors();
    void unsettledSamplesDoNotCount();
    void tooShort();
};

void VerdictTest::goodRun()
{
    QCOMPARE(BadFindings(Run(RunSeconds)), QStringList());
    QCOMPARE(Judge(Run(RunSeconds), WindowSeconds).size(), 10);
}

void VerdictTest::goodShortRun()
{
    QCOMPARE(BadFindings(Run(ShortRunSeconds), ShortWindowSeconds), QStringList());
}

void VerdictTest::badRun_data()
{
    const QString privateMemory = QStringLiteral("private memory");
    const QString anonymousShare = QStringLiteral("share of anonymous memory");
    const QString residentMemory = QStringLiteral("resident memory");
    const QString descriptors = QStringLiteral("descriptors beyond the workers'");
    const QString workers = QStringLiteral("worker threads");
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("bad");
    QTest::newRow("2 KiB each time the list is looked at") << Change([](SoakSample& sample) {
        for (double* kib : {&sample.process.privateKib, &sample.process.pssAnonymousKib, &sample.process.rssKib}) {
            *kib += 2 * sample.seconds / 3;
        }
    }) << privateMemory + QStringLiteral(", ") + anonymousShare;
    QTest::newRow("files mapped and kept")
        << Change([](SoakSample& sample) { sample.process.rssKib += 2 * sample.seconds; }) << residentMemory;
    QTest::newRow("a single descriptor lost")
        << Change([](SoakSample& sample) { sample.process.descriptors += sample.seconds > 900 ? 1 : 0; })
        << descriptors;
    QTest::newRow("a worker's thread lost") << Change([](SoakSample& sample) {
        const int lost = sample.seconds > 1700 ? 1 : 0;
        sample.process.workerThreads -= lost;
        sample.process.threads -= lost;
        sample.process.descriptors -= lost;
    }) << workers;
    QTest::newRow("a worker too many") << Change([](SoakSample& sample) {
        const int added = sample.seconds > 900 ? 1 : 0;
        sample.process.workerThreads += added;
        sample.process.threads += added;
        sample.process.descriptors += added;
    }) << workers;
    QTest::newRow("another thread that stays")
        << Change([](SoakSample& sample) { sample.process.threads += sample.seconds > 900 ? 1 : 0; })
        << QStringLiteral("threads beyond the workers");
    QTest::newRow("ever more work") << Change([](SoakSample& sample) { sample.cpuPercent += sample.seconds / 300; })
                                    << QStringLiteral("processor");
    QTest::newRow("ever slower") << Change([](SoakSample& sample) { sample.answerMs += sample.seconds / 60; })
                                 << QStringLiteral("time to answer");
    QTest::newRow("slow for a while") << Change([](SoakSample& sample) {
        sample.answerMs += sample.seconds > 1000 && sample.seconds < 1020 ? 200 : 0;
    }) << QStringLiteral("answers");
    QTest::newRow("workers that cost much") << Change([](SoakSample& sample) {
        const double kib = 100.0 * sample.expectedWorkers;
        sample.process.privateKib += kib;
        sample.process.pssAnonymousKib += kib;
        sample.process.rssKib += kib;
    }) << QStringLiteral("price of workers");
}

void VerdictTest::badRun()
{
    QFETCH(const Change, change);
    const QStringList found = BadFindings(Run(RunSeconds, change));
    QTEST(found.join(QStringLiteral(", ")), "bad");
}

// Faults that a run of less than a minute must reveal.
void VerdictTest::badShortRun_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("bad");
    QTest::newRow("1 KiB each time a status file is looked at")
        << Change([](SoakSample& sample) { sample.process.privateKib += sample.seconds * Printers; })
        << QStringLiteral("private memory");
    QTest::newRow("a descriptor each time the list is looked at")
        << Change([](SoakSample& sample) { sample.process.descriptors += static_cast<int>(sample.seconds / 3); })
        << QStringLiteral("descriptors beyond the workers'");
    QTest::newRow("a thread lost") << Change([](SoakSample& sample) {
        sample.process.workerThreads -= sample.seconds > 40 ? 1 : 0;
    }) << QStringLiteral("worker threads");
}

void VerdictTest::badShortRun()
{
    QFETCH(const Change, change);
    QFETCH(const QString, bad);
    QVERIFY(BadFindings(Run(ShortRunSeconds, change), ShortWindowSeconds).contains(bad));
}

// If the first workers take no descriptors, the workers that a storm adds must not take any either.
void VerdictTest::workersWithoutDescriptors()
{
    const auto change = [](SoakSample& sample) {
        sample.process.descriptors -= sample.process.workerThreads;
    };
    QCOMPARE(BadFindings(Run(RunSeconds, change)), QStringList());
    const auto changeFirst = [](SoakSample& sample) {
        sample.process.descriptors -= std::min(sample.process.workerThreads, Printers + 1);
    };
    QCOMPARE(BadFindings(Run(RunSeconds, changeFirst)), QStringList{QStringLiteral("descriptors beyond the workers'")});
}

void VerdictTest::unsettledSamplesDoNotCount()
{
    const auto change = [](SoakSample& sample) {
        if (!sample.isSettled && sample.seconds > ListSeenAtSeconds) {
            sample.process.workerThreads -= 50;
            sample.process.privateKib *= 2;
            sample.process.descriptors += 100;
            sample.cpuPercent = 100;
        }
    };
    QCOMPARE(BadFindings(Run(RunSeconds, change)), QStringList());
}

void VerdictTest::tooShort()
{
    QCOMPARE(BadFindings({}), QStringList{QStringLiteral("too short to tell")});
    QCOMPARE(BadFindings(Run(RunSeconds, [](SoakSample& sample) { sample.isSettled = false; })),
             QStringList{QStringLiteral("too short to tell")});
    // Two samples do not show a trend.
    QVERIFY(!BadFindings(Run(2, [](SoakSample& sample) { sample.isSettled = true; })).isEmpty());
}

QTEST_APPLESS_MAIN(VerdictTest)
#include "tst_verdict.moc"
