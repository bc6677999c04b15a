// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "ScenarioTexts.h"

#include <QFile>
#include <QtTest>

class ScenarioTest : public QObject
{
    Q_OBJECT

private slots:
    void declaredPrinterStartsWithDefaults();
    void declarationSetsEveryProperty();
    void familyFollowsNameUnlessStated_data();
    void familyFollowsNameUnlessStated();
    void wordsMayBeQuoted_data();
    void wordsMayBeQuoted();
    void statusNames_data();
    void statusNames();
    void codes_data();
    void codes();
    void toner_data();
    void toner();
    void framesKeepThePictureOfTheirMoment();
    void statusFileSteps_data();
    void statusFileSteps();
    void reportBringsTheStatusFileBack();
    void revisionsTellWhichFilesAreWrittenAnew_data();
    void revisionsTellWhichFilesAreWrittenAnew();
    void listSteps_data();
    void listSteps();
    void renamedPrinterKeepsItsFamily();
    void swappedNamesGetNewRevisions();
    void limits();
    void everydayScenarioShowsAllPhases();
};

namespace {

// The listed printers in the form "A B C".
QString ListOf(const ScenarioFrame& frame)
{
    QStringList names;
    for (const SimulatedPrinter& printer : frame.printers) {
        if (printer.listed) {
            names.append(printer.name);
        }
    }
    return names.join(QLatin1Char(' '));
}

} // namespace

void ScenarioTest::declaredPrinterStartsWithDefaults()
{
    const Scenario scenario = Parse("printer Desk\n");
    QCOMPARE(scenario.repeats, false);
    QCOMPARE(scenario.frames.size(), 1);
    QCOMPARE(scenario.frames.first().delay.count(), 0);
    QCOMPARE(scenario.frames.first().printers.size(), 1);
    const SimulatedPrinter& printer = scenario.frames.first().printers.first();
    QCOMPARE(printer.name, QStringLiteral("Desk"));
    QCOMPARE(printer.connectType, 1);
    QCOMPARE(printer.listed, true);
    QCOMPARE(printer.status, quint8(0));
    QVERIFY(printer.content == StatusFileContent::Reply);
    QVERIFY(printer.errorCodes.isEmpty());
    QVERIFY(printer.warningCodes.isEmpty());
}

void ScenarioTest::declarationSetsEveryProperty()
{
    const Scenario scenario = Parse("printer Desk absent\n"
                                    "  model K4620A\n"
                                    "  connection network\n"
                                    "  port 10.0.0.9\n"
                                    "  uri socket://10.0.0.9:9100\n"
                                    "  status busy\n"
                                    "  toner 12.5\n"
                                    "  errors 0x11B0 0x1106\n"
                                    "  warnings 0x110d\n"
                                    "  vendor Tolmar\n"
                                    "  product \"QV K4620A\"\n"
                                    "  serial S1\n"
                                    "  firmware 1.2\n"
                                    "  extra more\n"
                                    "  supply-serial T1\n"
                                    "  supply-type 4294967295\n"
                                    "  waste 65535\n"
                                    "  drum 2\n"
                                    "  pages 3\n"
                                    "  prints 4\n"
                                    "  dots 5\n"
                                    "  printer-pages 6\n"
                                    "  printer-prints 7\n");
    const SimulatedPrinter printer = scenario.frames.first().printers.first();
    QCOMPARE(printer.listed, false);
    QCOMPARE(printer.model, QStringLiteral("K4620A"));
    QCOMPARE(printer.connectType, 2);
    QCOMPARE(printer.port, QStringLiteral("10.0.0.9"));
    QCOMPARE(printer.uri, QStringLiteral("socket://10.0.0.9:9100"));
    QCOMPARE(printer.status, quint8(2));
    QCOMPARE(printer.errorCodes, QVector<quint16>({0x11B0, 0x1106}));
    QCOMPARE(printer.warningCodes, QVector<quint16>({0x110D}));
    QCOMPARE(printer.vendorName, QByteArray("Tolmar"));
    QCOMPARE(printer.productName, QByteArray("QV K4620A"));
    QCOMPARE(printer.serialNumber, QByteArray("S1"));
    QCOMPARE(printer.firmwareVersion, QByteArray("1.2"));
    QCOMPARE(printer.extraInfo, QByteArray("more"));
    QCOMPARE(printer.supplySerialNumber, QByteArray("T1"));
    const QMap<SupplyField, quint32> supplies = {
        {SupplyField::Type, 4294967295U}, {SupplyField::RemainingToner, 1250},
        {SupplyField::WasteToner, 65535}, {SupplyField::OpcRotation, 2},
        {SupplyField::Pages, 3},          {SupplyField::Prints, 4},
        {SupplyField::PrintDots, 5},      {SupplyField::PrinterPages, 6},
        {SupplyField::PrinterPrints, 7},
    };
    QCOMPARE(printer.supplies, supplies);
}

void ScenarioTest::familyFollowsNameUnlessStated_data()
{
    QTest::addColumn<QByteArray>("declaration");
    QTest::addColumn<bool>("isQZ");
    QTest::addColumn<int>("readyCode");

    QTest::newRow("model code in the name") << QByteArray("printer Lab_J4990E_2") << true << 3;
    QTest::newRow("other name") << QByteArray("printer Lab_J4500A") << false << 0;
    QTest::newRow("code in lower case") << QByteArray("printer lab_j4990e") << false << 0;
    QTest::newRow("stated qz") << QByteArray("printer Lab qz") << true << 3;
    QTest::newRow("stated standard") << QByteArray("printer J4990E standard") << false << 0;
    QTest::newRow("stated with absent") << QByteArray("printer Lab absent qz") << true << 3;
}

void ScenarioTest::familyFollowsNameUnlessStated()
{
    QFETCH(QByteArray, declaration);
    QFETCH(bool, isQZ);
    QFETCH(int, readyCode);
    const SimulatedPrinter printer = Parse(declaration).frames.first().printers.first();
    QCOMPARE(printer.family == PrinterFamily::QZ, isQZ);
    QCOMPARE(static_cast<int>(printer.status), readyCode);
}

void ScenarioTest::wordsMayBeQuoted_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<QString>("name");

    QTest::newRow("plain") << QByteArray("Office") << QStringLiteral("Office");
    QTest::newRow("blank") << QByteArray("\"Front office\"") << QStringLiteral("Front office");
    QTest::newRow("escaped quote") << QByteArray(R"("a \"b\"")") << QStringLiteral("a \"b\"");
    QTest::newRow("escaped backslash") << QByteArray(R"("a\\b")") << QStringLiteral("a\\b");
    QTest::newRow("plain backslash") << QByteArray("a\\b") << QStringLiteral("a\\b");
    QTest::newRow("hash inside quotes") << QByteArray("\"# 1\"") << QStringLiteral("# 1");
    QTest::newRow("hash inside a word") << QByteArray("Office#1") << QStringLiteral("Office#1");
    QTest::newRow("comment behind") << QByteArray("Office # the one \"upstairs") << QStringLiteral("Office");
    QTest::newRow("tabs around") << QByteArray("\tOffice\t") << QStringLiteral("Office");
    QTest::newRow("line end of Windows") << QByteArray("Office\r") << QStringLiteral("Office");
    QTest::newRow("chinese") << QByteArray("办公室") << QString::fromUtf8("办公室");
    QTest::newRow("dots") << QByteArray("..") << QStringLiteral("..");
    QTest::newRow("comma and semicolon") << QByteArray("a,b;c") << QStringLiteral("a,b;c");
}

void ScenarioTest::wordsMayBeQuoted()
{
    QFETCH(QByteArray, word);
    QFETCH(QString, name);
    const Scenario scenario = Parse("# first line\n\nprinter " + word + "\nport \"\"");
    QCOMPARE(scenario.frames.first().printers.size(), 1);
    QCOMPARE(scenario.frames.first().printers.first().name, name);
}

void ScenarioTest::statusNames_data()
{
    QTest::addColumn<QByteArray>("status");
    QTest::addColumn<int>("standardCode");
    QTest::addColumn<int>("qzCode"); // -1 if refused

    QTest::newRow("ready") << QByteArray("ready") << 0 << 3;
    QTest::newRow("initialize") << QByteArray("initialize") << 1 << 4;
    QTest::newRow("busy") << QByteArray("busy") << 2 << 5;
    QTest::newRow("cancelling") << QByteArray("cancelling") << 3 << -1;
    QTest::newRow("printing") << QByteArray("printing") << 16 << 8;
    QTest::newRow("scanning") << QByteArray("scanning") << 17 << 9;
    QTest::newRow("copying") << QByteArray("copying") << 18 << 10;
    QTest::newRow("reporting") << QByteArray("reporting") << 19 << -1;
    QTest::newRow("unknown") << QByteArray("unknown") << 4 << 12;
    QTest::newRow("raw:8") << QByteArray("raw:8") << 8 << 8;
    QTest::newRow("raw:6") << QByteArray("raw:6") << 6 << -1;
    QTest::newRow("raw:255") << QByteArray("raw:255") << 255 << -1;
}

void ScenarioTest::statusNames()
{
    QFETCH(QByteArray, status);
    QFETCH(int, standardCode);
    QFETCH(int, qzCode);

    const Scenario standard = Parse("printer P standard\nstatus " + status);
    QCOMPARE(static_cast<int>(standard.frames.first().printers.first().status), standardCode);

    const ParsedScenario qz = ParseScenario("printer P qz\nstatus " + status);
    if (qzCode < 0) {
        QCOMPARE(ErrorTexts(qz),
                 QStringLiteral("2: a QZ printer cannot report the status \"%1\"").arg(QLatin1String(status)));
    } else {
        QCOMPARE(ErrorTexts(qz), QString());
        QCOMPARE(static_cast<int>(qz.scenario.frames.first().printers.first().status), qzCode);
    }
}

void ScenarioTest::codes_data()
{
    QTest::addColumn<QByteArray>("words");
    QTest::addColumn<QVector<quint16>>("codes");

    QTest::newRow("none") << QByteArray("none") << QVector<quint16>();
    QTest::newRow("one") << QByteArray("0x11B0") << QVector<quint16>({0x11B0});
    QTest::newRow("lower case") << QByteArray("0xe100") << QVector<quint16>({0xE100});
    QTest::newRow("short") << QByteArray("0x0") << QVector<quint16>({0});
    QTest::newRow("order and repeats") << QByteArray("0x2100 0x1106 0x2100")
                                       << QVector<quint16>({0x2100, 0x1106, 0x2100});
}

void ScenarioTest::codes()
{
    QFETCH(QByteArray, words);
    QFETCH(QVector<quint16>, codes);
    const Scenario scenario =
        Parse("printer P\nerrors 0x1\nwarnings 0x2\nwait 1\nerrors P " + words + "\nwait 1\nwarnings P " + words);
    QCOMPARE(scenario.frames.size(), 3);
    QCOMPARE(scenario.frames.at(1).printers.first().errorCodes, codes);
    QCOMPARE(scenario.frames.at(1).printers.first().warningCodes, QVector<quint16>({2}));
    QCOMPARE(scenario.frames.at(2).printers.first().warningCodes, codes);
}

void ScenarioTest::toner_data()
{
    QTest::addColumn<QByteArray>("family");
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<quint32>("value");

    QTest::newRow("whole percent") << QByteArray("standard") << QByteArray("87") << 8700U;
    QTest::newRow("one decimal") << QByteArray("standard") << QByteArray("87.5") << 8750U;
    QTest::newRow("two decimals") << QByteArray("standard") << QByteArray("0.07") << 7U;
    QTest::newRow("full") << QByteArray("standard") << QByteArray("100.00") << 10000U;
    QTest::newRow("empty") << QByteArray("standard") << QByteArray("0") << 0U;
    QTest::newRow("qz") << QByteArray("qz") << QByteArray("87") << 87U;
    QTest::newRow("qz full") << QByteArray("qz") << QByteArray("100") << 100U;
}

void ScenarioTest::toner()
{
    QFETCH(QByteArray, family);
    QFETCH(QByteArray, word);
    QFETCH(quint32, value);
    const Scenario scenario = Parse("printer P " + family + "\ntoner 1\nwait 1\ntoner P " + word);
    QCOMPARE(scenario.frames.size(), 2);
    QCOMPARE(scenario.frames.last().printers.first().supplies.value(SupplyField::RemainingToner), value);
}

void ScenarioTest::framesKeepThePictureOfTheirMoment()
{
    const Scenario scenario = Parse("printer A\n"
                                    "printer \"B b\"\n"
                                    "wait 0.25\n"
                                    "status A busy\n"
                                    "status \"B b\" printing\n"
                                    "wait 86400\n"
                                    "status A ready\n"
                                    "wait 0.001\n"
                                    "repeat\n");
    QCOMPARE(scenario.repeats, true);
    QCOMPARE(scenario.frames.size(), 4);
    const int delays[] = {0, 250, 86400000, 1};
    const int statusOfA[] = {0, 2, 0, 0};
    const int statusOfB[] = {0, 16, 16, 16};
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(static_cast<int>(scenario.frames.at(i).delay.count()), delays[i]);
        QCOMPARE(static_cast<int>(scenario.frames.at(i).printers.at(0).status), statusOfA[i]);
        QCOMPARE(static_cast<int>(scenario.frames.at(i).printers.at(1).status), statusOfB[i]);
    }
}

void ScenarioTest::statusFileSteps_data()
{
    QTest::addColumn<QByteArray>("family");
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray standard = QByteArray(12, '\0') + QByteArray::fromHex("0000 0000 0000 0000");
    const QByteArray rejected = QByteArray(37, '\xFF') + QByteArray::fromHex("0009FF") + QByteArray(24, '\xFF');
    QTest::newRow("vanish") << QByteArray("standard") << QByteArray("vanish P") << false << QByteArray();
    QTest::newRow("garbage") << QByteArray("standard") << QByteArray("garbage P") << true << rejected;
    QTest::newRow("garbage qz") << QByteArray("qz") << QByteArray("garbage P") << true << rejected;
    QTest::newRow("garbage of own bytes")
        << QByteArray("standard") << QByteArray("garbage P 00fF 1A") << true << QByteArray::fromHex("00FF1A");
    QTest::newRow("truncate") << QByteArray("standard") << QByteArray("truncate P 20") << true << standard;
    QTest::newRow("truncate to nothing") << QByteArray("standard") << QByteArray("truncate P 0") << true
                                         << QByteArray();
    QTest::newRow("truncate qz") << QByteArray("qz") << QByteArray("truncate P 41") << true
                                 << QByteArray(36, '\0') + QByteArray::fromHex("04 00 06 01 01");
}

void ScenarioTest::statusFileSteps()
{
    QFETCH(QByteArray, family);
    QFETCH(QByteArray, step);
    QFETCH(bool, exists);
    QFETCH(QByteArray, bytes);
    const Scenario scenario = Parse("printer P " + family + "\nwait 1\n" + step);
    QCOMPARE(scenario.frames.size(), 2);
    const SimulatedPrinter printer = scenario.frames.last().printers.first();
    QCOMPARE(printer.content != StatusFileContent::Missing, exists);
    if (exists) {
        QCOMPARE(StatusFileBytes(printer).toHex(' '), bytes.toHex(' '));
    }
}

void ScenarioTest::reportBringsTheStatusFileBack()
{
    const Scenario scenario = Parse("printer P\n"
                                    "vanish\n"
                                    "wait 1\n"
                                    "status P busy\n"
                                    "wait 1\n"
                                    "garbage P\n"
                                    "wait 1\n"
                                    "port P USB9\n"
                                    "wait 1\n"
                                    "refresh P\n");
    QCOMPARE(scenario.frames.size(), 5);
    QVERIFY(scenario.frames.at(0).printers.first().content == StatusFileContent::Missing);
    QVERIFY(scenario.frames.at(1).printers.first().content == StatusFileContent::Reply);
    QVERIFY(scenario.frames.at(2).printers.first().content == StatusFileContent::Raw);
    QVERIFY(scenario.frames.at(3).printers.first().content == StatusFileContent::Raw);
    QVERIFY(scenario.frames.at(4).printers.first().content == StatusFileContent::Reply);
}

void ScenarioTest::revisionsTellWhichFilesAreWrittenAnew_data()
{
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<bool>("isNewForA");

    QTest::newRow("status") << QByteArray("status A busy") << true;
    QTest::newRow("the same status") << QByteArray("status A ready") << true;
    QTest::newRow("counter") << QByteArray("pages A 1") << true;
    QTest::newRow("refresh") << QByteArray("refresh A") << true;
    QTest::newRow("garbage") << QByteArray("garbage A") << true;
    QTest::newRow("rename") << QByteArray("rename A C") << true;
    QTest::newRow("port") << QByteArray("port A USB9") << false;
    QTest::newRow("model") << QByteArray("model A K4620A") << false;
    QTest::newRow("reorder") << QByteArray("reorder A B") << false;
}

void ScenarioTest::revisionsTellWhichFilesAreWrittenAnew()
{
    QFETCH(QByteArray, step);
    QFETCH(bool, isNewForA);
    const Scenario scenario = Parse("printer A\nprinter B\nwait 1\n" + step);
    QCOMPARE(scenario.frames.size(), 2);
    const QVector<SimulatedPrinter> before = scenario.frames.first().printers;
    const QVector<SimulatedPrinter> after = scenario.frames.last().printers;
    QCOMPARE(after.at(0).revision != before.at(0).revision, isNewForA);
    QCOMPARE(after.at(1).revision, before.at(1).revision);
    QVERIFY(before.at(0).revision != before.at(1).revision);
}

void ScenarioTest::listSteps_data()
{
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<QString>("list");

    QTest::newRow("add") << QByteArray("add New") << QStringLiteral("A B C New");
    QTest::newRow("remove first") << QByteArray("remove A") << QStringLiteral("B C");
    QTest::newRow("remove all") << QByteArray("remove A\nremove B\nremove C") << QString();
    QTest::newRow("remove and add") << QByteArray("remove A\nadd A") << QStringLiteral("B C A");
    QTest::newRow("rename") << QByteArray("rename B D") << QStringLiteral("A D C");
    QTest::newRow("rename, old name free again") << QByteArray("rename B D\nrename A B") << QStringLiteral("B D C");
    QTest::newRow("rename an absent one") << QByteArray("rename New D") << QStringLiteral("A B C");
    QTest::newRow("reorder") << QByteArray("reorder C A B") << QStringLiteral("C A B");
    QTest::newRow("reorder after add") << QByteArray("add New\nreorder New C B A") << QStringLiteral("New C B A");
}

void ScenarioTest::listSteps()
{
    QFETCH(QByteArray, step);
    QFETCH(QString, list);
    const Scenario scenario = Parse("printer A\nprinter New absent\nprinter B\nprinter C\nwait 1\n" + step);
    QCOMPARE(scenario.frames.size(), 2);
    QCOMPARE(ListOf(scenario.frames.first()), QStringLiteral("A B C"));
    QCOMPARE(ListOf(scenario.frames.last()), list);
    QCOMPARE(scenario.frames.last().printers.size(), 4);
}

void ScenarioTest::renamedPrinterKeepsItsFamily()
{
    const Scenario scenario = Parse("printer Lab_J4990E\nwait 1\nrename Lab_J4990E Lab\nstatus Lab busy");
    const SimulatedPrinter printer = scenario.frames.last().printers.first();
    QCOMPARE(printer.name, QStringLiteral("Lab"));
    QVERIFY(printer.family == PrinterFamily::QZ);
    QCOMPARE(printer.status, quint8(5));
}

void ScenarioTest::swappedNamesGetNewRevisions()
{
    const Scenario scenario = Parse("printer A\nprinter B\nwait 1\nrename A T\nrename B A\nrename T B");
    QCOMPARE(ListOf(scenario.frames.last()), QStringLiteral("B A"));
    QVERIFY(scenario.frames.last().printers.at(0).revision > 2);
    QVERIFY(scenario.frames.last().printers.at(1).revision > 2);
}

void ScenarioTest::limits()
{
    const Scenario scenario = Parse("printer " + QByteArray(244, 'n') + "\nvendor " + QByteArray(255, 'v') +
                                    "\nsupply-serial " + QByteArray(64, 's') + "\nerrors" +
                                    QByteArray(" 0x1").repeated(100) + "\ngarbage " + QByteArray("00").repeated(65536));
    QCOMPARE(scenario.frames.first().printers.size(), 1);
    QCOMPARE(scenario.frames.first().printers.first().rawContent.size(), 65536);

    QByteArray thousand;
    for (int i = 0; i < 1000; ++i) {
        thousand += "printer P" + QByteArray::number(i) + '\n';
    }
    QCOMPARE(Parse(thousand).frames.first().printers.size(), 1000);
    QCOMPARE(ErrorTexts(ParseScenario(thousand + "printer One\n")), QStringLiteral("1001: more than 1000 printers"));
}

void ScenarioTest::everydayScenarioShowsAllPhases()
{
    QFile file(QStringLiteral(SCENARIO_DIRECTORY "/everyday.scenario"));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));
    const Scenario scenario = Parse(file.readAll());
    QCOMPARE(scenario.repeats, true);
    QCOMPARE(scenario.frames.size(), 8);

    const QStringList names = {QStringLiteral("Office_K4510A"), QStringLiteral("Hall_J4500A"),
                               QStringLiteral("Lab_J4990E"), QStringLiteral("Desk_K4620A")};
    QVector<int> deskStatuses;
    bool hasJammed = false;
    for (const ScenarioFrame& frame : scenario.frames) {
        QCOMPARE(ListOf(frame), names.join(QLatin1Char(' ')));
        QVERIFY(frame.delay.count() == 0 || (frame.delay.count() >= 5000 && frame.delay.count() <= 8000));
        const SimulatedPrinter& office = frame.printers.at(0);
        QCOMPARE(office.connectType, 1);
        QCOMPARE(static_cast<int>(office.status), 0);
        const SimulatedPrinter& hall = frame.printers.at(1);
        QVERIFY(hall.connectType != 1);
        QCOMPARE(static_cast<int>(hall.status), 16);
        QCOMPARE(hall.warningCodes, QVector<quint16>({0x110D}));
        QVERIFY(frame.printers.at(2).family == PrinterFamily::QZ);
        const SimulatedPrinter& desk = frame.printers.at(3);
        deskStatuses.append(desk.status);
        hasJammed = hasJammed || desk.errorCodes == QVector<quint16>({0x11B0});
    }
    QVERIFY(hasJammed);
    QCOMPARE(deskStatuses, QVector<int>({0, 16, 2, 1, 16, 3, 0, 0}));
}

QTEST_GUILESS_MAIN(ScenarioTest)
#include "tst_scenario.moc"
