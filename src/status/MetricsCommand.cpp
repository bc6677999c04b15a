// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/Commands.h"
#include "status/Metrics.h"

namespace {

// The exporter is another user.
constexpr QFileDevice::Permissions ReadableByAll =
    QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;

} // namespace

int RunMetrics(const CommandLine& line)
{
    int exitCode = ExitDone;
    const QByteArray text = FormatMetrics(ReadReports(line, exitCode));
    const QString output = line.options.value(QStringLiteral("output"));
    const bool isWritten = output.isEmpty() ? Print(text) : SaveFile(output, text, ReadableByAll);
    return isWritten ? exitCode : ExitNotRead;
}
