// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/StatusFolder.h"

#include "discovery/PrinterListFile.h"

#include <QFile>
#include <QFileInfo>

namespace {

QString WithSlash(const QString& directory)
{
    return directory.endsWith(QLatin1Char('/')) ? directory : directory + QLatin1Char('/');
}

bool IsSamePrinter(const stPrinterInfo& a, const stPrinterInfo& b)
{
    return a.strPrinterName == b.strPrinterName && a.enType == b.enType && a.iConnectType == b.iConnectType &&
        a.strPort == b.strPort && a.strURI == b.strURI;
}

} // namespace

StatusFolder::StatusFolder(const QString& directory)
    : m_directory(WithSlash(directory))
{
}

const PrinterReports& StatusFolder::read(bool withList)
{
    if (withList) {
        readList();
    }
    for (int i = 0; i < m_reports.printers.size(); ++i) {
        readReport(i);
    }
    return m_reports;
}

// A printer that stays in its place keeps its report and the remembered timestamp.
void StatusFolder::readList()
{
    const QString listName = QFileInfo(QString::fromLatin1(FixedPaths::PrinterListFile)).fileName();
    const std::optional<QList<stPrinterInfo>> list = ReadPrinterList(m_directory + listName);
    m_reports.isListReadable = list.has_value();
    const QList<stPrinterInfo> printers = list.value_or(QList<stPrinterInfo>());
    while (m_reports.printers.size() > printers.size()) {
        m_reports.printers.removeLast();
    }
    const StatusFile unread(QFile::encodeName(m_directory));
    m_files.resize(static_cast<std::size_t>(printers.size()), unread);
    for (int i = 0; i < printers.size(); ++i) {
        PrinterReport report;
        report.info = printers.at(i);
        if (i >= m_reports.printers.size()) {
            m_reports.printers.append(report);
        } else if (!IsSamePrinter(m_reports.printers.at(i).info, report.info)) {
            m_reports.printers[i] = report;
            m_files.at(static_cast<std::size_t>(i)) = unread;
        }
    }
}

// Writes to the list of reports only when something has changed: a copy that a caller keeps is then still shared.
void StatusFolder::readReport(int index)
{
    const PrinterReport& old = m_reports.printers.at(index);
    StatusFile& file = m_files.at(static_cast<std::size_t>(index));
    const QString& name = old.info.strPrinterName;
    unsigned long length = 0;
    // Like the assistant: the file of an off-line printer is read again even if its timestamp is the same.
    const auto result = file.read(name, !old.isOnline(), m_buffer.data(), m_buffer.size(), length);
    if (result == StatusFile::Read::Unchanged) {
        return;
    }
    PrinterReport report;
    report.info = old.info;
    report.modified = file.lastModified();
    if (result == StatusFile::Read::Done) {
        const QByteArray bytes(reinterpret_cast<const char*>(m_buffer.data()), static_cast<int>(length));
        report.reply = DecodeReply(FamilyOf(name), bytes);
        report.result = report.reply.isAccepted ? ReportResult::Accepted : ReportResult::Rejected;
    } else {
        report.reply.family = &FamilyOf(name);
        report.result = result == StatusFile::Read::Missing ? ReportResult::Missing : ReportResult::Unreadable;
    }
    if (report.result != old.result || report.modified != old.modified || report.reply.bytes != old.reply.bytes ||
        report.reply.family != old.reply.family) {
        m_reports.printers[index] = report;
    }
}
