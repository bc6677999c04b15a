// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrintedText.h"

#include <QHash>
#include <QProcessEnvironment>
#include <QStringList>

enum class OutputFormat
{
    Table,
    Terse,
    Json
};

/// What the user asks for.
struct CommandLine
{
    QString command = QStringLiteral("list");
    QStringList arguments;
    OutputFormat format = OutputFormat::Table;
    QStringList fields; ///< valid names; empty: the command's own choice
    Language language = Language::Chinese;
    bool isColoured = false;
    bool hidesSerialNumbers = false;
    QString directory;
    QHash<QString, QString> options; ///< the command's own options; a switch has an empty value

    enum class Special
    {
        None,
        Help,
        Version
    };
    Special special = Special::None;
    QString error; ///< not empty: wrong use, with what would be valid
};

/// `isTerminal` says whether the standard output is one.
CommandLine ParseCommandLine(const QStringList& arguments, const QProcessEnvironment& environment, bool isTerminal);
/// The language of the locale that the environment chooses: Chinese unless it names another one.
Language LanguageOf(const QProcessEnvironment& environment);
QString HelpText(Language language);
