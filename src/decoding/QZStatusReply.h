// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

class UtilPrinterStatus;

/// Decodes a reply of the QZ family into `reply`; see UtilPrinterStatus::parseRecvBuf_QZ().
unsigned int DecodeQZReply(UtilPrinterStatus& reply, const unsigned char* buffer, unsigned long length);
