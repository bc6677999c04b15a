// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "infrastructure/QtGenerations.h"

#include <condition_variable>
#include <mutex>

/// The event dispatcher of a thread that receives only queued calls: no timers, no sockets.
///
/// Qt's own dispatcher opens a descriptor for each thread and ends the program when none is left; desktops allow a
/// program about a thousand. This dispatcher uses none, so descriptors do not limit the number of workers.
class PostedEventDispatcher : public EventDispatcherBase
{
    Q_OBJECT

public:
    using EventDispatcherBase::EventDispatcherBase;

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;
    void wakeUp() override;
    void interrupt() override;
    void flush() override;

    void registerSocketNotifier(QSocketNotifier* notifier) override;
    void unregisterSocketNotifier(QSocketNotifier* notifier) override;
    void registerTimer(int timerId, TimerInterval interval, Qt::TimerType timerType, QObject* object) override;
    bool unregisterTimer(int timerId) override;
    bool unregisterTimers(QObject* object) override;
    QList<TimerInfo> registeredTimers(QObject* object) const override;
    int remainingTime(int timerId) override;

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_isWoken = false; ///< guarded by m_mutex; true if something was posted since the last wait
};
