// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "status/PrinterReport.h"

#include "acquisition/StatusEvaluation.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <iterator>

namespace {

constexpr double PercentPerUnit = 100;

// The family sends the code 0000 for "none": its last code decides whether the codes count.
std::vector<unsigned long> Counted(unsigned long count, const std::vector<unsigned long>& codes)
{
    return count == 0 ? std::vector<unsigned long>() : codes;
}

} // namespace

bool DecodedReply::contains(ReplyField field) const
{
    return isAccepted && std::any_of(layout.fields.begin(), layout.fields.end(), [field](const PlacedField& placed) {
               return placed.field == field;
           });
}

std::optional<unsigned long> DecodedReply::rawToner() const
{
    if (contains(ReplyField::RemainingToner) || contains(ReplyField::TonerItem)) {
        return state.dwRemainingToner;
    }
    return std::nullopt;
}

std::optional<double> DecodedReply::tonerRatio() const
{
    const std::optional<unsigned long> raw = rawToner();
    const double full = family->tonerUnitsPerPercent * PercentPerUnit;
    if (!raw || static_cast<double>(*raw) > full) {
        return std::nullopt;
    }
    return static_cast<double>(*raw) / full;
}

std::optional<unsigned long> DecodedReply::rawStatus() const
{
    if (contains(ReplyField::Status) || contains(ReplyField::MachineState) || contains(ReplyField::JobState)) {
        return fields->dwStatus;
    }
    return std::nullopt;
}

std::optional<unsigned long> DecodedReply::supplyType() const
{
    return contains(ReplyField::SupplyType) ? std::make_optional(fields->dwSupplyType) : std::nullopt;
}

// A record of pages also sets the number of prints.
std::optional<unsigned long> DecodedReply::cartridgePrints() const
{
    const bool isKnown = contains(ReplyField::CartridgePages) || contains(ReplyField::CartridgePrints);
    return isKnown ? std::make_optional(state.dwNumberOfPrint) : std::nullopt;
}

std::vector<unsigned long> DecodedReply::errorCodes() const
{
    return isAccepted ? Counted(fields->dwErrorCount, fields->vecErrorCode) : std::vector<unsigned long>();
}

std::vector<unsigned long> DecodedReply::warningCodes() const
{
    return isAccepted ? Counted(fields->dwWarningCount, fields->vecWarningCode) : std::vector<unsigned long>();
}

DecodedReply DecodeReply(const PrinterFamily& family, const QByteArray& bytes)
{
    DecodedReply reply;
    reply.family = &family;
    reply.bytes = bytes.left(ReplyLimitBytes);
    reply.layout = LayOutReply(family, reply.bytes);
    QByteArray copy = reply.bytes; // the decoder takes a pointer to bytes that it could change
    auto* const data = reinterpret_cast<unsigned char*>(copy.data());
    const auto size = static_cast<unsigned long>(copy.size());
    const auto fields = std::make_shared<UtilPrinterStatus>();
    (*fields.*family.decode)(data, size);
    reply.fields = fields;
    reply.isAccepted = EvaluateReply(family, data, size, reply.state);
    return reply;
}

const char* FamilyName(const PrinterFamily& family)
{
    return &family == &QZFamily() ? "qz" : "standard";
}

const char* ConnectionName(const PrinterReport& report)
{
    return report.isNetwork() ? "network" : "usb";
}

const char* ResultName(ReportResult result)
{
    static constexpr std::array<const char*, 4> c_names{{"accepted", "missing", "unreadable", "rejected"}};
    return c_names.at(static_cast<std::size_t>(result));
}

void HideSerialNumbers(PrinterReport& report)
{
    static const QRegularExpression serial(QStringLiteral("(serial=)[^&#]*"),
                                           QRegularExpression::CaseInsensitiveOption);
    report.info.strURI.replace(serial, QStringLiteral("\\1"));
    HideSerialNumbers(report.reply);
}

void HideSerialNumbers(DecodedReply& reply)
{
    reply.state.strPrinterSerialNumber.clear();
    reply.state.strSupplySerialNumber.clear();
    const auto hide = [&reply](ReplyField field, int offset, int size) {
        const int header = field == ReplyField::SupplySerialNumber ? static_cast<int>(SupplyHeaderBytes) : 0;
        if (size > header && IsSerialNumber(field)) {
            reply.bytes.replace(offset + header, size - header, QByteArray(size - header, '*'));
        }
    };
    for (const PlacedField& placed : qAsConst(reply.layout.fields)) {
        hide(placed.field, placed.offset, placed.size);
    }
    if (reply.layout.fault) {
        hide(reply.layout.fault->field, reply.layout.fault->offset, reply.layout.fault->left);
    }
    if (reply.fields) {
        const auto fields = std::make_shared<UtilPrinterStatus>(*reply.fields);
        std::fill(std::begin(fields->szSerialNumber), std::end(fields->szSerialNumber), '\0');
        std::fill(std::begin(fields->szSupplySerialNumber), std::end(fields->szSupplySerialNumber), '\0');
        reply.fields = fields;
    }
}
