// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "MetaMethods.h"
#include "SampleRecords.h"
#include "StatusWorker.h"

#include <QtTest>

class TrdGetPrinterStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void metaObject();
    void freshWorker();
    void stopSlotOnlySetsTheFlag();
    void initOnlyStores();
    void isQZPrinter_data();
    void isQZPrinter();
    void getPrinterVidPid_data();
    void getPrinterVidPid();
};

void TrdGetPrinterStatusTest::metaObject()
{
    const QMetaObject& meta = TrdGetPrinterStatus::staticMetaObject;
    QCOMPARE(meta.className(), "TrdGetPrinterStatus");
    QCOMPARE(meta.superClass(), &UtilThreadBase::staticMetaObject);
    QCOMPARE(OwnMethods(meta),
             (QStringList{QStringLiteral("signal SgnUpdatePrinterStatus(int)"), QStringLiteral("slot SlotTaskStart()"),
                          QStringLiteral("slot SlotThreadQuit()")}));
}

void TrdGetPrinterStatusTest::freshWorker()
{
    QObject parent;
    const auto* worker = new TrdGetPrinterStatus(&parent);
    QCOMPARE(worker->parent(), &parent);

    const StatusWorker fresh;
    QCOMPARE(fresh.bTaskStarted, false);
    QCOMPARE(fresh.bThreadQuit.load(), false);
    QCOMPARE(Words(fresh.stCurrent.stInfo), QStringLiteral("name '' model '' type 0 port '' uri ''"));
    QCOMPARE(Words(fresh.stCurrent.stState), Words(stPrinterState()));
    QCOMPARE(fresh.stCurrent.stState.enCurrentStatus, 2);
}

void TrdGetPrinterStatusTest::stopSlotOnlySetsTheFlag()
{
    StatusWorker worker;
    worker.SlotThreadQuit();
    QCOMPARE(worker.bThreadQuit.load(), true);
    QCOMPARE(worker.bTaskStarted, false);
}

void TrdGetPrinterStatusTest::initOnlyStores()
{
    const QList<stPrinterManager> original{FilledPrinter(QStringLiteral("A"))};
    QList<stPrinterManager> list = original;
    StatusWorker worker;
    worker.Init(0, &list);
    QVERIFY(list.isSharedWith(original));
    QCOMPARE(worker.stCurrent.stInfo.strPrinterName, QString());
    QCOMPARE(worker.bTaskStarted, false);
}

void TrdGetPrinterStatusTest::isQZPrinter_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isQZ");

    QTest::newRow("the model alone") << "J4990E" << true;
    QTest::newRow("within a name") << "Tolmar-J4990E-Series" << true;
    QTest::newRow("at the end") << "办公室_J4990E" << true;
    QTest::newRow("at the start") << "J4990E_2" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("lower case") << "j4990e" << false;
    QTest::newRow("too short") << "J4990" << false;
    QTest::newRow("interrupted") << "J4990_E" << false;
    QTest::newRow("another model") << "K4510A" << false;
}

void TrdGetPrinterStatusTest::isQZPrinter()
{
    QFETCH(QString, name);
    QTEST(StatusWorker().isQZPrinter(name), "isQZ");
}

void TrdGetPrinterStatusTest::getPrinterVidPid_data()
{
    constexpr int untouched = 4711;
    QTest::addColumn<QString>("product");
    QTest::addColumn<bool>("isKnown");
    QTest::addColumn<int>("pid");

    QTest::newRow("TP40D?") << "TP40D?" << true << 0x1061;
    QTest::newRow("TP40DN?") << "TP40DN?" << true << 0x1062;
    QTest::newRow("TM40D?") << "TM40D?" << true << 0x1063;
    QTest::newRow("TM40AD?") << "TM40AD?" << true << 0x1064;
    QTest::newRow("TM40ADN?") << "TM40ADN?" << true << 0x1065;
    QTest::newRow("among other characters") << "x TM40ADN? y" << true << 0x1065;
    QTest::newRow("two patterns, the first in order counts") << "TM40ADN? TP40DN?" << true << 0x1062;
    QTest::newRow("the question mark is no wildcard") << "TP40D" << false << untouched;
    QTest::newRow("nor does another character stand for it") << "TP40DX" << false << untouched;
    QTest::newRow("lower case") << "tp40d?" << false << untouched;
    QTest::newRow("a supported model") << "K4510A" << false << untouched;
    QTest::newRow("empty") << "" << false << untouched;
}

void TrdGetPrinterStatusTest::getPrinterVidPid()
{
    QFETCH(QString, product);
    int vid = 1;
    int pid = 4711;
    QTEST(StatusWorker().GetPrinterVidPid(product, vid, pid), "isKnown");
    QCOMPARE(vid, 0x300E);
    QTEST(pid, "pid");
}

QTEST_GUILESS_MAIN(TrdGetPrinterStatusTest)
#include "tst_trdgetprinterstatus.moc"
