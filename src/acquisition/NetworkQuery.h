// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Asks the printer at the IPv4 `address` for its status with one datagram and waits for the answer for up to a second.
/// Returns 0 with an answer of `length` bytes in `buffer`, whose rest is filled with zeros; -1 for an empty address, -2
/// without a socket, -3 when sending failed, -4 when the time-out could not be set, -5 without an answer of more than 7
/// bytes.
int QueryPrinter(const QString& address, unsigned char* buffer, unsigned long capacity, unsigned long& length);
