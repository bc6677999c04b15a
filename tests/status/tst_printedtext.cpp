// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/CommandLine.h"
#include "status/PrintedText.h"
#include "status/ReportFields.h"
#include "status/ReportJson.h"

#include <QtTest>

class PrintedTextTest : public QObject
{
    Q_OBJECT

private slots:
    void harmfulCharacters_data();
    void harmfulCharacters();
    void columns();
    void longTextsAreCut();
    void tableAlignsChineseTexts();
    void terseEscapesItsSeparator();
    void timesOfEveryYear();
    void languageOfTheLocale_data();
    void languageOfTheLocale();
    void wrongUse_data();
    void wrongUse();
    void helpFitsAScreen();
};

void PrintedTextTest::harmfulCharacters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("safe");
    QTest::newRow("plain") << QStringLiteral("前台 K4510A") << QStringLiteral("前台 K4510A");
    QTest::newRow("escape") << QStringLiteral("a\x1B[31m") << QStringLiteral("a\\x1B[31m");
    QTest::newRow("line feed") << QStringLiteral("a\nb") << QStringLiteral("a\\x0Ab");
    QTest::newRow("delete") << QStringLiteral("a\x7F") << QStringLiteral("a\\x7F");
    QTest::newRow("C1 control sequence") << QString(QChar(0x9B)) << QStringLiteral("\\x9B");
    QTest::newRow("right to left") << QString(QChar(0x202E)) << QStringLiteral("\\u202E");
    QTest::newRow("line separator") << QString(QChar(0x2028)) << QStringLiteral("\\u2028");
    QTest::newRow("zero") << QString(QChar(0)) << QStringLiteral("\\x00");
    QTest::newRow("half a character") << QString(QChar(0xD800)) << QString(QChar(0xFFFD));
}

void PrintedTextTest::harmfulCharacters()
{
    QFETCH(QString, text);
    QFETCH(QString, safe);
    QCOMPARE(SafeText(text), safe);
    PrinterReport report;
    report.info.strPrinterName = text;
    const QByteArray json = JsonText(PrinterJson(report), false);
    const QString shown = QString::fromUtf8(json).trimmed();
    QCOMPARE(SafeText(shown), shown);
}

void PrintedTextTest::columns()
{
    QCOMPARE(ColumnsOf(QStringLiteral("K4510A")), 6);
    QCOMPARE(ColumnsOf(QStringLiteral("就绪")), 4);
    QCOMPARE(ColumnsOf(QStringLiteral("e\u0301")), 1);
    QCOMPARE(ColumnsOf(QStringLiteral("\U00020000")), 2);
}

void PrintedTextTest::longTextsAreCut()
{
    QCOMPARE(CutText(QStringLiteral("abcdef"), 6), QStringLiteral("abcdef"));
    QCOMPARE(CutText(QStringLiteral("abcdefg"), 6), QStringLiteral("abcde…"));
    QCOMPARE(CutText(QStringLiteral("打印机"), 5), QStringLiteral("打印…"));
    QCOMPARE(ColumnsOf(CutText(QString(1000000, QLatin1Char('x')), 60)), 60);
}

void PrintedTextTest::tableAlignsChineseTexts()
{
    const QString table = FormatTable({{{QStringLiteral("状态")}, {QStringLiteral("型号")}},
                                       {{QStringLiteral("OK")}, {QString()}, {QStringLiteral("x")}},
                                       {{QStringLiteral("abcdef")}, {QStringLiteral("y"), Colour::Red}}},
                                      true);
    QCOMPARE(table, QStringLiteral("状态    型号\nOK            x\nabcdef  \x1B[31my\x1B[0m\n"));
}

void PrintedTextTest::terseEscapesItsSeparator()
{
    PrinterReports reports;
    reports.printers.append(PrinterReport());
    reports.printers.first().info.strPrinterName = QStringLiteral("a:b\\c\nx");
    reports.printers.first().info.strPort = QStringLiteral("usb");
    const auto fields = ReportFieldsNamed({QStringLiteral("name"), QStringLiteral("port"), QStringLiteral("toner")});
    QCOMPARE(FormatTerse(reports, fields, QDateTime()), QByteArray("a\\:b\\\\c\\x0Ax:usb:\n"));
}

void PrintedTextTest::timesOfEveryYear()
{
    const auto time = [](qint64 ms) {
        return Rfc3339(QDateTime::fromMSecsSinceEpoch(ms, Qt::UTC));
    };
    QCOMPARE(time(0), QStringLiteral("1970-01-01T00:00:00.000Z"));
    QCOMPARE(time(1), QStringLiteral("1970-01-01T00:00:00.001Z"));
    QCOMPARE(time(253402300799999), QStringLiteral("9999-12-31T23:59:59.999Z"));
    QCOMPARE(time(253402300800000), QString());
    QCOMPARE(time(-100000000000000), QString());
    QCOMPARE(Rfc3339(std::nullopt), QString());
}

void PrintedTextTest::languageOfTheLocale_data()
{
    QTest::addColumn<QStringList>("environment");
    QTest::addColumn<bool>("isChinese");
    QTest::newRow("nothing") << QStringList() << true;
    QTest::newRow("Chinese") << QStringList{QStringLiteral("LANG=zh_CN.UTF-8")} << true;
    QTest::newRow("Taiwan") << QStringList{QStringLiteral("LANG=zh_TW.UTF-8")} << true;
    QTest::newRow("English") << QStringList{QStringLiteral("LANG=en_US.UTF-8")} << false;
    QTest::newRow("German") << QStringList{QStringLiteral("LANG=de_DE")} << false;
    QTest::newRow("C") << QStringList{QStringLiteral("LANG=zh_CN.UTF-8"), QStringLiteral("LC_ALL=C")} << false;
    QTest::newRow("messages") << QStringList{QStringLiteral("LANG=en_US"), QStringLiteral("LC_MESSAGES=zh_CN")} << true;
    QTest::newRow("preference") << QStringList{QStringLiteral("LANG=en_US"), QStringLiteral("LANGUAGE=zh_CN:en")}
                                << true;
    QTest::newRow("preference under C") << QStringList{QStringLiteral("LC_ALL=C.UTF-8"),
                                                       QStringLiteral("LANGUAGE=zh_CN:en")}
                                        << false;
}

void PrintedTextTest::languageOfTheLocale()
{
    QFETCH(QStringList, environment);
    QFETCH(bool, isChinese);
    QProcessEnvironment variables;
    for (const QString& variable : environment) {
        variables.insert(variable.section(QLatin1Char('='), 0, 0), variable.section(QLatin1Char('='), 1));
    }
    QCOMPARE(LanguageOf(variables) == Language::Chinese, isChinese);
}

void PrintedTextTest::wrongUse_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("valid"); // a part of the message
    QTest::newRow("command") << QStringLiteral("status") << QStringLiteral("valid: list");
    QTest::newRow("format") << QStringLiteral("--format xml") << QStringLiteral("valid: table, terse, json");
    QTest::newRow("field") << QStringLiteral("--fields name,tone") << QStringLiteral("\"tone\"; valid: name,model,");
    QTest::newRow("fields of JSON") << QStringLiteral("--json --fields name") << QStringLiteral("JSON always has all");
    QTest::newRow("language") << QStringLiteral("--lang de") << QStringLiteral("valid: en, zh");
    QTest::newRow("colour") << QStringLiteral("--color red") << QStringLiteral("valid: auto, always, never");
    QTest::newRow("option") << QStringLiteral("--verbose") << QStringLiteral("See --help");
    QTest::newRow("argument") << QStringLiteral("list Office") << QStringLiteral("list takes no arguments");
    QTest::newRow("folder") << QStringLiteral("--directory=") << QStringLiteral("needs a folder");
}

void PrintedTextTest::wrongUse()
{
    QFETCH(QString, arguments);
    QFETCH(QString, valid);
    const CommandLine line = ParseCommandLine(arguments.split(QLatin1Char(' ')), QProcessEnvironment(), false);
    QVERIFY2(line.error.contains(valid), qPrintable(line.error));
}

void PrintedTextTest::helpFitsAScreen()
{
    for (const Language language : {Language::English, Language::Chinese}) {
        const QStringList lines = HelpText(language).split(QLatin1Char('\n'));
        QVERIFY(lines.size() <= 24);
        for (const QString& line : lines) {
            QVERIFY2(ColumnsOf(line) <= 80, qPrintable(line));
            QVERIFY2(!line.contains(QLatin1Char('%')), qPrintable(line));
        }
    }
}

QTEST_GUILESS_MAIN(PrintedTextTest)

#include "tst_printedtext.moc"
