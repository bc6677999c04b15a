// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilPrinterStatus.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <cstddef>
#include <vector>

/// One plain member of the decoder (all but the two vectors), as it lies in memory.
struct DecoderField
{
    const char* name;
    const unsigned char* bytes;
    std::size_t size;
};

/// The plain members in the order of their declaration; the pointers are good as long as `status` is.
std::vector<DecoderField> DecoderFields(const UtilPrinterStatus& status);
/// Names of the plain members that hold any byte but zero.
QStringList FilledFields(const UtilPrinterStatus& status);
/// Names that are separated by blanks.
QStringList Names(const char* names);
/// The same without those of `names`, which are separated by blanks.
QStringList FilledFieldsBut(const UtilPrinterStatus& status, const char* names);
/// All bytes of one raw or text member, the terminating zero included.
QByteArray RawField(const UtilPrinterStatus& status, const QString& name);
/// One decoded value.
unsigned long Value(const UtilPrinterStatus& status, const QString& name);

/// A list that QCOMPARE can print.
QList<unsigned long> Codes(const std::vector<unsigned long>& codes);

/// Bytes from hexadecimal digits; blanks are for the reader.
QByteArray Hex(const char* digits);

// The reply is parsed from a heap block of exactly its size, so that an address sanitizer sees any read beyond it.
unsigned int ParseStandard(UtilPrinterStatus& status, const QByteArray& reply);
unsigned int ParseQZ(UtilPrinterStatus& status, const QByteArray& reply);
// As if the reply ended after `length` bytes. Those that follow in memory show when the decoder takes any of them.
unsigned int ParseStandardCut(UtilPrinterStatus& status, QByteArray reply, int length);
unsigned int ParseQZCut(UtilPrinterStatus& status, QByteArray reply, int length);
