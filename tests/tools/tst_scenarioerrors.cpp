// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "ScenarioTexts.h"

#include <QtTest>

// Tests which scenarios are refused, with which line and reason.
class ScenarioErrorsTest : public QObject
{
    Q_OBJECT

private slots:
    void badLines_data();
    void badLines();
    void everyBadLineIsReported();
};

void ScenarioErrorsTest::badLines_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");

    const auto row = [](const char* name, const QByteArray& text, const char* error) {
        QTest::newRow(name) << text << QString::fromUtf8(error);
    };
    // Words
    row("invalid utf-8", "printer P\nport \xC3(\n", "2: not valid UTF-8");
    row("cut utf-8", "printer P\nport \xE5\x8A\n", "2: not valid UTF-8");
    row("control character", "printer P\nport a\x01z\n", "2: a control character");
    row("nul", QByteArray("printer P\nport a\0z\n", 19), "2: a control character");
    row("carriage return inside", "printer P\nport a\rz\n", "2: a control character");
    row("open quote", "printer \"P\n", "1: the closing quote is missing");
    row("quote inside a word", "printer a\"b\n", "1: a quote inside a word; quote the whole word");
    row("text after a quote", "printer \"a\"b\n", "1: text right after a closing quote");
    row("other escape", "printer \"a\\n\"\n", "1: in quotes a backslash must stand before a quote or a backslash");
    row("backslash at the end", "printer \"a\\\n", "1: in quotes a backslash must stand before a quote or a backslash");
    row("tab inside quotes", "printer \"a\tb\"\n", "1: a tab inside quotes");
    // Declarations
    row("nothing", "", "1: no printer is declared");
    row("comments alone", "# one\n\n# two\n", "1: no printer is declared");
    row("wait alone", "wait 1\n", "1: no printer is declared");
    row("no name", "printer\n", "1: a printer needs a name");
    row("empty name", "printer \"\"\n", "1: a printer needs a name");
    row("slash", "printer a/b\n", "1: a name must not contain /");
    row("long name", "printer " + QByteArray(245, 'n'), "1: a name may have at most 244 bytes");
    row("long chinese name", "printer " + QByteArray("办").repeated(82), "1: a name may have at most 244 bytes");
    row("duplicate", "printer P\nprinter P\n", "2: there is already a printer called \"P\"");
    row("bad option", "printer P usb\n", "1: \"usb\" is not standard, qz or absent");
    row("late declaration", "printer P\nwait 1\nprinter Q\n", "3: printers must be declared before the first wait");
    row("unknown word", "printer P\n\nfrobnicate\n", "3: \"frobnicate\" is not known");
    row("word in upper case", "printer P\nToner 1\n", "2: \"Toner\" is not known");
    row("property before a printer", "model X\nprinter P\n", "1: \"model\" before the first printer");
    row("step before a wait", "printer P\nremove P\n", "2: \"remove\" is allowed only after the first wait");
    // Values
    row("no value", "printer P\nmodel\n", "2: \"model\" needs a value");
    row("two values", "printer P\nmodel a b\n", "2: \"model\" takes at most 1 values, not 2");
    row("value for vanish", "printer P\nvanish P\n", "2: \"vanish\" takes at most 0 values, not 1");
    row("value for refresh", "printer P\nrefresh 1\n", "2: \"refresh\" takes at most 0 values, not 1");
    row("connection", "printer P\nconnection parallel\n", "2: a connection must be usb or network");
    row("status", "printer P\nstatus tired\n", "2: \"tired\" is not a status");
    row("raw status too large", "printer P\nstatus raw:256\n", "2: raw: needs a number from 0 to 255");
    row("raw status without number", "printer P\nstatus raw:\n", "2: raw: needs a number from 0 to 255");
    row("toner above full", "printer P\ntoner 100.01\n",
        "2: toner must be in percent, 0 to 100, with at most two decimals");
    row("toner three decimals", "printer P\ntoner 1.005\n",
        "2: toner must be in percent, 0 to 100, with at most two decimals");
    row("toner negative", "printer P\ntoner -1\n", "2: toner must be in percent, 0 to 100, with at most two decimals");
    row("toner without digits", "printer P\ntoner .5\n",
        "2: toner must be in percent, 0 to 100, with at most two decimals");
    row("qz toner decimals", "printer P qz\ntoner 1.5\n",
        "2: toner of a QZ printer must be in whole percent, 0 to 100");
    row("qz toner above full", "printer P qz\ntoner 101\n",
        "2: toner of a QZ printer must be in whole percent, 0 to 100");
    row("code in decimal", "printer P\nerrors 4528\n", "2: \"4528\" is not a code such as 0x11B0");
    row("code too long", "printer P\nwarnings 0x1110D\n", "2: \"0x1110D\" is not a code such as 0x11B0");
    row("code without digits", "printer P\nerrors 0x\n", "2: \"0x\" is not a code such as 0x11B0");
    row("none among codes", "printer P\nerrors 0x1106 none\n", "2: \"none\" is not a code such as 0x11B0");
    row("no codes", "printer P\nerrors\n", "2: \"errors\" needs a value");
    row("101 codes", "printer P\nerrors" + QByteArray(" 0x1").repeated(101),
        "2: \"errors\" takes at most 100 values, not 101");
    row("two-byte counter", "printer P\nwaste 65536\n", "2: needs a whole number from 0 to 65535");
    row("four-byte counter", "printer P\npages 4294967296\n", "2: needs a whole number from 0 to 4294967295");
    row("counter with sign", "printer P\npages +1\n", "2: needs a whole number from 0 to 4294967295");
    row("long text", "printer P\nvendor " + QByteArray(256, 'v'), "2: the text has 256 bytes, more than 255");
    row("long supply serial", "printer P\nsupply-serial " + QByteArray(65, 's'),
        "2: the text has 65 bytes, more than 64");
    row("standard property of qz", "printer P qz\nserial S\n", "2: a QZ printer does not report \"serial\"");
    row("garbage odd digits", "printer P\ngarbage 0 1 2\n", "2: the bytes must be pairs of hexadecimal digits");
    row("garbage no digits", "printer P\ngarbage xy\n", "2: the bytes must be pairs of hexadecimal digits");
    row("garbage not latin", "printer P\ngarbage 办公\n", "2: the bytes must be pairs of hexadecimal digits");
    row("garbage too long", "printer P\ngarbage " + QByteArray("00").repeated(65537),
        "2: a status file may have at most 65536 bytes");
    row("truncate to the full size", "printer P qz\ntruncate 57\n",
        "2: the current reply has 57 bytes; truncate needs a smaller number");
    row("truncate by no number", "printer P qz\ntruncate all\n",
        "2: the current reply has 57 bytes; truncate needs a smaller number");
    // Time
    row("wait without time", "printer P\nwait\n", "2: wait needs one number of seconds, 0.001 to 86400");
    row("wait zero", "printer P\nwait 0\n", "2: wait needs one number of seconds, 0.001 to 86400");
    row("wait too fine", "printer P\nwait 0.0001\n", "2: wait needs one number of seconds, 0.001 to 86400");
    row("wait too long", "printer P\nwait 86400.001\n", "2: wait needs one number of seconds, 0.001 to 86400");
    row("wait exponent", "printer P\nwait 1e1\n", "2: wait needs one number of seconds, 0.001 to 86400");
    row("wait unit", "printer P\nwait 1 s\n", "2: wait needs one number of seconds, 0.001 to 86400");
    row("repeat without wait", "printer P\nrepeat\n",
        "2: repeat must follow a wait, or the steps before it would not be seen");
    row("repeat after a step", "printer P\nwait 1\nrefresh P\nrepeat\n",
        "4: repeat must follow a wait, or the steps before it would not be seen");
    row("repeat with a number", "printer P\nwait 1\nrepeat 2\n", "3: repeat takes no value");
    row("after repeat", "printer P\nwait 1\nrepeat\nwait 1\n", "4: nothing may follow repeat");
    // Steps
    row("step without name", "printer P\nwait 1\nstatus\n", "3: \"status\" needs the name of a printer");
    row("step without value", "printer P\nwait 1\nstatus P\n", "3: \"status\" needs a value");
    row("step of a stranger", "printer P\nwait 1\nstatus Q busy\n", "3: there is no printer called \"Q\"");
    row("step of an old name", "printer P\nwait 1\nrename P Q\nvanish P\n", "4: there is no printer called \"P\"");
    row("add one that is there", "printer P\nwait 1\nadd P\n", "3: \"P\" is already on the list");
    row("add a stranger", "printer P\nwait 1\nadd Q\n", "3: there is no printer called \"Q\"");
    row("add without name", "printer P\nwait 1\nadd\n", "3: \"add\" needs the name of one printer");
    row("remove one that is absent", "printer P absent\nwait 1\nremove P\n", "3: \"P\" is not on the list");
    row("remove two", "printer P\nwait 1\nremove P P\n", "3: \"remove\" needs the name of one printer");
    row("rename to nothing", "printer P\nwait 1\nrename P \"\"\n", "3: a printer needs a name");
    row("rename with one name", "printer P\nwait 1\nrename P\n", "3: rename needs the old and the new name");
    row("rename a stranger", "printer P\nwait 1\nrename Q R\n", "3: there is no printer called \"Q\"");
    row("rename to a slash", "printer P\nwait 1\nrename P a/b\n", "3: a name must not contain /");
    row("rename to a taken name", "printer P\nprinter Q absent\nwait 1\nrename P Q\n",
        "4: there is already a printer called \"Q\"");
    row("rename to itself", "printer P\nwait 1\nrename P P\n", "3: there is already a printer called \"P\"");
    row("reorder leaves out", "printer P\nprinter Q\nwait 1\nreorder Q\n", "4: reorder leaves out \"P\"");
    row("reorder twice", "printer P\nprinter Q\nwait 1\nreorder Q P Q\n", "4: \"Q\" is named twice");
    row("reorder an absent one", "printer P\nprinter Q absent\nwait 1\nreorder Q P\n", "4: \"Q\" is not on the list");
    row("reorder a stranger", "printer P\nwait 1\nreorder P Q\n", "3: there is no printer called \"Q\"");
}

void ScenarioErrorsTest::badLines()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QCOMPARE(ErrorTexts(ParseScenario(text)), error);
}

void ScenarioErrorsTest::everyBadLineIsReported()
{
    const ParsedScenario parsed = ParseScenario("printer a/b\n"
                                                "  toner 101\n"
                                                "  model K4510A\n"
                                                "printer P\n"
                                                "wait x\n"
                                                "status P tired\n"
                                                "port P \"open\n"
                                                "wait 1\n"
                                                "repeat\n");
    QCOMPARE(ErrorTexts(parsed),
             QStringLiteral("1: a name must not contain /\n"
                            "2: toner must be in percent, 0 to 100, with at most two decimals\n"
                            "5: wait needs one number of seconds, 0.001 to 86400\n"
                            "6: \"tired\" is not a status\n"
                            "7: the closing quote is missing"));
}

QTEST_GUILESS_MAIN(ScenarioErrorsTest)
#include "tst_scenarioerrors.moc"
