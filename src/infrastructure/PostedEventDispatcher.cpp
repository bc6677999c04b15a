// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/PostedEventDispatcher.h"

#include <QCoreApplication>

// An event that is posted after sendPostedEvents() sets m_isWoken, so that the wait returns at once.
bool PostedEventDispatcher::processEvents(QEventLoop::ProcessEventsFlags flags)
{
    QCoreApplication::sendPostedEvents();
    if (flags.testFlag(QEventLoop::WaitForMoreEvents)) {
        emit aboutToBlock();
        std::unique_lock<std::mutex> lock(m_mutex);
        m_condition.wait(lock, [this] { return m_isWoken; });
        m_isWoken = false;
        lock.unlock();
        emit awake();
    }
    return true;
}

bool PostedEventDispatcher::hasPendingEvents()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isWoken;
}

// Called on the posting thread.
void PostedEventDispatcher::wakeUp()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isWoken = true;
    m_condition.notify_one();
}

void PostedEventDispatcher::interrupt()
{
    wakeUp();
}

void PostedEventDispatcher::flush() { }

void PostedEventDispatcher::registerSocketNotifier(QSocketNotifier* /*notifier*/) { }

void PostedEventDispatcher::unregisterSocketNotifier(QSocketNotifier* /*notifier*/) { }

void PostedEventDispatcher::registerTimer(int /*timerId*/, TimerInterval /*interval*/, Qt::TimerType /*timerType*/,
                                          QObject* /*object*/)
{
}

bool PostedEventDispatcher::unregisterTimer(int /*timerId*/)
{
    return false;
}

bool PostedEventDispatcher::unregisterTimers(QObject* /*object*/)
{
    return false;
}

QList<QAbstractEventDispatcher::TimerInfo> PostedEventDispatcher::registeredTimers(QObject* /*object*/) const
{
    return {};
}

int PostedEventDispatcher::remainingTime(int /*timerId*/)
{
    return -1;
}
