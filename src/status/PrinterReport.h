// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"
#include "status/ReplyLayout.h"

#include <QDateTime>

#include <memory>

/// A reply as the assistant's decoder and evaluation understand it.
struct DecodedReply
{
    const PrinterFamily* family = &StandardFamily();
    QByteArray bytes; ///< at most ReplyLimitBytes
    ReplyLayout layout;
    std::shared_ptr<const UtilPrinterStatus>
        fields; ///< null if nothing was read; filled up to the fault if there is one
    bool isAccepted = false;
    stPrinterState state; ///< off-line and empty if the reply was rejected

    /// Whether an accepted reply contains the field. A number whose field is missing is unknown, not 0.
    bool contains(ReplyField field) const;
    /// The part of the toner that is left, 0 to 1. Nothing if the reply does not contain it or is out of range.
    std::optional<double> tonerRatio() const;
    /// The toner in the family's own unit.
    std::optional<unsigned long> rawToner() const;
    std::optional<unsigned long> rawStatus() const;
    std::optional<unsigned long> supplyType() const;
    std::optional<unsigned long> cartridgePrints() const;
    /// The raw codes that belong to state.listError and state.listWarning, in the same order.
    std::vector<unsigned long> errorCodes() const;
    std::vector<unsigned long> warningCodes() const;
};

/// The assistant reads no more of a status file.
constexpr int ReplyLimitBytes = 2048;

DecodedReply DecodeReply(const PrinterFamily& family, const QByteArray& bytes);

/// "standard" or "qz".
const char* FamilyName(const PrinterFamily& family);

/// Why a printer is off-line, or Accepted if it is not.
enum class ReportResult
{
    Accepted,
    Missing,
    Unreadable,
    Rejected
};

/// "accepted", "missing", "unreadable" or "rejected".
const char* ResultName(ReportResult result);

/// One listed printer with the content of its status file.
struct PrinterReport
{
    stPrinterInfo info;
    ReportResult result = ReportResult::Missing;
    std::optional<QDateTime> modified; ///< timestamp of the status file, UTC; nothing if the file is missing
    DecodedReply reply; ///< without fields unless a file was read

    bool isOnline() const
    {
        return result == ReportResult::Accepted;
    }
    bool isNetwork() const
    {
        return info.iConnectType != CONNECT_TYPE_USB;
    }
};

/// "network" or "usb".
const char* ConnectionName(const PrinterReport& report);

/// The printers of one folder at one time.
struct PrinterReports
{
    bool isListReadable = false;
    QList<PrinterReport> printers; ///< in the order of the list
};

/// Removes the serial numbers of printer and cartridge from everything that a report shows, also from its URI.
void HideSerialNumbers(PrinterReport& report);
void HideSerialNumbers(DecodedReply& reply);
