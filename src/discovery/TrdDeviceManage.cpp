// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/TrdDeviceManage.h"

#include "discovery/PrinterListSnapshot.h"
#include "infrastructure/FixedPaths.h"
#include "infrastructure/FreeMemory.h"
#include "infrastructure/LateWakeUps.h"

#include <QSettings>
#include <QTextCodec>

#include <algorithm>

namespace {

constexpr int RescanIntervalMs = 3000;
// Far more than a desktop has installed; a greater count comes from a broken file.
constexpr int MaximumPrinterCount = 1000;
// The passes after a change of the list that return memory. The window signals each start of a worker to all workers: a
// thousand new printers take half a million queued calls, 60 MiB. The workers have drained their queues by the next
// pass, or on a busy machine by the second.
constexpr int PassesToReturnMemory = 2;

} // namespace

TrdDeviceManage::TrdDeviceManage(QObject* parent)
    : UtilThreadBase(parent)
    , pTextCodec(QTextCodec::codecForName("utf-8"))
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
    QList<stPrinterInfo> printers;
    const PrinterListSnapshot file(QString::fromLatin1(FixedPaths::PrinterListFile));
    if (!file.isUsable()) {
        return printers;
    }
    QSettings settings(file.path(), QSettings::IniFormat);
    settings.setIniCodec("utf-8");
    settings.beginGroup(QStringLiteral("Main"));
    const int count = std::min(settings.value(QStringLiteral("Count")).toInt(), MaximumPrinterCount);
    settings.endGroup();
    const auto text = [&settings](const char* key) {
        return PrinterListSnapshot::text(settings.value(QLatin1String(key)));
    };
    for (int i = 0; i < count; ++i) {
        stPrinterInfo info;
        InitStPrinterInfo(info);
        settings.beginGroup(QString::asprintf("printer_%d", i));
        info.strPrinterName = text("Name");
        info.enType = text("Model");
        info.iConnectType = settings.value(QStringLiteral("ConnectType")).toInt();
        info.strPort = text("Port");
        info.strURI = text("URI");
        settings.endGroup();
        printers.append(info);
    }
    return printers;
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
