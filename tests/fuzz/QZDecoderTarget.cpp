// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FuzzTarget.h"
#include "QZReplyCheck.h"

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    UtilPrinterStatus status;
    const unsigned int result = status.parseRecvBuf_QZ(const_cast<unsigned char*>(data), size);
    CheckQZDecoding(data, size, result, status);
    return 0;
}
