// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/// Reads what the log has left in the tool directory.
namespace LogFolder {

/// The sorted names of the log files, without the directory.
QStringList Names();
QString Path(const QString& name);
/// The lines of the only log file, without their ends. Empty unless there is exactly one file.
QList<QByteArray> Lines();
QList<QByteArray> Lines(const QString& name);
/// The part of a line after "[date time] ". Empty if the line does not begin with that.
QByteArray WithoutTime(const QByteArray& line);

} // namespace LogFolder
