// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "PathFaults.h"

#include "PrinterFolder.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr off_t HugeFileBytes = 10485760;
constexpr int GarbageBytes = 300;

void Require(int result, const char* action, const QString& path)
{
    if (result != 0) {
        qFatal("cannot %s %s: %s", action, qPrintable(path), std::strerror(errno));
    }
}

void Link(const char* target, const QString& path)
{
    Require(symlink(target, QFile::encodeName(path).constData()), "link", path);
}

} // namespace

const QVector<PathFault>& PathFaults()
{
    static const QVector<PathFault> s_faults{
        {"missing",
         [](const QString&, Chance&) {
         }},
        {"empty",
         [](const QString& path, Chance&) {
             PrinterFolder::WriteFile(path, QByteArray());
         }},
        {"one byte",
         [](const QString& path, Chance& chance) {
             PrinterFolder::WriteFile(path, chance.bytes(1));
         }},
        {"garbage",
         [](const QString& path, Chance& chance) {
             PrinterFolder::WriteFile(path, chance.bytes(GarbageBytes));
         }},
        {"huge",
         [](const QString& path, Chance& chance) {
             PrinterFolder::WriteFile(path, chance.bytes(GarbageBytes));
             Require(truncate(QFile::encodeName(path).constData(), HugeFileBytes), "stretch", path);
         }},
        {"no permission",
         [](const QString& path, Chance& chance) {
             PrinterFolder::WriteFile(path, chance.bytes(GarbageBytes));
             Require(chmod(QFile::encodeName(path).constData(), 0), "lock", path);
         }},
        {"directory",
         [](const QString& path, Chance&) {
             Require(mkdir(QFile::encodeName(path).constData(), S_IRWXU), "make the folder", path);
         }},
        {"FIFO",
         [](const QString& path, Chance&) {
             Require(mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR), "make the FIFO", path);
         }},
        {"dangling link",
         [](const QString& path, Chance&) {
             Link("/opt/nowhere", path);
         }},
        {"link to itself",
         [](const QString& path, Chance&) {
             Link(QFile::encodeName(path).constData(), path);
         }},
        {"link to an endless device",
         [](const QString& path, Chance&) {
             Link("/dev/zero", path);
         }},
    };
    return s_faults;
}

void FreePath(const QString& path)
{
    if (remove(QFile::encodeName(path).constData()) != 0 && errno != ENOENT) {
        qFatal("cannot remove %s: %s", qPrintable(path), std::strerror(errno));
    }
}
