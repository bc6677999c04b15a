// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FaultRig.h"

#include "acquisition/TrdGetPrinterStatus.h"

#include <QEventLoop>
#include <QTableWidget>
#include <QTimer>

namespace {

constexpr int LookMs = 10;
constexpr int SettleTimeoutMs = 10000;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr double ResponseLimitMs = 500; // sanitizers slow everything down
#else
constexpr double ResponseLimitMs = 100;
#endif

} // namespace

FaultRig::FaultRig()
{
    m_window->show();
}

FaultRig::~FaultRig() = default;

qint64 FaultRig::endWindow()
{
    QElapsedTimer timer;
    timer.start();
    m_window.reset();
    return timer.elapsed();
}

bool FaultRig::waitUntil(const std::function<bool()>& isSo, int timeoutMs)
{
    bool isReached = false;
    QElapsedTimer elapsed;
    elapsed.start();
    QEventLoop loop;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        look();
        isReached = isSo();
        if (isReached || elapsed.hasExpired(timeoutMs)) {
            loop.quit();
        }
    });
    timer.start(LookMs);
    m_watch.resume();
    loop.exec();
    m_watch.pause();
    return isReached;
}

bool FaultRig::waitForRows(int count)
{
    return waitUntil([this, count] { return m_window->table().rowCount() == count; });
}

void FaultRig::run(int ms)
{
    waitUntil([] { return false; }, ms);
}

QString FaultRig::shown(int row) const
{
    const QStringList texts = m_window->row(row);
    return texts.at(2) + QLatin1Char(' ') + texts.at(3);
}

QStringList FaultRig::shown() const
{
    QStringList rows;
    for (int row = 0; row < m_window->table().rowCount(); ++row) {
        rows.append(shown(row));
    }
    return rows;
}

bool FaultRig::waitUntilShown(int row, const QString& text)
{
    return waitUntil([this, row, &text] { return shown(row) == text; });
}

QStringList FaultRig::record(int row) const
{
    return m_record.value(row);
}

int FaultRig::signalsOf(int row) const
{
    return m_signals.value(row);
}

void FaultRig::startRecord()
{
    m_record.fill(QStringList(), m_window->table().rowCount());
    m_signals.fill(0, m_window->table().rowCount());
    look();
    const QList<TrdGetPrinterStatus*> workers = m_window->statusWorkers();
    for (TrdGetPrinterStatus* worker : workers) {
        disconnect(worker, nullptr, this, nullptr);
        connect(worker, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, this, [this](int index) { ++m_signals[index]; });
    }
}

void FaultRig::look()
{
    for (int row = 0; row < m_record.size() && row < m_window->table().rowCount(); ++row) {
        const QString text = shown(row);
        if (m_record.at(row).isEmpty() || m_record.at(row).last() != text) {
            m_record[row].append(text);
        }
    }
}

bool FaultRig::hasAnsweredInTime() const
{
    qInfo("%s", qPrintable(m_watch.words()));
    return m_watch.worstMs() < ResponseLimitMs;
}

bool FaultRig::settlesAt(const ProcessUse& before, qint64 noiseBytes)
{
    QElapsedTimer elapsed;
    elapsed.start();
    ProcessUse use;
    bool hasSettled = false;
    while (!hasSettled && !elapsed.hasExpired(SettleTimeoutMs)) {
        run(LookMs);
        use = ProcessUse::now(); // counted between two runs, because counting would delay the window
        hasSettled = use.descriptors <= before.descriptors && use.threads <= before.threads &&
            use.heapBytes <= before.heapBytes + noiseBytes;
    }
    qInfo("from %s to %s", qPrintable(before.words()), qPrintable(use.words()));
    return hasSettled;
}
