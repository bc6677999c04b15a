// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Tests links that somebody has put in the place of the auto-start entry.

#include "PrinterFolder.h"
#include "shell/AppSetting.h"

#include <QDir>
#include <QtTest>

namespace {

constexpr char EntryDirectory[] = "/opt/apps/tolmar-printer-q727/entries/autostart/";
constexpr char EntryName[] = "tolmar-q727-tool-autostart.desktop";
const QString Target = QStringLiteral("/opt/apps/target");

QString Entry()
{
    return QString::fromLatin1(EntryDirectory) + QString::fromLatin1(EntryName);
}

} // namespace

class PlantedLinksTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void entryIsNotWrittenThroughALink_data();
    void entryIsNotWrittenThroughALink();
    void linkIsRemovedInsteadOfItsTarget();
};

void PlantedLinksTest::init()
{
    QDir(QStringLiteral("/opt/apps")).removeRecursively();
    QVERIFY(QDir().mkpath(QString::fromLatin1(EntryDirectory)));
    QVERIFY(QFile::link(Target, Entry()));
    PrinterFolder::WriteFile(QCoreApplication::applicationDirPath() + QLatin1Char('/') + QString::fromLatin1(EntryName),
                             "[Desktop Entry]\n");
}

void PlantedLinksTest::entryIsNotWrittenThroughALink_data()
{
    QTest::addColumn<bool>("isDangling");
    QTest::newRow("to a file") << false;
    QTest::newRow("to nothing") << true;
}

void PlantedLinksTest::entryIsNotWrittenThroughALink()
{
    QFETCH(const bool, isDangling);
    if (!isDangling) {
        PrinterFolder::WriteFile(Target, "kept");
    }
    AppSetting dialog(nullptr);
    QVERIFY(!dialog.SaveAutoStartOption(true));
    QCOMPARE(QFile::exists(Target), !isDangling);
    if (!isDangling) {
        QCOMPARE(PrinterFolder::ReadFile(Target), QByteArray("kept"));
    }
    QCOMPARE(QFile::symLinkTarget(Entry()), Target);
}

void PlantedLinksTest::linkIsRemovedInsteadOfItsTarget()
{
    PrinterFolder::WriteFile(Target, "kept");
    AppSetting dialog(nullptr);
    QVERIFY(dialog.SaveAutoStartOption(false));
    QVERIFY(!QFileInfo(Entry()).isSymLink());
    QCOMPARE(PrinterFolder::ReadFile(Target), QByteArray("kept"));
}

QTEST_MAIN(PlantedLinksTest)
#include "tst_plantedlinks.moc"
