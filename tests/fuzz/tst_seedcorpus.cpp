// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "ReplyFields.h"
#include "RoundTrip.h"
#include "SeedCorpus.h"

#include <QFile>
#include <QtTest>

class SeedCorpusTest : public QObject
{
    Q_OBJECT

private slots:
    void seedsAreThoseInTheTree_data();
    void seedsAreThoseInTheTree();
    void correctStandardReplies_data();
    void correctStandardReplies();
    void correctQZReplies_data();
    void correctQZReplies();
};

namespace {

void AddReplies(const QString& folder, std::initializer_list<const char*> names)
{
    QTest::addColumn<QByteArray>("bytes");
    for (const char* name : names) {
        QTest::newRow(name) << SeedCorpus().value(folder + QLatin1Char('/') + QString::fromLatin1(name) +
                                                  QStringLiteral(".dat"));
    }
}

} // namespace

void SeedCorpusTest::seedsAreThoseInTheTree_data()
{
    QTest::addColumn<QByteArray>("seed");
    const QMap<QString, QByteArray> seeds = SeedCorpus();
    for (auto seed = seeds.begin(); seed != seeds.end(); ++seed) {
        QTest::newRow(qPrintable(seed.key())) << seed.value();
    }
}

// After a change of the encoders run: build/tests/fuzz/write-seeds tests/fuzz/corpus
void SeedCorpusTest::seedsAreThoseInTheTree()
{
    QFETCH(QByteArray, seed);
    QFile file(QStringLiteral(CORPUS_DIRECTORY "/") + QString::fromUtf8(QTest::currentDataTag()));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.errorString()));
    QCOMPARE(file.readAll().toHex(' '), seed.toHex(' '));
}

void SeedCorpusTest::correctStandardReplies_data()
{
    AddReplies(QStringLiteral("standard-reply"),
               {"every-field", "nothing-but-lengths", "long-texts", "many-codes", "status-20", "pages-without-prints",
                "pages-after-prints"});
}

// Reads the fields from the bytes, encodes them to the same bytes, and decodes those to the same fields.
void SeedCorpusTest::correctStandardReplies()
{
    QFETCH(QByteArray, bytes);
    const StandardReply reply = StandardReplyOf(bytes);
    QCOMPARE(EncodeStandardReply(reply).toHex(' '), bytes.toHex(' '));
    CheckRoundTrip(reply);
}

void SeedCorpusTest::correctQZReplies_data()
{
    AddReplies(QStringLiteral("qz-reply"),
               {"every-item", "every-state", "many-codes", "no-items", "no-errors-said-so"});
}

void SeedCorpusTest::correctQZReplies()
{
    QFETCH(QByteArray, bytes);
    const QZReply reply = QZReplyOf(bytes);
    QCOMPARE(EncodeQZReply(reply).toHex(' '), bytes.toHex(' '));
    CheckRoundTrip(reply);
}

QTEST_GUILESS_MAIN(SeedCorpusTest)
#include "tst_seedcorpus.moc"
