// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "decoding/UtilPrinterStatus.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

#include <cstddef>
#include <vector>

/// One plain member of the decoder (all but the two vectors) and its bytes.
struct DecoderField
{
    const char* name;
    const unsigned char* bytes;
    std::size_t size;
};

/// The plain members in the order of their declaration. The pointers are valid as long as `status` is.
std::vector<DecoderField> DecoderFields(const UtilPrinterStatus& status);
/// Names of the plain members with at least one byte that is not zero.
QStringList FilledFields(const UtilPrinterStatus& status);
/// Splits a blank-separated list of names.
QStringList Names(const char* names);
/// FilledFields() without `names`, a blank-separated list.
QStringList FilledFieldsBut(const UtilPrinterStatus& status, const char* names);
/// All bytes of one raw or text member, including the terminating zero.
QByteArray RawField(const UtilPrinterStatus& status, const QString& name);
/// The decoded value with this name.
unsigned long Value(const UtilPrinterStatus& status, const QString& name);

/// The codes as a list that QCOMPARE can print.
QList<unsigned long> Codes(const std::vector<unsigned long>& codes);

/// Converts hexadecimal digits to bytes and ignores blanks.
QByteArray Hex(const char* digits);

/// A reply of the QZ family: bytes that are not read, the announced number of items, and the items.
QByteArray QZReplyOf(int count, const QByteArray& items);

// Parse the reply from a heap block of exactly its size, so that an address sanitizer detects any read beyond it.
unsigned int ParseStandard(UtilPrinterStatus& status, const QByteArray& reply);
unsigned int ParseQZ(UtilPrinterStatus& status, const QByteArray& reply);
// Parse the reply as if it ended after `length` bytes. The bytes that follow in memory reveal reads beyond that.
unsigned int ParseStandardCut(UtilPrinterStatus& status, QByteArray reply, int length);
unsigned int ParseQZCut(UtilPrinterStatus& status, QByteArray reply, int length);
