// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Descriptors.h"
#include "infrastructure/RegularFile.h"
#include "PrinterFolder.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

class RegularFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void whatCanBeOpened_data();
    void whatCanBeOpened();
    void fifoWithAWriterIsNotTouched();
    void zeroByteInThePath();
    void noPermission();
    void size_data();
    void size();
    void readsUpToTheCapacity();
    void readsOnFromWhereItStopped();
    void shrunkFileGivesWhatIsLeft();
    void keepsWhatItOpened();
    void descriptorIsClosed_data();
    void descriptorIsClosed();
    void descriptorIsNotInherited();
};

namespace {

constexpr char Folder[] = "/tmp/files";

QString Path(const char* name)
{
    return QString::fromLatin1(Folder) + QLatin1Char('/') + QString::fromUtf8(name);
}

QByteArray LocalPath(const char* name)
{
    return QFile::encodeName(Path(name));
}

void WriteFile(const char* name, const QByteArray& content)
{
    PrinterFolder::WriteFile(Path(name), content);
}

QByteArray Read(const RegularFile& file, unsigned long capacity)
{
    QByteArray buffer(static_cast<int>(capacity) + 1, '#');
    const unsigned long count = file.read(reinterpret_cast<unsigned char*>(buffer.data()), capacity);
    // The read must not write beyond the number of bytes that it returns.
    return buffer.mid(static_cast<int>(count)).count('#') == buffer.size() - static_cast<int>(count)
        ? buffer.left(static_cast<int>(count))
        : QByteArray("wrote too far");
}

bool MakeSocket(const char* name)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    qstrncpy(address.sun_path, LocalPath(name).constData(), sizeof address.sun_path);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    const bool isBound = bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    close(descriptor);
    return isBound;
}

} // namespace

void RegularFileTest::init()
{
    QVERIFY(QDir(QString::fromLatin1(Folder)).removeRecursively());
    QVERIFY(QDir().mkpath(QString::fromLatin1(Folder)));
    WriteFile("plain", "content");
    WriteFile("打印机", "content");
    WriteFile("empty", "");
    QVERIFY(QDir().mkpath(Path("directory")));
    QCOMPARE(mkfifo(LocalPath("fifo").constData(), 0600), 0);
    QVERIFY(MakeSocket("socket"));
    const std::pair<const char*, const char*> links[] = {
        {"plain", "link"},          {"link", "link to a link"},           {"absent", "dangling"},
        {"fifo", "link to a fifo"}, {"directory", "link to a directory"}, {"loop", "loop"}};
    for (const auto& [target, name] : links) {
        QCOMPARE(symlink(target, LocalPath(name).constData()), 0);
    }
}

void RegularFileTest::whatCanBeOpened_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isOpen");

    QTest::newRow("regular file") << Path("plain") << true;
    QTest::newRow("Chinese name") << Path("打印机") << true;
    QTest::newRow("empty file") << Path("empty") << true;
    QTest::newRow("link") << Path("link") << true;
    QTest::newRow("link to a link") << Path("link to a link") << true;
    QTest::newRow("absent") << Path("absent") << false;
    QTest::newRow("dangling link") << Path("dangling") << false;
    QTest::newRow("loop of links") << Path("loop") << false;
    QTest::newRow("directory") << Path("directory") << false;
    QTest::newRow("link to a directory") << Path("link to a directory") << false;
    QTest::newRow("FIFO without a writer") << Path("fifo") << false;
    QTest::newRow("link to a FIFO") << Path("link to a fifo") << false;
    QTest::newRow("socket") << Path("socket") << false;
    QTest::newRow("device") << "/dev/zero" << false;
    QTest::newRow("below a file") << Path("plain/x") << false;
    QTest::newRow("empty path") << QString() << false;
    QTest::newRow("name too long") << Path(QByteArray(300, 'x').constData()) << false;
}

void RegularFileTest::whatCanBeOpened()
{
    QFETCH(QString, path);
    const RegularFile file(path);
    QTEST(file.isOpen(), "isOpen");
}

void RegularFileTest::fifoWithAWriterIsNotTouched()
{
    const int writer = open(LocalPath("fifo").constData(), O_RDWR | O_CLOEXEC);
    QVERIFY(writer >= 0);
    QCOMPARE(write(writer, "bytes", 5), ssize_t(5));
    {
        const RegularFile file(Path("fifo"));
        QVERIFY(!file.isOpen());
    }
    char buffer[8] = {};
    QCOMPARE(read(writer, buffer, sizeof buffer), ssize_t(5));
    close(writer);
}

void RegularFileTest::zeroByteInThePath()
{
    const RegularFile file(Path("plain") + QChar(0) + QStringLiteral("more"));
    QVERIFY(!file.isOpen());
}

void RegularFileTest::noPermission()
{
    if (geteuid() == 0) {
        QSKIP("root ignores file permissions");
    }
    QCOMPARE(chmod(LocalPath("plain").constData(), 0200), 0);
    const RegularFile file(Path("plain"));
    QVERIFY(!file.isOpen());
    const RegularFile link(Path("link"));
    QVERIFY(!link.isOpen());
}

void RegularFileTest::size_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("size");

    QTest::newRow("empty") << "empty" << qint64(0);
    QTest::newRow("plain") << "plain" << qint64(7);
    QTest::newRow("of what a link leads to") << "link" << qint64(7);
}

void RegularFileTest::size()
{
    QFETCH(QString, name);
    const RegularFile file(Path(name.toUtf8().constData()));
    QTEST(file.size(), "size");
}

void RegularFileTest::readsUpToTheCapacity()
{
    QCOMPARE(Read(RegularFile(Path("plain")), 0), QByteArray());
    QCOMPARE(Read(RegularFile(Path("plain")), 3), QByteArray("con"));
    QCOMPARE(Read(RegularFile(Path("plain")), 7), QByteArray("content"));
    QCOMPARE(Read(RegularFile(Path("plain")), 2048), QByteArray("content"));
    QCOMPARE(Read(RegularFile(Path("empty")), 2048), QByteArray());
}

void RegularFileTest::readsOnFromWhereItStopped()
{
    const RegularFile file(Path("plain"));
    QCOMPARE(Read(file, 3), QByteArray("con"));
    QCOMPARE(Read(file, 3), QByteArray("ten"));
    QCOMPARE(Read(file, 3), QByteArray("t"));
    QCOMPARE(Read(file, 3), QByteArray());
}

void RegularFileTest::shrunkFileGivesWhatIsLeft()
{
    const RegularFile file(Path("plain"));
    QVERIFY(QFile::resize(Path("plain"), 2));
    QCOMPARE(Read(file, 7), QByteArray("co"));
    QCOMPARE(file.size(), qint64(7)); // the size at opening
}

void RegularFileTest::keepsWhatItOpened()
{
    const RegularFile file(Path("plain"));
    QVERIFY(QFile::remove(Path("plain")));
    WriteFile("plain", "another");
    QCOMPARE(Read(file, 100), QByteArray("content"));
}

void RegularFileTest::descriptorIsClosed_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"plain", "directory", "fifo", "absent"}) {
        QTest::newRow(name) << name;
    }
}

void RegularFileTest::descriptorIsClosed()
{
    QFETCH(QString, name);
    const int lowestFree = LowestFreeDescriptor();
    {
        const RegularFile file(Path(name.toUtf8().constData()));
    }
    QCOMPARE(LowestFreeDescriptor(), lowestFree);
}

void RegularFileTest::descriptorIsNotInherited()
{
    const int descriptor = LowestFreeDescriptor();
    const RegularFile file(Path("plain"));
    QVERIFY(fcntl(descriptor, F_GETFD) >= 0);
    QVERIFY((fcntl(descriptor, F_GETFD) & FD_CLOEXEC) != 0);
}

QTEST_GUILESS_MAIN(RegularFileTest)
#include "tst_regularfile.moc"
