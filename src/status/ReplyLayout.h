// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "decoding/PrinterFamily.h"

#include <QByteArray>
#include <QVector>

#include <optional>

/// The fields of status replies, of both families. A supplies record or an item is one field with its header.
enum class ReplyField
{
    Unread,
    Head7,
    Head8,
    Head10,
    VendorNameLength,
    VendorName,
    ProductNameLength,
    ProductName,
    SerialNumberLength,
    SerialNumber,
    Reserved1,
    Status,
    FirmwareVersionLength,
    FirmwareVersion,
    ExtraInfoLength,
    ExtraInfo,
    ErrorCount,
    ErrorCode,
    WarningCount,
    WarningCode,
    Reserved2,
    Reserved3,
    Reserved4,
    SupplyCount,
    SupplySerialNumber,
    SupplyType,
    RemainingToner,
    WasteToner,
    DrumRotation,
    CartridgePages,
    CartridgePrints,
    PrintedDots,
    PrinterPages,
    PrinterPrints,
    UnknownSupply,
    ItemCount,
    MachineState,
    JobState,
    ErrorItem,
    WarningItem,
    TonerItem,
    UnknownItem,
    Ignored ///< bytes behind the last field
};
constexpr int ReplyFieldCount = static_cast<int>(ReplyField::Ignored) + 1;

/// Whether the field holds the serial number of printer or cartridge.
constexpr bool IsSerialNumber(ReplyField field)
{
    return field == ReplyField::SerialNumber || field == ReplyField::SupplySerialNumber;
}

/// A field's place in a reply.
struct PlacedField
{
    ReplyField field;
    int offset;
    int size; ///< 0 for an empty text
};

/// Where a reply ends too early: `field` at `offset` needs more bytes than are left.
struct ReplyFault
{
    ReplyField field;
    int offset;
    int needed;
    int left;
};

struct ReplyLayout
{
    QVector<PlacedField> fields; ///< without gaps, in the order of the reply
    std::optional<ReplyFault> fault; ///< present if and only if the decoder rejects the reply
};

/// Says where the fields of a reply lie. It interprets nothing: values and acceptance come from the family's decoder.
ReplyLayout LayOutReply(const PrinterFamily& family, const QByteArray& reply);
