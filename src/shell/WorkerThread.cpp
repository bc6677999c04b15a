// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "shell/WorkerThread.h"

#include "infrastructure/AnnotatedThread.h"
#include "infrastructure/PostedEventDispatcher.h"

namespace {

constexpr unsigned long StopTimeoutMs = 1000;

} // namespace

QThread* StartThreadOf(QObject* worker)
{
    auto* thread = new AnnotatedThread;
    thread->setEventDispatcher(new PostedEventDispatcher);
    worker->moveToThread(thread);
    thread->start();
    return thread;
}

bool AwaitEnd(QThread* thread)
{
    if (!static_cast<AnnotatedThread*>(thread)->wait(StopTimeoutMs)) {
        return false;
    }
    thread->deleteLater();
    return true;
}

void DeleteWhenFinished(QThread* thread, QObject* worker)
{
    QObject::connect(thread, &QThread::finished, worker, &QObject::deleteLater);
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
}
