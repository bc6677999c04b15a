// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "WalkedReply.h"

#include <algorithm>
#include <cstring>

namespace {

inline unsigned long BigEndian(const unsigned char* p, unsigned long n)
{
    switch (n) {
    case 2:
        return static_cast<unsigned long>(p[0]) << 8 | p[1];
    case 3:
        return static_cast<unsigned long>(p[0]) << 16 | static_cast<unsigned long>(p[1]) << 8 | p[2];
    case 4:
        return static_cast<unsigned long>(p[0]) << 24 | static_cast<unsigned long>(p[1]) << 16 |
            static_cast<unsigned long>(p[2]) << 8 | p[3];
    default:
        return p[0];
    }
}

template <unsigned long Bytes> bool TakeWhole(const unsigned char*& p, const unsigned char* end, unsigned char* field)
{
    if (end - p < static_cast<long>(Bytes)) {
        return false;
    }
    std::memcpy(field, p, Bytes);
    p += Bytes;
    return true;
}

template <unsigned long LengthBytes>
bool TakeText(WalkedReply& reply, int i, const unsigned char*& p, const unsigned char* end)
{
    if (!TakeWhole<LengthBytes>(p, end, reply.rawLength[i])) {
        return false;
    }
    reply.length[i] = BigEndian(reply.rawLength[i], LengthBytes);
    if (reply.length[i] > static_cast<unsigned long>(end - p)) {
        return false;
    }
    std::copy_n(p, std::min(reply.length[i], sizeof reply.text[i] - 1), reply.text[i]);
    p += reply.length[i];
    return true;
}

template <typename Codes>
bool TakeCodes(WalkedReply& reply, int kind, Codes& codes, const unsigned char*& p, const unsigned char* end)
{
    if (!TakeWhole<1>(p, end, reply.rawCodeCount[kind])) {
        return false;
    }
    const unsigned long count = reply.rawCodeCount[kind][0];
    reply.codeCount[kind] = count;
    codes.reserve(count);
    for (unsigned long i = 0; i < count; ++i) {
        if (!TakeWhole<2>(p, end, reply.rawCode[kind])) {
            return false;
        }
        codes.push_back(BigEndian(reply.rawCode[kind], 2));
    }
    return true;
}

template <unsigned long Width>
void StoreSupply(WalkedReply& reply, unsigned long i, const unsigned char* data, unsigned long n)
{
    std::memcpy(reply.rawSupply[i], data, std::min(n, Width));
    reply.supply[i] = BigEndian(data, n);
}

void StoreSuppliesRecord(WalkedReply& reply, unsigned long type, const unsigned char* data, unsigned long n)
{
    switch (type) {
    case 0x0000:
        std::memcpy(reply.supplySerialNumber, data, std::min(n, sizeof reply.supplySerialNumber - 1));
        break;
    case 0x0001:
        StoreSupply<4>(reply, 0, data, n);
        break;
    case 0x1000:
    case 0x1001:
    case 0x1002:
        StoreSupply<2>(reply, type - 0x1000 + 1, data, n);
        break;
    case 0x1003:
        StoreSupply<4>(reply, 4, data, n);
        StoreSupply<4>(reply, 5, data, n);
        break;
    case 0x1004:
        StoreSupply<4>(reply, 5, data, n);
        break;
    case 0x1100:
        StoreSupply<2>(reply, 6, data, n);
        break;
    case 0x1101:
    case 0x1102:
        StoreSupply<4>(reply, type - 0x1101 + 7, data, n);
        break;
    default:
        break;
    }
}

bool TakeSupplies(WalkedReply& reply, const unsigned char*& p, const unsigned char* end)
{
    if (!TakeWhole<1>(p, end, reply.rawSupplyCount)) {
        return false;
    }
    reply.supplyCount = reply.rawSupplyCount[0];
    const unsigned char none = 0;
    const unsigned char* data = &none; // a record without data takes the first byte of the previous data
    for (unsigned long i = 0; i < reply.supplyCount; ++i) {
        if (end - p < 3 || end - p - 3 < p[2]) {
            return false;
        }
        if (p[2] > 0) {
            data = p + 3;
        }
        StoreSuppliesRecord(reply, BigEndian(p, 2), data, p[2]);
        p += 3 + p[2];
    }
    return true;
}

template <typename Target> bool WalkStandard(Target& walk, const unsigned char* p, const unsigned char* end)
{
    WalkedReply& reply = walk.reply;
    if (end - p < 14) {
        return false;
    }
    std::memcpy(reply.head[0], p + 7, 1);
    std::memcpy(reply.head[1], p + 8, 2);
    std::memcpy(reply.head[2], p + 10, 2);
    p += 12;
    if (!TakeText<2>(reply, 0, p, end) || !TakeText<2>(reply, 1, p, end) || !TakeText<2>(reply, 2, p, end) ||
        !TakeWhole<2>(p, end, reply.reserved[0]) || !TakeWhole<1>(p, end, reply.rawStatus)) {
        return false;
    }
    reply.status = reply.rawStatus[0];
    return TakeText<1>(reply, 3, p, end) && TakeText<1>(reply, 4, p, end) &&
        TakeCodes(reply, 0, walk.codes[0], p, end) && TakeCodes(reply, 1, walk.codes[1], p, end) &&
        TakeWhole<1>(p, end, reply.reserved[1]) && TakeWhole<2>(p, end, reply.reserved[2]) &&
        TakeWhole<2>(p, end, reply.reserved[3]) && TakeSupplies(reply, p, end);
}

template <typename Codes>
void StoreQZCode(WalkedReply& reply, int kind, Codes& codes, const unsigned char* p, unsigned long n,
                 const unsigned char* end)
{
    std::memcpy(reply.rawCode[kind], p, std::min(n, sizeof reply.rawCode[kind]));
    codes.push_back(p < end ? BigEndian(p, n) : 0);
    reply.codeCount[kind] = reply.rawCode[kind][0] != 0 || reply.rawCode[kind][1] != 0 ? 1 : 0;
}

void StoreQZState(WalkedReply& reply, bool isJob, unsigned char value)
{
    constexpr unsigned char codes[2][4] = {{3, 4, 5, 12}, {10, 8, 9, 0}};
    const auto i = static_cast<unsigned char>(value - 1);
    if (i < (isJob ? 3 : 4)) {
        reply.rawStatus[0] = codes[isJob ? 1 : 0][i];
        reply.status = reply.rawStatus[0];
    }
}

// For an unknown item, and for a state that is not one byte long, only the header is skipped and not the data.
template <typename Target> bool WalkQZ(Target& walk, const unsigned char* p, const unsigned char* end)
{
    if (end - p < 40) {
        return true;
    }
    unsigned long left = p[36];
    for (p += 37; left > 0 && end - p >= 3; --left) {
        const unsigned long type = BigEndian(p, 2);
        const unsigned long n = p[2];
        p += 3;
        if (type != 6 && type != 7 && type != 9 && type != 12 && type != 29) {
            continue;
        }
        if (n > static_cast<unsigned long>(end - p)) {
            return false;
        }
        if (type == 9 || type == 12) {
            const int kind = type == 9 ? 0 : 1;
            StoreQZCode(walk.reply, kind, walk.codes[kind], p, n, end);
        } else if (type == 29) {
            if (end - p >= 3) {
                StoreSupply<2>(walk.reply, 1, p + 2, 1);
            }
        } else if (n == 1) {
            StoreQZState(walk.reply, type == 7, *p);
        } else {
            continue;
        }
        p += n;
    }
    return true;
}

} // namespace

bool WalkStandardReply(Walk& walk, const unsigned char* buffer, unsigned long length)
{
    walk.codes[0].count = 0;
    walk.codes[1].count = 0;
    return WalkStandard(walk, buffer, buffer + length);
}

bool WalkStandardReply(WalkZeroVectors& walk, const unsigned char* buffer, unsigned long length)
{
    return WalkStandard(walk, buffer, buffer + length);
}

bool WalkQZReply(Walk& walk, const unsigned char* buffer, unsigned long length)
{
    walk.codes[0].count = 0;
    walk.codes[1].count = 0;
    return WalkQZ(walk, buffer, buffer + length);
}

bool WalkQZReply(WalkZeroVectors& walk, const unsigned char* buffer, unsigned long length)
{
    return WalkQZ(walk, buffer, buffer + length);
}
