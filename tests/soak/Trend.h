// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>

struct TrendPoint
{
    double x = 0;
    double y = 0;
};

/// The slope of y over x, in groups with different levels.
struct Trend
{
    double slope = 0;
    double lower = 0; ///< 99 % confidence bounds of the slope
    double upper = 0;
    int points = 0;
};

/// The median; 0 for no values.
double Median(QVector<double> values);

/// The medians of x and y in windows of `width` in x. Windows with less than half the points of the fullest are left
/// out.
QVector<TrendPoint> WindowMedians(const QVector<TrendPoint>& points, double width);

/// The Theil-Sen estimate: the median of the slopes of all pairs of points in a group. Its bounds follow from the
/// variance of Kendall's S, corrected for ties and summed over the groups. Up to a quarter of the points may be
/// outliers. The only assumption is that windows are independent. All 0 unless a group has three points.
Trend TheilSen(const QVector<QVector<TrendPoint>>& groups);
