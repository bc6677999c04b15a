// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// How many status workers the assistant must have, from the lengths of the lists that it has seen.
class WorkerCount
{
public:
    /// A longer list starts a worker for each index that the list before did not have. A shorter one ends none, and
    /// workers that are left over do not count when the list grows again.
    void see(int printers)
    {
        if (printers > m_listed) {
            m_workers += printers - m_listed;
        }
        m_listed = printers;
    }
    int workers() const
    {
        return m_workers;
    }

private:
    int m_listed = 0;
    int m_workers = 0;
};
