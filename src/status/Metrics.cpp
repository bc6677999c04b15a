// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/Metrics.h"

#include "status/ConditionNames.h"
#include "status/PrintedText.h"
#include "texts/UtilLanguageCtrl.h"

#include <QLocale>
#include <QSet>

#include <utility>

namespace {

constexpr double MillisecondsPerSecond = 1000;

struct Label
{
    const char* name;
    QString value;
};

struct Sample
{
    double value;
    QVector<Label> labels; ///< beside the printer
};
using Samples = QVector<Sample>;

struct Metric
{
    const char* name;
    const char* type;
    const char* help;
    Samples (*samples)(const PrinterReport& report);
};

template <typename Number> Samples OneIfKnown(std::optional<Number> value)
{
    return value ? Samples{{static_cast<double>(*value), {}}} : Samples();
}

template <ReplyField field, unsigned long stPrinterState::*value> Samples Number(const PrinterReport& report)
{
    return report.reply.contains(field) ? Samples{{static_cast<double>(report.reply.state.*value), {}}} : Samples();
}

Samples Info(const PrinterReport& report)
{
    const stPrinterState& state = report.reply.state;
    return {{1,
             {{"model", report.info.enType},
              {"connection", QString::fromLatin1(ConnectionName(report))},
              {"port", report.info.strPort},
              {"family", QString::fromLatin1(FamilyName(*report.reply.family))},
              {"vendor", state.strVenderName},
              {"product", state.strProductName},
              {"firmware", state.strFWVersion},
              {"serial", state.strPrinterSerialNumber},
              {"cartridge_serial", state.strSupplySerialNumber}}}};
}

Samples ReportResults(const PrinterReport& report)
{
    Samples samples;
    for (const ReportResult result :
         {ReportResult::Accepted, ReportResult::Missing, ReportResult::Unreadable, ReportResult::Rejected}) {
        samples.append({report.result == result ? 1.0 : 0.0, {{"result", QString::fromLatin1(ResultName(result))}}});
    }
    return samples;
}

Samples ReportTime(const PrinterReport& report)
{
    if (!report.modified) {
        return {};
    }
    return {{static_cast<double>(report.modified->toMSecsSinceEpoch()) / MillisecondsPerSecond, {}}};
}

Samples Statuses(const PrinterReport& report)
{
    Samples samples;
    for (int status = PS_UNKNOWN; status <= PS_REPORTING; ++status) {
        samples.append({report.reply.state.enCurrentStatus == status ? 1.0 : 0.0,
                        {{"status", QString::fromLatin1(StatusName(status))}}});
    }
    return samples;
}

Samples Errors(const PrinterReport& report)
{
    return report.isOnline() ? Samples{{static_cast<double>(report.reply.state.listError.size()), {}}} : Samples();
}

Samples Warnings(const PrinterReport& report)
{
    return report.isOnline() ? Samples{{static_cast<double>(report.reply.state.listWarning.size()), {}}} : Samples();
}

// A printer may report a code twice, but a series must not occur twice.
void AppendConditions(Samples& samples, const char* kind, const QList<enErrorStatus>& conditions,
                      const std::vector<unsigned long>& codes)
{
    QSet<unsigned long> seen;
    for (int i = 0; i < conditions.size(); ++i) {
        const enErrorStatus condition = conditions.at(i);
        const unsigned long code = codes.at(static_cast<std::size_t>(i));
        if (seen.contains(code)) {
            continue;
        }
        seen.insert(code);
        samples.append({1,
                        {{"kind", QString::fromLatin1(kind)},
                         {"code", CodeText(code)},
                         {"condition", QString::fromLatin1(ConditionName(condition))},
                         {"description", c_strErrorDescText[condition][static_cast<int>(Language::English)]},
                         {"description_zh", c_strErrorDescText[condition][static_cast<int>(Language::Chinese)]}}});
    }
}

Samples Conditions(const PrinterReport& report)
{
    Samples samples;
    AppendConditions(samples, "error", report.reply.state.listError, report.reply.errorCodes());
    AppendConditions(samples, "warning", report.reply.state.listWarning, report.reply.warningCodes());
    return samples;
}

Samples TonerRatio(const PrinterReport& report)
{
    return OneIfKnown(report.reply.tonerRatio());
}

Samples RawToner(const PrinterReport& report)
{
    return OneIfKnown(report.reply.rawToner());
}

Samples CartridgePrints(const PrinterReport& report)
{
    return OneIfKnown(report.reply.cartridgePrints());
}

const QVector<Metric>& PrinterMetrics()
{
    static const QVector<Metric> metrics{
        {"printer_info", "gauge", "What is known about a listed printer; the value is always 1.", Info},
        {"printer_status", "gauge", "1 for what the printer does, 0 for all other statuses.", Statuses},
        {"printer_report", "gauge", "1 for what came of reading the printer's report, 0 for all other results.",
         ReportResults},
        {"printer_report_timestamp_seconds", "gauge", "When the driver wrote the printer's report, in Unix time.",
         ReportTime},
        {"printer_errors", "gauge", "Number of errors that the printer reports.", Errors},
        {"printer_warnings", "gauge", "Number of warnings that the printer reports.", Warnings},
        {"printer_condition", "gauge", "An error or warning that the printer reports; the value is always 1.",
         Conditions},
        {"printer_toner_ratio", "gauge", "Remaining toner, 0 to 1.", TonerRatio},
        {"printer_toner_raw", "gauge", "Remaining toner as the printer reports it.", RawToner},
        {"printer_pages_total", "counter", "Pages printed by the printer.",
         Number<ReplyField::PrinterPages, &stPrinterState::dwPrinterNumOfPages>},
        {"printer_prints_total", "counter", "Prints made by the printer.",
         Number<ReplyField::PrinterPrints, &stPrinterState::dwPrinterNumOfPrint>},
        {"printer_dots_raw", "gauge", "Printed dots as the printer reports them.",
         Number<ReplyField::PrintedDots, &stPrinterState::dwPrintDotsCount>},
        {"cartridge_pages_total", "counter", "Pages printed with the cartridge.",
         Number<ReplyField::CartridgePages, &stPrinterState::dwNumberOfPages>},
        {"cartridge_prints_total", "counter", "Prints made with the cartridge.", CartridgePrints},
        {"cartridge_waste_toner_raw", "gauge", "Waste toner as the printer reports it.",
         Number<ReplyField::WasteToner, &stPrinterState::dwWasteToner>},
        {"cartridge_drum_rotation_raw", "gauge", "Drum rotation as the printer reports it.",
         Number<ReplyField::DrumRotation, &stPrinterState::dwOPCRotation>},
    };
    return metrics;
}

QByteArray NumberText(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest).toLatin1();
}

// Harmful characters become escape sequences: names reach web pages and terminals.
QByteArray LabelText(const char* name, const QString& value)
{
    QByteArray text = SafeText(value).toUtf8();
    text.replace('\\', "\\\\").replace('"', "\\\"");
    return QByteArray(name) + "=\"" + text + '"';
}

void AppendHeader(QByteArray& text, const QByteArray& name, const char* type, const char* help)
{
    text += "# HELP " + name + ' ' + help + "\n# TYPE " + name + ' ' + type + '\n';
}

void AppendMetric(QByteArray& text, const Metric& metric,
                  const QVector<std::pair<QByteArray, const PrinterReport*>>& printers)
{
    const QByteArray name = QByteArray("tolmar_q727_") + metric.name;
    AppendHeader(text, name, metric.type, metric.help);
    for (const auto& [printer, report] : printers) {
        const Samples samples = metric.samples(*report);
        for (const Sample& sample : samples) {
            text += name + '{' + printer;
            for (const Label& label : sample.labels) {
                text += ',' + LabelText(label.name, label.value);
            }
            text += "} " + NumberText(sample.value) + '\n';
        }
    }
}

} // namespace

QByteArray FormatMetrics(const PrinterReports& reports)
{
    QVector<std::pair<QByteArray, const PrinterReport*>> printers;
    QSet<QByteArray> seen;
    for (const PrinterReport& report : reports.printers) {
        const QByteArray printer = LabelText("printer", report.info.strPrinterName);
        if (!seen.contains(printer)) {
            seen.insert(printer);
            printers.append({printer, &report});
        }
    }
    QByteArray text;
    const QByteArray readable = "tolmar_q727_printer_list_readable";
    AppendHeader(text, readable, "gauge", "Whether the printer list could be read.");
    text += readable + (reports.isListReadable ? " 1\n" : " 0\n");
    const QByteArray count = "tolmar_q727_printers";
    AppendHeader(text, count, "gauge", "Number of entries in the printer list.");
    text += count + ' ' + QByteArray::number(reports.printers.size()) + '\n';
    for (const Metric& metric : PrinterMetrics()) {
        AppendMetric(text, metric, printers);
    }
    return text;
}
