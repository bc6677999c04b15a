// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/TrdGetPrinterStatus.h"
#include "records/ModelCatalogue.h"

#include <QtTest>

#include <array>

class ModelCatalogueTest : public QObject
{
    Q_OBJECT

private slots:
    void models_data();
    void models();
    void namesFollowTheModelCode();
    void qzModels();
    void isQZPrinter_data();
    void isQZPrinter();
    void vidPid_data();
    void vidPid();
};

namespace {

struct Model
{
    const char* code;
    const char* name;
    const char* ppd;
    int vid;
    int pid;
};

constexpr std::array<Model, 8> c_models{{
    {"K4510A", "QV K4510A", "Tolmar_K4510A.ppd", 13562, 165},
    {"K4500A", "QV K4500A", "Tolmar_K4500A.ppd", 13562, 166},
    {"J4510A", "QV J4510A", "Tolmar_J4510A.ppd", 13562, 167},
    {"J4500A", "QV J4500A", "Tolmar_J4500A.ppd", 13562, 168},
    {"K4620A", "QV K4620A", "Tolmar_K4620A.ppd", 13562, 169},
    {"J4610A", "QV J4610A", "Tolmar_J4610A.ppd", 13562, 170},
    {"K4880A", "QV K4880A", "Tolmar_K4880A.ppd", 13562, 171},
    {"J4990E", "QV J4990E", "Tolmar_J4990E.ppd", 13562, 172},
}};

// The caller's value, which must be unchanged when no product is known.
constexpr int CallersPid = -77;

void CompareModel(const stModelInfo& actual, const Model& expected)
{
    QCOMPARE(actual.strModel, QString::fromLatin1(expected.code));
    QCOMPARE(actual.strModelName, QString::fromLatin1(expected.name));
    QCOMPARE(actual.strPPDName, QString::fromLatin1(expected.ppd));
    QCOMPARE(actual.iVID, expected.vid);
    QCOMPARE(actual.iPID, expected.pid);
}

} // namespace

void ModelCatalogueTest::models_data()
{
    QTest::addColumn<int>("row");

    QCOMPARE(c_stModelInfoList.size(), c_models.size());
    QCOMPARE(c_stModelInfoList_net.size(), c_models.size());
    for (std::size_t row = 0; row < c_models.size(); ++row) {
        QTest::newRow(c_models[row].code) << static_cast<int>(row);
    }
}

void ModelCatalogueTest::models()
{
    QFETCH(const int, row);
    const auto index = static_cast<std::size_t>(row);

    CompareModel(c_stModelInfoList[index], c_models[index]);
    CompareModel(c_stModelInfoList_net[index], c_models[index]);
}

void ModelCatalogueTest::namesFollowTheModelCode()
{
    for (const stModelInfo& model : c_stModelInfoList) {
        QCOMPARE(model.strModelName, QStringLiteral("QV ") + model.strModel);
        QCOMPARE(model.strPPDName, QStringLiteral("Tolmar_") + model.strModel + QStringLiteral(".ppd"));
    }
}

void ModelCatalogueTest::qzModels()
{
    QCOMPARE(QZModelName, QStringList(QStringLiteral("J4990E")));
    for (std::size_t row = 0; row < c_models.size(); ++row) {
        QCOMPARE(QZModelName.contains(c_stModelInfoList[row].strModel), row == 7);
        QCOMPARE(QZModelName.contains(c_stModelInfoList_net[row].strModel), row == 7);
    }
}

void ModelCatalogueTest::isQZPrinter_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");

    QTest::newRow("model code alone") << "J4990E" << true;
    QTest::newRow("in the middle") << "Tolmar-J4990E-Series" << true;
    QTest::newRow("at the beginning") << "J4990E_2" << true;
    QTest::newRow("at the end") << "打印机J4990E" << true;
    QTest::newRow("inside a longer code") << "XJ4990EX" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("another model") << "K4510A" << false;
    QTest::newRow("lower case") << "j4990e" << false;
    QTest::newRow("mixed case") << "Tolmar-J4990e" << false;
    QTest::newRow("less than the code") << "J4990" << false;
    QTest::newRow("code in two pieces") << "J4990 E" << false;
}

void ModelCatalogueTest::isQZPrinter()
{
    QFETCH(const QString, name);
    QFETCH(const bool, expected);

    QCOMPARE(IsQZPrinterName(name), expected);
    TrdGetPrinterStatus worker(nullptr);
    QCOMPARE(worker.isQZPrinter(name), expected);
}

void ModelCatalogueTest::vidPid_data()
{
    QTest::addColumn<QString>("product");
    QTest::addColumn<bool>("found");
    QTest::addColumn<int>("pid");

    QTest::newRow("TP40D?") << "TP40D?" << true << 4193;
    QTest::newRow("TP40DN?") << "TP40DN?" << true << 4194;
    QTest::newRow("TM40D?") << "TM40D?" << true << 4195;
    QTest::newRow("TM40AD?") << "TM40AD?" << true << 4196;
    QTest::newRow("TM40ADN?") << "TM40ADN?" << true << 4197;
    QTest::newRow("between other characters") << "Series TM40ADN? v2" << true << 4197;
    QTest::newRow("two: the earlier pattern counts") << "TM40ADN? TP40D?" << true << 4193;
    QTest::newRow("two: whatever their order") << "TM40D? TM40AD?" << true << 4195;
    for (const char* product : {"TP40D", "TP40DN", "TM40D", "TM40AD", "TM40ADN"}) {
        QTest::addRow("no question mark: %s", product) << QString::fromLatin1(product) << false << CallersPid;
    }
    QTest::newRow("question mark is no wildcard") << "TP40DX" << false << CallersPid;
    QTest::newRow("nor an optional character") << "TM40A?" << false << CallersPid;
    QTest::newRow("lower case") << "tp40d?" << false << CallersPid;
    QTest::newRow("empty") << "" << false << CallersPid;
    QTest::newRow("supported model") << "K4510A" << false << CallersPid;
}

void ModelCatalogueTest::vidPid()
{
    QFETCH(const QString, product);
    QFETCH(const bool, found);
    QFETCH(const int, pid);

    int foundVid = 1;
    int foundPid = CallersPid;
    QCOMPARE(FindVidPid(product, foundVid, foundPid), found);
    QCOMPARE(foundVid, 12302);
    QCOMPARE(foundPid, pid);

    TrdGetPrinterStatus worker(nullptr);
    foundVid = 1;
    foundPid = CallersPid;
    QCOMPARE(worker.GetPrinterVidPid(product, foundVid, foundPid), found);
    QCOMPARE(foundVid, 12302);
    QCOMPARE(foundPid, pid);
}

QTEST_GUILESS_MAIN(ModelCatalogueTest)

#include "tst_modelcatalogue.moc"
