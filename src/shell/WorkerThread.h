// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

class QObject;
class QThread;

/// Moves a worker without a parent to a new thread and starts the thread. The caller owns both.
QThread* StartThreadOf(QObject* worker);
/// Waits up to one second for a thread from StartThreadOf() that was told to quit. Returns whether it has ended; if so,
/// it is deleted later.
bool AwaitEnd(QThread* thread);
/// Deletes a thread that did not end in time, and its worker, when it ends. Do not touch the worker after this call.
void DeleteWhenFinished(QThread* thread, QObject* worker);
