// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "PrinterListLock.h"

namespace {

std::mutex s_mutexPrinterList;

} // namespace

std::mutex& PrinterListMutex()
{
    return s_mutexPrinterList;
}
