// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Trend.h"

#include <QMap>

#include <algorithm>
#include <cmath>

namespace {

constexpr int FewestPoints = 3;
constexpr double Normal995 = 2.5758; // 99.5 % quantile of the normal distribution

double PairCountTerm(double n)
{
    return n * (n - 1) * (2 * n + 5) / 18;
}

// The variance of Kendall's S without a trend. Ties in y count as neither, which reduces it.
double KendallVariance(const QVector<TrendPoint>& group)
{
    double variance = PairCountTerm(group.size());
    QMap<double, int> equals;
    for (const TrendPoint& point : group) {
        ++equals[point.y];
    }
    for (const int count : qAsConst(equals)) {
        variance -= PairCountTerm(count);
    }
    return variance;
}

void AppendSlopes(const QVector<TrendPoint>& group, QVector<double>& slopes)
{
    for (int i = 0; i < group.size(); ++i) {
        for (int j = i + 1; j < group.size(); ++j) {
            slopes.append((group.at(j).y - group.at(i).y) / (group.at(j).x - group.at(i).x));
        }
    }
}

} // namespace

double Median(QVector<double> values)
{
    if (values.isEmpty()) {
        return 0;
    }
    std::sort(values.begin(), values.end());
    const int middle = values.size() / 2;
    return values.size() % 2 == 1 ? values.at(middle) : (values.at(middle - 1) + values.at(middle)) / 2;
}

QVector<TrendPoint> WindowMedians(const QVector<TrendPoint>& points, double width)
{
    struct Window
    {
        QVector<double> x;
        QVector<double> y;
    };
    QMap<qint64, Window> windows;
    int fullest = 0;
    for (const TrendPoint& point : points) {
        Window& window = windows[static_cast<qint64>(std::floor(point.x / width))];
        window.x.append(point.x);
        window.y.append(point.y);
        fullest = std::max(fullest, window.x.size());
    }
    QVector<TrendPoint> medians;
    for (const Window& window : qAsConst(windows)) {
        if (2 * window.x.size() >= fullest) {
            medians.append({Median(window.x), Median(window.y)});
        }
    }
    return medians;
}

Trend TheilSen(const QVector<QVector<TrendPoint>>& groups)
{
    Trend trend;
    QVector<double> slopes;
    double variance = 0;
    for (const QVector<TrendPoint>& group : groups) {
        if (group.size() >= FewestPoints) {
            AppendSlopes(group, slopes);
            variance += KendallVariance(group);
            trend.points += group.size();
        }
    }
    if (slopes.isEmpty()) {
        return trend;
    }
    std::sort(slopes.begin(), slopes.end());
    const double reach = Normal995 * std::sqrt(variance);
    const int last = slopes.size() - 1;
    const int lower = static_cast<int>(std::floor((slopes.size() - reach) / 2)) - 1;
    const int upper = static_cast<int>(std::ceil((slopes.size() + reach) / 2));
    trend.slope = Median(slopes);
    trend.lower = slopes.at(std::clamp(lower, 0, last));
    trend.upper = slopes.at(std::clamp(upper, 0, last));
    return trend;
}
