// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/// Plays the driver package: its folders under /opt with the printer list and the status files. To be used in a
/// sandbox only. A helper that fails ends the test program with a message, so that no test goes on with half a folder.
///
/// Every file gets a modification time (milliseconds since 1970) of its own: later than that of any file before and
/// never before the present, unless a test gives the time.
namespace PrinterFolder {

extern const char ConfigurationDirectory[]; ///< ends in a slash
extern const char ToolDirectory[]; ///< ends in a slash
extern const char PrinterListPath[];

/// Makes the package's folders afresh, empty.
void Create();
/// Removes them with all that is in them.
void Remove();

/// A list file with one section a printer. The texts are quoted and read back as they are, whatever they hold.
void WritePrinterList(const QList<stPrinterInfo>& printers);
void WritePrinterListText(const QByteArray& text);
void RemovePrinterList();

QString StatusFilePath(const QString& printerName);
void WriteStatusFile(const QString& printerName, const QByteArray& content);
void WriteStatusFile(const QString& printerName, const QByteArray& content, qint64 modifiedMs);
void RemoveStatusFile(const QString& printerName);

/// Any file, replaced in place or made; the present time or a given one.
void WriteFile(const QString& path, const QByteArray& content);
void WriteFile(const QString& path, const QByteArray& content, qint64 modifiedMs);
QByteArray ReadFile(const QString& path);
void SetModificationTime(const QString& path, qint64 modifiedMs);
qint64 ModificationTime(const QString& path);

/// A printer record as the driver package would list it.
stPrinterInfo Printer(const QString& name, const QString& port = QStringLiteral("usb0"),
                      const QString& uri = QStringLiteral("usb://Tolmar"), int connectType = CONNECT_TYPE_USB);
/// The same as an element of the shared list, in the default state.
stPrinterManager ListedPrinter(const QString& name, const QString& uri = QStringLiteral("usb://Tolmar"));

} // namespace PrinterFolder

/// A command of this name, found before the system's, that records how it is called. Gone with the object.
class FakeCommand
{
public:
    /// `body` is shell text that runs after the call has been recorded, e.g. "echo text", "sleep 2" or "exit 3".
    explicit FakeCommand(const QString& name, const QString& body = QString());
    ~FakeCommand();
    FakeCommand(const FakeCommand&) = delete;
    FakeCommand& operator=(const FakeCommand&) = delete;

    /// The arguments of each call, the first call first.
    QList<QStringList> calls() const;

private:
    QString m_path;
    QString m_recordPath;
};
