// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "SimulatedPrinter.h"

namespace {

constexpr SupplyField SupplyValuesInReplyOrder[] = {
    SupplyField::Type,        SupplyField::RemainingToner, SupplyField::WasteToner,
    SupplyField::OpcRotation, SupplyField::Pages,          SupplyField::Prints,
    SupplyField::PrintDots,   SupplyField::PrinterPages,   SupplyField::PrinterPrints,
};

QByteArray EncodeStandard(const SimulatedPrinter& printer)
{
    StandardReply reply;
    reply.vendorName = printer.vendorName;
    reply.productName = printer.productName;
    reply.serialNumber = printer.serialNumber;
    reply.status = printer.status;
    reply.firmwareVersion = printer.firmwareVersion;
    reply.extraInfo = printer.extraInfo;
    reply.errorCodes = printer.errorCodes;
    reply.warningCodes = printer.warningCodes;
    reply.supplies.append(SupplySerialNumber(printer.supplySerialNumber));
    for (const SupplyField field : SupplyValuesInReplyOrder) {
        reply.supplies.append(SupplyValue(field, printer.supplies.value(field)));
    }
    return EncodeStandardReply(reply);
}

// A QZ printer reports "no error" or "no warning" with the code 0.
QVector<quint16> CodesOrNone(const QVector<quint16>& codes)
{
    return codes.isEmpty() ? QVector<quint16>{0} : codes;
}

QByteArray EncodeQZ(const SimulatedPrinter& printer)
{
    QZReply reply;
    if (const auto status = QZStatus(printer.status)) {
        reply.items.append(*status);
    }
    const auto errorCodes = CodesOrNone(printer.errorCodes);
    for (const quint16 code : errorCodes) {
        reply.items.append(QZError(code));
    }
    const auto warningCodes = CodesOrNone(printer.warningCodes);
    for (const quint16 code : warningCodes) {
        reply.items.append(QZWarning(code));
    }
    reply.items.append(QZToner(static_cast<quint8>(printer.supplies.value(SupplyField::RemainingToner))));
    return EncodeQZReply(reply);
}

// Inside quotes, commas and semicolons have no meaning, and blanks at both ends are kept. QSettings takes a leading @
// for a typed value unless it is doubled. Scenarios contain no line ends, but tests do.
QByteArray QuotedIniValue(const QString& text)
{
    QByteArray value = text.toUtf8();
    value.replace('\\', "\\\\");
    value.replace('"', "\\\"");
    value.replace('\n', "\\n");
    if (value.startsWith('@')) {
        value.prepend('@');
    }
    return '"' + value + '"';
}

} // namespace

QByteArray EncodeStatusReply(const SimulatedPrinter& printer)
{
    return printer.family == PrinterFamily::QZ ? EncodeQZ(printer) : EncodeStandard(printer);
}

QByteArray StatusFileBytes(const SimulatedPrinter& printer)
{
    return printer.content == StatusFileContent::Raw ? printer.rawContent : EncodeStatusReply(printer);
}

QByteArray EncodePrinterList(const QVector<SimulatedPrinter>& printers)
{
    QByteArray sections;
    int count = 0;
    for (const SimulatedPrinter& printer : printers) {
        if (!printer.listed) {
            continue;
        }
        sections += "\n[printer_" + QByteArray::number(count) + "]\n";
        sections += "Name=" + QuotedIniValue(printer.name) + '\n';
        sections += "Model=" + QuotedIniValue(printer.model) + '\n';
        sections += "ConnectType=" + QByteArray::number(printer.connectType) + '\n';
        sections += "Port=" + QuotedIniValue(printer.port) + '\n';
        sections += "URI=" + QuotedIniValue(printer.uri) + '\n';
        ++count;
    }
    return "[Main]\nCount=" + QByteArray::number(count) + '\n' + sections;
}
