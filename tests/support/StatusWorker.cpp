// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "StatusWorker.h"

#include "records/SharedPrinterList.h"

#include <chrono>
#include <vector>

namespace {

constexpr unsigned long StopTimeoutMs = 15000;

} // namespace

StatusWorker::StatusWorker()
    : TrdGetPrinterStatus(nullptr)
{
    connect(this, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, this, [this] { ++m_signals; });
}

int StatusWorker::runCycle()
{
    m_signals = 0;
    bTaskStarted = false;
    bThreadQuit = true;
    SlotTaskStart();
    return m_signals;
}

int StatusWorker::evaluate(Evaluation evaluation, const QByteArray& bytes)
{
    std::vector<unsigned char> buffer(bytes.begin(), bytes.end());
    return (this->*evaluation)(buffer.data(), buffer.size());
}

RunningStatusWorker::RunningStatusWorker(int index, QList<stPrinterManager>* list)
{
    m_worker->Init(index, list);
    m_worker->moveToThread(&m_thread);
    QObject::connect(m_worker.get(), &TrdGetPrinterStatus::SgnUpdatePrinterStatus, m_worker.get(), [this](int i) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_indices.append(i);
        m_timesMs.append(MonotonicMs());
    });
    m_thread.start();
}

RunningStatusWorker::~RunningStatusWorker()
{
    stop();
}

void RunningStatusWorker::start()
{
    QMetaObject::invokeMethod(m_worker.get(), &TrdGetPrinterStatus::SlotTaskStart, Qt::QueuedConnection);
}

bool RunningStatusWorker::stop()
{
    m_worker->bThreadQuit = true;
    m_thread.quit();
    return m_thread.wait(StopTimeoutMs);
}

QList<int> RunningStatusWorker::signalledIndices() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_indices;
}

QList<qint64> RunningStatusWorker::signalTimesMs() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_timesMs;
}

qint64 MonotonicMs()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

stPrinterManager Listed(QList<stPrinterManager>& list, int index)
{
    stPrinterManager printer;
    if (!SharedPrinterList(&list).copy(index, printer)) {
        qFatal("the list has no printer %d", index);
    }
    return printer;
}

void ReplaceList(QList<stPrinterManager>& list, const QList<stPrinterManager>& newList)
{
    QList<stPrinterInfo> infos;
    for (const stPrinterManager& printer : newList) {
        infos.append(printer.stInfo);
    }
    SharedPrinterList shared(&list);
    const auto replace = [&] {
        return shared.replaceIfChanged(
            infos, [&newList] { return newList; }, [] {});
    };
    if (!replace()) {
        shared.replaceIfChanged(
            {}, [] { return QList<stPrinterManager>(); }, [] {});
        replace();
    }
}
