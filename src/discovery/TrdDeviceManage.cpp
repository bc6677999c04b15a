// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "TrdDeviceManage.h"

#include "FixedPaths.h"
#include "FreeMemory.h"
#include "LateWakeUps.h"
#include "PrinterListSnapshot.h"

#include <QSettings>
#include <QTextCodec>

#include <algorithm>

namespace {

constexpr int RescanIntervalMs = 3000;
// Far beyond what a desktop has installed; a greater count is a broken file.
constexpr int MaximumPrinterCount = 1000;
// After a change of the list. The window starts a worker for each new printer and signals each start to all workers:
// with a thousand printers, half a million queued calls take 60 MiB. The workers have emptied their queues by the next
// pass, on a busy machine by the second.
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

// The signal goes into the receiver's queue before any worker sees the new list. Otherwise a worker could fill its
// record and speak of it first: the rows, made afresh after that, would keep their initial texts until the next change.
bool TrdDeviceManage::ReplaceListIfChanged(const QList<stPrinterInfo>& printers)
{
    return pPrinterList.replaceIfChanged(
        printers, [&] { return GetInitPrinterList(printers); }, [this] { emit SgnUpdatePrinterList(); });
}
