// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Trend.h"

#include <QtTest>

#include <random>

namespace {

using Points = QVector<TrendPoint>;

Points Line(int count, double slope, double level)
{
    Points points;
    for (int i = 0; i < count; ++i) {
        points.append({static_cast<double>(i), level + slope * i});
    }
    return points;
}

Points Noise(int count, double slope, quint32 seed)
{
    std::mt19937 engine(seed);
    std::normal_distribution<double> noise(0, 10);
    Points points = Line(count, slope, 1000);
    for (TrendPoint& point : points) {
        point.y += noise(engine);
    }
    return points;
}

} // namespace

class TrendTest : public QObject
{
    Q_OBJECT

private slots:
    void median_data();
    void median();
    void windowMedians();
    void windowWithFewPointsIsLeftOut();
    void exactLine();
    void groupsKeepTheirLevels();
    void knownSmallSample();
    void aQuarterMayBeAnything();
    void tiesNarrowTheBounds();
    void rareOutliers();
    void boundsHoldTheTruth();
    void tooFewPoints();
};

void TrendTest::median_data()
{
    QTest::addColumn<QVector<double>>("values");
    QTest::addColumn<double>("expected");
    QTest::newRow("none") << QVector<double>{} << 0.0;
    QTest::newRow("one") << QVector<double>{7} << 7.0;
    QTest::newRow("odd") << QVector<double>{9, 1, 5} << 5.0;
    QTest::newRow("even") << QVector<double>{9, 1, 5, 6} << 5.5;
}

void TrendTest::median()
{
    QFETCH(const QVector<double>, values);
    QFETCH(const double, expected);
    QCOMPARE(Median(values), expected);
}

void TrendTest::windowMedians()
{
    const Points medians = WindowMedians({{0, 5}, {1, 900}, {2, 6}, {10, 1}, {11, 2}, {12, 3}}, 10);
    QCOMPARE(medians.size(), 2);
    QCOMPARE(medians.at(0).x, 1.0);
    QCOMPARE(medians.at(0).y, 6.0);
    QCOMPARE(medians.at(1).x, 11.0);
    QCOMPARE(medians.at(1).y, 2.0);
}

void TrendTest::windowWithFewPointsIsLeftOut()
{
    const Points points{{0, 1}, {1, 1}, {2, 1}, {3, 1}, {10, 2}, {11, 2}, {20, 3}};
    const Points medians = WindowMedians(points, 10);
    QCOMPARE(medians.size(), 2); // windows of four, two and one points
    QCOMPARE(medians.last().y, 2.0);
}

void TrendTest::exactLine()
{
    const Trend trend = TheilSen({Line(20, 3, 100)});
    QCOMPARE(trend.points, 20);
    QCOMPARE(trend.slope, 3.0);
    QCOMPARE(trend.lower, 3.0);
    QCOMPARE(trend.upper, 3.0);
}

void TrendTest::groupsKeepTheirLevels()
{
    Points later = Line(20, 0, 5000);
    for (TrendPoint& point : later) {
        point.x += 20;
    }
    const Trend flat = TheilSen({Line(20, 0, 100), later});
    QCOMPARE(flat.slope, 0.0);
    QCOMPARE(flat.upper, 0.0);
    QCOMPARE(flat.points, 40);
    QVERIFY(TheilSen({Line(20, 0, 100) + later}).slope > 0); // as a single group it has a slope
}

// Ten pairs. The variance of S is 5*4*15/18 = 16.67, so the bounds reach over 10.5 ranks, which is all of them.
void TrendTest::knownSmallSample()
{
    const Trend trend = TheilSen({{{1, 2}, {2, 3}, {3, 5}, {4, 4}, {5, 7}}});
    QCOMPARE(trend.slope, 1.125); // -1, 1/2, 2/3, 1, 1, 5/4, 4/3, 3/2, 2, 3
    QCOMPARE(trend.lower, -1.0);
    QCOMPARE(trend.upper, 3.0);
}

void TrendTest::aQuarterMayBeAnything()
{
    Points points = Line(40, 2, 0);
    for (int i = 0; i < points.size(); i += 5) {
        points[i].y = i % 2 == 0 ? 1e6 : -1e6;
    }
    QCOMPARE(TheilSen({points}).slope, 2.0);
}

// Of 435 slopes 147 are 0. Ignoring ties, the variance is 3142 and the lower bound is the 145th slope. With ties it is
// 2677 and the 150th.
void TrendTest::tiesNarrowTheBounds()
{
    Points points = Line(30, 0, 14);
    for (int i = 14; i < points.size(); ++i) {
        points[i].y = i < 22 ? 15 : 16;
    }
    QVERIFY(TheilSen({points}).lower > 0);
}

// A count that is mostly constant and never off by more than one.
void TrendTest::rareOutliers()
{
    Points points = Line(60, 0, 14);
    points[10].y = 15;
    points[40].y = 15;
    const Trend trend = TheilSen({points});
    QCOMPARE(trend.slope, 0.0);
    QCOMPARE(trend.lower, 0.0);
    QCOMPARE(trend.upper, 0.0);
}

void TrendTest::boundsHoldTheTruth()
{
    constexpr int runs = 1000;
    constexpr double slope = 0.3;
    int held = 0;
    for (int run = 0; run < runs; ++run) {
        const Trend trend = TheilSen({Noise(30, slope, static_cast<quint32>(run))});
        held += trend.lower <= slope && slope <= trend.upper ? 1 : 0;
        QVERIFY(trend.lower <= trend.slope && trend.slope <= trend.upper);
    }
    qInfo("the bounds held the slope in %d of %d runs", held, runs);
    QVERIFY(held >= runs * 98 / 100);
    QVERIFY(held < runs); // the bounds are not too wide
}

void TrendTest::tooFewPoints()
{
    QCOMPARE(TheilSen({}).points, 0);
    QCOMPARE(TheilSen({Line(2, 5, 0), Line(1, 5, 0)}).points, 0);
    QCOMPARE(TheilSen({Line(2, 5, 0), Line(3, 1, 0)}).slope, 1.0);
}

QTEST_APPLESS_MAIN(TrendTest)
#include "tst_trend.moc"
