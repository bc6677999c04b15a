// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// A worker that was let go may return from a command while static objects are being destroyed. The last destructor of
// all uses everything that such a worker can still reach.

#include "infrastructure/UtilLog.h"
#include "PrinterFolder.h"
#include "records/ModelCatalogue.h"
#include "SampleRecords.h"
#include "SampleReplies.h"
#include "StatusWorker.h"

#include <cstdio>
#include <unistd.h>

namespace {

const char* FirstFault()
{
    // Allocates strings, so that freed memory is reused.
    const QStringList others{QString(20, QLatin1Char('a')), QString(40, QLatin1Char('b')),
                             QString(60, QLatin1Char('c'))};
    const QString name = QStringLiteral("Hall J4990E");
    if (!IsQZPrinterName(name) || others.size() != 3) {
        return "the names of the QZ family are lost";
    }
    QList<stPrinterManager> list{FilledPrinter(name)};
    PrinterFolder::WriteStatusFile(name, QZBytes(55));
    StatusWorker worker;
    worker.Init(0, &list);
    if (worker.runCycle() != 1 || list.first().stState.dwRemainingToner != 55) {
        return "a cycle finds nothing";
    }
    worker.Init(-1, nullptr);
    if (worker.runCycle() != 0) {
        return "a worker that was let go goes on";
    }
    WriteStringLog("late", 1, "main", QStringLiteral("%s"), "a late line");
    return nullptr;
}

class LastOfAll
{
public:
    ~LastOfAll()
    {
        const char* fault = FirstFault();
        if (fault != nullptr) {
            std::fprintf(stderr, "%s\n", fault);
            _exit(1);
        }
        if (system("grep -q 'a late line' /opt/tolmar/tolmar-printer-q727/tool/log_tool*") != 0) {
            std::fprintf(stderr, "the log has lost its file\n");
            _exit(1);
        }
    }
};

// Constructed before all other static objects, hence destroyed after them.
__attribute__((init_priority(101))) const LastOfAll s_lastOfAll;

} // namespace

int main()
{
    PrinterFolder::Create();
    SetLogEnable(true);
    return 0;
}
