// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// The number of status workers that the assistant must have, derived from the lengths of the lists that it has seen.
class WorkerCount
{
public:
    /// A longer list starts a worker for each index that the previous list did not have. A shorter one ends none.
    /// Left-over workers do not count when the list grows again.
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
