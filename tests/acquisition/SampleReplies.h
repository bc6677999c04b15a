// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"
#include "StatusReplyEncoder.h"

/// Status bytes of the standard family, as printers send them.
enum RawStatus : quint8
{
    RawReady = 0,
    RawInitialize = 1,
    RawBusy = 2,
    RawCancelingJob = 3,
    RawPrinting = 16,
};

/// A reply of the standard family with a value of its own in every field, and the state that it stands for.
StandardReply FullReply();
stPrinterState FullReplyState();

/// A short reply of the standard family.
QByteArray StandardBytes(RawStatus status, quint32 toner = 8000, const QVector<quint16>& errors = {});
/// A reply of the standard family of exactly this many bytes, of which the last belongs to a supplies record.
QByteArray StandardBytesOfSize(int bytes);
/// A reply of the QZ family: ready, with this toner level.
QByteArray QZBytes(quint8 tonerPercent = 80);
/// What no decoder of the standard family takes for a reply: it ends inside a field.
QByteArray RejectedBytes();
