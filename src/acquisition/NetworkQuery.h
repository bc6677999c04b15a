// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Sends one status request to the printer at the IPv4 `address` and waits up to one second for the answer. Returns 0
/// and stores an answer of `length` bytes in `buffer`, with zeros in the rest. Returns -1 for an empty address, -2
/// without a socket, -3 when sending failed, -4 when the time-out could not be set, and -5 without an answer of more
/// than 7 bytes.
int QueryPrinter(const QString& address, unsigned char* buffer, unsigned long capacity, unsigned long& length);
