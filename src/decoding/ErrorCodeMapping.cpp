// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/StatusCodeMapping.h"

// This function is long because it is one table: each code once, in ascending order. The gaps are intended: an unlisted
// code does not mean what its neighbours mean.
enErrorStatus GetErrorStatusEnum(unsigned long code)
{
    switch (code) {
    case 0x0100 ... 0x0101:
        return ERR_PRINTER_BREAKDOWN;
    case 0x0110:
        return ERR_INITIAL_SETUP;
    case 0x0200:
    case 0x0202:
        return ERR_PRINTER_BREAKDOWN;
    case 0x1106:
        return ERR_FRONT_COVER_OPEN;
    case 0x1108:
        return ERR_PRINTER_BREAKDOWN;
    case 0x1109 ... 0x110C:
        return ERR_CARTRIDGE;
    case 0x110D:
        return ERR_TONER_LOW;
    case 0x110E:
        return ERR_TONER_EMPTY_LOW_QUALITY;
    case 0x110F:
        return ERR_TONER_EMPTY_REPLACE;
    case 0x1110:
        return ERR_NO_CARTRIDGE;
    case 0x1111:
        return ERR_WASTE_TONER_FULL;
    case 0x1112 ... 0x1114:
        return ERR_CARTRIDGE_PAGES_LIMIT;
    case 0x1115:
        return ERR_PRINTER_LIFE_EXCEEDED;
    case 0x1121:
        return ERR_WASTE_TONER_NEAR_FULL;
    case 0x1122:
        return ERR_CARTRIDGE_PAGES_NEAR_LIMIT;
    case 0x1123:
        return ERR_TONER_EMPTY_LOW_QUALITY;
    case 0x1124:
        return ERR_CARTRIDGE_PAGES_NEAR_LIMIT;
    case 0x1125:
        return ERR_WASTE_TONER_FULL;
    case 0x1126:
        return ERR_PRINTER_LIFE_NEAR_END;
    case 0x1127:
        return ERR_PRINTER_LIFE_EXCEEDED;
    case 0x1128 ... 0x1129:
        return ERR_PRINTER_LIFE_NEAR_END;
    case 0x112F:
        return ERR_TONER_EMPTY_LOW_QUALITY;
    case 0x1130:
        return ERR_MEMORY_OVERFLOW;
    case 0x1132:
        return ERR_INVALID_SETTING;
    case 0x1133:
        return ERR_TRAY_MISMATCH;
    case 0x1140:
        return ERR_COOLING;
    case 0x11A0:
        return ERR_TRAY_EMPTY;
    case 0x11A1:
        return ERR_MANUAL_FEED_NO_PAPER;
    case 0x11A2:
        return ERR_MANUAL_FEED_STOP;
    case 0x11B0 ... 0x11B8:
        return ERR_JAM_INSIDE;
    case 0x11C0 ... 0x11C6:
        return ERR_JAM_TRAY;
    case 0x11D0 ... 0x11D6:
        return ERR_JAM_REAR;
    case 0x11E0 ... 0x11E3:
        return ERR_PAPER_SIZE_MISMATCH;
    case 0x11EA:
        return ERR_TONER_RUNNING_OUT;
    case 0x11EE ... 0x11EF:
        return ERR_TONER_EMPTY_LOW_QUALITY;
    case 0x11F0:
        return ERR_AUTH_FAILED;
    case 0x11F1:
        return ERR_AUTH_TIMEOUT;
    case 0x11F2:
        return ERR_NETSEC_ON;
    case 0x1200:
        return ERR_FIXER;
    case 0x1201 ... 0x1202:
        return ERR_PRINTER_BREAKDOWN;
    case 0x1203:
        return ERR_LASER_DAMAGE;
    case 0x1204 ... 0x1207:
    case 0x1209 ... 0x120B:
    case 0x1211:
        return ERR_PRINTER_BREAKDOWN;
    case 0x1212:
        return ERR_HIGH_TEMPERATURE;
    case 0x1213 ... 0x121F:
        return ERR_PRINTER_BREAKDOWN;
    case 0x1302:
        return ERR_ADC_FAIL;
    case 0x1303:
        return ERR_24V_MOS_BREAKDOWN;
    case 0x2100:
        return ERR_ADF_PAPER_JAM;
    case 0x2102:
        return ERR_ADF_NO_PAPER;
    case 0x2103:
        return ERR_ADF_FEED_FAILED;
    case 0x2200:
        return ERR_NO_SCANNER;
    case 0x4100:
    case 0x4200 ... 0x4201:
    case 0x4210:
        return ERR_PRINTER_BREAKDOWN_2;
    case 0x4211:
        return ERR_FLATBED_SCAN;
    case 0x4212:
        return ERR_PRINTER_BREAKDOWN_2;
    case 0x4213:
        return ERR_ADF_SCAN_NO_PAPER;
    case 0x4214:
        return ERR_FILE_SIZE_LIMIT;
    case 0x4F00:
        return ERR_PRINTER_BREAKDOWN_2;
    case 0x5000:
        return ERR_IP_CONFLICT;
    case 0x6800:
        return ERR_PRINTING;
    case 0xE100:
        return ERR_IP_SETTINGS;
    default:
        return ERR_UNKNOWN;
    }
}
