// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Held by the one launcher of a login session that waits for a tray. A desktop may read both auto-start folders and so
/// start two launchers at once. The lock ends with the process and when the process becomes another program.
class SessionLock
{
public:
    /// Takes the lock, a file in the user's runtime folder, without waiting.
    SessionLock();
    ~SessionLock();
    SessionLock(const SessionLock&) = delete;
    SessionLock& operator=(const SessionLock&) = delete;

    /// Whether another process has the lock. False too when there is no folder to make the file in.
    bool IsHeldByAnother() const;

private:
    int iFile = -1;
    bool bHeldByAnother = false;
};
