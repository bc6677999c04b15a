// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusReplyEncoder.h"

/// Reads any bytes as a reply: excessive lengths are cut to the remaining bytes, missing bytes are zero, and impossible
/// values become possible ones. The bytes of a correct reply give that reply, so the corpus replies are good seeds.
StandardReply StandardReplyOf(const QByteArray& bytes);
QZReply QZReplyOf(const QByteArray& bytes);
