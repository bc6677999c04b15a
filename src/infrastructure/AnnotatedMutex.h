// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMutex>

// GCC defines the macro, Clang answers the question; where there is none to answer, Qt's headers do: no.
#if defined(__SANITIZE_THREAD__) || __has_feature(thread_sanitizer)

#include <sanitizer/tsan_interface.h>

/// A QMutex that tells the thread sanitizer when it is locked and unlocked. The sanitizer does not see that itself,
/// since Qt's libraries are built without it, and would report what the mutex guards.
///
/// To be locked through std::lock_guard: QMutexLocker knows the base class alone.
class AnnotatedMutex : public QMutex
{
public:
    void lock()
    {
        __tsan_mutex_pre_lock(this, 0);
        QMutex::lock();
        __tsan_mutex_post_lock(this, 0, 0);
    }
    void unlock()
    {
        __tsan_mutex_pre_unlock(this, 0);
        QMutex::unlock();
        __tsan_mutex_post_unlock(this, 0);
    }
};

#else

using AnnotatedMutex = QMutex;

#endif
