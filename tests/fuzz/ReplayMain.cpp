// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FuzzTarget.h"
#include "Requirement.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

// Passes a block of exactly the file's size, so that an address sanitizer detects any read beyond it.
void Replay(const QString& path)
{
    std::puts(qPrintable(path));
    std::fflush(stdout);
    QFile file(path);
    Require(file.open(QIODevice::ReadOnly), "the file can be read");
    const QByteArray content = file.readAll();
    const std::vector<unsigned char> bytes(content.begin(), content.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    Require(std::equal(bytes.begin(), bytes.end(), content.begin(),
                       [](unsigned char a, char b) { return a == static_cast<unsigned char>(b); }),
            "the target leaves its input alone");
}

} // namespace

// Replaces the fuzzer: runs the target once on each file of the given folders. Prints each file name first, so the last
// one printed is the one that failed.
int main(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i) {
        const QDir directory(QFile::decodeName(argv[i]));
        const QStringList names = directory.entryList(QDir::Files, QDir::Name);
        Require(!names.isEmpty(), "the folder has files to replay");
        for (const QString& name : names) {
            Replay(directory.filePath(name));
        }
    }
    return 0;
}
