// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "decoding/StatusCodeMapping.h" // IWYU pragma: export (a decoded reply is of use only with its mappings)

#include <QtEndian>

#include <vector>

/// The bytes before the first field of a standard reply.
constexpr unsigned long StandardUnreadBytes = 7;
/// Type and length of a supplies record of a standard reply.
constexpr unsigned long SupplyHeaderBytes = 3;

enum SupplyRecordType : unsigned long
{
    SUPPLY_SERIAL_NUMBER = 0x0000,
    SUPPLY_TYPE = 0x0001,
    SUPPLY_REMAINING_TONER = 0x1000,
    SUPPLY_WASTE_TONER = 0x1001,
    SUPPLY_OPC_ROTATION = 0x1002,
    SUPPLY_NUMBER_OF_PAGES = 0x1003,
    SUPPLY_NUMBER_OF_PRINT = 0x1004,
    SUPPLY_PRINT_DOTS_COUNT = 0x1100,
    SUPPLY_PRINTER_NUM_OF_PAGES = 0x1101,
    SUPPLY_PRINTER_NUM_OF_PRINT = 0x1102
};

/// Decodes one raw status reply into plain fields. It checks bounds and interprets nothing.
///
/// Use one object for each reply: the constructor zeroes it and one parse fills it. Integers in replies are unsigned
/// and big-endian. A raw field `by…` holds the received bytes and one more zero byte. A text `sz…` is UTF-8 and always
/// ends in a zero byte. Data that are longer than their field are cut.
class UtilPrinterStatus
{
public:
    /// Decodes a reply of the standard family (docs/formats.md). Returns 1 when every field up to the last supplies
    /// record lies inside `length` bytes. Otherwise returns 0, with the fields filled up to the first that does not.
    unsigned int parseRecvBuf(unsigned char* buffer, unsigned long length);
    /// Decodes a reply of the QZ family: only status, error and warning codes and the remaining toner. Returns 0 when
    /// the data of a known item extend past the end, otherwise 1, also for a reply that ends between items.
    unsigned int parseRecvBuf_QZ(unsigned char* buffer, unsigned long length);

    /// Returns the `n` bytes at `p` as an integer if n is 2, 3 or 4; for every other n, also 0, the byte at `p`.
    static unsigned long byteToDWORD(const unsigned char* p, unsigned long n)
    {
        switch (n) {
        case 2:
            return qFromBigEndian<quint16>(p);
        case 3:
            return static_cast<unsigned long>(qFromBigEndian<quint16>(p)) << 8 | p[2];
        case 4:
            return qFromBigEndian<quint32>(p);
        default:
            return p[0];
        }
    }
    /// Stores a supplies record; ignores an unknown `type`. `data` must hold at least one byte, and `n` bytes or 64,
    /// the length of the longest field, if `n` is greater.
    void setSuppliesData(unsigned long type, const unsigned char* data, unsigned long n);
    /// Returns `byStatus`, the raw status code, which the object owns; see docs/contract.md.
    unsigned char* getPrinterStatusValue();

    std::vector<unsigned long> vecErrorCode; ///< in the order of the reply
    std::vector<unsigned long> vecWarningCode; ///< in the order of the reply

    unsigned char byHead7[2] = {};
    unsigned char byHead8[3] = {};
    unsigned char byHead10[3] = {};
    unsigned char byVenderNameLen[3] = {};
    char szVenderName[256] = {};
    unsigned long dwVenderNameLen = 0;
    unsigned char byProductNameLen[3] = {};
    char szProductName[256] = {};
    unsigned long dwProductNameLen = 0;
    unsigned char bySerialNumberLen[3] = {};
    char szSerialNumber[256] = {};
    unsigned long dwSerialNumberLen = 0;
    unsigned char byReserved1[3] = {};
    unsigned char byStatus[2] = {};
    unsigned char byExtraInfoLen[2] = {};
    char szExtraInfo[256] = {};
    unsigned char byErrorCount[2] = {};
    unsigned char byErrorCode[3] = {}; ///< the last code read; all three bytes are used
    unsigned char byWarningCount[2] = {};
    unsigned char byWarningCode[3] = {}; ///< the last code read; all three bytes are used
    unsigned long dwExtraInfoLen = 0;
    unsigned long dwErrorCount = 0; ///< standard: number of codes; QZ: 1 if the last error item was not 0000
    unsigned long dwWarningCount = 0; ///< like dwErrorCount
    unsigned long dwStatus = 0; ///< raw status code
    char szFWVersion[256] = {};
    unsigned char byFWVersionLen[2] = {};
    unsigned char byReserved2[2] = {};
    unsigned char byReserved3[3] = {};
    unsigned char byReserved4[3] = {};
    unsigned char bySupplyCount[2] = {};
    unsigned long dwSupplyCount = 0;

    char szSupplySerialNumber[65] = {};
    unsigned char bySupplyType[5] = {};
    unsigned char byRemainingToner[3] = {};
    unsigned char byWasteToner[3] = {};
    unsigned char byOPCRotation[3] = {};
    unsigned char byNumberOfPages[5] = {};
    unsigned char byNumberOfPrint[5] = {};
    unsigned char byPrintDotsCount[3] = {};
    unsigned char byPrinterNumOfPages[5] = {};
    unsigned char byPrinterNumOfPrint[5] = {};

    unsigned long dwSupplyType = 0;
    unsigned long dwRemainingToner = 0;
    unsigned long dwWasteToner = 0;
    unsigned long dwOPCRotation = 0;
    unsigned long dwNumberOfPages = 0;
    unsigned long dwNumberOfPrint = 0;
    unsigned long dwPrintDotsCount = 0;
    unsigned long dwPrinterNumOfPages = 0;
    unsigned long dwPrinterNumOfPrint = 0;
};
