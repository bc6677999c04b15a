// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"
#include "StatusReplyEncoder.h"

/// Status bytes of the standard family.
enum RawStatus : quint8
{
    RawReady = 0,
    RawInitialize = 1,
    RawBusy = 2,
    RawCancelling = 3,
    RawPrinting = 16,
};

/// Error and warning codes of both families.
enum RawCode : quint16
{
    FrontCoverOpen = 0x1106,
    TonerLow = 0x110D,
    NoCartridge = 0x1110,
};

/// A reply of the standard family with a different value in every field, and the state that it stands for.
StandardReply FullReply();
stPrinterState FullReplyState();

/// A short reply of the standard family.
QByteArray StandardBytes(quint8 status, quint32 toner = 8000, const QVector<quint16>& errors = {},
                         const QVector<quint16>& warnings = {});
/// A reply of the standard family of exactly this many bytes. The last byte belongs to a supplies record.
QByteArray StandardBytesOfSize(int bytes);
/// A reply of the QZ family with these items.
QByteArray QZItems(const QVector<ReplyRecord>& items);
/// A reply of the QZ family with the status ready and this toner level.
QByteArray QZBytes(quint8 tonerPercent = 80);
/// A reply that ends inside a field, so that the standard family's decoder rejects it.
QByteArray RejectedBytes();
