// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/// What the log has left in the tool directory.
namespace LogFolder {

/// Names of the log files, sorted; without the directory.
QStringList Names();
QString Path(const QString& name);
/// The lines of the only log file there is, each without its end; none when there is another number of files.
QList<QByteArray> Lines();
QList<QByteArray> Lines(const QString& name);
/// What follows "[date time] " in a line; empty when the line does not begin with that.
QByteArray WithoutTime(const QByteArray& line);

} // namespace LogFolder
