// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FuzzTarget.h"
#include "Requirement.h"
#include "status/FieldMeaning.h"
#include "status/PrintedText.h"
#include "status/ReportJson.h"

#include <QJsonDocument>

#include <algorithm>

namespace {

// The fields follow each other. They fill an accepted reply, and a rejected one up to its fault.
void CheckLayout(const DecodedReply& reply)
{
    int end = 0;
    for (const PlacedField& placed : reply.layout.fields) {
        Require(placed.offset == end && placed.size >= 0, "the fields follow each other");
        end += placed.size;
    }
    const std::optional<ReplyFault>& fault = reply.layout.fault;
    Require(fault ? fault->offset == end && fault->left == reply.bytes.size() - end && fault->needed > fault->left
                  : end == reply.bytes.size(),
            "the fields fill the reply, or end where it is cut off");
}

void CheckJson(const DecodedReply& reply)
{
    const QJsonObject written = ReplyJson(reply);
    const QByteArray json = JsonText(written, false);
    const QVector<uint> characters = QString::fromUtf8(json).trimmed().toUcs4();
    Require(std::none_of(characters.begin(), characters.end(), IsHarmful), "JSON is harmless on a terminal");
    const QJsonObject read = QJsonDocument::fromJson(json).object();
    Require(read == written, "JSON says what it was made of");
    const QJsonValue ratio = read.value(QStringLiteral("toner")).toObject().value(QStringLiteral("ratio"));
    Require(ratio.isNull() || (ratio.toDouble() >= 0 && ratio.toDouble() <= 1), "toner is unknown or from 0 to 1");
}

void Check(const PrinterFamily& family, const QByteArray& bytes)
{
    QByteArray copy = bytes;
    UtilPrinterStatus status;
    const unsigned int result =
        (status.*family.decode)(reinterpret_cast<unsigned char*>(copy.data()), static_cast<unsigned long>(copy.size()));
    DecodedReply reply = DecodeReply(family, bytes);
    Require(reply.isAccepted == (result == 1), "a reply is accepted exactly when the decoder accepts it");
    Require(reply.layout.fault.has_value() != reply.isAccepted, "a reply has a fault exactly when it is rejected");
    Require(reply.errorCodes().size() == static_cast<std::size_t>(reply.state.listError.size()) &&
                reply.warningCodes().size() == static_cast<std::size_t>(reply.state.listWarning.size()),
            "each condition has its code");
    CheckLayout(reply);
    Require(MeaningsOf(reply).size() == reply.layout.fields.size(), "each field has a meaning");
    CheckJson(reply);
    HideSerialNumbers(reply);
    Require(reply.bytes.size() == bytes.size() && !LayOutReply(family, reply.bytes).fault == reply.isAccepted,
            "hiding keeps the verdict");
}

} // namespace

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(std::min<std::size_t>(size, 2048)));
    Check(StandardFamily(), bytes);
    Check(QZFamily(), bytes);
    return 0;
}
