// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Verdict.h"

#include "Trend.h"

#include <QMap>

#include <algorithm>
#include <functional>

namespace {

constexpr double SecondsPerMinute = 60;
constexpr double MostAnswerMs = 100;
// Limit for stack, event loop, status record, reply buffer, and the start signals that wait at a running worker.
constexpr double MostKibPerWorker = 128;
constexpr double MostSlackKib = 512;
constexpr double AnswerWindowSeconds = 10;

using Measure = std::function<double(const SoakSample&)>;

struct FlatMeasure
{
    const char* name = "";
    const char* unit = "";
    // Allowed over the whole run, because caches fill.
    double mostGrowth = 0;
    // Allowed in addition, because each worker takes some code paths for the first time and drifts out of step with
    // those started at the same time.
    double mostGrowthPerWorker = 0;
    Measure measure;
};

const QVector<FlatMeasure>& FlatMeasures()
{
    static const QVector<FlatMeasure> s_measures{
        {"private memory", "KiB", 256, 1,
         [](const SoakSample& sample) {
             return sample.process.privateKib;
         }},
        {"share of anonymous memory", "KiB", 256, 1,
         [](const SoakSample& sample) {
             return sample.process.pssAnonymousKib;
         }},
        {"resident memory", "KiB", 1024, 1,
         [](const SoakSample& sample) {
             return sample.process.rssKib;
         }},
        {"processor", "% of a core", 0.5, 0.002,
         [](const SoakSample& sample) {
             return sample.cpuPercent;
         }},
        {"time to answer", "ms", 5, 0,
         [](const SoakSample& sample) {
             return sample.answerMs;
         }},
    };
    return s_measures;
}

double PrivateKib(const SoakSample& sample)
{
    return sample.process.privateKib;
}

// The points of each number of workers, with the time in minutes.
QMap<int, QVector<TrendPoint>> ByWorkers(const QVector<SoakSample>& settled, const Measure& measure)
{
    QMap<int, QVector<TrendPoint>> groups;
    for (const SoakSample& sample : settled) {
        groups[sample.expectedWorkers].append({sample.seconds / SecondsPerMinute, measure(sample)});
    }
    return groups;
}

Finding JudgeTrend(const FlatMeasure& flat, const QVector<SoakSample>& settled, double windowSeconds)
{
    QVector<QVector<TrendPoint>> groups;
    QVector<double> values;
    const QMap<int, QVector<TrendPoint>> points = ByWorkers(settled, flat.measure);
    for (const QVector<TrendPoint>& group : points) {
        groups.append(WindowMedians(group, windowSeconds / SecondsPerMinute));
        for (const TrendPoint& point : group) {
            values.append(point.y);
        }
    }
    const Trend trend = TheilSen(groups);
    const double minutes = (settled.last().seconds - settled.first().seconds) / SecondsPerMinute;
    const double mostSlope = (flat.mostGrowth + flat.mostGrowthPerWorker * settled.last().expectedWorkers) / minutes;
    const double peak = *std::max_element(values.begin(), values.end());
    return {trend.points > 0 && trend.lower <= mostSlope,
            QString::asprintf("%s: %+.3f a minute, with 99 %% confidence %+.3f to %+.3f (%d windows); "
                              "bad from %+.3f; median %.6g, peak %.6g %s",
                              flat.name, trend.slope, trend.lower, trend.upper, trend.points, mostSlope, Median(values),
                              peak, flat.unit)};
}

// Short-lived ones come and go within a sample. A leaked one raises the median for good.
Finding JudgeCount(const char* name, const QVector<SoakSample>& settled,
                   const std::function<int(const SoakSample&)>& count)
{
    QVector<double> values;
    for (const SoakSample& sample : settled) {
        values.append(count(sample));
    }
    const int quarter = (values.size() + 3) / 4;
    const double begin = Median(values.mid(0, quarter));
    const double end = Median(values.mid(values.size() - quarter));
    return {end <= begin,
            QString::asprintf("%s: median %g in the first quarter, %g in the last; peak %g", name, begin, end,
                              *std::max_element(values.begin(), values.end()))};
}

// The number of descriptors for each of the first workers: 1 if their event loops need one, otherwise 0.
int DescriptorsPerWorker(const SoakSample& begin, const SoakSample& settled)
{
    const int workers = settled.process.workerThreads - begin.process.workerThreads;
    const int descriptors = settled.process.descriptors - begin.process.descriptors;
    return workers > 0 ? std::min(1, (descriptors + workers / 2) / workers) : 0;
}

Finding JudgeWorkers(const QVector<SoakSample>& settled)
{
    int wrong = 0;
    QString first;
    for (const SoakSample& sample : settled) {
        const int expected = sample.expectedWorkers + 1; // plus the device manager
        if (sample.process.workerThreads != expected && ++wrong == 1) {
            first = QString::asprintf("; at %.0f s %d instead of %d", sample.seconds, sample.process.workerThreads,
                                      expected);
        }
    }
    return {wrong == 0,
            QString::asprintf("worker threads: %d at the end; in %d of %d samples not what the lists account for",
                              settled.last().process.workerThreads, wrong, settled.size()) +
                first};
}

Finding JudgePrice(const QVector<SoakSample>& settled)
{
    const QMap<int, QVector<TrendPoint>> groups = ByWorkers(settled, PrivateKib);
    const auto level = [](const QVector<TrendPoint>& points) {
        QVector<double> values;
        for (const TrendPoint& point : points) {
            values.append(point.y);
        }
        return Median(values);
    };
    const int workers = groups.lastKey() - groups.firstKey();
    const double kib = level(groups.last()) - level(groups.first());
    return {kib <= MostKibPerWorker * workers + MostSlackKib,
            QString::asprintf("price of workers: %+.0f KiB for %d more; bad from %.0f each and %.0f", kib, workers,
                              MostKibPerWorker, MostSlackKib)};
}

Finding JudgeAnswers(const QVector<SoakSample>& settled)
{
    QVector<TrendPoint> answers;
    double slowest = 0;
    for (const SoakSample& sample : settled) {
        answers.append({sample.seconds, sample.answerMs});
        slowest = std::max(slowest, sample.answerMs);
    }
    double slowestWindow = 0;
    const QVector<TrendPoint> windows = WindowMedians(answers, AnswerWindowSeconds);
    for (const TrendPoint& window : windows) {
        slowestWindow = std::max(slowestWindow, window.y);
    }
    return {slowestWindow < MostAnswerMs,
            QString::asprintf("answers: slowest window %.1f ms, bad from %.0f; slowest of all %.1f ms", slowestWindow,
                              MostAnswerMs, slowest)};
}

} // namespace

QVector<Finding> Judge(const QVector<SoakSample>& samples, double windowSeconds)
{
    QVector<SoakSample> settled;
    std::copy_if(samples.begin(), samples.end(), std::back_inserter(settled),
                 [](const SoakSample& sample) { return sample.isSettled; });
    if (settled.size() < 2) {
        return {{false, QStringLiteral("too short to tell")}};
    }
    const int perWorker = DescriptorsPerWorker(samples.first(), settled.first());
    QVector<Finding> findings{
        JudgeWorkers(settled),
        JudgePrice(settled),
        JudgeAnswers(settled),
        JudgeCount("threads beyond the workers", settled,
                   [](const SoakSample& sample) { return sample.process.threads - sample.process.workerThreads; }),
        JudgeCount("descriptors beyond the workers'", settled,
                   [perWorker](const SoakSample& sample) {
                       return sample.process.descriptors - perWorker * sample.process.workerThreads;
                   }),
    };
    for (const FlatMeasure& flat : FlatMeasures()) {
        findings.append(JudgeTrend(flat, settled, windowSeconds));
    }
    return findings;
}
