// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "infrastructure/QtGenerations.h"
#include "SimulatedPrinter.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

class SimulatedPrinterTest : public QObject
{
    Q_OBJECT

private slots:
    void standardPrinterReport();
    void qzPrinterReport();
    void qzPrinterWithoutCodesReportsCodeZero();
    void rawContentReplacesTheReply();
    void listHoldsTheListedPrintersInOrder();
    void listTextsSurviveQSettings_data();
    void listTextsSurviveQSettings();
};

void SimulatedPrinterTest::standardPrinterReport()
{
    SimulatedPrinter printer;
    printer.status = 3;
    printer.errorCodes = {0x1106};
    printer.warningCodes = {0x1121};
    printer.vendorName = "V";
    printer.productName = "P";
    printer.serialNumber = "S";
    printer.firmwareVersion = "F";
    printer.extraInfo = "X";
    printer.supplySerialNumber = "T";
    printer.supplies = {
        {SupplyField::Type, 1},        {SupplyField::RemainingToner, 2}, {SupplyField::WasteToner, 3},
        {SupplyField::OpcRotation, 4}, {SupplyField::Pages, 5},          {SupplyField::Prints, 6},
        {SupplyField::PrintDots, 7},   {SupplyField::PrinterPages, 8},   {SupplyField::PrinterPrints, 9}};
    const QByteArray expected = QByteArray(12, '\0') +
        QByteArray::fromHex("00 01 56  00 01 50  00 01 53  00 00  03  01 46  01 58"
                            "01 11 06  01 11 21  00 00 00 00 00"
                            "0A"
                            "00 00 01 54"
                            "00 01 04 00 00 00 01"
                            "10 00 02 00 02"
                            "10 01 02 00 03"
                            "10 02 02 00 04"
                            "10 03 04 00 00 00 05"
                            "10 04 04 00 00 00 06"
                            "11 00 02 00 07"
                            "11 01 04 00 00 00 08"
                            "11 02 04 00 00 00 09");
    QCOMPARE(EncodeStatusReply(printer).toHex(' '), expected.toHex(' '));
}

void SimulatedPrinterTest::qzPrinterReport()
{
    SimulatedPrinter printer;
    printer.family = PrinterFamily::QZ;
    printer.status = 8;
    printer.errorCodes = {0x11B0, 0x1106};
    printer.warningCodes = {0x110D};
    printer.supplies = {{SupplyField::RemainingToner, 63}};
    const QByteArray expected = QByteArray(36, '\0') +
        QByteArray::fromHex("05  00 07 01 02  00 09 02 11 B0  00 09 02 11 06  00 0C 02 11 0D  00 1D 03 00 00 3F");
    QCOMPARE(EncodeStatusReply(printer).toHex(' '), expected.toHex(' '));
}

void SimulatedPrinterTest::qzPrinterWithoutCodesReportsCodeZero()
{
    SimulatedPrinter printer;
    printer.family = PrinterFamily::QZ;
    printer.status = 3;
    const QByteArray expected = QByteArray(36, '\0') +
        QByteArray::fromHex("04  00 06 01 01  00 09 02 00 00  00 0C 02 00 00  00 1D 03 00 00 00");
    QCOMPARE(EncodeStatusReply(printer).toHex(' '), expected.toHex(' '));
}

void SimulatedPrinterTest::rawContentReplacesTheReply()
{
    SimulatedPrinter printer;
    printer.rawContent = "xyz";
    QCOMPARE(StatusFileBytes(printer), EncodeStatusReply(printer));
    printer.content = StatusFileContent::Raw;
    QCOMPARE(StatusFileBytes(printer), QByteArray("xyz"));
}

void SimulatedPrinterTest::listHoldsTheListedPrintersInOrder()
{
    SimulatedPrinter first;
    first.name = QStringLiteral("Hall");
    first.model = QStringLiteral("J4500A");
    first.connectType = ConnectTypeNetwork;
    first.port = QStringLiteral("192.168.10.21");
    first.uri = QStringLiteral("socket://192.168.10.21:9100");
    SimulatedPrinter absent;
    absent.name = QStringLiteral("Attic");
    absent.listed = false;
    SimulatedPrinter last;
    last.name = QStringLiteral("Desk");
    QCOMPARE(EncodePrinterList({first, absent, last}),
             QByteArray("[Main]\n"
                        "Count=2\n"
                        "\n"
                        "[printer_0]\n"
                        "Name=\"Hall\"\n"
                        "Model=\"J4500A\"\n"
                        "ConnectType=2\n"
                        "Port=\"192.168.10.21\"\n"
                        "URI=\"socket://192.168.10.21:9100\"\n"
                        "\n"
                        "[printer_1]\n"
                        "Name=\"Desk\"\n"
                        "Model=\"\"\n"
                        "ConnectType=1\n"
                        "Port=\"\"\n"
                        "URI=\"\"\n"));
    QCOMPARE(EncodePrinterList({}), QByteArray("[Main]\nCount=0\n"));
}

void SimulatedPrinterTest::listTextsSurviveQSettings_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("blanks") << QStringLiteral("  two  blanks  ");
    QTest::newRow("comma") << QStringLiteral("a,b");
    QTest::newRow("semicolon") << QStringLiteral("a;b");
    QTest::newRow("quotes") << QStringLiteral("\"a\" and \"b\"");
    QTest::newRow("backslashes") << QStringLiteral("\\x41\\n\\\\server\\");
    QTest::newRow("chinese") << QString::fromUtf8("办公室打印机");
    QTest::newRow("beyond 16 bits") << QString::fromUtf8("print \xF0\x9F\x96\xA8");
    QTest::newRow("latin") << QString::fromUtf8("Büro_é");
    QTest::newRow("percent") << QStringLiteral("QV%20K4510A%u1234");
    QTest::newRow("at sign") << QStringLiteral("@office");
    QTest::newRow("at signs") << QStringLiteral("@@office");
    QTest::newRow("typed value") << QStringLiteral("@Variant(x)");
    QTest::newRow("invalid value") << QStringLiteral("@Invalid()");
    QTest::newRow("equals sign") << QStringLiteral("a=b");
    QTest::newRow("brackets") << QStringLiteral("[Main]");
    QTest::newRow("hash") << QStringLiteral("#1");
    QTest::newRow("empty") << QString();
}

void SimulatedPrinterTest::listTextsSurviveQSettings()
{
    QFETCH(QString, text);
    SimulatedPrinter printer;
    printer.name = text;
    printer.uri = text;

    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("printerlist.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(EncodePrinterList({printer, printer}));
    file.close();
    QSettings settings(file.fileName(), QSettings::IniFormat);
    ReadAsUtf8(settings);
    QCOMPARE(settings.value(QStringLiteral("Main/Count")).toInt(), 2);
    QCOMPARE(settings.value(QStringLiteral("printer_1/Name"), QStringLiteral("none")).toString(), text);
    QCOMPARE(settings.value(QStringLiteral("printer_1/URI"), QStringLiteral("none")).toString(), text);
    QCOMPARE(settings.value(QStringLiteral("printer_1/ConnectType")).toInt(), 1);
}

QTEST_GUILESS_MAIN(SimulatedPrinterTest)
#include "tst_simulatedprinter.moc"
