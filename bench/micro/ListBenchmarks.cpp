// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Allocations.h"
#include "discovery/TrdDeviceManage.h"
#include "Floors.h"
#include "PrinterFolder.h"

#include <QFile>

#include <array>
#include <cstdio>
#include <fcntl.h>

namespace {

constexpr int PrinterCount = 100;

QList<stPrinterInfo> Printers(const QString& firstPort)
{
    QList<stPrinterInfo> printers;
    for (int i = 0; i < PrinterCount; ++i) {
        const QString number = QString::number(i);
        printers.append(PrinterFolder::Printer(QStringLiteral("Office_K4510A_") + number,
                                               QStringLiteral("192.168.1.") + number,
                                               QStringLiteral("socket://192.168.1.") + number, 2));
    }
    printers[0].strPort = firstPort;
    return printers;
}

/// A device manager that makes one pass at a time. The pause at the end of a pass ends at once.
class DeviceManager : public TrdDeviceManage
{
public:
    DeviceManager()
        : TrdDeviceManage(nullptr)
    {
        bThreadQuit = true;
    }

    void pass()
    {
        bTaskStarted = false;
        SlotTaskStart();
    }
};

void PassOverUnchangedList(benchmark::State& state)
{
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("usb0")));
    QList<stPrinterManager> list;
    DeviceManager manager;
    manager.Init(&list);
    manager.pass();
    const AllocationNote note(state);
    for (auto _ : state) {
        manager.pass();
    }
    if (list.size() != PrinterCount) {
        state.SkipWithError("the list was not read");
    }
}

void ReadAndCompareList(benchmark::State& state)
{
    const QList<stPrinterInfo> printers = Printers(QStringLiteral("usb0"));
    PrinterFolder::WritePrinterList(printers);
    std::vector<QByteArray> namesAndPorts;
    for (const stPrinterInfo& printer : printers) {
        namesAndPorts.push_back('"' + printer.strPrinterName.toUtf8() + '"');
        namesAndPorts.push_back('"' + printer.strPort.toUtf8() + '"');
    }
    const AllocationNote note(state);
    for (auto _ : state) {
        if (!ListsThesePrinters(PrinterFolder::PrinterListPath, namesAndPorts)) {
            state.SkipWithError("the list is not the one written");
        }
    }
}

// Two lists change places before every pass, so that each pass parses the file again and replaces the shared list.
void PassOverChangedList(benchmark::State& state)
{
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("usb0")));
    const QByteArray path(PrinterFolder::PrinterListPath);
    const QByteArray otherPath = path + ".other";
    rename(path.constData(), otherPath.constData());
    PrinterFolder::WritePrinterList(Printers(QStringLiteral("usb1")));
    QList<stPrinterManager> list;
    DeviceManager manager;
    manager.Init(&list);
    int changes = 0;
    QObject::connect(&manager, &TrdDeviceManage::SgnUpdatePrinterList, &manager, [&changes] { ++changes; });
    const AllocationNote note(state);
    for (auto _ : state) {
        renameat2(AT_FDCWD, path.constData(), AT_FDCWD, otherPath.constData(), RENAME_EXCHANGE);
        manager.pass();
    }
    if (static_cast<benchmark::IterationCount>(changes) != state.iterations()) {
        state.SkipWithError("a pass did not see the other list");
    }
}

BENCHMARK(PassOverUnchangedList)->Name("pass over 100 unchanged printers")->Unit(benchmark::kMicrosecond);
BENCHMARK(ReadAndCompareList)->Name("list read + compared")->Unit(benchmark::kMicrosecond);
BENCHMARK(PassOverChangedList)->Name("pass over 100 changed printers")->Unit(benchmark::kMicrosecond);

} // namespace
