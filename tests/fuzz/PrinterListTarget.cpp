// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/TrdDeviceManage.h"
#include "FuzzTarget.h"
#include "infrastructure/QtGenerations.h"
#include "PrinterFolder.h"
#include "Requirement.h"

#include <QDataStream>
#include <QSettings>

// A stored object that must not be created: other types could allocate any amount of memory.
struct StoredTrap
{
};
QDataStream& operator<<(QDataStream& stream, const StoredTrap& trap);
QDataStream& operator>>(QDataStream& stream, StoredTrap& trap);
Q_DECLARE_METATYPE(StoredTrap)

namespace {

constexpr int MaximumPrinters = 1000;

// A list without these bytes holds no stored object, so QSettings can read it unprotected, unless the encoding is
// broken.
bool IsHarmless(const QByteArray& text)
{
    return !text.contains('\\') && !text.contains('V') && !text.contains('D') && WithValidUtf8(text) == text;
}

void CompareWithSettings(const QList<stPrinterInfo>& printers)
{
    QSettings settings(QString::fromLatin1(PrinterFolder::PrinterListPath), QSettings::IniFormat);
    ReadAsUtf8(settings);
    const int count = IntegerOf(settings.value(QStringLiteral("Main/Count")));
    Require(printers.size() == qBound(0, count, MaximumPrinters), "all printers are listed");
    for (int i = 0; i < printers.size(); ++i) {
        settings.beginGroup(QStringLiteral("printer_%1").arg(i));
        const stPrinterInfo& info = printers.at(i);
        Require(info.strPrinterName == settings.value(QStringLiteral("Name")).toString() &&
                    info.enType == settings.value(QStringLiteral("Model")).toString() &&
                    info.iConnectType == IntegerOf(settings.value(QStringLiteral("ConnectType"))) &&
                    info.strPort == settings.value(QStringLiteral("Port")).toString() &&
                    info.strURI == settings.value(QStringLiteral("URI")).toString(),
                "a list without stored objects is read as QSettings reads it");
        settings.endGroup();
    }
}

} // namespace

QDataStream& operator<<(QDataStream& stream, const StoredTrap& /*trap*/)
{
    return stream;
}

QDataStream& operator>>(QDataStream& stream, StoredTrap& /*trap*/)
{
    Require(false, "no stored object is created");
    return stream;
}

static bool Prepare()
{
    PrinterFolder::Create();
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    qRegisterMetaTypeStreamOperators<StoredTrap>("StoredTrap");
#else
    qRegisterMetaType<StoredTrap>("StoredTrap"); // with its stream operators
#endif
    return true;
}

// Run this only in a sandbox. Each file gets a unique timestamp because QSettings caches files by size and timestamp.
int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const auto text = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size));
    [[maybe_unused]] static const bool s_isPrepared = Prepare();
    PrinterFolder::WritePrinterListText(text);
    const QList<stPrinterInfo> printers = TrdDeviceManage(nullptr).GetPrinterInfo(true);
    Require(printers.size() <= MaximumPrinters, "the number of printers is within the limit");
    if (IsHarmless(text)) {
        CompareWithSettings(printers);
    }
    Require(PrinterFolder::ReadFile(QString::fromLatin1(PrinterFolder::PrinterListPath)) == text,
            "the list file is not changed");
    return 0;
}
