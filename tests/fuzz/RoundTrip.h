// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusReplyEncoder.h"

/// Encodes a correct reply, decodes the bytes and ends the process with a message unless the fields are the same.
void CheckRoundTrip(const StandardReply& reply);
void CheckRoundTrip(const QZReply& reply);
