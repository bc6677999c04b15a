// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

class UtilPrinterStatus;

enum QZItemType : unsigned long
{
    QZ_MACHINE_STATE = 0x0006,
    QZ_JOB_STATE = 0x0007,
    QZ_ERROR = 0x0009,
    QZ_WARNING = 0x000C,
    QZ_TONER = 0x001D
};

/// Where the parts of a QZ reply lie (docs/formats.md).
namespace QZLayout {

constexpr unsigned long ItemCountOffset = 36;
constexpr unsigned long FirstItemOffset = 37;
constexpr unsigned long ItemHeaderBytes = 3;
constexpr unsigned long MinimumReplyBytes = FirstItemOffset + ItemHeaderBytes;
constexpr unsigned long TonerLevelItemOffset = 5;

constexpr bool IsKnownItem(unsigned long type)
{
    return type == QZ_MACHINE_STATE || type == QZ_JOB_STATE || type == QZ_ERROR || type == QZ_WARNING ||
        type == QZ_TONER;
}

} // namespace QZLayout

/// Decodes a reply of the QZ family into `reply`; see UtilPrinterStatus::parseRecvBuf_QZ().
unsigned int DecodeQZReply(UtilPrinterStatus& reply, const unsigned char* buffer, unsigned long length);
