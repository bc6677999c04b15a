// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/TrdDeviceManage.h"

#include "discovery/PrinterListFile.h"
#include "infrastructure/FixedPaths.h"
#include "infrastructure/FreeMemory.h"
#include "infrastructure/LateWakeUps.h"
#include "infrastructure/QtGenerations.h"

namespace {

constexpr int RescanIntervalMs = 3000;
// The passes after a change of the list that return memory. The window signals each start of a worker to all workers: a
// thousand new printers take half a million queued calls, 60 MiB. The workers have drained their queues by the next
// pass, or on a busy machine by the second.
constexpr int PassesToReturnMemory = 2;

} // namespace

TrdDeviceManage::TrdDeviceManage(QObject* parent)
    : UtilThreadBase(parent)
    , pTextCodec(Utf8Codec())
{
}

void TrdDeviceManage::Init(QList<stPrinterManager>* list)
{
    pPrinterList.assign(list);
}

void TrdDeviceManage::InitStPrinterInfo(stPrinterInfo& info)
{
    info = stPrinterInfo();
}

void TrdDeviceManage::InitStPrinterState(stPrinterState& state)
{
    state = stPrinterState();
}

QList<stPrinterInfo> TrdDeviceManage::GetPrinterInfo(bool /*reserved*/)
{
    return ReadPrinterList(QString::fromLatin1(FixedPaths::PrinterListFile)).value_or(QList<stPrinterInfo>());
}

QList<stPrinterManager> TrdDeviceManage::GetInitPrinterList(QList<stPrinterInfo> printers)
{
    stPrinterState state;
    InitStPrinterState(state);
    QList<stPrinterManager> list;
    list.reserve(printers.size());
    for (const stPrinterInfo& info : qAsConst(printers)) {
        list.append({info, state});
    }
    return list;
}

void TrdDeviceManage::SlotTaskStart()
{
    if (bTaskStarted) {
        return;
    }
    bTaskStarted = true;
    AllowLateWakeUps();
    int passesToReturnMemory = 0;
    do {
        if (ReplaceListIfChanged(GetPrinterInfo(true))) {
            passesToReturnMemory = PassesToReturnMemory;
        } else if (passesToReturnMemory > 0) {
            --passesToReturnMemory;
            ReturnFreeMemory();
        }
    } while (!WaitForSleep(RescanIntervalMs));
}

void TrdDeviceManage::SlotThreadQuit()
{
    bThreadQuit = true;
}

// The signal is queued before any worker can see the new list. Otherwise a worker's signal about its new record could
// arrive first. The window would then reset the row, which would keep its initial texts until the next change.
bool TrdDeviceManage::ReplaceListIfChanged(const QList<stPrinterInfo>& printers)
{
    return pPrinterList.replaceIfChanged(
        printers, [&] { return GetInitPrinterList(printers); }, [this] { emit SgnUpdatePrinterList(); });
}
