// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/QtGenerations.h"
#include "status/Commands.h"

#include <QCoreApplication>

#include <unistd.h>

/// Prints what the printers say: the command line in front of the library beside this file.
int main(int argc, char** argv)
{
    // File names and arguments are UTF-8 under every locale, like the printer list.
    UseUtf8EverywhereLocally();
    const QCoreApplication application(argc, argv);
    const CommandLine line = ParseCommandLine(QCoreApplication::arguments().mid(1),
                                              QProcessEnvironment::systemEnvironment(), isatty(STDOUT_FILENO) != 0);
    if (!line.error.isEmpty()) {
        if (line.command == QLatin1String("check")) {
            return RefuseCheck(line.error);
        }
        Complain(line.error);
        return ExitUsage;
    }
    switch (line.special) {
    case CommandLine::Special::Help:
        return Print(HelpText(line.language).toUtf8()) ? ExitDone : ExitNotRead;
    case CommandLine::Special::Version:
        return Print("tolmar-q727-status " BRELPRINTERTOOL_VERSION "\n") ? ExitDone : ExitNotRead;
    case CommandLine::Special::None:
        break;
    }
    return FindCommand(line.command)->run(line);
}
