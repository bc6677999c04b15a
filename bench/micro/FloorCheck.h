// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// A reply of the standard family with something in every field.
QByteArray StandardSample();
/// A reply of the QZ family with an item of every kind that is decoded.
QByteArray QZSample();

/// Whether the floors under the decoders find in both samples what the decoders find. A floor that does less would
/// be none.
bool FloorsDecodeTheSamples();
