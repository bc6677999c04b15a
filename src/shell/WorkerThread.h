// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

class QObject;
class QThread;

/// Moves a worker to a thread of its own, which is started.
QThread* StartThreadOf(QObject* worker);
/// Waits a second at most for a thread that StartThreadOf() has made and that was told to quit. Returns whether it has
/// ended; then it is deleted later.
bool AwaitEnd(QThread* thread);
/// For a thread that did not end in time, and which may end at any moment: its worker is not to be touched any more.
void DeleteWhenFinished(QThread* thread, QObject* worker);
