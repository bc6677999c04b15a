// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractEventDispatcher>

#include <condition_variable>
#include <mutex>

/// The event loop of a thread that is reached by queued calls alone: no timers, no sockets.
///
/// Qt's own opens a descriptor for every thread, and ends the program when there is none left; desktops allow a
/// program some thousand. This one needs none, so that any number of workers can be started.
class PostedEventDispatcher : public QAbstractEventDispatcher
{
    Q_OBJECT

public:
    using QAbstractEventDispatcher::QAbstractEventDispatcher;

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;
    void wakeUp() override;
    void interrupt() override;
    void flush() override;

    void registerSocketNotifier(QSocketNotifier* notifier) override;
    void unregisterSocketNotifier(QSocketNotifier* notifier) override;
    void registerTimer(int timerId, int interval, Qt::TimerType timerType, QObject* object) override;
    bool unregisterTimer(int timerId) override;
    bool unregisterTimers(QObject* object) override;
    QList<TimerInfo> registeredTimers(QObject* object) const override;
    int remainingTime(int timerId) override;

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_isWoken = false; ///< guarded by m_mutex; something was posted since the last wait
};
