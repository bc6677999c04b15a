// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrinterReport.h"

#include <QJsonObject>

// JSON for programs: the same bytes under every locale. tolmar-q727-status.schema.json describes it. Unknown is null.

/// The version of the format: [major, minor]. A minor version only adds members.
QJsonArray FormatVersion();

/// What a reply says: status, toner, conditions, texts, counters.
QJsonObject ReplyJson(const DecodedReply& reply);
QJsonObject PrinterJson(const PrinterReport& report);
QJsonObject ReportsJson(const PrinterReports& reports, const QString& directory);

/// The document as UTF-8 with a final line feed: indented, or in one line. Control and formatting characters are
/// escaped, so that it can be shown on a terminal.
QByteArray JsonText(const QJsonObject& document, bool isIndented);
