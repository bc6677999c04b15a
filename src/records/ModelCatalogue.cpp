// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "records/ModelCatalogue.h"

#include <algorithm>

namespace {

constexpr int FamilyVendorId = 0x34FA;
constexpr int OtherGroupVendorId = 0x300E;

// The display name and the driver file follow from the model code.
stModelInfo Model(const QString& code, int pid)
{
    return {code, QStringLiteral("QV ") + code, QStringLiteral("Tolmar_") + code + QStringLiteral(".ppd"),
            FamilyVendorId, pid};
}

std::array<stModelInfo, SupportedModelCount> SupportedModels()
{
    return {{
        Model(QStringLiteral("K4510A"), 0xA5),
        Model(QStringLiteral("K4500A"), 0xA6),
        Model(QStringLiteral("J4510A"), 0xA7),
        Model(QStringLiteral("J4500A"), 0xA8),
        Model(QStringLiteral("K4620A"), 0xA9),
        Model(QStringLiteral("J4610A"), 0xAA),
        Model(QStringLiteral("K4880A"), 0xAB),
        Model(QStringLiteral("J4990E"), 0xAC),
    }};
}

struct ProductPattern
{
    const char* text;
    int pid;
};

// The question mark is part of the name, not a wildcard.
constexpr std::array<ProductPattern, 5> c_productPatterns{{
    {"TP40D?", 0x1061},
    {"TP40DN?", 0x1062},
    {"TM40D?", 0x1063},
    {"TM40AD?", 0x1064},
    {"TM40ADN?", 0x1065},
}};

} // namespace

const std::array<stModelInfo, SupportedModelCount> c_stModelInfoList = SupportedModels();
const std::array<stModelInfo, SupportedModelCount> c_stModelInfoList_net = SupportedModels();
const QStringList& QZModelName = *new QStringList{QStringLiteral("J4990E")};

bool IsQZPrinterName(const QString& name)
{
    return std::any_of(QZModelName.begin(), QZModelName.end(),
                       [&name](const QString& model) { return name.contains(model, Qt::CaseSensitive); });
}

bool FindVidPid(const QString& productName, int& vid, int& pid)
{
    vid = OtherGroupVendorId;
    for (const ProductPattern& pattern : c_productPatterns) {
        if (productName.contains(QLatin1String(pattern.text), Qt::CaseSensitive)) {
            pid = pattern.pid;
            return true;
        }
    }
    return false;
}
