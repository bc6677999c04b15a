// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// A reply of the standard family with a value in every field.
QByteArray StandardSample();
/// A reply of the QZ family with an item of every decoded kind.
QByteArray QZSample();

/// Whether the decoders' floors find the same values in both samples as the decoders. A floor must not do less work.
bool FloorsDecodeTheSamples();
