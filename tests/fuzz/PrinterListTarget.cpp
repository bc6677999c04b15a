// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "FuzzTarget.h"
#include "PrinterFolder.h"
#include "Requirement.h"
#include "TrdDeviceManage.h"

#include <QSettings>

#include <algorithm>

namespace {

constexpr int MaximumPrinters = 1000;

// Other types come about only when bytes of the file are taken for a stored object.
bool IsPlain(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.type())) {
    case QMetaType::UnknownType:
    case QMetaType::QString:
    case QMetaType::QStringList:
    case QMetaType::QByteArray:
    case QMetaType::QPoint:
    case QMetaType::QRect:
    case QMetaType::QSize:
        return true;
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        return std::all_of(list.begin(), list.end(), IsPlain);
    }
    default:
        return false;
    }
}

bool AreAllValuesPlain()
{
    QSettings settings(QString::fromLatin1(PrinterFolder::PrinterListPath), QSettings::IniFormat);
    settings.setIniCodec("utf-8");
    const QStringList keys = settings.allKeys();
    return std::all_of(keys.begin(), keys.end(),
                       [&settings](const QString& key) { return key.isEmpty() || IsPlain(settings.value(key)); });
}

} // namespace

// To be run in a sandbox only. Each file bears a modification time of its own: QSettings keeps what it has read, and
// tells files apart by size and time.
int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const auto text = QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size));
    [[maybe_unused]] static const bool s_hasFolder = (PrinterFolder::Create(), true);
    PrinterFolder::WritePrinterListText(text);
    const int count = TrdDeviceManage(nullptr).GetPrinterInfo(true).size();
    Require(count <= MaximumPrinters, "there are no more printers than can be");
    Require(count == 0 || AreAllValuesPlain(), "no object that is stored in a list is brought to life");
    Require(PrinterFolder::ReadFile(QString::fromLatin1(PrinterFolder::PrinterListPath)) == text,
            "the list file is not changed");
    return 0;
}
