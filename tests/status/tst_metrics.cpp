// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleReplies.h"
#include "status/Metrics.h"

#include <QtTest>

Q_DECLARE_METATYPE(ReportResult)

class MetricsTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldOfAStandardReply();
    void everyFieldOfAQZReply();
    void printsWithoutTheirOwnRecord();
    void unknownValuesHaveNoSample();
    void oneStatusIsTrue_data();
    void oneStatusIsTrue();
    void oneResultIsTrue_data();
    void oneResultIsTrue();
    void codeThatIsReportedTwice();
    void largeNumbersKeepTheirDigits();
    void names_data();
    void names();
    void everyMetricIsDescribedOnce();
};

namespace {

PrinterReport Report(const QByteArray& bytes, const PrinterFamily& family = StandardFamily())
{
    PrinterReport report;
    report.info.strPrinterName = QStringLiteral("Hall");
    report.reply = DecodeReply(family, bytes);
    report.result = ReportResult::Accepted;
    report.modified = QDateTime::fromMSecsSinceEpoch(1700000000250, Qt::UTC);
    return report;
}

QByteArray Metrics(const PrinterReport& report)
{
    PrinterReports reports;
    reports.isListReadable = true;
    reports.printers.append(report);
    return FormatMetrics(reports);
}

// The samples of a metric, without the prefix of all names and the printer.
QList<QByteArray> Samples(const QByteArray& text, const QByteArray& name)
{
    QList<QByteArray> samples;
    const QByteArray start = "tolmar_q727_" + name + "{printer=\"Hall\"";
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(start)) {
            samples.append(line.mid(start.size()));
        }
    }
    return samples;
}

QList<QByteArray> True(const QList<QByteArray>& samples)
{
    QList<QByteArray> result;
    for (const QByteArray& sample : samples) {
        if (sample.endsWith(" 1")) {
            result.append(sample);
        }
    }
    return result;
}

} // namespace

void MetricsTest::everyFieldOfAStandardReply()
{
    PrinterReport report = Report(EncodeStandardReply(FullReply()));
    report.info.enType = QStringLiteral("K4510A");
    report.info.iConnectType = CONNECT_TYPE_USB;
    report.info.strPort = QStringLiteral("USB001");
    const QByteArray text = Metrics(report);
    QCOMPARE(Samples(text, "printer_info"),
             QList<QByteArray>{",model=\"K4510A\",connection=\"usb\",port=\"USB001\",family=\"standard\","
                               "vendor=\"托尔玛 Tolmar\",product=\"QV K4510A\",firmware=\"1.2.3\",serial=\"SN-0001\","
                               "cartridge_serial=\"墨粉-7\"} 1"});
    QCOMPARE(Samples(text, "printer_report_timestamp_seconds"), QList<QByteArray>{"} 1700000000.25"});
    QCOMPARE(Samples(text, "printer_errors"), QList<QByteArray>{"} 2"});
    QCOMPARE(Samples(text, "printer_warnings"), QList<QByteArray>{"} 3"});
    QCOMPARE(Samples(text, "printer_condition").at(3),
             QByteArray(",kind=\"warning\",code=\"0x1121\",condition=\"ERR_WASTE_TONER_NEAR_FULL\","
                        "description=\"The waste toner will be full\",description_zh=\"废粉箱将满\"} 1"));
    QCOMPARE(Samples(text, "printer_toner_ratio"), QList<QByteArray>{"} 0.789"});
    QCOMPARE(Samples(text, "printer_toner_raw"), QList<QByteArray>{"} 7890"});
    QCOMPARE(Samples(text, "printer_pages_total"), QList<QByteArray>{"} 70000"});
    QCOMPARE(Samples(text, "printer_prints_total"), QList<QByteArray>{"} 107"});
    QCOMPARE(Samples(text, "printer_dots_raw"), QList<QByteArray>{"} 105"});
    QCOMPARE(Samples(text, "cartridge_pages_total"), QList<QByteArray>{"} 4294967295"});
    QCOMPARE(Samples(text, "cartridge_prints_total"), QList<QByteArray>{"} 104"});
    QCOMPARE(Samples(text, "cartridge_waste_toner_raw"), QList<QByteArray>{"} 65535"});
    QCOMPARE(Samples(text, "cartridge_drum_rotation_raw"), QList<QByteArray>{"} 102"});
}

void MetricsTest::everyFieldOfAQZReply()
{
    QZReply wire;
    wire.items = {QZJobState(2), QZError(0x11B0), QZError(0x1106), QZWarning(0x110D), QZToner(64)};
    const QByteArray text = Metrics(Report(EncodeQZReply(wire), QZFamily()));
    QVERIFY(Samples(text, "printer_info").at(0).contains("family=\"qz\""));
    QCOMPARE(Samples(text, "printer_errors"), QList<QByteArray>{"} 2"});
    QCOMPARE(Samples(text, "printer_warnings"), QList<QByteArray>{"} 1"});
    QCOMPARE(Samples(text, "printer_toner_ratio"), QList<QByteArray>{"} 0.64"});
    QCOMPARE(Samples(text, "printer_toner_raw"), QList<QByteArray>{"} 64"});
    QCOMPARE(Samples(text, "printer_pages_total"), QList<QByteArray>());
}

void MetricsTest::printsWithoutTheirOwnRecord()
{
    StandardReply wire;
    wire.supplies = {SupplyValue(SupplyField::Pages, 17)};
    QCOMPARE(Samples(Metrics(Report(EncodeStandardReply(wire))), "cartridge_prints_total"), QList<QByteArray>{"} 17"});
    wire.supplies = {SupplyValue(SupplyField::Prints, 16)};
    QCOMPARE(Samples(Metrics(Report(EncodeStandardReply(wire))), "cartridge_prints_total"), QList<QByteArray>{"} 16"});
}

void MetricsTest::unknownValuesHaveNoSample()
{
    const QByteArray text = Metrics(Report(EncodeStandardReply(StandardReply())));
    for (const char* name : {"printer_toner_ratio", "printer_toner_raw", "printer_pages_total", "printer_prints_total",
                             "printer_dots_raw", "cartridge_pages_total", "cartridge_prints_total",
                             "cartridge_waste_toner_raw", "cartridge_drum_rotation_raw"}) {
        QCOMPARE(Samples(text, name), QList<QByteArray>());
    }
    QCOMPARE(Samples(text, "printer_errors"), QList<QByteArray>{"} 0"});
    // More toner than there can be is no ratio.
    const QByteArray overfull = Metrics(Report(StandardBytes(RawReady, 10001)));
    QCOMPARE(Samples(overfull, "printer_toner_ratio"), QList<QByteArray>());
    QCOMPARE(Samples(overfull, "printer_toner_raw"), QList<QByteArray>{"} 10001"});
}

void MetricsTest::oneStatusIsTrue_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("status");
    QTest::newRow("ready") << StandardBytes(RawReady) << QByteArray("PS_READY");
    QTest::newRow("printing") << StandardBytes(RawPrinting) << QByteArray("PS_PRINTING");
    QTest::newRow("not known") << StandardBytes(static_cast<RawStatus>(99)) << QByteArray("PS_UNKNOWN");
    QTest::newRow("rejected") << RejectedBytes() << QByteArray("PS_OFFLINE");
}

void MetricsTest::oneStatusIsTrue()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, status);
    const QList<QByteArray> samples = Samples(Metrics(Report(bytes)), "printer_status");
    QCOMPARE(samples.size(), 12);
    QCOMPARE(True(samples), QList<QByteArray>{",status=\"" + status + "\"} 1"});
}

void MetricsTest::oneResultIsTrue_data()
{
    QTest::addColumn<ReportResult>("result");
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("accepted") << ReportResult::Accepted << QByteArray("accepted");
    QTest::newRow("missing") << ReportResult::Missing << QByteArray("missing");
    QTest::newRow("unreadable") << ReportResult::Unreadable << QByteArray("unreadable");
    QTest::newRow("rejected") << ReportResult::Rejected << QByteArray("rejected");
}

void MetricsTest::oneResultIsTrue()
{
    QFETCH(ReportResult, result);
    QFETCH(QByteArray, name);
    PrinterReport report = Report(RejectedBytes());
    report.result = result;
    report.modified.reset();
    const QByteArray text = Metrics(report);
    QCOMPARE(Samples(text, "printer_report").size(), 4);
    QCOMPARE(True(Samples(text, "printer_report")), QList<QByteArray>{",result=\"" + name + "\"} 1"});
    QCOMPARE(Samples(text, "printer_report_timestamp_seconds"), QList<QByteArray>());
    QCOMPARE(Samples(text, "printer_errors").isEmpty(), result != ReportResult::Accepted);
}

void MetricsTest::codeThatIsReportedTwice()
{
    const QByteArray text = Metrics(Report(StandardBytes(RawReady, 8000, {0x11B0, 0x11B1, 0x11B0})));
    QCOMPARE(Samples(text, "printer_errors"), QList<QByteArray>{"} 3"});
    QCOMPARE(Samples(text, "printer_condition").size(), 2);
}

void MetricsTest::largeNumbersKeepTheirDigits()
{
    PrinterReport report = Report(StandardBytes(RawReady));
    report.modified = QDateTime::fromMSecsSinceEpoch(253402300799999, Qt::UTC);
    QCOMPARE(Samples(Metrics(report), "printer_report_timestamp_seconds"), QList<QByteArray>{"} 253402300799.999"});
}

void MetricsTest::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("label");
    QTest::newRow("empty") << QString() << QByteArray();
    QTest::newRow("Chinese") << QStringLiteral("前台") << QByteArray("前台");
    QTest::newRow("quotes and backslash") << QStringLiteral("a\"b\\c") << QByteArray(R"(a\"b\\c)");
    QTest::newRow("line ends") << QStringLiteral("a\nb\rc") << QByteArray(R"(a\\x0Ab\\x0Dc)");
    QTest::newRow("zero") << QString(QChar(0)) << QByteArray(R"(\\x00)");
    QTest::newRow("unpaired surrogate") << QString(QChar(0xD800)) << QByteArray("\xEF\xBF\xBD");
    QTest::newRow("reversing") << QString(QChar(0x202E)) << QByteArray(R"(\\u202E)");
}

void MetricsTest::names()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, label);
    PrinterReport report = Report(StandardBytes(RawReady));
    report.info.strPrinterName = name;
    QVERIFY(Metrics(report).contains("\ntolmar_q727_printer_errors{printer=\"" + label + "\"} 0\n"));
}

void MetricsTest::everyMetricIsDescribedOnce()
{
    const QByteArray text = Metrics(Report(EncodeStandardReply(FullReply())));
    QVERIFY(text.endsWith('\n') && !text.endsWith("\n\n"));
    QStringList described;
    const QList<QByteArray> lines = text.trimmed().split('\n');
    for (const QByteArray& line : lines) {
        const QString name = QString::fromUtf8(line.split(' ').value(2));
        if (line.startsWith("# TYPE ")) {
            QVERIFY(!described.contains(name));
            described.append(name);
        } else if (!line.startsWith('#')) {
            QVERIFY(line.startsWith(described.last().toUtf8()));
        }
    }
    QCOMPARE(described.size(), 18);
}

QTEST_GUILESS_MAIN(MetricsTest)
#include "tst_metrics.moc"
