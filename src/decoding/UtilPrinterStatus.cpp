// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/UtilPrinterStatus.h"

#include "decoding/QZStatusReply.h"

#include <algorithm>
#include <cstring>

namespace {

// Does not write the field's last byte, so that a text keeps its terminating zero.
template <typename Byte, std::size_t Capacity>
void CopyCut(Byte (&field)[Capacity], const unsigned char* data, unsigned long n)
{
    std::memcpy(field, data, std::min<unsigned long>(n, Capacity - 1));
}

// Reads a standard reply from front to back, never outside it. Each read returns whether its bytes were there.
class ReplyReader
{
public:
    ReplyReader(const unsigned char* buffer, unsigned long length)
        : m_next(buffer)
        , m_left(length)
    {
    }

    // Returns the next n bytes, or null if fewer are left.
    const unsigned char* take(unsigned long n)
    {
        if (n > m_left) {
            return nullptr;
        }
        const unsigned char* data = m_next;
        m_next += n;
        m_left -= n;
        return data;
    }

    // A raw field is one byte longer than its content.
    template <std::size_t Capacity> bool read(unsigned char (&field)[Capacity])
    {
        const unsigned char* data = take(Capacity - 1);
        if (data == nullptr) {
            return false;
        }
        std::memcpy(field, data, Capacity - 1);
        return true;
    }

    template <std::size_t Capacity> bool readInteger(unsigned char (&field)[Capacity], unsigned long& value)
    {
        if (!read(field)) {
            return false;
        }
        value = UtilPrinterStatus::byteToDWORD(field, Capacity - 1);
        return true;
    }

    template <std::size_t LengthCapacity, std::size_t TextCapacity>
    bool readText(unsigned char (&lengthField)[LengthCapacity], unsigned long& length, char (&text)[TextCapacity])
    {
        if (!readInteger(lengthField, length)) {
            return false;
        }
        const unsigned char* data = take(length);
        if (data == nullptr) {
            return false;
        }
        // Copies byte by byte: memcpy becomes a string instruction on x86-64, which is slower for short names.
        std::copy_n(data, std::min<unsigned long>(length, TextCapacity - 1), text);
        return true;
    }

    bool readCodes(unsigned char (&countField)[2], unsigned long& count, unsigned char (&code)[3],
                   std::vector<unsigned long>& codes)
    {
        if (!readInteger(countField, count)) {
            return false;
        }
        codes.reserve(codes.size() + count);
        for (unsigned long i = 0; i < count; ++i) {
            unsigned long value = 0;
            if (!readInteger(code, value)) {
                return false;
            }
            codes.push_back(value);
        }
        return true;
    }

    // A record without data has the value of the first data byte of the last record with data, or 0 if there is none.
    bool readSupplies(unsigned long count, UtilPrinterStatus& status)
    {
        const unsigned char none = 0;
        const unsigned char* lastData = &none;
        for (unsigned long i = 0; i < count; ++i) {
            const unsigned char* header = take(SupplyHeaderBytes);
            if (header == nullptr) {
                return false;
            }
            const unsigned long dataLength = header[2];
            const unsigned char* data = take(dataLength);
            if (data == nullptr) {
                return false;
            }
            if (dataLength > 0) {
                lastData = data;
            }
            status.setSuppliesData(UtilPrinterStatus::byteToDWORD(header, 2), lastData, dataLength);
        }
        return true;
    }

private:
    const unsigned char* m_next;
    unsigned long m_left;
};

} // namespace

unsigned int UtilPrinterStatus::parseRecvBuf(unsigned char* buffer, unsigned long length)
{
    ReplyReader reply(buffer, length);
    unsigned long firmwareVersionLength = 0;
    // One line for each field, in the order of the reply.
    // clang-format off
    const bool complete =
        reply.take(StandardUnreadBytes) != nullptr &&
        reply.read(byHead7) &&
        reply.read(byHead8) &&
        reply.read(byHead10) &&
        reply.readText(byVenderNameLen, dwVenderNameLen, szVenderName) &&
        reply.readText(byProductNameLen, dwProductNameLen, szProductName) &&
        reply.readText(bySerialNumberLen, dwSerialNumberLen, szSerialNumber) &&
        reply.read(byReserved1) &&
        reply.readInteger(byStatus, dwStatus) &&
        reply.readText(byFWVersionLen, firmwareVersionLength, szFWVersion) &&
        reply.readText(byExtraInfoLen, dwExtraInfoLen, szExtraInfo) &&
        reply.readCodes(byErrorCount, dwErrorCount, byErrorCode, vecErrorCode) &&
        reply.readCodes(byWarningCount, dwWarningCount, byWarningCode, vecWarningCode) &&
        reply.read(byReserved2) &&
        reply.read(byReserved3) &&
        reply.read(byReserved4) &&
        reply.readInteger(bySupplyCount, dwSupplyCount) &&
        reply.readSupplies(dwSupplyCount, *this);
    // clang-format on
    return complete ? 1 : 0;
}

unsigned int UtilPrinterStatus::parseRecvBuf_QZ(unsigned char* buffer, unsigned long length)
{
    return DecodeQZReply(*this, buffer, length);
}

void UtilPrinterStatus::setSuppliesData(unsigned long type, const unsigned char* data, unsigned long n)
{
    const auto store = [data, n](auto& field, unsigned long& value) {
        CopyCut(field, data, n);
        value = byteToDWORD(data, n);
    };
    switch (type) {
    case SUPPLY_SERIAL_NUMBER:
        CopyCut(szSupplySerialNumber, data, n);
        break;
    case SUPPLY_TYPE:
        store(bySupplyType, dwSupplyType);
        break;
    case SUPPLY_REMAINING_TONER:
        store(byRemainingToner, dwRemainingToner);
        break;
    case SUPPLY_WASTE_TONER:
        store(byWasteToner, dwWasteToner);
        break;
    case SUPPLY_OPC_ROTATION:
        store(byOPCRotation, dwOPCRotation);
        break;
    case SUPPLY_NUMBER_OF_PAGES:
        store(byNumberOfPages, dwNumberOfPages);
        // A reply that counts only pages reports them as prints too. A prints record that follows replaces the number.
        [[fallthrough]];
    case SUPPLY_NUMBER_OF_PRINT:
        store(byNumberOfPrint, dwNumberOfPrint);
        break;
    case SUPPLY_PRINT_DOTS_COUNT:
        store(byPrintDotsCount, dwPrintDotsCount);
        break;
    case SUPPLY_PRINTER_NUM_OF_PAGES:
        store(byPrinterNumOfPages, dwPrinterNumOfPages);
        break;
    case SUPPLY_PRINTER_NUM_OF_PRINT:
        store(byPrinterNumOfPrint, dwPrinterNumOfPrint);
        break;
    default:
        break;
    }
}

unsigned char* UtilPrinterStatus::getPrinterStatusValue()
{
    return byStatus;
}
