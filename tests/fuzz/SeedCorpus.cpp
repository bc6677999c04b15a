// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SeedCorpus.h"

#include "SampleReplies.h"
#include "SimulatedPrinter.h"

namespace {

using Seeds = QMap<QString, QByteArray>;

StandardReply ReplyWithSupplies(const QVector<ReplyRecord>& records)
{
    StandardReply reply;
    reply.supplies = records;
    return reply;
}

StandardReply ReplyWithStatus(quint8 status)
{
    StandardReply reply;
    reply.status = status;
    return reply;
}

StandardReply ReplyWithLongTexts()
{
    StandardReply reply;
    reply.vendorName = QByteArray(300, 'v');
    reply.productName = QByteArray(256, 'p');
    reply.serialNumber = QByteArray(20, 's');
    reply.firmwareVersion = QByteArray(255, 'f');
    reply.supplies = {SupplySerialNumber(QByteArray(64, 't'))};
    return reply;
}

StandardReply ReplyWithManyCodes()
{
    StandardReply reply;
    reply.errorCodes = {0x0100, 0x0110, 0x0202, 0x1106, 0x110E, 0x1123, 0x11B8, 0x11B9, 0x11C6, 0x1212,
                        0x121F, 0x1302, 0x2100, 0x2200, 0x4100, 0x4214, 0x5000, 0x6800, 0xE100, 0xFFFF};
    reply.warningCodes = reply.errorCodes;
    return reply;
}

StandardReply ReplyThatAnnouncesMore(const AnnouncedLengths& announced)
{
    StandardReply reply = FullReply();
    reply.announced = announced;
    return reply;
}

Seeds StandardReplies()
{
    const auto pages = SupplyValue(SupplyField::Pages, 0x12345678);
    AnnouncedLengths longVendorName;
    longVendorName.vendorName = 0xFFFF;
    AnnouncedLengths moreErrors;
    moreErrors.errorCodes = 255;
    AnnouncedLengths moreSupplies;
    moreSupplies.supplies = 11;
    const QMap<QString, StandardReply> replies{
        {QStringLiteral("every-field"), FullReply()},
        {QStringLiteral("nothing-but-lengths"), {}},
        {QStringLiteral("long-texts"), ReplyWithLongTexts()},
        {QStringLiteral("many-codes"), ReplyWithManyCodes()},
        {QStringLiteral("status-20"), ReplyWithStatus(20)},
        {QStringLiteral("pages-without-prints"), ReplyWithSupplies({pages})},
        {QStringLiteral("pages-after-prints"), ReplyWithSupplies({SupplyValue(SupplyField::Prints, 7), pages})},
        {QStringLiteral("record-without-data"), ReplyWithSupplies({pages, {0x1000, {}}})},
        {QStringLiteral("record-of-255-bytes"), ReplyWithSupplies({{0x1001, QByteArray(255, '\x77')}})},
        {QStringLiteral("unknown-record"), ReplyWithSupplies({{0x2000, "unknown"}, pages})},
        {QStringLiteral("vendor-name-beyond-the-end"), ReplyThatAnnouncesMore(longVendorName)},
        {QStringLiteral("errors-beyond-the-end"), ReplyThatAnnouncesMore(moreErrors)},
        {QStringLiteral("one-record-missing"), ReplyThatAnnouncesMore(moreSupplies)},
    };
    Seeds seeds;
    for (auto reply = replies.begin(); reply != replies.end(); ++reply) {
        seeds.insert(QStringLiteral("standard-reply/%1.dat").arg(reply.key()), EncodeStandardReply(reply.value()));
    }
    return seeds;
}

QZReply ReplyWithItems(const QVector<ReplyRecord>& items, std::optional<quint8> announcedItems = {})
{
    QZReply reply;
    reply.items = items;
    reply.announcedItems = announcedItems;
    return reply;
}

QZReply QZReplyWithManyCodes()
{
    QZReply reply;
    const StandardReply standard = ReplyWithManyCodes();
    for (const quint16 code : standard.errorCodes) {
        reply.items.append(QZError(code));
        reply.items.append(QZWarning(code));
    }
    return reply;
}

Seeds QZReplies()
{
    const auto error = QZError(0x1106);
    const auto toner = QZToner(80);
    const QMap<QString, QZReply> replies{
        {QStringLiteral("every-item"),
         ReplyWithItems({QZMachineState(3), QZJobState(2), error, QZWarning(0x110D), toner})},
        {QStringLiteral("every-state"),
         ReplyWithItems({QZMachineState(1), QZMachineState(2), QZMachineState(3), QZMachineState(4), QZMachineState(5),
                         QZJobState(1), QZJobState(2), QZJobState(3), QZJobState(4)})},
        {QStringLiteral("many-codes"), QZReplyWithManyCodes()},
        {QStringLiteral("no-items"), ReplyWithItems({})},
        {QStringLiteral("no-errors-said-so"), ReplyWithItems({QZMachineState(1), error, QZError(0), QZWarning(0)})},
        {QStringLiteral("unknown-item"), ReplyWithItems({{0x0020, "\x01\x02"}, toner}, 4)},
        {QStringLiteral("state-of-two-bytes"), ReplyWithItems({{0x0006, "\x01\x02"}, toner}, 4)},
        {QStringLiteral("codes-of-other-lengths"),
         ReplyWithItems({{0x0009, {}},
                         {0x0009, "\x11"},
                         {0x0009, "\x11\x06\x01"},
                         {0x000C, "\x11\x06\x01\x02"},
                         {0x000C, QByteArray(255, '\x11')}})},
        {QStringLiteral("toner-without-data"), ReplyWithItems({toner, {0x001D, {}}, error})},
        {QStringLiteral("ends-with-toner-without-data"), ReplyWithItems({error, {0x001D, {}}})},
        {QStringLiteral("ends-with-error-without-data"), ReplyWithItems({toner, {0x0009, {}}})},
        {QStringLiteral("error-one-byte-short"), ReplyWithItems({toner, {0x0009, "\x11", 2}})},
        {QStringLiteral("error-far-beyond-the-end"), ReplyWithItems({toner, {0x0009, "\x11", 255}})},
        {QStringLiteral("fewer-items-than-announced"), ReplyWithItems({QZMachineState(1), toner}, 5)},
    };
    Seeds seeds;
    for (auto reply = replies.begin(); reply != replies.end(); ++reply) {
        seeds.insert(QStringLiteral("qz-reply/%1.dat").arg(reply.key()), EncodeQZReply(reply.value()));
    }
    seeds.insert(QStringLiteral("qz-reply/39-bytes.dat"), EncodeQZReply(ReplyWithItems({toner})).left(39));
    return seeds;
}

Seeds PrinterLists()
{
    const QString model = QStringLiteral("K4510A");
    const SimulatedPrinter usb{QStringLiteral("办公室_K4510A"), model, ConnectTypeUsb, QStringLiteral("USB001"),
                               QStringLiteral("usb://Tolmar/QV%20K4510A?serial=QVK451A000173")};
    const SimulatedPrinter network{QStringLiteral("Lab_J4990E"), model, ConnectTypeNetwork, QStringLiteral("10.0.0.9"),
                                   QStringLiteral("socket://10.0.0.9:9100")};
    const SimulatedPrinter awkward{QStringLiteral("@Variant(\\x41, \"b\"; c)"), model, -1, QStringLiteral("  a,b;c  "),
                                   QStringLiteral("@@[Main]=%s")};
    return {
        {QStringLiteral("printer-list/no-printers.ini"), EncodePrinterList({})},
        {QStringLiteral("printer-list/two-printers.ini"), EncodePrinterList({usb, network})},
        {QStringLiteral("printer-list/awkward-texts.ini"), EncodePrinterList({awkward})},
        {QStringLiteral("printer-list/cut.ini"), EncodePrinterList({usb, network}).left(100)},
    };
}

} // namespace

QMap<QString, QByteArray> SeedCorpus()
{
    Seeds seeds = StandardReplies();
    for (const Seeds& more : {QZReplies(), PrinterLists()}) {
        for (auto seed = more.begin(); seed != more.end(); ++seed) {
            seeds.insert(seed.key(), seed.value());
        }
    }
    return seeds;
}
