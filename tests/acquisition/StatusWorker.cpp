// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "StatusWorker.h"

#include "PrinterFolder.h"
#include "records/SharedPrinterList.h"

#include <QStringList>

#include <chrono>

namespace {

constexpr unsigned long StopTimeoutMs = 15000;

QString Numbers(const QList<enErrorStatus>& conditions)
{
    QStringList numbers;
    for (const enErrorStatus condition : conditions) {
        numbers.append(QString::number(condition));
    }
    return numbers.join(QLatin1Char(','));
}

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

QString Words(const stPrinterInfo& info)
{
    return QStringLiteral("name '%1' model '%2' type %3 port '%4' uri '%5'")
        .arg(info.strPrinterName, info.enType, QString::number(info.iConnectType), info.strPort, info.strURI);
}

QString Words(const stPrinterState& state)
{
    const auto number = [](unsigned long value) {
        return QString::number(value);
    };
    return QStringList{
        QStringLiteral("status %1").arg(state.enCurrentStatus),
        QStringLiteral("serial number '%1'").arg(state.strPrinterSerialNumber),
        QStringLiteral("firmware '%1'").arg(state.strFWVersion),
        QStringLiteral("vendor '%1'").arg(state.strVenderName),
        QStringLiteral("product '%1'").arg(state.strProductName),
        QStringLiteral("errors %1: %2").arg(QString::number(state.iNumberOfError), Numbers(state.listError)),
        QStringLiteral("warnings %1: %2").arg(QString::number(state.iNumberOfWarning), Numbers(state.listWarning)),
        QStringLiteral("supply '%1' type %2").arg(state.strSupplySerialNumber, QString::number(state.enSpplyType)),
        QStringLiteral("toner %1 waste %2 opc %3")
            .arg(number(state.dwRemainingToner), number(state.dwWasteToner), number(state.dwOPCRotation)),
        QStringLiteral("pages %1 prints %2 dots %3")
            .arg(number(state.dwNumberOfPages), number(state.dwNumberOfPrint), number(state.dwPrintDotsCount)),
        QStringLiteral("printer pages %1 prints %2")
            .arg(number(state.dwPrinterNumOfPages), number(state.dwPrinterNumOfPrint)),
        QStringLiteral("failures %1").arg(state.iFailCount)}
        .join(QStringLiteral("; "));
}

QString Words(const stPrinterManager& printer)
{
    return Words(printer.stInfo) + QStringLiteral("; ") + Words(printer.stState);
}

stPrinterState FilledState()
{
    stPrinterState state;
    state.strPrinterSerialNumber = QStringLiteral("old serial");
    state.enCurrentStatus = PS_READY;
    state.strFWVersion = QStringLiteral("old firmware");
    state.strVenderName = QStringLiteral("old vendor");
    state.strProductName = QStringLiteral("old product");
    state.iNumberOfError = 2;
    state.iNumberOfWarning = 1;
    state.listError = {ERR_FRONT_COVER_OPEN, ERR_TRAY_EMPTY};
    state.listWarning = {ERR_TONER_LOW};
    state.strSupplySerialNumber = QStringLiteral("old supply");
    state.enSpplyType = 9;
    state.dwRemainingToner = 4567;
    state.dwWasteToner = 11;
    state.dwOPCRotation = 12;
    state.dwNumberOfPages = 13;
    state.dwNumberOfPrint = 14;
    state.dwPrintDotsCount = 15;
    state.dwPrinterNumOfPages = 16;
    state.dwPrinterNumOfPrint = 17;
    state.iFailCount = 7;
    return state;
}

stPrinterManager FilledPrinter(const QString& name)
{
    return {PrinterFolder::Printer(name), FilledState()};
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
