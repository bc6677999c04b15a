// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/// Plays the driver package: its folders under /opt with the printer list and the status files. Use it only in a
/// sandbox. A helper that fails ends the test program with a message, so that no test runs with incomplete files.
///
/// Every file gets a unique timestamp (milliseconds since 1970): later than that of any earlier file and never in the
/// past, unless a test specifies it.
namespace PrinterFolder {

extern const char ConfigurationDirectory[]; ///< ends in a slash
extern const char ToolDirectory[]; ///< ends in a slash
extern const char PrinterListPath[];

/// Creates the package's folders, empty.
void Create();
/// Removes the folders with their content.
void Remove();

/// Writes a list file with one section for each printer. The texts are quoted, so that they are read back unchanged.
void WritePrinterList(const QList<stPrinterInfo>& printers);
void WritePrinterListText(const QByteArray& text);
void RemovePrinterList();

QString StatusFilePath(const QString& printerName);
void WriteStatusFile(const QString& printerName, const QByteArray& content);
void WriteStatusFile(const QString& printerName, const QByteArray& content, qint64 modifiedMs);
void RemoveStatusFile(const QString& printerName);

/// Writes a file, atomically. The timestamp is the present or the given one.
void WriteFile(const QString& path, const QByteArray& content);
void WriteFile(const QString& path, const QByteArray& content, qint64 modifiedMs);
QByteArray ReadFile(const QString& path);
void SetModificationTime(const QString& path, qint64 modifiedMs);
qint64 ModificationTime(const QString& path);

/// A printer record as the driver package would list it.
stPrinterInfo Printer(const QString& name, const QString& port = QStringLiteral("usb0"),
                      const QString& uri = QStringLiteral("usb://Tolmar"), int connectType = CONNECT_TYPE_USB);
/// The same printer as an element of the shared list, in the default state.
stPrinterManager ListedPrinter(const QString& name, const QString& uri = QStringLiteral("usb://Tolmar"));

} // namespace PrinterFolder

/// A test double of a command: found before the system's command, records its calls, removed by the destructor.
class FakeCommand
{
public:
    /// `body` is shell text that runs after the call was recorded, for example "echo text", "sleep 2" or "exit 3".
    explicit FakeCommand(const QString& name, const QString& body = QString());
    ~FakeCommand();
    FakeCommand(const FakeCommand&) = delete;
    FakeCommand& operator=(const FakeCommand&) = delete;

    /// The arguments of each call, in order.
    QList<QStringList> calls() const;

private:
    QString m_path;
    QString m_recordPath;
};
