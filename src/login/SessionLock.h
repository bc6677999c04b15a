// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Held by the one launcher of a login session that waits for a tray. A desktop may read both auto-start folders and
/// then starts two launchers at once. The lock ends with the process or when the process becomes another program.
class SessionLock
{
public:
    /// Tries to take the lock, a file in the user's runtime folder, without waiting.
    SessionLock();
    ~SessionLock();
    SessionLock(const SessionLock&) = delete;
    SessionLock& operator=(const SessionLock&) = delete;

    /// Returns whether another process has the lock. Also false when the lock file cannot be opened.
    bool isHeldByAnother() const;

private:
    int m_file = -1;
    bool m_isHeldByAnother = false;
};
