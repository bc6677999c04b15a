// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FuzzTarget.h"
#include "ReplyFields.h"
#include "RoundTrip.h"

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    CheckRoundTrip(
        StandardReplyOf(QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size))));
    return 0;
}
