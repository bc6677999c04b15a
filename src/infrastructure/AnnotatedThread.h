// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QThread>

// GCC defines `__SANITIZE_THREAD__`; Clang has `__has_feature`, which Qt's headers define as 0 elsewhere.
#if defined(__SANITIZE_THREAD__) || __has_feature(thread_sanitizer)

#include <sanitizer/tsan_interface.h>

/// A QThread that tells the thread sanitizer: everything the thread did happened before a successful wait() returns.
/// Qt's libraries are built without the sanitizer, so it cannot see this itself if the thread ended before the call.
class AnnotatedThread : public QThread
{
public:
    bool wait(unsigned long timeoutMs)
    {
        const bool hasEnded = QThread::wait(timeoutMs);
        if (hasEnded) {
            __tsan_acquire(this);
        }
        return hasEnded;
    }

protected:
    void run() override
    {
        QThread::run();
        __tsan_release(this);
    }
};

#else

using AnnotatedThread = QThread;

#endif
