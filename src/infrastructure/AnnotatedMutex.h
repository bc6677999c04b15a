// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMutex>

// GCC defines `__SANITIZE_THREAD__`; Clang has `__has_feature`, which Qt's headers define as 0 elsewhere.
#if defined(__SANITIZE_THREAD__) || __has_feature(thread_sanitizer)

#include <sanitizer/tsan_interface.h>

/// A QMutex that tells the thread sanitizer when it is locked and unlocked. Qt's libraries are built without the
/// sanitizer, so it cannot see this itself and would report false races.
///
/// Lock it through std::lock_guard: QMutexLocker calls the functions of the base class.
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
