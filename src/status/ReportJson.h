// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrinterReport.h"

#include <QJsonObject>

#include <initializer_list>

// JSON for programs: the same bytes under every locale. tolmar-q727-status.schema.json describes it. Unknown is null.

/// A member of a JSON object.
struct JsonMember
{
    const char* name;
    QJsonValue value;
};
/// Makes an object. A program that uses Qt's own constructors from lists does not start with Qt 5.11.
QJsonObject JsonObject(std::initializer_list<JsonMember> members);

/// The version of the format: [major, minor]. A minor version only adds members.
QJsonArray FormatVersion();

/// What a reply says: status, toner, conditions, texts, counters.
QJsonObject ReplyJson(const DecodedReply& reply);
QJsonObject PrinterJson(const PrinterReport& report);
QJsonObject ReportsJson(const PrinterReports& reports, const QString& directory);

/// The document as UTF-8 with a final line feed: indented, or in one line. Control and formatting characters are
/// escaped, so that it can be shown on a terminal.
QByteArray JsonText(const QJsonObject& document, bool isIndented);
