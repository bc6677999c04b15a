// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FuzzTarget.h"
#include "StandardReplyCheck.h"

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    UtilPrinterStatus status;
    const unsigned int result = status.parseRecvBuf(const_cast<unsigned char*>(data), size);
    CheckStandardDecoding(data, size, result, status);
    return 0;
}
