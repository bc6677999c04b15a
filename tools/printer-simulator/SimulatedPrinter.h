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
    Reply, // the printer's report
    Raw, // SimulatedPrinter::rawContent
    Missing, // the file does not exist
};

constexpr int ConnectTypeUsb = 1;
constexpr int ConnectTypeNetwork = 2; // any value except 1 means network

struct SimulatedPrinter
{
    // The entry in the printer list.
    QString name = {}; // queue name, also the name of the status file
    QString model = {};
    int connectType = ConnectTypeUsb;
    QString port = {};
    QString uri = {};
    bool listed = true;

    // The report. A QZ reply contains only the status, the codes and RemainingToner.
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
    QMap<SupplyField, quint32> supplies = {}; // for a QZ printer, RemainingToner is in whole percent

    StatusFileContent content = StatusFileContent::Reply;
    QByteArray rawContent = {};
    int revision = 0; // of the status file; a new revision is written even if its bytes are the same
};

// The printer's reply in the format of its family.
QByteArray EncodeStatusReply(const SimulatedPrinter& printer);

// The current bytes of the status file; undefined if the file is missing.
QByteArray StatusFileBytes(const SimulatedPrinter& printer);

// The printer list with the listed printers in their order: UTF-8, in the INI format of QSettings.
QByteArray EncodePrinterList(const QVector<SimulatedPrinter>& printers);
