// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/PrinterListFile.h"

#include "discovery/PrinterListSnapshot.h"
#include "infrastructure/QtGenerations.h"

#include <QSettings>

#include <algorithm>

namespace {

// Far more than a desktop has installed; a greater count comes from a broken file.
constexpr int MaximumPrinterCount = 1000;

} // namespace

std::optional<QList<stPrinterInfo>> ReadPrinterList(const QString& path)
{
    const PrinterListSnapshot file(path);
    if (!file.isUsable()) {
        return std::nullopt;
    }
    QList<stPrinterInfo> printers;
    QSettings settings(file.path(), QSettings::IniFormat);
    ReadAsUtf8(settings);
    settings.beginGroup(QStringLiteral("Main"));
    const int count = std::min(IntegerOf(settings.value(QStringLiteral("Count"))), MaximumPrinterCount);
    settings.endGroup();
    const auto text = [&settings](const char* key) {
        return PrinterListSnapshot::text(settings.value(QLatin1String(key)));
    };
    for (int i = 0; i < count; ++i) {
        stPrinterInfo info;
        settings.beginGroup(QString::asprintf("printer_%d", i));
        info.strPrinterName = text("Name");
        info.enType = text("Model");
        info.iConnectType = IntegerOf(settings.value(QStringLiteral("ConnectType")));
        info.strPort = text("Port");
        info.strURI = text("URI");
        settings.endGroup();
        printers.append(info);
    }
    return printers;
}
