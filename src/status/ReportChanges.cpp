// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/ReportChanges.h"

#include "records/SharedPrinterList.h"

#include <QHash>

#include <array>

namespace {

// A list may name a printer twice: the second one is the key's second value.
using Key = QPair<QString, int>;

QHash<Key, int> IndexByKey(const QList<PrinterReport>& printers)
{
    QHash<Key, int> indexes;
    QHash<QString, int> counts;
    for (int i = 0; i < printers.size(); ++i) {
        const QString& name = printers.at(i).info.strPrinterName;
        indexes.insert({name, counts[name]++}, i);
    }
    return indexes;
}

bool IsSame(const PrinterReport& a, const PrinterReport& b)
{
    return a.result == b.result && a.info.enType == b.info.enType && a.isNetwork() == b.isNetwork() &&
        a.info.strPort == b.info.strPort && a.info.strURI == b.info.strURI &&
        !DifferForUsers(a.reply.state, b.reply.state);
}

} // namespace

const char* KindName(ReportChange::Kind kind)
{
    static constexpr std::array<const char*, 3> c_names{{"added", "removed", "changed"}};
    return c_names.at(static_cast<std::size_t>(kind));
}

QVector<ReportChange> ChangesBetween(const PrinterReports& before, const PrinterReports& after)
{
    QVector<ReportChange> changes;
    if (before.printers.isSharedWith(after.printers)) {
        return changes;
    }
    const QHash<Key, int> old = IndexByKey(before.printers);
    const QHash<Key, int> current = IndexByKey(after.printers);
    QHash<QString, int> counts;
    for (const PrinterReport& report : before.printers) {
        const QString& name = report.info.strPrinterName;
        if (!current.contains({name, counts[name]++})) {
            changes.append({ReportChange::Kind::Removed, report});
        }
    }
    counts.clear();
    for (const PrinterReport& report : after.printers) {
        const QString& name = report.info.strPrinterName;
        const int index = old.value({name, counts[name]++}, -1);
        if (index < 0) {
            changes.append({ReportChange::Kind::Added, report});
        } else if (!IsSame(before.printers.at(index), report)) {
            changes.append({ReportChange::Kind::Changed, report});
        }
    }
    return changes;
}
