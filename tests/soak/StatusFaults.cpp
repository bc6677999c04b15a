// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "StatusFaults.h"

#include "PathFaults.h"
#include "PrinterFolder.h"
#include "SoakPrinters.h"

#include <QDateTime>
#include <QFile>

namespace {

constexpr qint64 MsPerHour = 3600000;
constexpr int LongerThanTheBufferBytes = 5000;

void Overwrite(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

struct ReplyFault
{
    const char* name = "";
    void (*put)(SimulatedPrinter& printer, const QString& path, Chance& chance) = nullptr; // the path must be free
};

const QVector<ReplyFault>& ReplyFaults()
{
    static const QVector<ReplyFault> s_faults{
        {"truncated",
         [](SimulatedPrinter& printer, const QString& path, Chance& chance) {
             const QByteArray reply = EncodeStatusReply(printer);
             PrinterFolder::WriteFile(path, reply.left(chance.below(reply.size())));
         }},
        {"garbled",
         [](SimulatedPrinter& printer, const QString& path, Chance& chance) {
             QByteArray reply = EncodeStatusReply(printer);
             reply[chance.below(reply.size())] = static_cast<char>(chance.below(256));
             PrinterFolder::WriteFile(path, reply);
         }},
        {"with a long tail",
         [](SimulatedPrinter& printer, const QString& path, Chance& chance) {
             PrinterFolder::WriteFile(path, EncodeStatusReply(printer) + chance.bytes(LongerThanTheBufferBytes));
         }},
        {"older time",
         [](SimulatedPrinter& printer, const QString& path, Chance& chance) {
             PrinterFolder::WriteFile(path, EncodeStatusReply(printer), 1 + chance.below(1000000));
         }},
        {"time in the future",
         [](SimulatedPrinter& printer, const QString& path, Chance& chance) {
             PrinterFolder::WriteFile(path, EncodeStatusReply(printer),
                                      QDateTime::currentMSecsSinceEpoch() + MsPerHour + chance.below(1000000));
         }},
        {"same time, other content",
         [](SimulatedPrinter& printer, const QString& path, Chance& chance) {
             PrinterFolder::WriteFile(path, EncodeStatusReply(printer));
             const qint64 modified = PrinterFolder::ModificationTime(path);
             ReportAtRandom(printer, chance);
             PrinterFolder::WriteFile(path, EncodeStatusReply(printer), modified);
         }},
        {"rewritten in place",
         [](SimulatedPrinter& printer, const QString& path, Chance& chance) {
             const QByteArray reply = EncodeStatusReply(printer);
             Overwrite(path, reply.left(reply.size() / 2));
             ReportAtRandom(printer, chance);
             Overwrite(path, EncodeStatusReply(printer));
         }},
    };
    return s_faults;
}

} // namespace

StatusFaults::StatusFaults(QVector<SimulatedPrinter>& printers, const Chance& chance)
    : m_printers(printers)
    , m_chance(chance)
{
}

void StatusFaults::disturb()
{
    SimulatedPrinter& printer = m_printers[m_chance.below(m_printers.size())];
    const QString path = PrinterFolder::StatusFilePath(printer.name);
    ReportAtRandom(printer, m_chance);
    FreePath(path);
    ++m_counts[QString::fromLatin1(put(printer, path))];
}

// Cancellations are frequent, so that each worker soon has run the command once: its first run takes memory.
const char* StatusFaults::put(SimulatedPrinter& printer, const QString& path)
{
    const int draw = m_chance.below(8);
    if (draw < 4) {
        PrinterFolder::WriteFile(path, EncodeStatusReply(printer));
        return "good reply";
    }
    if (draw == 4 && printer.family == PrinterFamily::Standard) {
        ReportCancelling(printer);
        PrinterFolder::WriteFile(path, EncodeStatusReply(printer));
        return "cancelling a job";
    }
    const int fault = m_chance.below(PathFaults().size() + ReplyFaults().size());
    if (fault < PathFaults().size()) {
        PathFaults().at(fault).put(path, m_chance);
        return PathFaults().at(fault).name;
    }
    const ReplyFault& reply = ReplyFaults().at(fault - PathFaults().size());
    reply.put(printer, path, m_chance);
    return reply.name;
}

void StatusFaults::clear()
{
    for (int i = 0; i < m_printers.size(); ++i) {
        const QString path = PrinterFolder::StatusFilePath(m_printers.at(i).name);
        FreePath(path);
        ReportReady(m_printers[i], i);
        PrinterFolder::WriteFile(path, EncodeStatusReply(m_printers.at(i)));
    }
}
