// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/Commands.h"
#include "status/Metrics.h"

#include <QSaveFile>

namespace {

// Replaces the file as a whole. The exporter is another user and must be able to read it. commit() does not notice a
// failed write of what is still buffered.
bool Save(const QString& name, const QByteArray& text)
{
    QSaveFile file(name);
    const bool isSaved = file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush() &&
        file.setPermissions(QSaveFile::ReadOwner | QSaveFile::WriteOwner | QSaveFile::ReadGroup |
                            QSaveFile::ReadOther) &&
        file.commit();
    if (!isSaved) {
        Complain(Filled(QStringLiteral("cannot write %1: %2"), {name, file.errorString()}));
    }
    return isSaved;
}

} // namespace

int RunMetrics(const CommandLine& line)
{
    int exitCode = ExitDone;
    const QByteArray text = FormatMetrics(ReadReports(line, exitCode));
    const QString output = line.options.value(QStringLiteral("output"));
    const bool isWritten = output.isEmpty() ? Print(text) : Save(output, text);
    return isWritten ? exitCode : ExitNotRead;
}
