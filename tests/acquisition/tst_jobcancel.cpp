// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilLog.h"
#include "LocalCodec.h"
#include "LogFolder.h"
#include "PrinterFolder.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <QtTest>

#include <memory>
#include <string>

// Tests the `cancel` command, which runs when a printer enters the cancelling status.
class JobCancelTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void transition_data();
    void transition();
    void oncePerEntering();
    void logLineComesFirst();
    void exitCodeIsIgnored_data();
    void exitCodeIsIgnored();
    void command_data();
    void command();
    void refusedNames_data();
    void refusedNames();
    void refusedBytes_data();
    void refusedBytes();
    void commandLength_data();
    void commandLength();
};

namespace {

constexpr char EmptyFolder[] = "/tmp/empty";

const QString Name = QStringLiteral("Office_K4510A");

QByteArray CancelLogLine(const QString& name)
{
    return "(../TrdGetPrinterStatus@513 SlotTaskStart) cancel by printer " + name.toUtf8();
}

QList<QByteArray> LogLines()
{
    QList<QByteArray> lines;
    const QList<QByteArray> written = LogFolder::Lines();
    for (const QByteArray& line : written) {
        lines.append(LogFolder::WithoutTime(line));
    }
    return lines;
}

struct Setting
{
    explicit Setting(const QString& name = Name, int status = PS_READY)
        : list{FilledPrinter(name)}
    {
        list[0].stState.enCurrentStatus = status;
        worker.Init(0, &list);
    }

    int status() const
    {
        return list.first().stState.enCurrentStatus;
    }

    QList<stPrinterManager> list;
    StatusWorker worker;
};

} // namespace

void JobCancelTest::init()
{
    PrinterFolder::Create();
    QVERIFY(QDir().mkpath(QString::fromLatin1(EmptyFolder)));
    QVERIFY(QDir::setCurrent(QString::fromLatin1(EmptyFolder))); // no pattern matches a file here
    SetLogEnable(true);
}

void JobCancelTest::cleanup()
{
    SetLogEnable(false);
}

void JobCancelTest::transition_data()
{
    QTest::addColumn<int>("listed");
    QTest::addColumn<int>("sent");
    QTest::addColumn<int>("calls");

    for (const int listed : {0, 1, 2, 3, 4, 5, 7, 8, 9, 10, 11}) {
        QTest::newRow(qPrintable(QStringLiteral("from %1 to 6").arg(listed))) << listed << int(RawCancelling) << 1;
    }
    QTest::newRow("6 stays") << 6 << int(RawCancelling) << 0;
    QTest::newRow("from 6 to 3") << 6 << int(RawReady) << 0;
    QTest::newRow("from 3 to 8") << 3 << int(RawPrinting) << 0;
}

void JobCancelTest::transition()
{
    QFETCH(int, listed);
    QFETCH(int, sent);
    const FakeCommand cancel(QStringLiteral("cancel"));
    Setting setting(Name, listed);
    PrinterFolder::WriteStatusFile(Name, StandardBytes(static_cast<quint8>(sent)));
    QCOMPARE(setting.worker.runCycle(), 1); // the toner always differs
    QTEST(static_cast<int>(cancel.calls().size()), "calls");
    QTEST(static_cast<int>(LogLines().size()), "calls");
}

void JobCancelTest::oncePerEntering()
{
    const FakeCommand cancel(QStringLiteral("cancel"));
    Setting setting;
    const auto cycleWith = [&setting](RawStatus status, quint32 toner) {
        PrinterFolder::WriteStatusFile(Name, StandardBytes(status, toner));
        return setting.worker.runCycle();
    };
    QCOMPARE(cycleWith(RawReady, 100), 1);
    QCOMPARE(cancel.calls().size(), 0);
    QCOMPARE(cycleWith(RawCancelling, 100), 1);
    QCOMPARE(cancel.calls(), QList<QStringList>{QStringList{Name}});
    QCOMPARE(setting.status(), 6);
    // The printer stays in the status, with an unchanged file and with a changed one.
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(cycleWith(RawCancelling, 99), 1);
    QCOMPARE(cancel.calls().size(), 1);
    // The printer leaves the status and enters it again.
    QCOMPARE(cycleWith(RawBusy, 99), 1);
    QCOMPARE(cancel.calls().size(), 1);
    QCOMPARE(cycleWith(RawCancelling, 99), 1);
    QCOMPARE(cancel.calls().size(), 2);
    // The list may hold the error status meanwhile, which no reply of this family can cause.
    setting.list[0].stState.enCurrentStatus = PS_ERROR;
    QCOMPARE(cycleWith(RawCancelling, 99), 1);
    QCOMPARE(cancel.calls().size(), 3);
    QCOMPARE(LogLines(), (QList<QByteArray>{CancelLogLine(Name), CancelLogLine(Name), CancelLogLine(Name)}));
}

void JobCancelTest::logLineComesFirst()
{
    const QString seen = QStringLiteral("/tmp/log-at-the-call");
    const FakeCommand cancel(
        QStringLiteral("cancel"),
        QStringLiteral("cat %1* >%2").arg(QString::fromLatin1(PrinterFolder::ToolDirectory), seen));
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawCancelling));
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(LogFolder::WithoutTime(PrinterFolder::ReadFile(seen).trimmed()), CancelLogLine(Name));
    QCOMPARE(LogLines(), QList<QByteArray>{CancelLogLine(Name)});
}

void JobCancelTest::exitCodeIsIgnored_data()
{
    QTest::addColumn<QString>("body");
    QTest::newRow("failed") << "exit 1";
    QTest::newRow("not found") << "exit 127";
    QTest::newRow("killed") << "kill -9 $$";
}

void JobCancelTest::exitCodeIsIgnored()
{
    QFETCH(QString, body);
    const FakeCommand cancel(QStringLiteral("cancel"), body);
    Setting setting;
    PrinterFolder::WriteStatusFile(Name, StandardBytes(RawCancelling));
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(setting.status(), 6);
    QCOMPARE(cancel.calls().size(), 1);
}

void JobCancelTest::command_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("arguments");

    for (const char* name : {"K4510A", "办公室", "a-b", "a_b.c", "W~1", "S*r", "a?b", "[ab]", "a{b}c", "100%", "a%sb%n",
                             "a=b", "a!b", "a,b:c@d+e^f"}) {
        QTest::newRow(name) << QString::fromUtf8(name) << QStringList{QString::fromUtf8(name)};
    }
    QTest::newRow("blank") << "Off ice" << QStringList{QStringLiteral("Off"), QStringLiteral("ice")};
    QTest::newRow("blank before") << " Office" << QStringList{QStringLiteral("Office")};
}

// The name is not quoted in the command.
void JobCancelTest::command()
{
    QFETCH(QString, name);
    QFETCH(QStringList, arguments);
    const FakeCommand cancel(QStringLiteral("cancel"));
    Setting setting(name);
    PrinterFolder::WriteStatusFile(name, StandardBytes(RawCancelling));
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(cancel.calls(), QList<QStringList>{arguments});
    QCOMPARE(LogLines(), QList<QByteArray>{CancelLogLine(name)});
}

void JobCancelTest::refusedNames_data()
{
    QTest::addColumn<QString>("name");
    for (const char character : std::string(";&|<>()$`\\\"'#")) {
        QTest::newRow(QByteArray(1, character)) << (QStringLiteral("P") + QLatin1Char(character) + QStringLiteral("x"));
    }
    QTest::newRow("command") << "x; touch never";
    QTest::newRow("at the start") << "#1";
    QTest::newRow("at the end") << "Office&";
    QTest::newRow("option") << "-a";
    QTest::newRow("dash alone") << "-";
    QTest::newRow("option behind a blank") << " -a";
    QTest::newRow("option as the second word") << "Office -a";
    QTest::newRow("nothing, which means the default queue") << "";
    QTest::newRow("blanks alone") << "  ";
    QTest::newRow("bell") << "P\ax";
    QTest::newRow("tabulator") << "P\tx";
    QTest::newRow("carriage return") << "P\rx";
    QTest::newRow("delete") << "P\x7Fx";
    QTest::newRow("C1 control") << QStringLiteral("P\u0085x");
}

void JobCancelTest::refusedNames()
{
    QFETCH(QString, name);
    const FakeCommand cancel(QStringLiteral("cancel"));
    const FakeCommand other(QStringLiteral("x"));
    Setting setting(name);
    PrinterFolder::WriteStatusFile(name, StandardBytes(RawCancelling));
    QCOMPARE(setting.worker.runCycle(), 1);
    QCOMPARE(cancel.calls().size(), 0);
    QCOMPARE(other.calls().size(), 0);
    QCOMPARE(QDir(QString::fromLatin1(EmptyFolder)).entryList(QDir::Files), QStringList());
    // The rest of the cycle runs, and the log has the command and the refusal.
    QCOMPARE(setting.status(), 6);
    QCOMPARE(LogLines(),
             (QList<QByteArray>{CancelLogLine(name),
                                "(../TrdGetPrinterStatus@514 SlotTaskStart) cancel refused: the name " + name.toUtf8() +
                                    " is not fit for a shell"}));
    QCOMPARE(setting.worker.runCycle(), 0);
    QCOMPARE(LogLines().size(), 2);
}

void JobCancelTest::refusedBytes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("pipe") << QStringLiteral("P亅x") << QByteArray("P\x81|x");
    QTest::newRow("command substitution") << QStringLiteral("P乣x乣") << QByteArray("P\x81`x\x81`");
    QTest::newRow("backslash") << QStringLiteral("P乗") << QByteArray("P\x81\\");
}

// In GBK the second byte of a Chinese character can equal a shell metacharacter.
void JobCancelTest::refusedBytes()
{
    QFETCH(const QString, name);
    auto gbk = std::make_unique<LocalCodec>("GBK");
    if (!gbk->isUsed()) {
        QSKIP("The local encoding is always UTF-8 with Qt 6");
    }
    const FakeCommand cancel(QStringLiteral("cancel"));
    const FakeCommand other(QStringLiteral("x"));
    Setting setting(name);
    PrinterFolder::WriteStatusFile(name, StandardBytes(RawCancelling));
    const int changes = setting.worker.runCycle();
    const QByteArray bytes = name.toLocal8Bit();
    PrinterFolder::RemoveStatusFile(name);
    gbk.reset();
    QTEST(bytes, "bytes");
    QCOMPARE(changes, 1);
    QCOMPARE(cancel.calls().size(), 0);
    QCOMPARE(other.calls().size(), 0);
}

void JobCancelTest::commandLength_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("calls");
    QTest::newRow("254 bytes") << 254 << 1;
    QTest::newRow("255 bytes") << 255 << 1;
    QTest::newRow("256 bytes") << 256 << 0;
    QTest::newRow("258 bytes") << 258 << 0;
}

void JobCancelTest::commandLength()
{
    QFETCH(int, bytes);
    const FakeCommand cancel(QStringLiteral("cancel"));
    const QString name(bytes - static_cast<int>(qstrlen("cancel ")), QLatin1Char('x'));
    // The name is too long for a temporary file beside the status file, so write the file in place.
    QFile file(PrinterFolder::StatusFilePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(StandardBytes(RawCancelling));
    file.close();
    Setting setting(name);
    QCOMPARE(setting.worker.runCycle(), 1);
    QTEST(static_cast<int>(cancel.calls().size()), "calls");
    QCOMPARE(setting.status(), 6);
    const QList<QByteArray> lines = LogLines();
    QCOMPARE(lines.constFirst(), CancelLogLine(name));
    QCOMPARE(lines.size(), cancel.calls().isEmpty() ? 2 : 1);
    if (cancel.calls().isEmpty()) {
        QVERIFY2(lines.last().contains("refused") && lines.last().contains(QByteArray::number(bytes)),
                 lines.last().constData());
    }
}

QTEST_GUILESS_MAIN(JobCancelTest)
#include "tst_jobcancel.moc"
