// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// The files and folders that this program shares with the driver package. All paths are absolute and fixed. A
/// directory ends in a slash, so that a file name can be appended.
namespace FixedPaths {

/// The folder of the printer list and the status files. The driver package writes it; this program only reads it.
constexpr char ConfigurationDirectory[] = "/opt/tolmar/tolmar-printer-q727/cfg/";
/// The list of installed printers (INI, UTF-8), written by the driver package.
constexpr char PrinterListFile[] = "/opt/tolmar/tolmar-printer-q727/cfg/printerlist.ini";
/// The path of a status file is the configuration directory, the queue name and this extension.
constexpr char StatusFileExtension[] = ".dat";
/// This program's own folder, for log files and short-lived command output.
constexpr char ToolDirectory[] = "/opt/tolmar/tolmar-printer-q727/tool/";
/// The driver package's firmware-update tool.
constexpr char FirmwareUpdateTool[] = "/opt/tolmar/tolmar-printer-q727/bin/tolmarQ727FW";
/// The desktop starts the entries in this folder at login.
constexpr char AutoStartDirectory[] = "/opt/apps/tolmar-printer-q727/entries/autostart/";
/// The entry's file name, both in the auto-start directory and beside the executable.
constexpr char AutoStartEntryName[] = "tolmar-q727-tool-autostart.desktop";

} // namespace FixedPaths
