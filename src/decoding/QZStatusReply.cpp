// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/QZStatusReply.h"

#include "decoding/UtilPrinterStatus.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

// Raw status codes; the index is the state minus 1. Code 12, the fourth machine state, maps to no status.
constexpr std::array<unsigned char, 4> c_machineState{{3, 4, 5, 12}};
constexpr std::array<unsigned char, 3> c_jobState{{10, 8, 9}};

// An item without data has the value of the byte where its data would begin, or 0 when the reply ends there.
unsigned long CodeValue(const unsigned char* buffer, unsigned long length, unsigned long dataStart, unsigned long n)
{
    return dataStart < length ? UtilPrinterStatus::byteToDWORD(buffer + dataStart, n) : 0;
}

void StoreStatus(UtilPrinterStatus& reply, unsigned long type, unsigned char value)
{
    const auto store = [&reply, value](const auto& codes) {
        const auto index = static_cast<unsigned char>(value - 1);
        if (index < codes.size()) {
            reply.byStatus[0] = codes[index];
            reply.dwStatus = codes[index];
        }
    };
    if (type == QZ_MACHINE_STATE) {
        store(c_machineState);
    } else {
        store(c_jobState);
    }
}

// Returns how many data bytes to skip. An item that is not stored skips none: its data are read as the next item's
// header.
unsigned long StoreItem(UtilPrinterStatus& reply, const unsigned char* buffer, unsigned long length,
                        unsigned long position)
{
    const unsigned long type = UtilPrinterStatus::byteToDWORD(buffer + position, 2);
    const unsigned long dataLength = buffer[position + 2];
    const unsigned long dataStart = position + QZLayout::ItemHeaderBytes;
    const auto storeCode = [&](auto& field, std::vector<unsigned long>& codes, unsigned long& isSet) {
        std::memcpy(field, buffer + dataStart, std::min<unsigned long>(dataLength, sizeof field));
        codes.push_back(CodeValue(buffer, length, dataStart, dataLength));
        isSet = field[0] != 0 || field[1] != 0 ? 1 : 0;
    };
    switch (type) {
    case QZ_MACHINE_STATE:
    case QZ_JOB_STATE:
        if (dataLength != 1) {
            return 0;
        }
        StoreStatus(reply, type, buffer[dataStart]);
        return dataLength;
    case QZ_ERROR:
        storeCode(reply.byErrorCode, reply.vecErrorCode, reply.dwErrorCount);
        return dataLength;
    case QZ_WARNING:
        storeCode(reply.byWarningCode, reply.vecWarningCode, reply.dwWarningCount);
        return dataLength;
    case QZ_TONER:
        // The level is the third data byte, whatever the item's length.
        if (position + QZLayout::TonerLevelItemOffset < length) {
            reply.setSuppliesData(SUPPLY_REMAINING_TONER, buffer + position + QZLayout::TonerLevelItemOffset, 1);
        }
        return dataLength;
    default:
        return 0;
    }
}

} // namespace

unsigned int DecodeQZReply(UtilPrinterStatus& reply, const unsigned char* buffer, unsigned long length)
{
    // A reply without items is valid but says nothing: the printer counts as answering, with an unknown status.
    if (length < QZLayout::MinimumReplyBytes) {
        return 1;
    }
    unsigned long position = QZLayout::FirstItemOffset;
    for (unsigned int itemsLeft = buffer[QZLayout::ItemCountOffset]; itemsLeft > 0; --itemsLeft) {
        if (position + QZLayout::ItemHeaderBytes > length) {
            return 1;
        }
        const unsigned long type = UtilPrinterStatus::byteToDWORD(buffer + position, 2);
        const unsigned long dataLength = buffer[position + 2];
        if (QZLayout::IsKnownItem(type) && position + QZLayout::ItemHeaderBytes + dataLength > length) {
            return 0;
        }
        position += QZLayout::ItemHeaderBytes + StoreItem(reply, buffer, length, position);
    }
    return 1;
}
