// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SeedCorpus.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

// Writes the encoders' seeds into the given corpus folder. Leaves other files alone.
int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::fputs("write-seeds: expects the corpus folder\n", stderr);
        return 1;
    }
    const QDir corpus(QFile::decodeName(argv[1]));
    const QMap<QString, QByteArray> seeds = SeedCorpus();
    for (auto seed = seeds.begin(); seed != seeds.end(); ++seed) {
        QFile file(corpus.filePath(seed.key()));
        if (!corpus.mkpath(QFileInfo(seed.key()).path()) || !file.open(QIODevice::WriteOnly) ||
            file.write(seed.value()) != seed.value().size()) {
            std::fprintf(stderr, "write-seeds: cannot write %s\n", qPrintable(file.fileName()));
            return 1;
        }
    }
    return 0;
}
