// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests unusual queue names: the window shows them unchanged, their files are found, commands and the log stay safe.

#include "FaultRig.h"
#include "infrastructure/UtilLog.h"
#include "LogFolder.h"
#include "PrinterFolder.h"
#include "SampleReplies.h"

#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QtTest>

#include <algorithm>
#include <unistd.h>

namespace {

constexpr char WorkingDirectory[] = "/tmp/empty";
constexpr int CyclesMs = 2500;
constexpr int CommandTimeoutMs = 30000;

const QString Ready = QStringLiteral("80.00% 就绪");
const QString Cancelling = QStringLiteral("80.00% 正在取消任务");
const QString NeverRead = QStringLiteral("0.00% 脱机");

// Placeholder in the list file for bytes that are not valid UTF-8.
const QString InvalidInList = QStringLiteral("(invalid)");
const QByteArray InvalidBytes = "Off\xFF\xC3";
const QString InvalidAsRead = QStringLiteral("Off\uFFFD\uFFFD");

enum class Command
{
    Run, ///< with `arguments`
    Refused,
    NeverDue ///< the status file cannot be found
};

struct QueueName
{
    const char* row;
    QString name;
    Command command;
    QStringList arguments;
};

QVector<QueueName> QueueNames()
{
    const auto run = [](const char* row, const QString& name) {
        return QueueName{row, name, Command::Run, {name}};
    };
    const auto refused = [](const char* row, const QString& name) {
        return QueueName{row, name, Command::Refused, {}};
    };
    return {
        run("Chinese", QStringLiteral("办公室打印机")),
        {"blanks", QStringLiteral(" a  b "), Command::Run, {QStringLiteral("a"), QStringLiteral("b")}},
        run("per cent signs", QStringLiteral("%s%n%d%s%s%s%*d%%")),
        run("place markers", QStringLiteral("%1%2%L1")),
        run("slash", QStringLiteral("floor/office")),
        run("upwards", QStringLiteral("../other/office")),
        run("as long as the command can be", QString(248, QLatin1Char('n'))),
        refused("double quotes", QStringLiteral("the \"big\" one")),
        refused("one double quote", QStringLiteral("17\"")),
        refused("single quote", QStringLiteral("it's")),
        refused("next command", QStringLiteral("x;touch evidence")),
        refused("background command", QStringLiteral("x&touch evidence&")),
        refused("pipe", QStringLiteral("x|tee evidence")),
        refused("redirection", QStringLiteral("x>evidence")),
        refused("substitution", QStringLiteral("$(touch evidence)")),
        refused("substitution, old style", QStringLiteral("`touch evidence`")),
        refused("second line", QStringLiteral("x\ntouch evidence")),
        refused("option", QStringLiteral("-a")),
        refused("option behind a blank", QStringLiteral(" -a")),
        refused("option as a second word", QStringLiteral("x -a")),
        refused("nothing", QString()),
        refused("blanks alone", QStringLiteral("   ")),
        refused("as long as a file name can be", QString(251, QLatin1Char('n'))),
        {"300 characters", QString(300, QLatin1Char('x')), Command::NeverDue, {}},
        {"300 Chinese characters", QString(300, QChar(0x58A8)), Command::NeverDue, {}},
        {"invalid UTF-8", InvalidAsRead, Command::NeverDue, {}},
    };
}

// Two of the names are too long for a temporary file beside the status file.
void WriteInPlace(const QString& name, const QByteArray& bytes)
{
    const QString path = PrinterFolder::StatusFilePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

QByteArray PathOfInvalidName()
{
    return PrinterFolder::ConfigurationDirectory + InvalidBytes + ".dat";
}

// Writes a file as a program that does not interpret the bytes of its name.
void WriteUnderInvalidName(const QByteArray& bytes)
{
    WriteInPlace(InvalidInList, bytes);
    const QByteArray from = QFile::encodeName(PrinterFolder::StatusFilePath(InvalidInList));
    if (rename(from.constData(), PathOfInvalidName().constData()) != 0) {
        qFatal("cannot rename %s", from.constData());
    }
}

} // namespace

class QueueNamesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void name_data();
    void name();
    void nothingElseWasRun();
    void windowAnswers();
    void namesAsLongAsTheList();

private:
    void writeList() const;
    void writeStatus(RawStatus status) const;

    const QVector<QueueName> m_names = QueueNames();
    std::unique_ptr<FakeCommand> m_cancel;
    std::unique_ptr<FaultRig> m_rig;
};

void QueueNamesTest::writeList() const
{
    QList<stPrinterInfo> printers;
    for (const QueueName& queue : m_names) {
        printers.append(PrinterFolder::Printer(queue.name == InvalidAsRead ? InvalidInList : queue.name));
    }
    PrinterFolder::WritePrinterList(printers);
    QByteArray text = PrinterFolder::ReadFile(QString::fromLatin1(PrinterFolder::PrinterListPath));
    PrinterFolder::WritePrinterListText(text.replace(InvalidInList.toUtf8(), InvalidBytes));
}

void QueueNamesTest::writeStatus(RawStatus status) const
{
    for (const QueueName& queue : m_names) {
        if (queue.command != Command::NeverDue) {
            WriteInPlace(queue.name, StandardBytes(status));
        }
    }
    WriteUnderInvalidName(StandardBytes(status));
}

void QueueNamesTest::initTestCase()
{
    PrinterFolder::Create();
    QVERIFY(QDir().mkpath(QString::fromLatin1(WorkingDirectory)));
    QVERIFY(QDir::setCurrent(QString::fromLatin1(WorkingDirectory)));
    m_cancel = std::make_unique<FakeCommand>(QStringLiteral("cancel"));
    writeList();
    writeStatus(RawReady);
    m_rig = std::make_unique<FaultRig>();
    SetLogEnable(true); // the window switches the log off when it starts, before its first status worker
    QVERIFY(m_rig->waitForRows(m_names.size()));
    const auto known = std::count_if(m_names.begin(), m_names.end(),
                                     [](const QueueName& queue) { return queue.command != Command::NeverDue; });
    QVERIFY(m_rig->waitUntil([this, known] { return m_rig->shown().count(Ready) == known; }));
    m_rig->startRecord();
    writeStatus(RawCancelling);
    QVERIFY(m_rig->waitUntil([this, known] { return m_rig->shown().count(Cancelling) == known; }, CommandTimeoutMs));
    m_rig->run(CyclesMs);
}

void QueueNamesTest::name_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < m_names.size(); ++row) {
        QTest::newRow(m_names.at(row).row) << row;
    }
}

void QueueNamesTest::name()
{
    QFETCH(int, row);
    const QueueName& queue = m_names.at(row);
    QCOMPARE(m_rig->window().row(row).at(0), queue.name);
    QCOMPARE(m_rig->window().printers().at(row).stInfo.strPrinterName, queue.name);
    const bool isDue = queue.command != Command::NeverDue;
    QCOMPARE(m_rig->record(row), isDue ? QStringList({Ready, Cancelling}) : QStringList(NeverRead));
    if (queue.command == Command::Run) {
        QCOMPARE(m_cancel->calls().count(queue.arguments), 1);
    }
    if (isDue) {
        const QByteArray logLine = "SlotTaskStart) cancel by printer " + queue.name.toUtf8() + '\n';
        const QByteArray log = PrinterFolder::ReadFile(LogFolder::Path(LogFolder::Names().value(0)));
        QVERIFY2(log.contains(logLine), logLine.constData());
    }
}

void QueueNamesTest::nothingElseWasRun()
{
    const auto runs = std::count_if(m_names.begin(), m_names.end(),
                                    [](const QueueName& queue) { return queue.command == Command::Run; });
    QCOMPARE(m_cancel->calls().size(), static_cast<int>(runs));
    QCOMPARE(QDir::current().entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot), QStringList());
}

void QueueNamesTest::windowAnswers()
{
    QVERIFY(m_rig->hasAnsweredInTime());
}

// The window keeps such a name whole, but draws no more of it than a column can show.
void QueueNamesTest::namesAsLongAsTheList()
{
    m_rig.reset();
    SetLogEnable(false);
    QCOMPARE(unlink(PathOfInvalidName().constData()), 0); // Qt cannot name it
    const QString longName(100000, QLatin1Char('x'));
    const QList<stPrinterInfo> printers = QVector<stPrinterInfo>(9, PrinterFolder::Printer(longName)).toList();
    PrinterFolder::Create();
    PrinterFolder::WritePrinterList(printers);
    FaultRig rig;
    QVERIFY(rig.waitForRows(printers.size()));
    rig.run(CyclesMs);
    QTableWidget& table = rig.window().table();
    QCOMPARE(table.item(0, 0)->text(), longName);
    const auto* delegate = qobject_cast<QStyledItemDelegate*>(table.itemDelegate());
    QVERIFY(delegate != nullptr);
    QCOMPARE(delegate->displayText(longName, QLocale()), QString(1000, QLatin1Char('x')));
    QCOMPARE(delegate->displayText(QStringLiteral("办公室"), QLocale()), QStringLiteral("办公室"));
    QVERIFY(rig.hasAnsweredInTime());
}

QTEST_MAIN(QueueNamesTest)
#include "tst_queuenames.moc"
