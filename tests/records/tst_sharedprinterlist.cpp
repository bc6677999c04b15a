// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "records/SharedPrinterList.h"

#include <QtTest>

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

using WriteBack = SharedPrinterList::WriteBack;
// The successive statuses in the status file. The toner of a state is its index here.
using Versions = std::vector<int>;
Q_DECLARE_METATYPE(WriteBack)
Q_DECLARE_METATYPE(Versions)

// Tests the list as its users see it, and two workers of one printer in every order of their steps.
class SharedPrinterListTest : public QObject
{
    Q_OBJECT

private slots:
    void copies();
    void replacesAnotherListOnly_data();
    void replacesAnotherListOnly();
    void writesToTheSamePrinterOnly_data();
    void writesToTheSamePrinterOnly();
    void writesToAListThatWasRebuilt();
    void letGo();
    void secondOfTwoIsOvertaken();
    void othersDuringACancellation_data();
    void othersDuringACancellation();
    void twoWorkersInAnyOrder_data();
    void twoWorkersInAnyOrder();
};

namespace {

stPrinterManager Printer(const QString& name, int status = PS_READY, unsigned long toner = 0)
{
    stPrinterManager printer;
    printer.stInfo.strPrinterName = name;
    printer.stInfo.strPort = QStringLiteral("port of ") + name;
    printer.stInfo.strURI = QStringLiteral("usb://") + name;
    printer.stState.enCurrentStatus = status;
    printer.stState.dwRemainingToner = toner;
    return printer;
}

const QString Name = QStringLiteral("Office");

// A worker's cycle, divided into the steps between which others may run.
class StepWorker
{
public:
    StepWorker(QList<stPrinterManager>* list, const Versions& versions)
        : m_shared(list)
        , m_versions(versions)
    {
    }

    /// Returns the version that this step signalled, or -1.
    int step(int fileVersion)
    {
        switch (m_step++) {
        case 0:
            m_shared.copy(0, m_printer, &m_origin);
            return -1;
        case 1:
            m_isRead = m_readVersion != fileVersion;
            m_readVersion = fileVersion;
            if (m_isRead) {
                m_printer.stState.enCurrentStatus = m_versions.at(static_cast<std::size_t>(fileVersion));
                m_printer.stState.dwRemainingToner = static_cast<unsigned long>(fileVersion);
            }
            return -1;
        case 2:
            return conclude(m_shared.writeBack(m_printer, m_isRead, m_origin));
        default:
            return conclude(m_shared.writeBackCancelled(m_printer, m_origin));
        }
    }
    bool isBetweenCycles() const
    {
        return m_step == 0;
    }
    int cycles() const
    {
        return m_cycles;
    }
    int cancels() const
    {
        return m_cancels;
    }

private:
    int conclude(WriteBack outcome)
    {
        if (outcome == WriteBack::CancelFirst) {
            ++m_cancels;
            return -1;
        }
        if (outcome == WriteBack::Overtaken && m_isRead) {
            m_readVersion.reset();
        }
        m_step = 0;
        ++m_cycles;
        return outcome == WriteBack::Changed ? static_cast<int>(m_printer.stState.dwRemainingToner) : -1;
    }

    SharedPrinterList m_shared;
    const Versions& m_versions;
    stPrinterManager m_printer;
    SharedPrinterList::Origin m_origin;
    std::optional<int> m_readVersion = 0;
    bool m_isRead = false;
    int m_step = 0;
    int m_cycles = 0;
    int m_cancels = 0;
};

// Runs one order of steps. `choices` says who comes next and is extended as needed.
class Run
{
public:
    Run(const Versions& versions, std::vector<int>& choices, std::vector<int>& counts)
        : m_versions(versions)
    {
        for (std::size_t at = 0;; ++at) {
            const std::vector<int> possible = whoCanGo();
            if (possible.empty()) {
                break;
            }
            if (at == choices.size()) {
                choices.push_back(0);
                counts.push_back(0);
            }
            counts[at] = static_cast<int>(possible.size());
            go(possible.at(static_cast<std::size_t>(choices[at])));
        }
        for (const int worker : {0, 1}) { // a final undisturbed cycle of each
            do {
                go(worker);
            } while (!m_workers[worker].isBetweenCycles());
        }
        const int listed = static_cast<int>(m_list.first().stState.dwRemainingToner);
        if (listed != m_fileVersion) {
            m_fault = QStringLiteral("version %1 is lost, the list has %2").arg(m_fileVersion).arg(listed);
        }
        const auto jobs = std::count(versions.begin(), versions.end(), int(PS_CANCELING_JOB));
        if (m_workers[0].cancels() + m_workers[1].cancels() > jobs) {
            m_fault = QStringLiteral("a second job was cancelled");
        }
    }
    QString fault() const
    {
        return m_fault.isEmpty() ? QString() : m_fault + QStringLiteral(": ") + m_order;
    }

private:
    static constexpr int File = 2;
    static constexpr int CyclesOfEach = 2;

    std::vector<int> whoCanGo() const
    {
        std::vector<int> possible;
        for (const int worker : {0, 1}) {
            if (m_workers[worker].cycles() < CyclesOfEach) {
                possible.push_back(worker);
            }
        }
        if (m_fileVersion + 1 < static_cast<int>(m_versions.size())) {
            possible.push_back(File);
        }
        return possible;
    }
    void go(int who)
    {
        m_order += QLatin1Char("ABf"[who]);
        if (who == File) {
            ++m_fileVersion;
            return;
        }
        const auto before = m_list.first().stState.dwRemainingToner;
        const int told = m_workers[who].step(m_fileVersion);
        if (m_list.first().stState.dwRemainingToner < before) {
            m_fault = QStringLiteral("an older state has overwritten a newer one");
        }
        if (told >= 0 && told <= m_told) {
            m_fault = QStringLiteral("version %1 was told after %2").arg(told).arg(m_told);
        }
        m_told = std::max(m_told, told);
    }

    const Versions& m_versions;
    QList<stPrinterManager> m_list{Printer(Name, m_versions.front())};
    StepWorker m_workers[2] = {{&m_list, m_versions}, {&m_list, m_versions}};
    int m_fileVersion = 0;
    int m_told = -1;
    QString m_order;
    QString m_fault;
};

// Sets the next combination; returns false after the last one.
bool Advance(std::vector<int>& choices, const std::vector<int>& counts)
{
    while (!choices.empty() && choices.back() + 1 == counts.at(choices.size() - 1)) {
        choices.pop_back();
    }
    if (choices.empty()) {
        return false;
    }
    ++choices.back();
    return true;
}

} // namespace

void SharedPrinterListTest::copies()
{
    QList<stPrinterManager> list{Printer(QStringLiteral("a")), Printer(QStringLiteral("b"))};
    const SharedPrinterList shared(&list);
    QCOMPARE(shared.copyInfos().size(), 2);
    QCOMPARE(shared.copyInfos().at(1).strPrinterName, QStringLiteral("b"));
    stPrinterManager printer;
    for (const int index : {-1, 2, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        QVERIFY(!shared.copy(index, printer));
    }
    QVERIFY(shared.copy(1, printer));
    QCOMPARE(printer.stInfo.strURI, QStringLiteral("usb://b"));
    QVERIFY(!SharedPrinterList().copy(0, printer));
    QVERIFY(SharedPrinterList().copyInfos().isEmpty());
}

void SharedPrinterListTest::replacesAnotherListOnly_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("isReplaced");
    QTest::newRow("the same") << QStringList{QStringLiteral("a"), QStringLiteral("b")} << false;
    QTest::newRow("another order") << QStringList{QStringLiteral("b"), QStringLiteral("a")} << true;
    QTest::newRow("fewer") << QStringList{QStringLiteral("a")} << true;
    QTest::newRow("more") << QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")} << true;
}

void SharedPrinterListTest::replacesAnotherListOnly()
{
    QFETCH(const QStringList, names);
    QFETCH(const bool, isReplaced);
    QList<stPrinterManager> list{Printer(QStringLiteral("a")), Printer(QStringLiteral("b"))};
    QList<stPrinterInfo> infos;
    QList<stPrinterManager> newList;
    for (const QString& name : names) {
        newList.append(Printer(name, PS_OFFLINE));
        infos.append(newList.last().stInfo);
        infos.last().strURI = QStringLiteral("not compared");
    }
    int told = 0;
    SharedPrinterList(&list).replaceIfChanged(
        infos, [&newList] { return newList; }, [&told] { ++told; });
    QCOMPARE(told, isReplaced ? 1 : 0);
    QCOMPARE(list.size(), isReplaced ? names.size() : 2);
    QCOMPARE(list.first().stState.enCurrentStatus, int(isReplaced ? PS_OFFLINE : PS_READY));
    SharedPrinterList().replaceIfChanged(
        infos, [&newList] { return newList; }, [&told] { ++told; });
    QCOMPARE(told, isReplaced ? 1 : 0);
}

void SharedPrinterListTest::writesToTheSamePrinterOnly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("uri");
    QTest::addColumn<WriteBack>("outcome");
    QTest::newRow("the same") << "Office"
                              << "usb://Office" << WriteBack::Changed;
    QTest::newRow("another name") << "office"
                                  << "usb://Office" << WriteBack::NotListed;
    QTest::newRow("another URI") << "Office"
                                 << "usb://office" << WriteBack::NotListed;
}

void SharedPrinterListTest::writesToTheSamePrinterOnly()
{
    QFETCH(const QString, name);
    QFETCH(const QString, uri);
    QList<stPrinterManager> list{Printer(Name)};
    SharedPrinterList shared(&list);
    stPrinterManager printer;
    SharedPrinterList::Origin origin;
    QVERIFY(shared.copy(0, printer, &origin));
    list.first().stInfo.strPrinterName = name;
    list.first().stInfo.strURI = uri;
    printer.stState.enCurrentStatus = PS_BUSY;
    QTEST(shared.writeBack(printer, true, origin), "outcome");
    list.clear();
    QCOMPARE(shared.writeBack(printer, true, origin), WriteBack::NotListed);
}

// The new list has the same printer, and nobody has written to it since.
void SharedPrinterListTest::writesToAListThatWasRebuilt()
{
    QList<stPrinterManager> list{Printer(Name, PS_BUSY)};
    SharedPrinterList shared(&list);
    stPrinterManager printer;
    SharedPrinterList::Origin origin;
    QVERIFY(shared.copy(0, printer, &origin));
    const auto none = [] {
    };
    shared.replaceIfChanged(
        {}, [] { return QList<stPrinterManager>(); }, none);
    shared.replaceIfChanged(
        {printer.stInfo}, [] { return QList<stPrinterManager>{Printer(Name, PS_OFFLINE)}; }, none);
    QCOMPARE(list.first().stState.enCurrentStatus, int(PS_OFFLINE));
    QCOMPARE(shared.writeBack(printer, false, origin), WriteBack::Changed);
    QCOMPARE(list.first().stState.enCurrentStatus, int(PS_BUSY));
    QCOMPARE(shared.writeBack(printer, false, origin), WriteBack::Unchanged);
}

void SharedPrinterListTest::letGo()
{
    QList<stPrinterManager> list{Printer(Name)};
    QList<stPrinterManager> other{Printer(Name)};
    SharedPrinterList shared(&list);
    stPrinterManager printer;
    SharedPrinterList::Origin origin;
    QVERIFY(shared.copy(0, printer, &origin));
    printer.stState.enCurrentStatus = PS_CANCELING_JOB;
    QCOMPARE(shared.writeBack(printer, true, origin), WriteBack::CancelFirst);
    shared.assign(nullptr);
    QCOMPARE(shared.writeBackCancelled(printer, origin), WriteBack::NotListed);
    shared.assign(&other);
    QCOMPARE(shared.writeBack(printer, true, origin), WriteBack::NotListed);
    QCOMPARE(list.first().stState.enCurrentStatus, int(PS_READY));
    QCOMPARE(other.first().stState.enCurrentStatus, int(PS_READY));
    // The cancellation is over for other workers, too.
    SharedPrinterList again(&list);
    QVERIFY(again.copy(0, printer, &origin));
    printer.stState.enCurrentStatus = PS_CANCELING_JOB;
    QCOMPARE(again.writeBack(printer, true, origin), WriteBack::CancelFirst);
    QCOMPARE(again.writeBackCancelled(printer, origin), WriteBack::Changed);
}

void SharedPrinterListTest::secondOfTwoIsOvertaken()
{
    QList<stPrinterManager> list{Printer(Name), Printer(QStringLiteral("other"))};
    SharedPrinterList first(&list);
    SharedPrinterList second(&list);
    SharedPrinterList third(&list);
    stPrinterManager printers[3];
    SharedPrinterList::Origin origins[3];
    QVERIFY(first.copy(0, printers[0], &origins[0]));
    QVERIFY(second.copy(0, printers[1], &origins[1]));
    QVERIFY(third.copy(1, printers[2], &origins[2]));
    printers[1].stState.enCurrentStatus = PS_BUSY;
    QCOMPARE(second.writeBack(printers[1], true, origins[1]), WriteBack::Changed);
    QCOMPARE(first.writeBack(printers[0], false, origins[0]), WriteBack::Overtaken);
    QCOMPARE(third.writeBack(printers[2], false, origins[2]), WriteBack::Unchanged); // another index
    QCOMPARE(list.first().stState.enCurrentStatus, int(PS_BUSY));
    QVERIFY(first.copy(0, printers[0], &origins[0]));
    QCOMPARE(first.writeBack(printers[0], false, origins[0]), WriteBack::Unchanged);
}

void SharedPrinterListTest::othersDuringACancellation_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isEvaluated");
    QTest::addColumn<WriteBack>("outcome");
    QTest::addColumn<WriteBack>("outcomeOfTheFirst");
    QTest::newRow("cancelling too") << int(PS_CANCELING_JOB) << true << WriteBack::Overtaken << WriteBack::Changed;
    QTest::newRow("nothing new") << int(PS_READY) << false << WriteBack::Overtaken << WriteBack::Changed;
    QTest::newRow("gone on") << int(PS_PRINTING) << true << WriteBack::Changed << WriteBack::Overtaken;
    QTest::newRow("gone back") << int(PS_READY) << true << WriteBack::Unchanged << WriteBack::Overtaken;
}

void SharedPrinterListTest::othersDuringACancellation()
{
    QFETCH(const int, status);
    QFETCH(const bool, isEvaluated);
    QList<stPrinterManager> list{Printer(Name)};
    SharedPrinterList first(&list);
    SharedPrinterList second(&list);
    stPrinterManager printer;
    SharedPrinterList::Origin origin;
    QVERIFY(first.copy(0, printer, &origin));
    printer.stState.enCurrentStatus = PS_CANCELING_JOB;
    QCOMPARE(first.writeBack(printer, true, origin), WriteBack::CancelFirst);
    stPrinterManager copy;
    SharedPrinterList::Origin copyOrigin;
    QVERIFY(second.copy(0, copy, &copyOrigin));
    QCOMPARE(copy.stState.enCurrentStatus, int(PS_READY)); // unchanged until the command has ended
    copy.stState.enCurrentStatus = status;
    QTEST(second.writeBack(copy, isEvaluated, copyOrigin), "outcome");
    QTEST(first.writeBackCancelled(printer, origin), "outcomeOfTheFirst");
}

void SharedPrinterListTest::twoWorkersInAnyOrder_data()
{
    QTest::addColumn<Versions>("versions");
    QTest::newRow("one change") << Versions{PS_READY, PS_PRINTING};
    QTest::newRow("two changes") << Versions{PS_READY, PS_PRINTING, PS_READY};
    QTest::newRow("one cancellation") << Versions{PS_READY, PS_CANCELING_JOB};
    QTest::newRow("one cancellation and its end") << Versions{PS_READY, PS_CANCELING_JOB, PS_READY};
    QTest::newRow("a change and a cancellation") << Versions{PS_READY, PS_PRINTING, PS_CANCELING_JOB};
    QTest::newRow("cancelling at the start") << Versions{PS_CANCELING_JOB, PS_READY};
}

// No older state overwrites a newer one, no state is signalled twice or lost, and no second job is cancelled.
void SharedPrinterListTest::twoWorkersInAnyOrder()
{
    QFETCH(const Versions, versions);
    std::vector<int> choices;
    std::vector<int> counts;
    int orders = 0;
    do {
        counts.resize(choices.size());
        const Run run(versions, choices, counts);
        QCOMPARE(run.fault(), QString());
        ++orders;
    } while (Advance(choices, counts));
    qInfo("%d orders", orders);
    QVERIFY(orders > 5000);
}

QTEST_GUILESS_MAIN(SharedPrinterListTest)
#include "tst_sharedprinterlist.moc"
