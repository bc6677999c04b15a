// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "decoding/UtilPrinterStatus.h"
#include "FuzzTarget.h"
#include "Requirement.h"
#include "ScenarioParser.h"

#include <QSet>

namespace {

constexpr int MaximumPrinters = 1000;
constexpr int MaximumNameBytes = 244;
constexpr std::chrono::hours LongestWait(24);
constexpr quint32 FullStandardToner = 10000;
constexpr quint32 FullQZToner = 100;

void CheckErrors(const QVector<ScenarioError>& errors, int lines)
{
    int previousLine = 0;
    for (const ScenarioError& error : errors) {
        Require(error.line > previousLine && error.line <= lines,
                "errors are in the order of lines, one for each line");
        Require(!error.reason.isEmpty(), "an error has a reason");
        previousLine = error.line;
    }
}

void CheckReply(const SimulatedPrinter& printer)
{
    const bool isQZ = printer.family == PrinterFamily::QZ;
    const quint32 toner = printer.supplies.value(SupplyField::RemainingToner);
    Require(toner <= (isQZ ? FullQZToner : FullStandardToner), "the toner does not exceed a full cartridge");
    QByteArray reply = EncodeStatusReply(printer);
    auto* const bytes = reinterpret_cast<unsigned char*>(reply.data());
    const auto length = static_cast<unsigned long>(reply.size());
    UtilPrinterStatus status;
    const unsigned int result = isQZ ? status.parseRecvBuf_QZ(bytes, length) : status.parseRecvBuf(bytes, length);
    Require(result == 1, "a printer's reply is accepted");
    Require(status.dwStatus == printer.status, "a reply tells the printer's status");
    Require(status.dwRemainingToner == toner, "a reply tells the printer's toner");
}

void CheckFrame(const ScenarioFrame& frame)
{
    Require(!frame.printers.isEmpty() && frame.printers.size() <= MaximumPrinters, "there are printers in each frame");
    QSet<QString> names;
    for (const SimulatedPrinter& printer : frame.printers) {
        Require(!printer.name.isEmpty() && !printer.name.contains(QLatin1Char('/')) &&
                    printer.name.toUtf8().size() <= MaximumNameBytes,
                "a name can name a status file");
        Require(!names.contains(printer.name), "names are used once");
        names.insert(printer.name);
        CheckReply(printer);
    }
}

void CheckScenario(const Scenario& scenario)
{
    Require(!scenario.frames.isEmpty(), "there is a start");
    for (int i = 0; i < scenario.frames.size(); ++i) {
        const std::chrono::milliseconds delay = scenario.frames.at(i).delay;
        Require(i == 0 ? delay.count() == 0 : delay.count() > 0 && delay <= LongestWait, "each wait takes its time");
        CheckFrame(scenario.frames.at(i));
    }
}

// The lines without errors.
QByteArray GoodLines(const QByteArray& text, const QVector<ScenarioError>& errors)
{
    QList<QByteArray> lines = text.split('\n');
    for (auto error = errors.rbegin(); error != errors.rend(); ++error) {
        lines.removeAt(error->line - 1);
    }
    return lines.join('\n');
}

} // namespace

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<int>(size));
    ParsedScenario parsed = ParseScenario(text);
    CheckErrors(parsed.errors, text.count('\n') + 1);
    if (!parsed.errors.isEmpty()) {
        // Most generated lines are bad, and one bad line is enough for a refusal.
        parsed = ParseScenario(GoodLines(text, parsed.errors));
    }
    if (parsed.errors.isEmpty()) {
        CheckScenario(parsed.scenario);
    }
    return 0;
}
