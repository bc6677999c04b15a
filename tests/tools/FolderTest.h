// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDir>
#include <QFile>
#include <QObject>
#include <QScopedPointer>
#include <QStringList>
#include <QTemporaryDir>

// A test with a folder that takes the files of the driver package.
class FolderTest : public QObject
{
protected:
    bool MakeFolder()
    {
        m_directory.reset(new QTemporaryDir);
        return m_directory->isValid();
    }
    QString Path(const QString& name) const
    {
        return m_directory->filePath(name);
    }
    QByteArray Content(const QString& name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
    }
    QStringList Files() const
    {
        return QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QScopedPointer<QTemporaryDir> m_directory;
};
