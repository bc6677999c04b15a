// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/TrdDeviceManage.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"

#include <QtTest>

// Tests every key of a list file.
class PrinterListFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void count_data();
    void count();
    void texts_data();
    void texts();
    void connectType_data();
    void connectType();
    void missingKeys_data();
    void missingKeys();
    void missingSection();
    void furtherSectionsAreIgnored();
    void orderIsThatOfTheNumbers();
    void sectionNumbersHaveNoLeadingZeros();
    void allKeysOfAPrinter();
    void theArgumentHasNoEffect();
    void brokenFiles_data();
    void brokenFiles();
    void storedObjects_data();
    void storedObjects();
    void storedObjectAsCount();
    void deeplyNestedStoredLists();
    void textsThatResembleStoredObjects_data();
    void textsThatResembleStoredObjects();
    void corpus();
};

namespace {

QList<stPrinterInfo> Read(const QByteArray& text)
{
    PrinterFolder::WritePrinterListText(text);
    return TrdDeviceManage(nullptr).GetPrinterInfo(true);
}

QList<stPrinterInfo> ReadOnePrinter(const QByteArray& keys)
{
    return Read("[Main]\nCount=1\n\n[printer_0]\n" + keys + '\n');
}

// A list as QSettings stores it. It announces 2147483647 elements, which fit into no memory.
constexpr char HugeList[] = R"(@Variant(\0\0\0\t\x7f\xff\xff\xff))";

constexpr char NothingKnown[] = "name '' model '' type 0 port '' uri ''";

// Describes the printers of a list file, with the characters beyond ASCII as percent escapes. Leaves out those of which
// nothing is known.
QList<QByteArray> DescribedList(const QFileInfo& file)
{
    const QList<stPrinterInfo> printers = Read(PrinterFolder::ReadFile(file.filePath()));
    QList<QByteArray> lines{file.fileName().toUtf8() + ": " + QByteArray::number(printers.size()) + " printers"};
    for (int i = 0; i < printers.size(); ++i) {
        const QByteArray words = Words(printers.at(i)).toUtf8();
        if (words != NothingKnown) {
            lines.append("  " + QByteArray::number(i) + ": " + words.toPercentEncoding(" '():;,/@[]=\"\\"));
        }
    }
    return lines;
}

} // namespace

void PrinterListFileTest::init()
{
    PrinterFolder::Create();
}

void PrinterListFileTest::count_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("count");

    QTest::newRow("0") << QByteArray("Count=0") << 0;
    QTest::newRow("1") << QByteArray("Count=1") << 1;
    QTest::newRow("2") << QByteArray("Count=2") << 2;
    QTest::newRow("quoted") << QByteArray("Count=\"2\"") << 2;
    QTest::newRow("blanks") << QByteArray("Count = 2 ") << 2;
    QTest::newRow("negative") << QByteArray("Count=-1") << 0;
    QTest::newRow("smallest") << QByteArray("Count=-2147483648") << 0;
    QTest::newRow("text") << QByteArray("Count=two") << 0;
    QTest::newRow("number and text") << QByteArray("Count=2x") << 0;
    QTest::newRow("hexadecimal") << QByteArray("Count=0x2") << 0;
    QTest::newRow("fraction") << QByteArray("Count=2.5") << 0;
    QTest::newRow("empty") << QByteArray("Count=") << 0;
    QTest::newRow("absent") << QByteArray("Other=2") << 0;
    QTest::newRow("other case") << QByteArray("count=2") << 0;
    QTest::newRow("list") << QByteArray("Count=1,2") << 0;
    QTest::newRow("1000") << QByteArray("Count=1000") << 1000;
    QTest::newRow("1001") << QByteArray("Count=1001") << 1000;
    QTest::newRow("2^31 - 1") << QByteArray("Count=2147483647") << 1000;
    QTest::newRow("2^31") << QByteArray("Count=2147483648") << 0;
    QTest::newRow("far too many digits") << "Count=" + QByteArray(400, '9') << 0;
}

void PrinterListFileTest::count()
{
    QFETCH(QByteArray, line);
    const QList<stPrinterInfo> printers = Read("[Main]\n" + line + "\n[printer_0]\nName=A\n[printer_1]\nName=B\n");
    QTEST(static_cast<int>(printers.size()), "count");
}

void PrinterListFileTest::texts_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QString>("read");

    QTest::newRow("plain") << QByteArray("Office_K4510A") << "Office_K4510A";
    QTest::newRow("UTF-8") << QByteArray("办公室打印机") << "办公室打印机";
    QTest::newRow("UTF-8 outside the first plane") << QByteArray("\xF0\x9F\x96\xA8") << QStringLiteral("\U0001F5A8");
    QTest::newRow("blanks around") << QByteArray("  a b  ") << "a b";
    QTest::newRow("quoted blanks") << QByteArray("\"  a b  \"") << "  a b  ";
    // A comma makes a list, which is not read as a text. A semicolon begins a comment.
    QTest::newRow("comma") << QByteArray("a,b") << "";
    QTest::newRow("quoted comma") << QByteArray("\"a,b\"") << "a,b";
    QTest::newRow("semicolon") << QByteArray("a;b") << "a";
    QTest::newRow("quoted semicolon") << QByteArray("\"a;b\"") << "a;b";
    QTest::newRow("percent sign") << QByteArray("a%20b%s") << "a%20b%s";
    QTest::newRow("equals sign") << QByteArray("usb://x?serial=1") << "usb://x?serial=1";
    QTest::newRow("backslash escape") << QByteArray("a\\x41") << "aA";
    QTest::newRow("number sign") << QByteArray("a#b") << "a#b";
    QTest::newRow("number") << QByteArray("4510") << "4510";
    QTest::newRow("empty") << QByteArray("") << "";
}

void PrinterListFileTest::texts()
{
    QFETCH(QByteArray, written);
    QFETCH(QString, read);
    const QList<stPrinterInfo> printers =
        ReadOnePrinter("Name=" + written + "\nModel=" + written + "\nPort=" + written + "\nURI=" + written);
    QCOMPARE(printers.size(), 1);
    QCOMPARE(printers.first().strPrinterName, read);
    QCOMPARE(printers.first().enType, read);
    QCOMPARE(printers.first().strPort, read);
    QCOMPARE(printers.first().strURI, read);
}

void PrinterListFileTest::connectType_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<int>("read");

    QTest::newRow("USB") << QByteArray("1") << 1;
    QTest::newRow("network") << QByteArray("2") << 2;
    QTest::newRow("negative") << QByteArray("-5") << -5;
    QTest::newRow("greatest") << QByteArray("2147483647") << 2147483647;
    QTest::newRow("text") << QByteArray("USB") << 0;
    QTest::newRow("empty") << QByteArray("") << 0;
}

void PrinterListFileTest::connectType()
{
    QFETCH(QByteArray, written);
    QTEST(ReadOnePrinter("ConnectType=" + written).value(0).iConnectType, "read");
}

void PrinterListFileTest::missingKeys_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("printer");

    const QByteArray name = "Name=N\n";
    const QByteArray model = "Model=M\n";
    const QByteArray type = "ConnectType=1\n";
    const QByteArray port = "Port=P\n";
    const QByteArray uri = "URI=U\n";
    QTest::newRow("none missing") << name + model + type + port + uri << "name 'N' model 'M' type 1 port 'P' uri 'U'";
    QTest::newRow("name") << model + type + port + uri << "name '' model 'M' type 1 port 'P' uri 'U'";
    QTest::newRow("model, which is not -1 then")
        << name + type + port + uri << "name 'N' model '' type 1 port 'P' uri 'U'";
    QTest::newRow("connection type") << name + model + port + uri << "name 'N' model 'M' type 0 port 'P' uri 'U'";
    QTest::newRow("port") << name + model + type + uri << "name 'N' model 'M' type 1 port '' uri 'U'";
    QTest::newRow("URI") << name + model + type + port << "name 'N' model 'M' type 1 port 'P' uri ''";
    QTest::newRow("all") << QByteArray() << NothingKnown;
    QTest::newRow("lower case") << (name + model + type + port + uri).toLower() << NothingKnown;
    QTest::newRow("upper case") << QByteArray("NAME=N\nMODEL=M\nCONNECTTYPE=1\nPORT=P\nUri=U\n") << NothingKnown;
}

void PrinterListFileTest::missingKeys()
{
    QFETCH(QByteArray, keys);
    const QList<stPrinterInfo> printers = ReadOnePrinter(keys);
    QCOMPARE(printers.size(), 1);
    QTEST(Words(printers.first()), "printer");
}

void PrinterListFileTest::missingSection()
{
    const QList<stPrinterInfo> printers = Read("[Main]\nCount=3\n[printer_0]\nName=A\n[printer_2]\nName=C\n");
    QCOMPARE(printers.size(), 3);
    QCOMPARE(printers.at(0).strPrinterName, QStringLiteral("A"));
    QCOMPARE(Words(printers.at(1)), QString::fromLatin1(NothingKnown));
    QCOMPARE(printers.at(2).strPrinterName, QStringLiteral("C"));
}

void PrinterListFileTest::furtherSectionsAreIgnored()
{
    const QList<stPrinterInfo> printers =
        Read("[Main]\nCount=1\nName=X\n[printer_0]\nName=A\nColour=red\n[printer_1]\nName=B\n[Other]\nName=O\n"
             "[Printer_0]\nName=P\n[printer_-1]\nName=M\n");
    QCOMPARE(printers.size(), 1);
    QCOMPARE(printers.first().strPrinterName, QStringLiteral("A"));
}

void PrinterListFileTest::orderIsThatOfTheNumbers()
{
    QByteArray text = "[Main]\nCount=12\n";
    for (int i = 11; i >= 0; --i) {
        text += "[printer_" + QByteArray::number(i) + "]\nName=N" + QByteArray::number(i) + '\n';
    }
    const QList<stPrinterInfo> printers = Read(text);
    QCOMPARE(printers.size(), 12);
    for (int i = 0; i < 12; ++i) {
        QCOMPARE(printers.at(i).strPrinterName, QStringLiteral("N%1").arg(i));
    }
}

void PrinterListFileTest::sectionNumbersHaveNoLeadingZeros()
{
    const QList<stPrinterInfo> printers = Read("[Main]\nCount=1\n[printer_00]\nName=A\n");
    QCOMPARE(printers.size(), 1);
    QCOMPARE(printers.first().strPrinterName, QString());
}

void PrinterListFileTest::allKeysOfAPrinter()
{
    stPrinterInfo usb{QStringLiteral("办公室_K4510A"), QStringLiteral("K4510A"), 1, QStringLiteral("usb:0"),
                      QStringLiteral("usb://Tolmar/K4510A?serial=S1")};
    stPrinterInfo network{QStringLiteral("Hall \"2\", left; J4990E"), QStringLiteral("J4990E"), 2,
                          QStringLiteral("192.168.1.7"), QStringLiteral("socket://192.168.1.7:9100")};
    stPrinterInfo resembling{QStringLiteral("@Variant(office)"), QStringLiteral("@K4510A"), 1, QStringLiteral("@@usb"),
                             QStringLiteral("@Invalid()")};
    PrinterFolder::WritePrinterList({usb, network, resembling});
    const QList<stPrinterInfo> printers = TrdDeviceManage(nullptr).GetPrinterInfo(true);
    QCOMPARE(printers.size(), 3);
    QCOMPARE(Words(printers.at(0)), Words(usb));
    QCOMPARE(Words(printers.at(1)), Words(network));
    QCOMPARE(Words(printers.at(2)), Words(resembling));
}

void PrinterListFileTest::theArgumentHasNoEffect()
{
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(QStringLiteral("A"))});
    TrdDeviceManage worker(nullptr);
    for (const bool argument : {false, true}) {
        QCOMPARE(worker.GetPrinterInfo(argument).size(), 1);
        QCOMPARE(worker.GetPrinterInfo(argument).constFirst().strPrinterName, QStringLiteral("A"));
    }
}

void PrinterListFileTest::brokenFiles_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("count");

    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("zero bytes") << QByteArray(64, '\0') << 0;
    QTest::newRow("random text") << QByteArray("%!PS-Adobe\n<<>>]][[") << 0;
    QTest::newRow("count outside its section") << QByteArray("Count=1\n[printer_0]\nName=A\n") << 0;
    QTest::newRow("main in other case") << QByteArray("[main]\nCount=1\n[printer_0]\nName=A\n") << 0;
    QTest::newRow("a bad line among good ones") << QByteArray("[Main]\nnonsense\nCount=1\n[printer_0]\nName=A\n") << 1;
    QTest::newRow("cut off") << QByteArray("[Main]\nCount=2\n[printer_0]\nNa") << 2;
    QTest::newRow("DOS line ends") << QByteArray("[Main]\r\nCount=2\r\n[printer_0]\r\nName=A\r\n") << 2;
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBF[Main]\nCount=1\n[printer_0]\nName=A\n") << 1;
}

void PrinterListFileTest::brokenFiles()
{
    QFETCH(QByteArray, text);
    QTEST(static_cast<int>(Read(text).size()), "count");
}

void PrinterListFileTest::storedObjects_data()
{
    QTest::addColumn<QByteArray>("line");

    const QByteArray huge(HugeList);
    const QByteArray content = huge.mid(9);
    QTest::newRow("in a text") << "Name=" + huge;
    QTest::newRow("in the number") << "ConnectType=" + huge;
    QTest::newRow("in a key that is not read") << "Colour=" + huge;
    QTest::newRow("in a section that is not read") << "[Other]\nName=" + huge;
    QTest::newRow("in a list") << "Name=a, " + huge;
    QTest::newRow("in quotes") << "Name=\"" + huge + '"';
    QTest::newRow("blanks before it") << "Name =  \t" + huge;
    QTest::newRow("date and time") << QByteArray(R"(Name=@DateTime(\0\0\0\t\0\x7f\xff\xff\xff))");
    QTest::newRow("harmless") << QByteArray(R"(Name=@Variant(\0\0\0\x2\0\0\0\x1))");
    // QSettings reads all of these as the same value.
    QTest::newRow("quotes inside") << R"(Name=@V""ari"ant"()" + content;
    QTest::newRow("blanks behind quotes") << "Name=\"@\" \tVariant(" + content;
    QTest::newRow("escaped in hexadecimal") << R"(Name=\x40V\x61riant\x00028)" + content;
    QTest::newRow("escaped in octal") << R"(Name=\100Variant\50)" + content;
    QTest::newRow("escaped beyond 16 bits") << R"(Name=\x10040Variant\200050)" + content;
    QTest::newRow("escapes that stand for nothing") << R"(Name=@Var\iiant\x()" + content;
    QTest::newRow("continued on the next line") << "Name=@Vari\\\nant\\\r\n(" + content;
    QTest::newRow("byte order mark inside") << "Name=@V\"\"\xEF\xBB\xBF" + ("ariant(" + content);
}

// The value with the stored object counts as missing. All others are read.
void PrinterListFileTest::storedObjects()
{
    QFETCH(QByteArray, line);
    const QList<stPrinterInfo> printers =
        Read("[Main]\nCount=2\n[printer_1]\nName=B\n[printer_0]\nPort=P\n" + line + "\nModel=M\n");
    QCOMPARE(printers.size(), 2);
    const bool isElsewhere = line.startsWith('[');
    QCOMPARE(Words(printers.at(0)),
             isElsewhere ? QStringLiteral("name '' model '' type 0 port 'P' uri ''")
                         : QStringLiteral("name '' model 'M' type 0 port 'P' uri ''"));
    QCOMPARE(printers.at(1).strPrinterName, QStringLiteral("B"));
}

void PrinterListFileTest::storedObjectAsCount()
{
    QCOMPARE(Read("[Main]\nCount=@Variant(\\0\\0\\0\\x2\\0\\0\\0\\x1)\n[printer_0]\nName=A\n").size(), 0);
}

// Each list is an element of the one before. Reading them recursively would need more stack than a thread has.
void PrinterListFileTest::deeplyNestedStoredLists()
{
    const QByteArray lists = QByteArray("\\0\\0\\0\\t\\0\\0\\0\x01").repeated(69000);
    const QList<stPrinterInfo> printers = ReadOnePrinter("Name=@Variant(" + lists + ")\nPort=P");
    QCOMPARE(Words(printers.value(0)), QStringLiteral("name '' model '' type 0 port 'P' uri ''"));
}

void PrinterListFileTest::textsThatResembleStoredObjects_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<QString>("read");

    QTest::newRow("as QSettings writes such a text") << QByteArray("@@Variant(x)") << "@Variant(x)";
    QTest::newRow("inside a text") << QByteArray("see @Variant(x)") << "see @Variant(x)";
    QTest::newRow("behind an equals sign") << QByteArray("usb://x?serial=@Variant(x)") << "usb://x?serial=@Variant(x)";
    QTest::newRow("behind a quoted comma") << QByteArray("\"a,@DateTime(x)\"") << "a,@DateTime(x)";
    QTest::newRow("behind an escaped comma") << QByteArray("a\\x2c@Variant(x)") << "a,@Variant(x)";
    QTest::newRow("in a comment") << QByteArray("A\n; Name=@Variant(\\0)") << "A";
    QTest::newRow("in a comment behind the value") << QByteArray("A ; =@Variant(\\0)") << "A";
    QTest::newRow("in the name of a key") << QByteArray("A\n@Variant(x)=B") << "A";
    QTest::newRow("at the start of a line") << QByteArray("A\n@Variant(\\0)") << "A";
    QTest::newRow("without its end") << QByteArray("@Variant(x) y") << "@Variant(x) y";
    QTest::newRow("with a blank inside") << QByteArray("@Vari ant(x)") << "@Vari ant(x)";
    QTest::newRow("with a Chinese character inside") << QByteArray("@Vari\xE4\xB8\x80"
                                                                   "ant(x)")
                                                     << QStringLiteral("@Vari一ant(x)");
    QTest::newRow("twice in a text") << QByteArray("a @Variant(x) @DateTime(y)") << "a @Variant(x) @DateTime(y)";
    QTest::newRow("three signs") << QByteArray("@@@Variant(x)") << "@@Variant(x)";
    QTest::newRow("nothing, as QSettings writes it") << QByteArray("@Invalid()") << "";
    QTest::newRow("text, as QSettings may write it") << QByteArray("@String(Office)") << "Office";
    QTest::newRow("rectangle") << QByteArray("@Rect(1 2 3 4)") << "";
    QTest::newRow("without a bracket") << QByteArray("@Variant x") << "@Variant x";
    QTest::newRow("another word") << QByteArray("@Variants(x)") << "@Variants(x)";
    QTest::newRow("lower case") << QByteArray("@variant(x)") << "@variant(x)";
    QTest::newRow("escaped beyond hexadecimal") << QByteArray("\\x40ariant(x)") << QStringLiteral("\u040Ariant(x)");
    QTest::newRow("bytes as text") << QByteArray("@ByteArray(Office)") << "Office";
    QTest::newRow("backslash at the end") << QByteArray("Office\\") << "Office";
}

void PrinterListFileTest::textsThatResembleStoredObjects()
{
    QFETCH(QByteArray, written);
    QTEST(ReadOnePrinter("Name=" + written).value(0).strPrinterName, "read");
}

// Every Qt must read these lists alike. With Qt 5 the expected text is what QSettings makes of the files.
void PrinterListFileTest::corpus()
{
    const QDir folder(QStringLiteral(LIST_CORPUS));
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("*.ini")}, QDir::Files, QDir::Name);
    QList<QByteArray> lines;
    for (const QFileInfo& file : files) {
        lines += DescribedList(file);
    }
    const QList<QByteArray> golden = PrinterFolder::ReadFile(QStringLiteral(GOLDEN_LISTS)).trimmed().split('\n');
    for (int i = 0; i < golden.size(); ++i) {
        QCOMPARE(lines.value(i), golden.at(i));
    }
    QCOMPARE(lines.size(), golden.size());
}

QTEST_GUILESS_MAIN(PrinterListFileTest)
#include "tst_printerlistfile.moc"
