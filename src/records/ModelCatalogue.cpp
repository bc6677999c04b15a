// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

#include "ModelCatalogue.h"

#include <algorithm>

namespace {

constexpr int FamilyVendorId = 0x34FA;
constexpr int OtherGroupVendorId = 0x300E;

std::array<stModelInfo, SupportedModelCount> SupportedModels()
{
    return {{
        {QStringLiteral("K4510A"), QStringLiteral("QV K4510A"), QStringLiteral("Tolmar_K4510A.ppd"), FamilyVendorId,
         0xA5},
        {QStringLiteral("K4500A"), QStringLiteral("QV K4500A"), QStringLiteral("Tolmar_K4500A.ppd"), FamilyVendorId,
         0xA6},
        {QStringLiteral("J4510A"), QStringLiteral("QV J4510A"), QStringLiteral("Tolmar_J4510A.ppd"), FamilyVendorId,
         0xA7},
        {QStringLiteral("J4500A"), QStringLiteral("QV J4500A"), QStringLiteral("Tolmar_J4500A.ppd"), FamilyVendorId,
         0xA8},
        {QStringLiteral("K4620A"), QStringLiteral("QV K4620A"), QStringLiteral("Tolmar_K4620A.ppd"), FamilyVendorId,
         0xA9},
        {QStringLiteral("J4610A"), QStringLiteral("QV J4610A"), QStringLiteral("Tolmar_J4610A.ppd"), FamilyVendorId,
         0xAA},
        {QStringLiteral("K4880A"), QStringLiteral("QV K4880A"), QStringLiteral("Tolmar_K4880A.ppd"), FamilyVendorId,
         0xAB},
        {QStringLiteral("J4990E"), QStringLiteral("QV J4990E"), QStringLiteral("Tolmar_J4990E.ppd"), FamilyVendorId,
         0xAC},
    }};
}

struct ProductPattern
{
    const char* text;
    int pid;
};

// The question mark is a character of the name, not a wildcard.
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
const QStringList QZModelName{QStringLiteral("J4990E")};

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
