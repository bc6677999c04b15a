// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusReplyEncoder.h"

/// Takes any bytes for a reply: what is too long is cut to what is left, what is missing is zero, and what no printer
/// sends becomes something that one does. The bytes of a correct reply give that reply, so the replies of the corpus
/// are good seeds.
StandardReply StandardReplyOf(const QByteArray& bytes);
QZReply QZReplyOf(const QByteArray& bytes);
