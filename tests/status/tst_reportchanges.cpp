// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SampleReports.h"
#include "status/ReportChanges.h"

#include <QtTest>

class ReportChangesTest : public QObject
{
    Q_OBJECT

private slots:
    void theFirstReadingAddsEveryPrinter();
    void addedAndRemoved();
    void whatCountsAsAChange_data();
    void whatCountsAsAChange();
    void printersOfTheSameName();
};

namespace {

QStringList Changes(const QList<PrinterReport>& before, const QList<PrinterReport>& after)
{
    QStringList texts;
    const QVector<ReportChange> changes = ChangesBetween({true, before}, {true, after});
    for (const ReportChange& change : changes) {
        texts.append(QLatin1String(KindName(change.kind)) + QLatin1Char(' ') + change.report.info.strPrinterName);
    }
    return texts;
}

const QString A = QStringLiteral("A");
const QString B = QStringLiteral("B");

} // namespace

void ReportChangesTest::theFirstReadingAddsEveryPrinter()
{
    QCOMPARE(Changes({}, {Report(A), Report(B)}), (QStringList{QStringLiteral("added A"), QStringLiteral("added B")}));
    QCOMPARE(Changes({Report(A)}, {Report(A)}), QStringList());
}

void ReportChangesTest::addedAndRemoved()
{
    QCOMPARE(Changes({Report(A), Report(B)}, {Report(B), Report(QStringLiteral("C"))}),
             (QStringList{QStringLiteral("removed A"), QStringLiteral("added C")}));
}

void ReportChangesTest::whatCountsAsAChange_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("uri");
    QTest::addColumn<bool>("isChange");
    QTest::newRow("nothing") << StandardBytes(RawReady) << QString() << false;
    QTest::newRow("status") << StandardBytes(RawBusy) << QString() << true;
    QTest::newRow("toner") << StandardBytes(RawReady, 7999) << QString() << true;
    QTest::newRow("error") << StandardBytes(RawReady, 8000, {0x11B0}) << QString() << true;
    QTest::newRow("rejected") << RejectedBytes() << QString() << true;
    QTest::newRow("entry in the list") << StandardBytes(RawReady) << QStringLiteral("usb://x") << true;
    StandardReply pages;
    pages.supplies = {SupplyValue(SupplyField::RemainingToner, 8000), SupplyValue(SupplyField::Pages, 1)};
    QTest::newRow("only a counter") << EncodeStandardReply(pages) << QString() << false;
}

void ReportChangesTest::whatCountsAsAChange()
{
    QFETCH(QByteArray, reply);
    QFETCH(QString, uri);
    QFETCH(bool, isChange);
    PrinterReport changed = Report(A, reply);
    changed.info.strURI = uri;
    QCOMPARE(Changes({Report(A)}, {changed}), isChange ? QStringList(QStringLiteral("changed A")) : QStringList());
}

void ReportChangesTest::printersOfTheSameName()
{
    QCOMPARE(Changes({Report(A), Report(A)}, {Report(A), Report(A, RejectedBytes())}),
             QStringList(QStringLiteral("changed A")));
    QCOMPARE(Changes({Report(A), Report(A)}, {Report(A)}), QStringList(QStringLiteral("removed A")));
}

QTEST_GUILESS_MAIN(ReportChangesTest)

#include "tst_reportchanges.moc"
