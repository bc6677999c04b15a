// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "StandardReplyCheck.h"

#include "Requirement.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

namespace {

constexpr unsigned long TextCapacity = 255;
constexpr unsigned long SupplyTextCapacity = 64;

unsigned long BigEndian(const unsigned char* bytes, unsigned long n)
{
    unsigned long value = 0;
    for (unsigned long i = 0; i < n; ++i) {
        value = value * 256 + bytes[i];
    }
    return value;
}

// Offsets of the fields. A field with a length or count begins with it.
struct Places
{
    unsigned long vendorName = 0;
    unsigned long productName = 0;
    unsigned long serialNumber = 0;
    unsigned long status = 0;
    unsigned long firmwareVersion = 0;
    unsigned long extraInfo = 0;
    unsigned long errors = 0;
    unsigned long warnings = 0;
    unsigned long supplies = 0;
};

class Surveyor
{
public:
    Surveyor(const unsigned char* data, unsigned long size)
        : m_data(data)
        , m_size(size)
    {
    }

    std::optional<Places> survey()
    {
        Places places;
        m_offset = 12;
        places.vendorName = pass(2, 1);
        places.productName = pass(2, 1);
        places.serialNumber = pass(2, 1);
        m_offset += 2;
        places.status = m_offset;
        m_offset += 1;
        places.firmwareVersion = pass(1, 1);
        places.extraInfo = pass(1, 1);
        places.errors = pass(1, 2);
        places.warnings = pass(1, 2);
        m_offset += 5;
        places.supplies = pass(1, 0);
        const unsigned long records = m_offset <= m_size ? m_data[places.supplies] : 0;
        for (unsigned long i = 0; i < records; ++i) {
            m_offset += 2;
            pass(1, 1);
        }
        return m_offset <= m_size ? std::optional<Places>(places) : std::nullopt;
    }

private:
    // An offset beyond the end stays there.
    unsigned long pass(unsigned long lengthBytes, unsigned long unitBytes)
    {
        const unsigned long start = m_offset;
        m_offset += lengthBytes;
        if (m_offset <= m_size) {
            m_offset += BigEndian(m_data + start, lengthBytes) * unitBytes;
        }
        return start;
    }

    const unsigned char* m_data;
    unsigned long m_size;
    unsigned long m_offset = 0;
};

void CheckText(const char (&text)[TextCapacity + 1], const unsigned char* field, unsigned long lengthBytes)
{
    static constexpr char c_zeros[TextCapacity + 1] = {};
    const unsigned long n = std::min(BigEndian(field, lengthBytes), TextCapacity);
    Require(std::memcmp(text, field + lengthBytes, n) == 0, "a text is that of the reply");
    Require(std::memcmp(text + n, c_zeros, sizeof text - n) == 0, "zeros fill the rest of a text's member");
}

void CheckCodes(const std::vector<unsigned long>& codes, unsigned long count, const unsigned char* field)
{
    Require(count == field[0], "the number of codes is that of the reply");
    Require(codes.size() == count, "there are as many codes as counted");
    for (unsigned long i = 0; i < count; ++i) {
        Require(codes[i] == BigEndian(field + 1 + 2 * i, 2), "a code is that of the reply");
    }
}

// The values that the records leave behind. Data stay in a common buffer, which supplies the value of a record without
// data.
class SupplyValues
{
public:
    explicit SupplyValues(const unsigned char* supplies)
    {
        const unsigned char* record = supplies + 1;
        for (unsigned int i = 0; i < supplies[0]; ++i) {
            take(BigEndian(record, 2), record + 3, record[2]);
            record += 3 + record[2];
        }
    }

    unsigned long value(unsigned long type) const
    {
        return m_values[Slot(type)];
    }
    const std::array<unsigned char, SupplyTextCapacity + 1>& serialNumber() const
    {
        return m_serialNumber;
    }

private:
    static constexpr std::array<unsigned long, 9> c_types{
        {0x0001, 0x1000, 0x1001, 0x1002, 0x1003, 0x1004, 0x1100, 0x1101, 0x1102}};

    // The last slot is for all unknown types.
    static std::size_t Slot(unsigned long type)
    {
        return static_cast<std::size_t>(std::find(c_types.begin(), c_types.end(), type) - c_types.begin());
    }

    void take(unsigned long type, const unsigned char* data, unsigned long n)
    {
        const unsigned long stored = std::min(n, SupplyTextCapacity);
        std::copy_n(data, stored, m_buffer.begin());
        if (type == 0) {
            std::copy_n(data, stored, m_serialNumber.begin());
            return;
        }
        const unsigned long value = BigEndian(m_buffer.data(), n >= 2 && n <= 4 ? n : 1);
        m_values[Slot(type)] = value;
        if (type == 0x1003) {
            m_values[Slot(0x1004)] = value;
        }
    }

    std::array<unsigned char, SupplyTextCapacity + 1> m_buffer{};
    std::array<unsigned char, SupplyTextCapacity + 1> m_serialNumber{};
    std::array<unsigned long, c_types.size() + 1> m_values{};
};

void CheckSupplies(const UtilPrinterStatus& status, const unsigned char* supplies)
{
    const SupplyValues expected(supplies);
    Require(status.dwSupplyCount == supplies[0], "the number of supplies records is that of the reply");
    Require(std::equal(expected.serialNumber().begin(), expected.serialNumber().end(), status.szSupplySerialNumber,
                       [](unsigned char a, char b) { return a == static_cast<unsigned char>(b); }),
            "the supply's serial number is that of the reply");
    Require(status.dwSupplyType == expected.value(0x0001) && status.dwRemainingToner == expected.value(0x1000) &&
                status.dwWasteToner == expected.value(0x1001) && status.dwOPCRotation == expected.value(0x1002) &&
                status.dwNumberOfPages == expected.value(0x1003) && status.dwNumberOfPrint == expected.value(0x1004) &&
                status.dwPrintDotsCount == expected.value(0x1100) &&
                status.dwPrinterNumOfPages == expected.value(0x1101) &&
                status.dwPrinterNumOfPrint == expected.value(0x1102),
            "the supplies values are those of the reply");
}

// Holds for rejected replies, too.
void CheckBounds(const UtilPrinterStatus& status)
{
    for (const auto* text : {&status.szVenderName, &status.szProductName, &status.szSerialNumber, &status.szFWVersion,
                             &status.szExtraInfo}) {
        Require((*text)[TextCapacity] == 0, "a text ends inside its member");
    }
    Require(status.szSupplySerialNumber[SupplyTextCapacity] == 0, "the supply's serial number ends inside its member");
    Require(status.vecErrorCode.size() <= status.dwErrorCount && status.dwErrorCount <= 255,
            "there are no more errors than counted");
    Require(status.vecWarningCode.size() <= status.dwWarningCount && status.dwWarningCount <= 255,
            "there are no more warnings than counted");
}

} // namespace

void CheckStandardDecoding(const unsigned char* data, unsigned long size, unsigned int result,
                           const UtilPrinterStatus& status)
{
    CheckBounds(status);
    const std::optional<Places> places = Surveyor(data, size).survey();
    Require(result == (places ? 1U : 0U), "a reply is accepted if and only if it contains all its fields");
    if (!places) {
        return;
    }
    CheckText(status.szVenderName, data + places->vendorName, 2);
    CheckText(status.szProductName, data + places->productName, 2);
    CheckText(status.szSerialNumber, data + places->serialNumber, 2);
    Require(status.dwStatus == data[places->status], "the status is that of the reply");
    CheckText(status.szFWVersion, data + places->firmwareVersion, 1);
    CheckText(status.szExtraInfo, data + places->extraInfo, 1);
    CheckCodes(status.vecErrorCode, status.dwErrorCount, data + places->errors);
    CheckCodes(status.vecWarningCode, status.dwWarningCount, data + places->warnings);
    CheckSupplies(status, data + places->supplies);
}
