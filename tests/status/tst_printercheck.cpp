// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleReports.h"
#include "status/PrinterCheck.h"

#include <QtTest>

Q_DECLARE_METATYPE(CheckState)

class PrinterCheckTest : public QObject
{
    Q_OBJECT

private slots:
    void worstState_data();
    void worstState();
    void tonerAtTheLimits_data();
    void tonerAtTheLimits();
    void offlineCountsAsChosen();
    void printerThatIsListedTwice();
    void noSuchPrinter();
    void tonerOutOfRangeIsNotJudged();
};

namespace {

PrinterReports Reports(const QList<PrinterReport>& printers)
{
    PrinterReports reports;
    reports.isListReadable = true;
    reports.printers = printers;
    return reports;
}

const QByteArray& Sound()
{
    static const QByteArray bytes = StandardBytes(RawReady);
    return bytes;
}

} // namespace

void PrinterCheckTest::worstState_data()
{
    QTest::addColumn<QList<QByteArray>>("replies");
    QTest::addColumn<CheckState>("state");
    const QByteArray low = StandardBytes(RawReady, 999);
    const QByteArray jammed = StandardBytes(RawReady, 8000, {0x11B0});
    using Replies = QList<QByteArray>;
    QTest::newRow("sound") << Replies{Sound(), Sound()} << CheckState::Ok;
    QTest::newRow("off-line") << Replies{Sound(), RejectedBytes()} << CheckState::Unknown;
    QTest::newRow("off-line and low") << Replies{RejectedBytes(), low} << CheckState::Warning;
    QTest::newRow("low and off-line") << Replies{low, RejectedBytes()} << CheckState::Warning;
    QTest::newRow("jammed, low and off-line") << Replies{jammed, low, RejectedBytes()} << CheckState::Critical;
}

void PrinterCheckTest::worstState()
{
    QFETCH(QList<QByteArray>, replies);
    QFETCH(CheckState, state);
    QList<PrinterReport> printers;
    for (const QByteArray& reply : qAsConst(replies)) {
        printers.append(Report(QString::number(printers.size()), reply));
    }
    const CheckResult result = CheckPrinters(Reports(printers), {}, {});
    QCOMPARE(result.state, state);
    QVERIFY(result.line.startsWith(QByteArray("PRINTERS ") + CheckStateName(state) + " - "));
    QCOMPARE(result.line.count('\n'), 1);
    QVERIFY(result.line.endsWith('\n'));
}

void PrinterCheckTest::tonerAtTheLimits_data()
{
    QTest::addColumn<quint32>("toner");
    QTest::addColumn<CheckState>("state");
    QTest::newRow("at the warning") << 1000U << CheckState::Ok;
    QTest::newRow("below the warning") << 999U << CheckState::Warning;
    QTest::newRow("at the critical") << 500U << CheckState::Warning;
    QTest::newRow("below the critical") << 499U << CheckState::Critical;
    QTest::newRow("none") << 0U << CheckState::Critical;
}

void PrinterCheckTest::tonerAtTheLimits()
{
    QFETCH(quint32, toner);
    QFETCH(CheckState, state);
    const PrinterReports reports = Reports({Report(QStringLiteral("a"), StandardBytes(RawReady, toner))});
    QCOMPARE(CheckPrinters(reports, {}, {}).state, state);
}

void PrinterCheckTest::offlineCountsAsChosen()
{
    const PrinterReports reports = Reports({Report(QStringLiteral("a"), RejectedBytes())});
    CheckLimits limits;
    for (const CheckState state : {CheckState::Ok, CheckState::Warning, CheckState::Critical, CheckState::Unknown}) {
        limits.offline = state;
        const CheckResult result = CheckPrinters(reports, {}, limits);
        QCOMPARE(result.state, state);
        QVERIFY(result.line.endsWith(" - a: off-line, report rejected\n"));
    }
}

void PrinterCheckTest::printerThatIsListedTwice()
{
    const PrinterReport report = Report(QStringLiteral("a"), Sound());
    QCOMPARE(CheckPrinters(Reports({report, report}), {}, {}).line.count("'a toner'"), 1);
}

void PrinterCheckTest::noSuchPrinter()
{
    const PrinterReports reports = Reports({Report(QStringLiteral("a"), Sound())});
    const CheckResult result = CheckPrinters(reports, {QStringLiteral("b|\033")}, {});
    QCOMPARE(result.state, CheckState::Unknown);
    QCOMPARE(result.line, QByteArray("PRINTERS UNKNOWN - b\\x7C\\x1B: no such printer\n"));
}

void PrinterCheckTest::tonerOutOfRangeIsNotJudged()
{
    const PrinterReports reports = Reports({Report(QStringLiteral("a"), StandardBytes(RawReady, 10001))});
    const CheckResult result = CheckPrinters(reports, {}, {});
    QCOMPARE(result.state, CheckState::Ok);
    QVERIFY(!result.line.contains("toner"));
}

QTEST_GUILESS_MAIN(PrinterCheckTest)
#include "tst_printercheck.moc"
