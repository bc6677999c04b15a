// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "acquisition/StatusFile.h"
#include "status/PrinterReport.h"

#include <array>
#include <vector>

/// The printer list and the status files of one folder. Only reads them.
class StatusFolder
{
public:
    /// `directory` may end in a slash or not.
    explicit StatusFolder(const QString& directory);

    /// Reads the list and every status file that is not known yet or has changed. The printers keep their reports if
    /// `withList` is false; their status files are looked at in any case.
    const PrinterReports& read(bool withList = true);

private:
    void readList();
    void readReport(int index);

    QString m_directory; ///< ends in a slash
    PrinterReports m_reports;
    std::vector<StatusFile> m_files; ///< one for each printer
    std::array<unsigned char, ReplyLimitBytes> m_buffer{}; ///< the reply that was read last
};
