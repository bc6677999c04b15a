// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleReports.h"
#include "status/ScenarioRecorder.h"

#include <QtTest>

class ScenarioRecorderTest : public QObject
{
    Q_OBJECT

private slots:
    void start();
    void noPrinters();
    void changesOfReports();
    void changesOfTheList();
    void longPauses();
    void awkwardTexts();
    void refusedNames();
};

namespace {

using std::chrono::milliseconds;

PrinterReport Missing(const QString& name)
{
    PrinterReport report;
    report.info.strPrinterName = name;
    return report;
}

void Record(ScenarioRecorder& recorder, const QList<PrinterReport>& printers, int ms)
{
    recorder.record({true, printers}, milliseconds(ms));
}

const QString A = QStringLiteral("A");
const QString B = QStringLiteral("B");
const QByteArray Title = "# Recorded by tolmar-q727-status.\n";
const QByteArray Entry = "    model \"-1\"\n    connection network\n    port \"\"\n    uri \"\"\n";

} // namespace

void ScenarioRecorderTest::start()
{
    ScenarioRecorder recorder;
    const QByteArray reply = StandardBytes(RawReady, 8000, {0x11B0});
    Record(recorder, {Report(A, reply), Missing(B), Report(QStringLiteral("C"), QByteArray())}, 5000);
    QCOMPARE(recorder.text(),
             Title + "\nprinter \"A\"\n" + Entry + "    # PS_READY, toner 80.00 %, ERR_JAM_INSIDE\n    reply " +
                 reply.toHex() + "\n\nprinter \"B\"\n" + Entry + "    # missing\n    vanish\n\nprinter \"C\"\n" +
                 Entry + "    # rejected\n    reply \"\"\n");
    QCOMPARE(recorder.stepCount(), 0);
}

void ScenarioRecorderTest::noPrinters()
{
    ScenarioRecorder recorder;
    Record(recorder, {}, 0);
    QCOMPARE(recorder.text(), Title + "\nprinter nobody absent\n");
}

void ScenarioRecorderTest::changesOfReports()
{
    ScenarioRecorder recorder;
    const QByteArray busy = StandardBytes(RawBusy);
    Record(recorder, {Report(A, StandardBytes(RawReady))}, 1000);
    const int size = recorder.text().size();
    Record(recorder, {Report(A, StandardBytes(RawReady))}, 2000);
    Record(recorder, {Report(A, busy)}, 2500);
    Record(recorder, {Missing(A)}, 2750);
    QCOMPARE(recorder.text().mid(size),
             "\nwait 1.500\n    # PS_BUSY, toner 80.00 %\n    reply \"A\" " + busy.toHex() +
                 "\n\nwait 0.250\n    # missing\n    vanish \"A\"\n");
    QCOMPARE(recorder.stepCount(), 2);
    recorder.end(milliseconds(3000));
    QVERIFY(recorder.text().endsWith("vanish \"A\"\n\nwait 0.250\n"));
}

void ScenarioRecorderTest::changesOfTheList()
{
    ScenarioRecorder recorder;
    Record(recorder, {Missing(A), Missing(B)}, 0);
    QByteArray start = recorder.text();
    Record(recorder, {Missing(B), Missing(A)}, 1000);
    Record(recorder, {Missing(B)}, 2000);
    PrinterReport moved = Missing(A);
    moved.info.strPort = QStringLiteral("lan");
    Record(recorder, {moved, Missing(B)}, 3000);
    QCOMPARE(recorder.text().mid(start.size()),
             QByteArray("\nwait 1.000\n    reorder \"B\" \"A\"\n\nwait 1.000\n    remove \"A\"\n\nwait 1.000\n"
                        "    port \"A\" \"lan\"\n    add \"A\"\n    reorder \"A\" \"B\"\n"));
    // A printer that appears later is declared at the start.
    ScenarioRecorder later;
    Record(later, {}, 0);
    Record(later, {Missing(A)}, 100);
    QCOMPARE(later.text(),
             Title + "\nprinter \"A\" absent\n\nwait 0.100\n" +
                 "    model \"A\" \"-1\"\n    connection \"A\" network\n" +
                 "    port \"A\" \"\"\n    uri \"A\" \"\"\n    # missing\n    vanish \"A\"\n    add \"A\"\n");
}

void ScenarioRecorderTest::longPauses()
{
    ScenarioRecorder recorder;
    Record(recorder, {Missing(A)}, 0);
    const int size = recorder.text().size();
    Record(recorder, {}, 2 * 86400 * 1000 + 1);
    QCOMPARE(recorder.text().mid(size), QByteArray("\nwait 86400.000\nwait 86400.000\nwait 0.001\n    remove \"A\"\n"));
}

void ScenarioRecorderTest::awkwardTexts()
{
    ScenarioRecorder recorder;
    PrinterReport report = Missing(QStringLiteral("前 \"台\\"));
    report.info.strURI = QStringLiteral("a\tb\x1B");
    Record(recorder, {report}, 0);
    QVERIFY(recorder.text().contains("printer \"前 \\\"台\\\\\"\n"));
    QVERIFY(recorder.text().contains("uri \"a?b?\"\n"));
}

void ScenarioRecorderTest::refusedNames()
{
    ScenarioRecorder recorder;
    const QString control = QStringLiteral("a\nb");
    const QString slash = QStringLiteral("../a");
    const QString large(245, QLatin1Char('x'));
    for (int pass = 0; pass < 2; ++pass) {
        Record(recorder, {Missing(A), Missing(QString()), Missing(control), Missing(slash), Missing(large), Missing(A)},
               pass);
    }
    QCOMPARE(recorder.refusedNames(), (QStringList{QString(), control, slash, large, A}));
    QCOMPARE(recorder.text().count("printer "), 1);
}

QTEST_GUILESS_MAIN(ScenarioRecorderTest)

#include "tst_scenariorecorder.moc"
