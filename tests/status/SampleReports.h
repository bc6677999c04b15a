// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "SampleReplies.h"
#include "status/PrinterReport.h"

/// A printer of the standard family whose status file has these bytes.
inline PrinterReport Report(const QString& name, const QByteArray& bytes = StandardBytes(RawReady))
{
    PrinterReport report;
    report.info.strPrinterName = name;
    report.reply = DecodeReply(StandardFamily(), bytes);
    report.result = report.reply.isAccepted ? ReportResult::Accepted : ReportResult::Rejected;
    return report;
}
