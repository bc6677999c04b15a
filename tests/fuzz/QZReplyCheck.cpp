// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "QZReplyCheck.h"

#include "Requirement.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

// A list of codes and the content of the last code.
struct CodeItems
{
    std::vector<unsigned long> codes;
    std::array<unsigned char, 3> lastCode{}; // a shorter code keeps the rest of the one before
    unsigned long isSet = 0;
};

class Outcome
{
public:
    Outcome(const unsigned char* data, unsigned long size)
        : m_data(data)
        , m_size(size)
    {
        if (size < 40) {
            return;
        }
        unsigned long at = 37;
        for (int i = 0; i < data[36] && at + 3 <= size && accepted; ++i) {
            at = take(at);
        }
    }

    bool accepted = true;
    unsigned long status = 0;
    unsigned long toner = 0;
    CodeItems errors;
    CodeItems warnings;

private:
    // Reads the item at this offset. Returns the offset of the next one.
    unsigned long take(unsigned long at)
    {
        const unsigned long type = m_data[at] * 256UL + m_data[at + 1];
        const unsigned char* content = m_data + at + 3;
        const unsigned long n = m_data[at + 2];
        const unsigned long end = at + 3 + n;
        switch (type) {
        case 0x0006:
        case 0x0007:
            accepted = end <= m_size;
            if (!accepted || n != 1) {
                return at + 3;
            }
            takeState(type, *content);
            return end;
        case 0x0009:
        case 0x000C:
            accepted = end <= m_size;
            if (accepted) {
                takeCode(type == 0x0009 ? errors : warnings, content, n, m_size - (at + 3));
            }
            return end;
        case 0x001D:
            accepted = end <= m_size;
            if (accepted && at + 5 < m_size) {
                toner = m_data[at + 5];
            }
            return end;
        default:
            return at + 3;
        }
    }

    void takeState(unsigned long type, unsigned char state)
    {
        static constexpr std::array<unsigned char, 5> c_machineStatus{{0, 3, 4, 5, 12}};
        static constexpr std::array<unsigned char, 4> c_jobStatus{{0, 10, 8, 9}};
        if (type == 0x0006 && state >= 1 && state <= 4) {
            status = c_machineStatus[state];
        } else if (type == 0x0007 && state >= 1 && state <= 3) {
            status = c_jobStatus[state];
        }
    }

    // A code of two, three or four bytes counts as a whole. Otherwise its first byte counts, which may belong to the
    // next item.
    static void takeCode(CodeItems& items, const unsigned char* content, unsigned long n, unsigned long left)
    {
        std::copy_n(content, std::min<unsigned long>(n, 3), items.lastCode.begin());
        unsigned long code = left > 0 ? content[0] : 0;
        for (unsigned long i = 1; n <= 4 && i < n; ++i) {
            code = code * 256 + content[i];
        }
        items.codes.push_back(code);
        items.isSet = items.lastCode[0] != 0 || items.lastCode[1] != 0 ? 1 : 0;
    }

    const unsigned char* m_data;
    unsigned long m_size;
};

template <std::size_t Size> bool IsZero(const unsigned char (&field)[Size])
{
    return std::all_of(std::begin(field), std::end(field), [](unsigned char byte) { return byte == 0; });
}

bool AreTextsEmpty(const UtilPrinterStatus& status)
{
    static constexpr char c_zeros[256] = {};
    for (const auto* text : {&status.szVenderName, &status.szProductName, &status.szSerialNumber, &status.szFWVersion,
                             &status.szExtraInfo}) {
        if (std::memcmp(*text, c_zeros, sizeof *text) != 0) {
            return false;
        }
    }
    return std::memcmp(status.szSupplySerialNumber, c_zeros, sizeof status.szSupplySerialNumber) == 0;
}

bool AreHeadersZero(const UtilPrinterStatus& status)
{
    return IsZero(status.byHead7) && IsZero(status.byHead8) && IsZero(status.byHead10) &&
        IsZero(status.byVenderNameLen) && IsZero(status.byProductNameLen) && IsZero(status.bySerialNumberLen) &&
        IsZero(status.byReserved1) && IsZero(status.byExtraInfoLen) && IsZero(status.byErrorCount) &&
        IsZero(status.byWarningCount) && IsZero(status.byFWVersionLen) && IsZero(status.byReserved2) &&
        IsZero(status.byReserved3) && IsZero(status.byReserved4) && IsZero(status.bySupplyCount) &&
        status.dwVenderNameLen == 0 && status.dwProductNameLen == 0 && status.dwSerialNumberLen == 0 &&
        status.dwExtraInfoLen == 0 && status.dwSupplyCount == 0;
}

bool AreOtherSuppliesZero(const UtilPrinterStatus& status)
{
    return IsZero(status.bySupplyType) && IsZero(status.byWasteToner) && IsZero(status.byOPCRotation) &&
        IsZero(status.byNumberOfPages) && IsZero(status.byNumberOfPrint) && IsZero(status.byPrintDotsCount) &&
        IsZero(status.byPrinterNumOfPages) && IsZero(status.byPrinterNumOfPrint) && status.dwSupplyType == 0 &&
        status.dwWasteToner == 0 && status.dwOPCRotation == 0 && status.dwNumberOfPages == 0 &&
        status.dwNumberOfPrint == 0 && status.dwPrintDotsCount == 0 && status.dwPrinterNumOfPages == 0 &&
        status.dwPrinterNumOfPrint == 0;
}

} // namespace

void CheckQZDecoding(const unsigned char* data, unsigned long size, unsigned int result,
                     const UtilPrinterStatus& status)
{
    const Outcome expected(data, size);
    Require(result == (expected.accepted ? 1U : 0U), "a reply is rejected if and only if a known item ends beyond it");
    Require(status.dwStatus == expected.status && status.byStatus[0] == expected.status && status.byStatus[1] == 0,
            "the status is that of the last state item");
    Require(status.vecErrorCode == expected.errors.codes, "there is a code for each error item");
    Require(status.dwErrorCount == expected.errors.isSet, "the last error item says whether there are errors");
    Require(status.vecWarningCode == expected.warnings.codes, "there is a code for each warning item");
    Require(status.dwWarningCount == expected.warnings.isSet, "the last warning item says whether there are warnings");
    Require(std::equal(expected.errors.lastCode.begin(), expected.errors.lastCode.end(), status.byErrorCode) &&
                std::equal(expected.warnings.lastCode.begin(), expected.warnings.lastCode.end(), status.byWarningCode),
            "the last codes are kept as they came");
    Require(status.dwRemainingToner == expected.toner && status.byRemainingToner[0] == expected.toner,
            "the toner is that of the last toner item");
    Require(AreTextsEmpty(status) && AreHeadersZero(status) && AreOtherSuppliesZero(status),
            "what the family does not report stays zero");
}
