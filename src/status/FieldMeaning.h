// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrinterReport.h"

#include <QVariant>

/// What a field of a reply is called: for programs, in English and in Chinese.
struct FieldName
{
    const char* key;
    const char* english;
    const char* chinese;
};

const FieldName& NameOf(ReplyField field);

/// What the decoder makes of one field.
struct FieldMeaning
{
    QVariant value; ///< a number (double) or a text; invalid if the decoder does not read the field
    QString english; ///< explains the value, if there is something to explain
    QString chinese;
};

/// The meaning of each field of the layout, in its order.
QVector<FieldMeaning> MeaningsOf(const DecodedReply& reply);
