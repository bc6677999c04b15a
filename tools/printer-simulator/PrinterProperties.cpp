// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "PrinterProperties.h"

#include "ScenarioWords.h"

#include <QHash>

#include <functional>
#include <limits>

namespace {

constexpr int MaximumCodes = 100;
constexpr int MaximumTextBytes = 255;
constexpr int MaximumSupplySerialBytes = 64;
constexpr int MaximumGarbageBytes = 65536;
constexpr quint32 FullTonerHundredths = 10000; // of a percent
constexpr quint32 FullTonerPercent = 100;

enum class PropertyKind
{
    List, // part of the printer list; the status file does not change
    Report, // part of every reply; restores a good reply in the status file
    StandardReport, // the same, but not part of a QZ reply
    File, // changes the status file itself
};

using Setter = std::function<QString(SimulatedPrinter&, const QStringList&)>; // returns an error message or nothing

struct PrinterProperty
{
    PropertyKind kind;
    int fewestValues;
    int mostValues;
    Setter set;
};

struct StatusName
{
    const char* name;
    quint8 standardCode;
    int qzCode; // negative: a QZ reply cannot express the status
};

constexpr StatusName StatusNames[] = {
    {"ready", 0, 3},     {"initialize", 1, 4}, {"busy", 2, 5},      {"cancelling", 3, -1}, {"unknown", 4, 12},
    {"printing", 16, 8}, {"scanning", 17, 9},  {"copying", 18, 10}, {"reporting", 19, -1},
};

QString SetStatusCode(SimulatedPrinter& printer, const QString& word, int code)
{
    if (printer.family == PrinterFamily::QZ && (code < 0 || !QZStatus(static_cast<quint8>(code)))) {
        return QStringLiteral("a QZ printer cannot report the status \"%1\"").arg(word);
    }
    printer.status = static_cast<quint8>(code);
    return {};
}

QString SetStatus(SimulatedPrinter& printer, const QStringList& values)
{
    const QString& word = values.first();
    if (word.startsWith(QLatin1String("raw:"))) {
        const auto code = ParseDecimal(word.mid(4), 0, std::numeric_limits<quint8>::max());
        return code ? SetStatusCode(printer, word, static_cast<int>(*code))
                    : QStringLiteral("raw: needs a number from 0 to 255");
    }
    for (const StatusName& status : StatusNames) {
        if (word == QLatin1String(status.name)) {
            const bool isQZ = printer.family == PrinterFamily::QZ;
            return SetStatusCode(printer, word, isQZ ? status.qzCode : status.standardCode);
        }
    }
    return QStringLiteral("\"%1\" is not a status").arg(word);
}

QString SetToner(SimulatedPrinter& printer, const QStringList& values)
{
    const bool isQZ = printer.family == PrinterFamily::QZ;
    const auto toner =
        isQZ ? ParseDecimal(values.first(), 0, FullTonerPercent) : ParseDecimal(values.first(), 2, FullTonerHundredths);
    if (!toner) {
        return isQZ ? QStringLiteral("toner of a QZ printer must be in whole percent, 0 to 100")
                    : QStringLiteral("toner must be in percent, 0 to 100, with at most two decimals");
    }
    printer.supplies.insert(SupplyField::RemainingToner, *toner);
    return {};
}

QString SetConnection(SimulatedPrinter& printer, const QStringList& values)
{
    if (values.first() == QLatin1String("usb")) {
        printer.connectType = ConnectTypeUsb;
    } else if (values.first() == QLatin1String("network")) {
        printer.connectType = ConnectTypeNetwork;
    } else {
        return QStringLiteral("a connection must be usb or network");
    }
    return {};
}

QString Vanish(SimulatedPrinter& printer, const QStringList& /*values*/)
{
    printer.content = StatusFileContent::Missing;
    return {};
}

// 64 bytes that both decoders reject. The vendor name of a standard reply, and the error that is the first item of a
// QZ reply, announce more bytes than follow.
QByteArray RejectedReply()
{
    constexpr int firstQZItem = 37;
    QByteArray bytes(64, '\xFF');
    return bytes.replace(firstQZItem, 3, QByteArray::fromHex("0009FF"));
}

QString SetGarbage(SimulatedPrinter& printer, const QStringList& values)
{
    const QByteArray digits = values.join(QString()).toLatin1();
    const QByteArray bytes = QByteArray::fromHex(digits);
    if (bytes.toHex() != digits.toLower()) {
        return QStringLiteral("the bytes must be pairs of hexadecimal digits");
    }
    if (bytes.size() > MaximumGarbageBytes) {
        return QStringLiteral("a status file may have at most %1 bytes").arg(MaximumGarbageBytes);
    }
    printer.content = StatusFileContent::Raw;
    printer.rawContent = values.isEmpty() ? RejectedReply() : bytes;
    return {};
}

QString Truncate(SimulatedPrinter& printer, const QStringList& values)
{
    const QByteArray reply = EncodeStatusReply(printer);
    const auto size = ParseDecimal(values.first(), 0, static_cast<quint32>(reply.size() - 1));
    if (!size) {
        return QStringLiteral("the current reply has %1 bytes; truncate needs a smaller number").arg(reply.size());
    }
    printer.content = StatusFileContent::Raw;
    printer.rawContent = reply.left(static_cast<int>(*size));
    return {};
}

QString Refresh(SimulatedPrinter& printer, const QStringList& /*values*/)
{
    printer.content = StatusFileContent::Reply;
    return {};
}

PrinterProperty ListText(QString SimulatedPrinter::*member)
{
    const Setter set = [member](SimulatedPrinter& printer, const QStringList& values) {
        printer.*member = values.first();
        return QString();
    };
    return {PropertyKind::List, 1, 1, set};
}

PrinterProperty ReportText(QByteArray SimulatedPrinter::*member, int maximumBytes)
{
    const Setter set = [member, maximumBytes](SimulatedPrinter& printer, const QStringList& values) {
        const QByteArray text = values.first().toUtf8();
        if (text.size() > maximumBytes) {
            return QStringLiteral("the text has %1 bytes, more than %2").arg(text.size()).arg(maximumBytes);
        }
        printer.*member = text;
        return QString();
    };
    return {PropertyKind::StandardReport, 1, 1, set};
}

PrinterProperty ReportNumber(SupplyField field)
{
    const quint32 maximum =
        SupplyFieldWidth(field) == 2 ? std::numeric_limits<quint16>::max() : std::numeric_limits<quint32>::max();
    const Setter set = [field, maximum](SimulatedPrinter& printer, const QStringList& values) {
        const auto value = ParseDecimal(values.first(), 0, maximum);
        if (!value) {
            return QStringLiteral("needs a whole number from 0 to %1").arg(maximum);
        }
        printer.supplies.insert(field, *value);
        return QString();
    };
    return {PropertyKind::StandardReport, 1, 1, set};
}

PrinterProperty ReportCodes(QVector<quint16> SimulatedPrinter::*member)
{
    const Setter set = [member](SimulatedPrinter& printer, const QStringList& values) {
        QVector<quint16> codes;
        if (values != QStringList(QStringLiteral("none"))) {
            for (const QString& word : values) {
                const auto code = ParseCode(word);
                if (!code) {
                    return QStringLiteral("\"%1\" is not a code such as 0x11B0").arg(word);
                }
                codes.append(*code);
            }
        }
        printer.*member = codes;
        return QString();
    };
    return {PropertyKind::Report, 1, MaximumCodes, set};
}

const QHash<QString, PrinterProperty>& Properties()
{
    static const QHash<QString, PrinterProperty> properties = {
        {QStringLiteral("model"), ListText(&SimulatedPrinter::model)},
        {QStringLiteral("connection"), {PropertyKind::List, 1, 1, SetConnection}},
        {QStringLiteral("port"), ListText(&SimulatedPrinter::port)},
        {QStringLiteral("uri"), ListText(&SimulatedPrinter::uri)},
        {QStringLiteral("status"), {PropertyKind::Report, 1, 1, SetStatus}},
        {QStringLiteral("toner"), {PropertyKind::Report, 1, 1, SetToner}},
        {QStringLiteral("errors"), ReportCodes(&SimulatedPrinter::errorCodes)},
        {QStringLiteral("warnings"), ReportCodes(&SimulatedPrinter::warningCodes)},
        {QStringLiteral("vendor"), ReportText(&SimulatedPrinter::vendorName, MaximumTextBytes)},
        {QStringLiteral("product"), ReportText(&SimulatedPrinter::productName, MaximumTextBytes)},
        {QStringLiteral("serial"), ReportText(&SimulatedPrinter::serialNumber, MaximumTextBytes)},
        {QStringLiteral("firmware"), ReportText(&SimulatedPrinter::firmwareVersion, MaximumTextBytes)},
        {QStringLiteral("extra"), ReportText(&SimulatedPrinter::extraInfo, MaximumTextBytes)},
        {QStringLiteral("supply-serial"), ReportText(&SimulatedPrinter::supplySerialNumber, MaximumSupplySerialBytes)},
        {QStringLiteral("supply-type"), ReportNumber(SupplyField::Type)},
        {QStringLiteral("waste"), ReportNumber(SupplyField::WasteToner)},
        {QStringLiteral("drum"), ReportNumber(SupplyField::OpcRotation)},
        {QStringLiteral("pages"), ReportNumber(SupplyField::Pages)},
        {QStringLiteral("prints"), ReportNumber(SupplyField::Prints)},
        {QStringLiteral("dots"), ReportNumber(SupplyField::PrintDots)},
        {QStringLiteral("printer-pages"), ReportNumber(SupplyField::PrinterPages)},
        {QStringLiteral("printer-prints"), ReportNumber(SupplyField::PrinterPrints)},
        {QStringLiteral("vanish"), {PropertyKind::File, 0, 0, Vanish}},
        {QStringLiteral("garbage"), {PropertyKind::File, 0, MaximumGarbageBytes, SetGarbage}},
        {QStringLiteral("reply"), {PropertyKind::File, 1, MaximumGarbageBytes, SetGarbage}},
        {QStringLiteral("truncate"), {PropertyKind::File, 1, 1, Truncate}},
        {QStringLiteral("refresh"), {PropertyKind::File, 0, 0, Refresh}},
    };
    return properties;
}

} // namespace

bool IsPrinterProperty(const QString& name)
{
    return Properties().contains(name);
}

QString SetPrinterProperty(SimulatedPrinter& printer, const QString& name, const QStringList& values, int revision)
{
    const auto property = Properties().constFind(name);
    if (property == Properties().constEnd()) {
        return QStringLiteral("\"%1\" is not known").arg(name);
    }
    if (values.size() < property->fewestValues) {
        return QStringLiteral("\"%1\" needs a value").arg(name);
    }
    if (values.size() > property->mostValues) {
        return QStringLiteral("\"%1\" takes at most %2 values, not %3")
            .arg(name, QString::number(property->mostValues), QString::number(values.size()));
    }
    if (property->kind == PropertyKind::StandardReport && printer.family == PrinterFamily::QZ) {
        return QStringLiteral("a QZ printer does not report \"%1\"").arg(name);
    }
    if (property->kind != PropertyKind::List) {
        printer.content = StatusFileContent::Reply;
        printer.revision = revision;
    }
    return property->set(printer, values);
}

quint8 ReadyStatus(PrinterFamily family)
{
    return family == PrinterFamily::QZ ? 3 : 0;
}
