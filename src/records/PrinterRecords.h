// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

static_assert(sizeof(unsigned long) == 8, "the counters are 64 bits wide and are printed with %lu");

/// What a printer is doing. The value is also the row of c_strStatusLanguageText.
enum enPrinterStatus : int
{
    PS_UNKNOWN = 0,
    PS_VERSION_MISMATCH = 1,
    PS_OFFLINE = 2,
    PS_READY = 3,
    PS_INITIALIZE = 4,
    PS_BUSY = 5,
    PS_CANCELING_JOB = 6,
    PS_ERROR = 7,
    PS_PRINTING = 8,
    PS_SCANNING = 9,
    PS_COPYING = 10,
    PS_REPORTING = 11
};

/// One error or warning. The value is also the row of c_strErrorDescText and c_strErrorSolutionText.
enum enErrorStatus : int
{
    ERR_UNKNOWN = 0,
    ERR_FIXER = 1,
    ERR_LASER_DAMAGE = 2,
    ERR_NO_SCANNER = 3,
    ERR_PRINTER_BREAKDOWN = 4,
    ERR_HIGH_TEMPERATURE = 5,
    ERR_FRONT_COVER_OPEN = 6,
    ERR_UNSUPPORTED_CARTRIDGE_SERIAL = 7,
    ERR_CARTRIDGE_MISMATCH = 8,
    ERR_CARTRIDGE_INVALID = 9,
    ERR_CARTRIDGE = 10,
    ERR_TONER_LOW = 11,
    ERR_TONER_EMPTY_LOW_QUALITY = 12,
    ERR_TONER_EMPTY_REPLACE = 13,
    ERR_TONER_RUNNING_OUT = 14,
    ERR_CARTRIDGE_NEAR_FULL = 15,
    ERR_CARTRIDGE_LIFE_FULL = 16,
    ERR_NO_CARTRIDGE = 17,
    ERR_WASTE_TONER_NEAR_FULL = 18,
    ERR_WASTE_TONER_FULL = 19,
    ERR_CARTRIDGE_PAGES_NEAR_LIMIT = 20,
    ERR_CARTRIDGE_PAGES_LIMIT = 21,
    ERR_PRINTER_LIFE_NEAR_END = 22,
    ERR_PRINTER_LIFE_EXCEEDED = 23,
    ERR_MEMORY_OVERFLOW = 24,
    ERR_COOLING = 25,
    ERR_ADF_PAPER_JAM = 26,
    ERR_ADF_NO_PAPER = 27,
    ERR_ADF_FEED_FAILED = 28,
    ERR_INVALID_SETTING = 29,
    ERR_TRAY_EMPTY = 30,
    ERR_MANUAL_FEED_NO_PAPER = 31,
    ERR_MANUAL_FEED_STOP = 32,
    ERR_TRAY_MISMATCH = 33,
    ERR_JAM_INSIDE = 34,
    ERR_JAM_TRAY = 35,
    ERR_JAM_REAR = 36,
    ERR_PAPER_SIZE_MISMATCH = 37,
    ERR_INITIAL_SETUP = 38,
    ERR_FLATBED_SCAN = 39,
    ERR_ADF_SCAN_NO_PAPER = 40,
    ERR_FILE_SIZE_LIMIT = 41,
    ERR_PRINTER_BREAKDOWN_2 = 42, // same texts as 4, but other raw codes; logs distinguish the two
    ERR_IP_SETTINGS = 43,
    ERR_IP_CONFLICT = 44,
    ERR_AUTH_FAILED = 45,
    ERR_AUTH_TIMEOUT = 46,
    ERR_ADC_FAIL = 47,
    ERR_24V_MOS_BREAKDOWN = 48,
    ERR_NETSEC_ON = 49,
    ERR_PRINTING = 50
};
// Lets lists store the values in place instead of in a heap block for each.
Q_DECLARE_TYPEINFO(enErrorStatus, Q_PRIMITIVE_TYPE);

/// How a printer is attached. Every value except CONNECT_TYPE_USB means the network.
enum enConnectType : int
{
    CONNECT_TYPE_USB = 1
};

/// One printer as the driver package lists it. See docs/contract.md for what makes two of them the same printer.
struct stPrinterInfo
{
    QString strPrinterName; ///< print queue name; names the status file; shown to the user
    QString enType = QStringLiteral("-1"); ///< model text; not a number despite its prefix
    int iConnectType = 0; ///< enConnectType
    QString strPort; ///< for a network printer, the address that the table shows
    QString strURI; ///< device URI
};

/// The decoded status of one printer.
struct stPrinterState
{
    QString strPrinterSerialNumber;
    int enCurrentStatus = PS_OFFLINE; ///< enPrinterStatus
    QString strFWVersion;
    QString strVenderName;
    QString strProductName;
    int iNumberOfError = 0; ///< as reported, always 1 in the QZ family; use the length of the list
    int iNumberOfWarning = 0; ///< as reported; see iNumberOfError
    QList<enErrorStatus> listError; ///< in the order of the reply
    QList<enErrorStatus> listWarning; ///< in the order of the reply
    QString strSupplySerialNumber; ///< of the toner cartridge
    int enSpplyType = 0; ///< only 0 is defined
    unsigned long dwRemainingToner = 0; ///< hundredths of a percent; whole percent in the QZ family
    unsigned long dwWasteToner = 0;
    unsigned long dwOPCRotation = 0;
    unsigned long dwNumberOfPages = 0; ///< of the cartridge
    unsigned long dwNumberOfPrint = 0; ///< of the cartridge
    unsigned long dwPrintDotsCount = 0;
    unsigned long dwPrinterNumOfPages = 0; ///< of the printer
    unsigned long dwPrinterNumOfPrint = 0; ///< of the printer
    int iFailCount = 0; ///< consecutive failed reads
};

/// One element of the shared printer list.
struct stPrinterManager
{
    stPrinterInfo stInfo;
    stPrinterState stState;
};

/// One row of the supported-model tables.
struct stModelInfo
{
    QString strModel; ///< model code
    QString strModelName; ///< display name
    QString strPPDName; ///< file name of the driver's PPD
    int iVID; ///< USB vendor id
    int iPID; ///< USB product id
};
