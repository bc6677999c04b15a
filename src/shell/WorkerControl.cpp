// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "AnnotatedThread.h"
#include "brelprintertoolwidget.h"
#include "PostedEventDispatcher.h"
#include "TrdDeviceManage.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"

#include <QTimer>

namespace {

constexpr char LogSource[] = "brelprintertoolwidget";
constexpr unsigned long StopTimeoutMs = 1000;
constexpr int SignalsPerTurn = 10000;

QThread* StartThreadOf(QObject* worker)
{
    auto* thread = new AnnotatedThread;
    thread->setEventDispatcher(new PostedEventDispatcher);
    worker->moveToThread(thread);
    thread->start();
    return thread;
}

// Returns whether the thread, one of those above that was told to quit, has ended.
bool AwaitEnd(QThread* thread)
{
    if (!static_cast<AnnotatedThread*>(thread)->wait(StopTimeoutMs)) {
        return false;
    }
    thread->deleteLater();
    return true;
}

// For a thread that did not end in time, and which may end at any moment: its worker is not to be touched any more.
void DeleteWhenFinished(QThread* thread, QObject* worker)
{
    QObject::connect(thread, &QThread::finished, worker, &QObject::deleteLater);
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
}

} // namespace

void BrelPrinterToolWidget::InitThread()
{
    WriteStringLog(LogSource, __LINE__, "InitThread", QStringLiteral("InitThread start"));
    pDeviceManage = new TrdDeviceManage(nullptr);
    pDeviceManageThread = StartThreadOf(pDeviceManage);
    pDeviceManage->Init(&listPrinter);
    connect(this, &BrelPrinterToolWidget::SgnManageThreadStart, pDeviceManage, &TrdDeviceManage::SlotTaskStart);
    connect(this, &BrelPrinterToolWidget::SgnThreadQuit, pDeviceManage, &TrdDeviceManage::SlotThreadQuit);
    connect(pDeviceManage, &TrdDeviceManage::SgnUpdatePrinterList, this, &BrelPrinterToolWidget::SlotUpdatePrinterList);
    emit SgnManageThreadStart();
    WriteStringLog(LogSource, __LINE__, "InitThread", QStringLiteral("InitThread end"));
}

// Each start costs the more the more workers there are: a thousand at once would hold the window up for a second. So
// what goes beyond a desktop's handful is left to later turns of the event loop.
void BrelPrinterToolWidget::StartWaitingWorkers()
{
    for (int sent = 0; sent < SignalsPerTurn && !listWaitingIndex.isEmpty(); sent += listStatusWorker.size()) {
        StartStatusWorker(listWaitingIndex.takeFirst());
    }
    if (!listWaitingIndex.isEmpty()) {
        QTimer::singleShot(0, this, &BrelPrinterToolWidget::StartWaitingWorkers);
    }
}

// The start signal reaches all workers started so far; those that run already take no notice.
void BrelPrinterToolWidget::StartStatusWorker(int index)
{
    auto* worker = new TrdGetPrinterStatus(nullptr);
    QThread* thread = StartThreadOf(worker);
    worker->Init(index, &listPrinter);
    connect(this, &BrelPrinterToolWidget::SgnStatusThreadStart, worker, &TrdGetPrinterStatus::SlotTaskStart);
    connect(this, &BrelPrinterToolWidget::SgnThreadQuit, worker, &TrdGetPrinterStatus::SlotThreadQuit);
    connect(worker, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, this,
            &BrelPrinterToolWidget::SlotUpdatePrinterStatus);
    emit SgnStatusThreadStart();
    listStatusWorker.append(worker);
    listStatusThread.append(thread);
}

// Signals do not reach a looping worker, the flag does. All are told before the first is waited for, so that each ends
// with its pause, without this thread's help. A worker that hangs in a command keeps itself and its thread, and nothing
// else.
void BrelPrinterToolWidget::StopWorkers()
{
    pDeviceManage->bThreadQuit = true;
    for (TrdGetPrinterStatus* worker : qAsConst(listStatusWorker)) {
        worker->bThreadQuit = true;
    }
    pDeviceManageThread->quit();
    for (QThread* thread : qAsConst(listStatusThread)) {
        thread->quit();
    }
    if (AwaitEnd(pDeviceManageThread)) {
        delete pDeviceManage;
    } else {
        pDeviceManage->Init(nullptr);
        DeleteWhenFinished(pDeviceManageThread, pDeviceManage);
    }
    for (int k = 0; k < listStatusWorker.size(); ++k) {
        TrdGetPrinterStatus* worker = listStatusWorker.at(k);
        QThread* thread = listStatusThread.at(k);
        if (AwaitEnd(thread)) {
            delete worker;
        } else {
            worker->Init(-1, nullptr);
            DeleteWhenFinished(thread, worker);
        }
    }
}
