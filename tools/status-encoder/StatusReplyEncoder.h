// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QVector>

#include <optional>

// Builds raw status replies as printers send them. The encoder shares no code with the decoder, so that each can check
// the other.
//
// All integers on the wire are unsigned and big-endian. Texts are raw bytes (UTF-8) without a terminator. Lengths and
// counts are those of the content unless an announced value replaces them, which gives a defective reply. The caller
// must not pass content that is longer than its length field can announce.

// Type (2 bytes), length (1 byte) and data. A standard reply ends with a list of them (supplies records); a QZ reply
// consists of them (items).
struct ReplyRecord
{
    quint16 type = 0;
    QByteArray data = {};
    std::optional<quint8> announcedLength = {};
};

// Supplies records of a standard reply. Types below 0x1000 describe the cartridge. Types from 0x1000 are its counters,
// types from 0x1100 those of the printer.
enum class SupplyField : quint16
{
    SerialNumber = 0x0000, // text, up to 64 bytes
    Type = 0x0001, // 4 bytes
    RemainingToner = 0x1000, // 2 bytes, hundredths of a percent
    WasteToner = 0x1001, // 2 bytes
    OpcRotation = 0x1002, // 2 bytes
    Pages = 0x1003, // 4 bytes
    Prints = 0x1004, // 4 bytes
    PrintDots = 0x1100, // 2 bytes
    PrinterPages = 0x1101, // 4 bytes
    PrinterPrints = 0x1102, // 4 bytes
};

// The number of bytes that a correct printer uses for a numeric field; 0 for SerialNumber, which is a text.
int SupplyFieldWidth(SupplyField field);

ReplyRecord SupplySerialNumber(const QByteArray& serialNumber);

// A numeric supplies record of the correct width. The value must fit.
ReplyRecord SupplyValue(SupplyField field, quint32 value);

struct AnnouncedLengths
{
    std::optional<quint16> vendorName = {};
    std::optional<quint16> productName = {};
    std::optional<quint16> serialNumber = {};
    std::optional<quint8> firmwareVersion = {};
    std::optional<quint8> extraInfo = {};
    std::optional<quint8> errorCodes = {};
    std::optional<quint8> warningCodes = {};
    std::optional<quint8> supplies = {};
};

struct StandardReply
{
    QByteArray header = QByteArray(12, '\0'); // bytes 0 to 11 of the reply
    QByteArray vendorName = {};
    QByteArray productName = {};
    QByteArray serialNumber = {};
    QByteArray reservedBeforeStatus = QByteArray(2, '\0');
    quint8 status = 0;
    QByteArray firmwareVersion = {};
    QByteArray extraInfo = {};
    QVector<quint16> errorCodes = {};
    QVector<quint16> warningCodes = {};
    QByteArray reservedBeforeSupplies = QByteArray(5, '\0'); // three fields of 1, 2 and 2 bytes
    QVector<ReplyRecord> supplies = {};
    AnnouncedLengths announced = {};
};

QByteArray EncodeStandardReply(const StandardReply& reply);

// Items of a QZ reply.
ReplyRecord QZMachineState(quint8 state); // 1 ready, 2 initialize, 3 busy, 4 anything else
ReplyRecord QZJobState(quint8 state); // 1 copying, 2 printing, 3 scanning
ReplyRecord QZError(quint16 code); // 0 means no error
ReplyRecord QZWarning(quint16 code); // 0 means no warning
ReplyRecord QZToner(quint8 percent);

// The machine or job state item for a raw status code of the QZ family: 3 ready, 4 initialize, 5 busy, 8 printing,
// 9 scanning, 10 copying, 12 unknown. The wire format has no item for other codes.
std::optional<ReplyRecord> QZStatus(quint8 statusCode);

struct QZReply
{
    QByteArray header = QByteArray(36, '\0'); // bytes 0 to 35 of the reply
    QVector<ReplyRecord> items = {};
    std::optional<quint8> announcedItems = {};
};

QByteArray EncodeQZReply(const QZReply& reply);
