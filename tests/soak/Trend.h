// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QVector>

struct TrendPoint
{
    double x = 0;
    double y = 0;
};

/// The rise of y over x in groups that each have a level of their own.
struct Trend
{
    double slope = 0;
    double lower = 0; ///< 99 % confidence bounds of the slope
    double upper = 0;
    int points = 0;
};

/// The middle one; the mean of the middle two of an even number; 0 of none.
double Median(QVector<double> values);

/// The medians of x and y in windows of `width` of x that hold at least half as many points as the fullest.
QVector<TrendPoint> WindowMedians(const QVector<TrendPoint>& points, double width);

/// The estimate of Theil and Sen: the median of the slopes of all pairs of points of one group. Its bounds follow from
/// the variance of Kendall's S, corrected for ties, summed over the groups. One point in four may be anything.
/// Needs no assumption on the noise but that windows are independent. All 0 without a group of three points.
Trend TheilSen(const QVector<QVector<TrendPoint>>& groups);
