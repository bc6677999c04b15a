// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

/// The enumerator's name, which logs, JSON and scripts use: "PS_READY".
const char* StatusName(int status);
/// The enumerator's name: "ERR_JAM_INSIDE".
const char* ConditionName(enErrorStatus condition);
/// The raw code of a condition as documents and printers write it: "0x11B0".
QString CodeText(unsigned long code);
