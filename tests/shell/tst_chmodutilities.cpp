// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "PrinterFolder.h"
#include "TestWindow.h"

#include <QDir>
#include <QtTest>

#include <sys/stat.h>
#include <sys/wait.h>

namespace {

constexpr char Tree[] = "/tmp/tree";
constexpr int LongestCommandBytes = 255;

QString InTree(const QString& path)
{
    return QString::fromLatin1(Tree) + path;
}

int Mode(const QString& path)
{
    struct stat properties = {};
    if (stat(QFile::encodeName(path).constData(), &properties) != 0) {
        return -1;
    }
    return static_cast<int>(properties.st_mode & 07777U);
}

void MakeFile(const QString& path)
{
    PrinterFolder::WriteFile(path, "content");
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0640), 0);
}

void MakeDirectory(const QString& path)
{
    QVERIFY(QDir().mkpath(path));
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0750), 0);
}

QString PathForCommandOf(int bytes)
{
    const int prefixBytes = static_cast<int>(qstrlen("chmod 777 "));
    return QStringLiteral("x").repeated(bytes - prefixBytes);
}

} // namespace

class ChmodUtilitiesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void fileIsOpened();
    void missingFileGivesCommandStatus();
    void commandStatusIsReturned();
    void pathIsPassedInLocalEncoding();
    void longestPath();
    void tooLongPathIsNotRun_data();
    void tooLongPathIsNotRun();
    void vendorTreeIsOpened();
    void vendorLinksAreNotFollowed();
    void vendorCommandsInOrder();
    void vendorPathTooLong();
};

void ChmodUtilitiesTest::init()
{
    PrinterFolder::Create();
    MakeDirectory(QString::fromLatin1(Tree));
}

void ChmodUtilitiesTest::cleanup()
{
    QVERIFY(QDir(QString::fromLatin1(Tree)).removeRecursively());
}

void ChmodUtilitiesTest::fileIsOpened()
{
    TestWindow window;
    MakeFile(InTree(QStringLiteral("/a")));
    MakeFile(InTree(QStringLiteral("/b")));
    QCOMPARE(window.ChmodFile(InTree(QStringLiteral("/a"))), 0);
    QCOMPARE(Mode(InTree(QStringLiteral("/a"))), 0777);
    QCOMPARE(Mode(InTree(QStringLiteral("/b"))), 0640);
}

void ChmodUtilitiesTest::missingFileGivesCommandStatus()
{
    TestWindow window;
    const int status = window.ChmodFile(InTree(QStringLiteral("/missing")));
    QVERIFY(WIFEXITED(status));
    QCOMPARE(WEXITSTATUS(status), 1);
}

void ChmodUtilitiesTest::commandStatusIsReturned()
{
    TestWindow window;
    const FakeCommand chmodCommand(QStringLiteral("chmod"), QStringLiteral("exit 3"));
    QCOMPARE(WEXITSTATUS(window.ChmodFile(QStringLiteral("/tmp/a"))), 3);
    QCOMPARE(chmodCommand.calls(), (QList<QStringList>{{QStringLiteral("777"), QStringLiteral("/tmp/a")}}));
}

void ChmodUtilitiesTest::pathIsPassedInLocalEncoding()
{
    TestWindow window;
    const FakeCommand chmodCommand(QStringLiteral("chmod"));
    QCOMPARE(window.ChmodFile(QStringLiteral("/tmp/打印机")), 0);
    QCOMPARE(chmodCommand.calls(), (QList<QStringList>{{QStringLiteral("777"), QStringLiteral("/tmp/打印机")}}));
}

void ChmodUtilitiesTest::longestPath()
{
    TestWindow window;
    const FakeCommand chmodCommand(QStringLiteral("chmod"));
    const QString path = PathForCommandOf(LongestCommandBytes);
    QCOMPARE(window.ChmodFile(path), 0);
    QCOMPARE(chmodCommand.calls(), (QList<QStringList>{{QStringLiteral("777"), path}}));
}

void ChmodUtilitiesTest::tooLongPathIsNotRun_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("one byte too long") << PathForCommandOf(LongestCommandBytes + 1);
    QTest::newRow("two characters, six bytes, four too long")
        << PathForCommandOf(LongestCommandBytes - 2) + QStringLiteral("打印");
    QTest::newRow("far too long") << QString(100000, QLatin1Char('x'));
}

void ChmodUtilitiesTest::tooLongPathIsNotRun()
{
    QFETCH(const QString, path);
    TestWindow window;
    const FakeCommand chmodCommand(QStringLiteral("chmod"));
    QCOMPARE(window.ChmodFile(path), -1);
    QCOMPARE(chmodCommand.calls(), QList<QStringList>());
}

void ChmodUtilitiesTest::vendorTreeIsOpened()
{
    TestWindow window;
    MakeDirectory(InTree(QStringLiteral("/sub/deeper")));
    MakeFile(InTree(QStringLiteral("/file")));
    MakeFile(InTree(QStringLiteral("/sub/file")));
    MakeFile(InTree(QStringLiteral("/sub/deeper/file")));
    window.ChmodVendorPath(QString::fromLatin1(Tree));
    for (const char* path : {"", "/file", "/sub", "/sub/file", "/sub/deeper", "/sub/deeper/file"}) {
        QCOMPARE(Mode(InTree(QString::fromLatin1(path))), 0777);
    }
}

void ChmodUtilitiesTest::vendorLinksAreNotFollowed()
{
    TestWindow window;
    const QString outside = QStringLiteral("/tmp/outside");
    MakeDirectory(outside);
    MakeFile(outside + QStringLiteral("/file"));
    QVERIFY(QFile::link(outside, InTree(QStringLiteral("/link"))));
    window.ChmodVendorPath(QString::fromLatin1(Tree));
    QCOMPARE(Mode(QString::fromLatin1(Tree)), 0777);
    QCOMPARE(Mode(outside + QStringLiteral("/file")), 0640);
}

// The order: each directory, then its entries, then its subdirectories, depth first.
void ChmodUtilitiesTest::vendorCommandsInOrder()
{
    TestWindow window;
    MakeDirectory(InTree(QStringLiteral("/b")));
    MakeDirectory(InTree(QStringLiteral("/a/deep")));
    MakeFile(InTree(QStringLiteral("/a/file")));
    MakeDirectory(InTree(QStringLiteral("/.hidden")));
    const FakeCommand chmodCommand(QStringLiteral("chmod"), QStringLiteral("exit 1"));
    window.ChmodVendorPath(QString::fromLatin1(Tree));
    const QString mode = QStringLiteral("777");
    QCOMPARE(chmodCommand.calls(),
             (QList<QStringList>{
                 {mode, QStringLiteral("/tmp/tree/")},
                 {mode, QStringLiteral("/tmp/tree/a"), QStringLiteral("/tmp/tree/b")},
                 {mode, QStringLiteral("/tmp/tree/a/")},
                 {mode, QStringLiteral("/tmp/tree/a/deep"), QStringLiteral("/tmp/tree/a/file")},
                 {mode, QStringLiteral("/tmp/tree/a/deep/")},
                 {mode, QStringLiteral("/tmp/tree/a/deep/*")}, // a pattern without a match
                 {mode, QStringLiteral("/tmp/tree/b/")},
                 {mode, QStringLiteral("/tmp/tree/b/*")},
             }));
}

void ChmodUtilitiesTest::vendorPathTooLong()
{
    TestWindow window;
    const FakeCommand chmodCommand(QStringLiteral("chmod"));
    window.ChmodVendorPath(QString(1000, QLatin1Char('x')));
    QCOMPARE(chmodCommand.calls(), QList<QStringList>());
}

QTEST_MAIN(ChmodUtilitiesTest)
#include "tst_chmodutilities.moc"
