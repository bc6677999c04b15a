// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/CommandLine.h"
#include "status/PrinterReport.h"
#include "status/ReportFields.h"

#include <QFileDevice>

constexpr int ExitDone = 0;
constexpr int ExitNotRead = 1; ///< something could not be read or written; the rest was printed
constexpr int ExitUsage = 2;

/// An option that only one command has.
struct CommandOption
{
    const char* name;
    const char* value; ///< what the help calls it; null for a switch
    const char* valid; ///< the valid values; null if the command checks them
};

struct Command
{
    const char* name;
    const char* arguments; ///< as the help shows them
    int fewestArguments;
    int mostArguments;
    const char* formats; ///< the valid values of --format
    bool hasFields; ///< takes --fields
    const char* english; ///< what it does, for the help
    const char* chinese;
    int (*run)(const CommandLine& line);
    QVector<CommandOption> options;
};

const QVector<Command>& Commands();
/// Null if there is no such command.
const Command* FindCommand(const QString& name);

int RunList(const CommandLine& line);
int RunShow(const CommandLine& line);
int RunDecode(const CommandLine& line);
int RunWatch(const CommandLine& line);
int RunRecord(const CommandLine& line);
int RunMetrics(const CommandLine& line);
/// Returns an exit code of monitoring plug-ins.
int RunCheck(const CommandLine& line);
/// Says why there is no check, and returns the exit code.
int RefuseCheck(const QString& reason);

/// Reads the folder that the command line chooses, without serial numbers if it says so. Says on the standard error
/// what cannot be read, and then sets `exitCode`.
PrinterReports ReadReports(const CommandLine& line, int& exitCode);
/// The reports in the format that the command line chooses. Without --fields, table and terse have `defaultFields`.
using TableFormat = QByteArray (*)(const PrinterReports& reports, const QVector<const ReportField*>& fields,
                                   const QDateTime& now, const CommandLine& line);
QByteArray FormatReports(const PrinterReports& reports, const CommandLine& line, const QStringList& defaultFields,
                         TableFormat formatTable);
/// Writes to the standard output. Returns false, with a message, if that fails.
bool Print(const QByteArray& text);
/// Replaces a file as a whole, so that it is never half-written. Without permissions it gets those of any new file.
/// Returns false, with a message, if that fails.
bool SaveFile(const QString& path, const QByteArray& text, QFileDevice::Permissions permissions = {});
/// Writes a line to the standard error, with escaped control characters.
void Complain(const QString& message);
void ComplainAboutList(const CommandLine& line);
