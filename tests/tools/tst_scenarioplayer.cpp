// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "FolderTest.h"
#include "ScenarioPlayer.h"
#include "ScenarioTexts.h"

#include <QFileInfo>
#include <QtTest>

// Tests the player without waiting: the tests inspect the folder whenever the player would wait.
class ScenarioPlayerTest : public FolderTest
{
    Q_OBJECT

private slots:
    void init();
    void waitsAsTheScenarioTells();
    void stopLeavesTheFiles();
    void everyRewriteHasItsOwnTimeStamp();
    void timeStampIsLaterThanThatOfAReplacedFile();
    void timeStampGrowsAcrossAGap();
    void onlyTouchedFilesAreRewritten_data();
    void onlyTouchedFilesAreRewritten();
    void repeatStartsFromTheDeclaration();
    void swappedNamesSwapTheirFiles();
    void removedPrinterLeavesOthersAlone();
    void aFileThatIsGoneAlreadyIsNoError();
    void failureTellsTheFile();

private:
    void PutFile(const QString& name, const QDateTime& timeStamp) const;
};

namespace {

using std::chrono::milliseconds;

qint64 TimeStampMSec(const QString& path)
{
    return QFileInfo(path).lastModified().toMSecsSinceEpoch();
}

} // namespace

void ScenarioPlayerTest::init()
{
    QVERIFY(MakeFolder());
}

void ScenarioPlayerTest::PutFile(const QString& name, const QDateTime& timeStamp) const
{
    QFile file(Path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.setFileTime(timeStamp, QFileDevice::FileModificationTime));
}

void ScenarioPlayerTest::waitsAsTheScenarioTells()
{
    ScenarioPlayer player(Parse("printer A\nwait 1.5\nrefresh A\nwait 0.001\n"), m_directory->path());
    QVector<int> waits;
    QVERIFY(player.play([&waits](milliseconds time) {
        waits.append(static_cast<int>(time.count()));
        return true;
    }));
    QCOMPARE(waits, QVector<int>({1500, 1}));
}

void ScenarioPlayerTest::stopLeavesTheFiles()
{
    ScenarioPlayer player(Parse("printer A\nwait 1\nremove A\n"), m_directory->path());
    QVERIFY(player.play([](milliseconds) { return false; }));
    QCOMPARE(Files(), QStringList({QStringLiteral("A.dat"), QStringLiteral("printerlist.ini")}));
    QCOMPARE(player.errorText(), QString());
}

void ScenarioPlayerTest::everyRewriteHasItsOwnTimeStamp()
{
    ScenarioPlayer player(Parse("printer A\n  port 1\n" +
                                QByteArray("wait 1\nrefresh A\nport A 1\n"
                                           "wait 1\nrefresh A\nport A 2\n")
                                    .repeated(50)),
                          m_directory->path());
    qint64 statusStamp = 0;
    qint64 listStamp = 0;
    int rewrites = 0;
    QByteArray list;
    QVERIFY(player.play([&](milliseconds) {
        const qint64 stamp = TimeStampMSec(Path(QStringLiteral("A.dat")));
        rewrites += stamp > statusStamp ? 1 : 0;
        statusStamp = stamp;
        const QByteArray newList = Content(QStringLiteral("printerlist.ini"));
        const qint64 newListStamp = TimeStampMSec(Path(QStringLiteral("printerlist.ini")));
        if (newList != list && newListStamp <= listStamp) {
            qWarning("the list changed but its timestamp did not");
            return false;
        }
        list = newList;
        listStamp = newListStamp;
        return true;
    }));
    QCOMPARE(rewrites, 100);
    QVERIFY(list.contains("Port=\"1\"")); // the last wait was before the last step
    QVERIFY(Content(QStringLiteral("printerlist.ini")).contains("Port=\"2\""));
}

void ScenarioPlayerTest::timeStampIsLaterThanThatOfAReplacedFile()
{
    const QDateTime future = QDateTime::currentDateTimeUtc().addSecs(3600);
    PutFile(QStringLiteral("A.dat"), future);
    ScenarioPlayer player(Parse("printer A\n"), m_directory->path());
    QVERIFY(player.play([](milliseconds) { return true; }));
    QCOMPARE(TimeStampMSec(Path(QStringLiteral("A.dat"))), future.toMSecsSinceEpoch() + 1);
}

void ScenarioPlayerTest::timeStampGrowsAcrossAGap()
{
    // The file before the gap has a timestamp in the future. The file after the gap must have a later one.
    const QDateTime future = QDateTime::currentDateTimeUtc().addSecs(3600);
    PutFile(QStringLiteral("A.dat"), future);
    ScenarioPlayer player(Parse("printer A\nwait 1\nvanish A\nwait 1\nrefresh A\n"), m_directory->path());
    QVERIFY(player.play([](milliseconds) { return true; }));
    QVERIFY(TimeStampMSec(Path(QStringLiteral("A.dat"))) > future.toMSecsSinceEpoch() + 1);
}

void ScenarioPlayerTest::onlyTouchedFilesAreRewritten_data()
{
    QTest::addColumn<QByteArray>("step");
    QTest::addColumn<QStringList>("rewritten");

    const QString a = QStringLiteral("A.dat");
    const QString list = QStringLiteral("printerlist.ini");
    QTest::newRow("nothing") << QByteArray() << QStringList();
    QTest::newRow("refresh") << QByteArray("refresh A") << QStringList({a});
    QTest::newRow("the same status") << QByteArray("status A ready") << QStringList({a});
    QTest::newRow("port") << QByteArray("port A USB2") << QStringList({list});
    QTest::newRow("the same port") << QByteArray("port A \"\"") << QStringList();
    QTest::newRow("reorder") << QByteArray("reorder B A") << QStringList({list});
    QTest::newRow("remove and add") << QByteArray("remove A\nadd A") << QStringList({a, list});
}

void ScenarioPlayerTest::onlyTouchedFilesAreRewritten()
{
    QFETCH(QByteArray, step);
    QFETCH(QStringList, rewritten);
    ScenarioPlayer player(Parse("printer A\nprinter B\nwait 1\n" + step), m_directory->path());
    QMap<QString, qint64> before;
    QVERIFY(player.play([&](milliseconds) {
        const QStringList names = Files();
        for (const QString& name : names) {
            before.insert(name, TimeStampMSec(Path(name)));
        }
        return true;
    }));
    QCOMPARE(before.size(), 3);
    QStringList changed;
    const QStringList names = Files();
    for (const QString& name : names) {
        if (before.value(name) != TimeStampMSec(Path(name))) {
            changed.append(name);
        }
    }
    QCOMPARE(changed, rewritten);
}

void ScenarioPlayerTest::repeatStartsFromTheDeclaration()
{
    ScenarioPlayer player(Parse("printer A\nwait 1\nrename A B\ngarbage B 01\nwait 1\nrepeat\n"), m_directory->path());
    QStringList seen;
    QVERIFY(player.play([&](milliseconds) {
        seen.append(Files().value(0));
        return seen.size() < 5;
    }));
    const QString a = QStringLiteral("A.dat");
    const QString b = QStringLiteral("B.dat");
    QCOMPARE(seen, QStringList({a, b, a, b, a}));
    QCOMPARE(Files(), QStringList({a, QStringLiteral("printerlist.ini")}));
    QVERIFY(Content(a).size() > 1);
}

void ScenarioPlayerTest::swappedNamesSwapTheirFiles()
{
    ScenarioPlayer player(Parse("printer A\ngarbage 01\nprinter B\ngarbage 02\n"
                                "wait 1\nrename A T\nrename B A\nrename T B\n"),
                          m_directory->path());
    QVERIFY(player.play([](milliseconds) { return true; }));
    QCOMPARE(Content(QStringLiteral("A.dat")), QByteArray("\x02"));
    QCOMPARE(Content(QStringLiteral("B.dat")), QByteArray("\x01"));
    QCOMPARE(Files().size(), 3);
}

void ScenarioPlayerTest::removedPrinterLeavesOthersAlone()
{
    PutFile(QStringLiteral("Foreign.dat"), QDateTime::currentDateTimeUtc());
    ScenarioPlayer player(Parse("printer A\nprinter B\nwait 1\nremove A\n"), m_directory->path());
    QVERIFY(player.play([](milliseconds) { return true; }));
    QCOMPARE(Files(),
             QStringList({QStringLiteral("B.dat"), QStringLiteral("Foreign.dat"), QStringLiteral("printerlist.ini")}));
}

void ScenarioPlayerTest::aFileThatIsGoneAlreadyIsNoError()
{
    ScenarioPlayer player(Parse("printer A\nwait 1\nvanish A\nwait 1\n"), m_directory->path());
    QVERIFY(player.play([&](milliseconds) {
        QFile::remove(Path(QStringLiteral("A.dat")));
        return true;
    }));
}

void ScenarioPlayerTest::failureTellsTheFile()
{
    QVERIFY(QDir().mkpath(Path(QStringLiteral("A.dat"))));
    ScenarioPlayer player(Parse("printer A\nwait 1\n"), m_directory->path());
    QVERIFY(!player.play([](milliseconds) { return true; }));
    QVERIFY2(player.errorText().startsWith(QStringLiteral("cannot write %1: ").arg(Path(QStringLiteral("A.dat")))),
             qPrintable(player.errorText()));
    QCOMPARE(Files(), QStringList());
}

QTEST_GUILESS_MAIN(ScenarioPlayerTest)
#include "tst_scenarioplayer.moc"
