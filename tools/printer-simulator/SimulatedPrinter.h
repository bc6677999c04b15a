// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include "StatusReplyEncoder.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

enum class PrinterFamily
{
    Standard,
    QZ,
};

enum class StatusFileContent
{
    Reply, // what the printer reports
    Raw, // SimulatedPrinter::rawContent
    Missing, // there is no status file
};

constexpr int ConnectTypeUsb = 1;
constexpr int ConnectTypeNetwork = 2; // any value but 1 stands for the network

struct SimulatedPrinter
{
    // The entry in the printer list.
    QString name = {}; // queue name; also names the status file
    QString model = {};
    int connectType = ConnectTypeUsb;
    QString port = {};
    QString uri = {};
    bool listed = true;

    // What the printer reports. Of a QZ printer only the status, the codes and RemainingToner go on the wire.
    PrinterFamily family = PrinterFamily::Standard;
    quint8 status = 0; // raw status code of the family
    QVector<quint16> errorCodes = {};
    QVector<quint16> warningCodes = {};
    QByteArray vendorName = {};
    QByteArray productName = {};
    QByteArray serialNumber = {};
    QByteArray firmwareVersion = {};
    QByteArray extraInfo = {};
    QByteArray supplySerialNumber = {};
    QMap<SupplyField, quint32> supplies = {}; // RemainingToner of a QZ printer is in whole percent

    StatusFileContent content = StatusFileContent::Reply;
    QByteArray rawContent = {};
    int revision = 0; // of the status file; a new revision is written even when its bytes are the old ones
};

// The printer's reply in the format of its family.
QByteArray EncodeStatusReply(const SimulatedPrinter& printer);

// The bytes that lie in the status file now; meaningless for a missing one.
QByteArray StatusFileBytes(const SimulatedPrinter& printer);

// The printer list file with the listed printers, in their order: UTF-8, as QSettings reads the INI format.
QByteArray EncodePrinterList(const QVector<SimulatedPrinter>& printers);
