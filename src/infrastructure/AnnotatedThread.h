// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QThread>

// GCC defines the macro, Clang answers the question; where there is none to answer, Qt's headers do: no.
#if defined(__SANITIZE_THREAD__) || __has_feature(thread_sanitizer)

#include <sanitizer/tsan_interface.h>

/// A QThread that tells the thread sanitizer that what it did comes before what follows a successful wait(). The
/// sanitizer does not see that itself when the thread has ended before it is waited for: then only Qt's libraries know.
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
