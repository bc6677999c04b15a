// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Where the printer driver package keeps what this program shares with it. All paths are absolute and fixed;
/// a directory ends in a slash, so that a file name can be appended as it stands.
namespace FixedPaths {

/// The driver package's folder of the printer list and the status files; this program only reads it.
constexpr char ConfigurationDirectory[] = "/opt/tolmar/tolmar-printer-q727/cfg/";
/// The list of installed printers (INI, UTF-8), written by the driver package.
constexpr char PrinterListFile[] = "/opt/tolmar/tolmar-printer-q727/cfg/printerlist.ini";
/// A printer's status file is the configuration directory, the queue name and this.
constexpr char StatusFileExtension[] = ".dat";
/// This program's own folder: log files and short-lived command output.
constexpr char ToolDirectory[] = "/opt/tolmar/tolmar-printer-q727/tool/";
/// The driver package's firmware-update tool.
constexpr char FirmwareUpdateTool[] = "/opt/tolmar/tolmar-printer-q727/bin/tolmarQ727FW";
/// Entries in here are started by the desktop at login.
constexpr char AutoStartDirectory[] = "/opt/apps/tolmar-printer-q727/entries/autostart/";
/// The entry's name, both in the auto-start directory and beside the executable.
constexpr char AutoStartEntryName[] = "tolmar-q727-tool-autostart.desktop";

} // namespace FixedPaths
