// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "FloorCheck.h"

#include "decoding/UtilPrinterStatus.h"
#include "SampleReplies.h"
#include "WalkedReply.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

template <typename A, typename B> bool HasSameBytes(const A& a, const B& b)
{
    return std::memcmp(&a, &b, std::min(sizeof a, sizeof b)) == 0;
}

bool HasSameTexts(const WalkedReply& walked, const UtilPrinterStatus& status)
{
    return HasSameBytes(walked.text[0], status.szVenderName) && HasSameBytes(walked.text[1], status.szProductName) &&
        HasSameBytes(walked.text[2], status.szSerialNumber) && HasSameBytes(walked.text[3], status.szFWVersion) &&
        HasSameBytes(walked.text[4], status.szExtraInfo) &&
        HasSameBytes(walked.supplySerialNumber, status.szSupplySerialNumber) &&
        walked.length[0] == status.dwVenderNameLen && walked.length[1] == status.dwProductNameLen &&
        walked.length[2] == status.dwSerialNumberLen && walked.length[3] == status.byFWVersionLen[0] &&
        walked.length[4] == status.dwExtraInfoLen;
}

bool HasSameSupplies(const WalkedReply& walked, const UtilPrinterStatus& status)
{
    const std::array<unsigned long, SupplyCount> values{
        {status.dwSupplyType, status.dwRemainingToner, status.dwWasteToner, status.dwOPCRotation,
         status.dwNumberOfPages, status.dwNumberOfPrint, status.dwPrintDotsCount, status.dwPrinterNumOfPages,
         status.dwPrinterNumOfPrint}};
    return std::equal(values.begin(), values.end(), walked.supply) && walked.supplyCount == status.dwSupplyCount &&
        HasSameBytes(walked.rawSupply[1], status.byRemainingToner) &&
        HasSameBytes(walked.rawSupply[8], status.byPrinterNumOfPrint);
}

bool HasSameCodes(const WalkZeroVectors& walk, const UtilPrinterStatus& status)
{
    return walk.codes[0] == status.vecErrorCode && walk.codes[1] == status.vecWarningCode &&
        walk.reply.codeCount[0] == status.dwErrorCount && walk.reply.codeCount[1] == status.dwWarningCount &&
        HasSameBytes(walk.reply.rawCode[0], status.byErrorCode) &&
        HasSameBytes(walk.reply.rawCode[1], status.byWarningCode);
}

bool HasSame(const WalkZeroVectors& walk, const UtilPrinterStatus& status)
{
    return walk.reply.status == status.dwStatus && HasSameBytes(walk.reply.rawStatus, status.byStatus) &&
        HasSameTexts(walk.reply, status) && HasSameSupplies(walk.reply, status) && HasSameCodes(walk, status);
}

} // namespace

QByteArray StandardSample()
{
    return EncodeStandardReply(FullReply());
}

QByteArray QZSample()
{
    QZReply reply;
    reply.items = {QZMachineState(1), QZJobState(2), QZError(0x1106), QZWarning(0x110D), QZToner(80)};
    return EncodeQZReply(reply);
}

bool FloorsDecodeTheSamples()
{
    QByteArray standard = StandardSample();
    QByteArray qz = QZSample();
    auto* standardBytes = reinterpret_cast<unsigned char*>(standard.data());
    auto* qzBytes = reinterpret_cast<unsigned char*>(qz.data());
    const auto standardLength = static_cast<unsigned long>(standard.size());
    const auto qzLength = static_cast<unsigned long>(qz.size());
    UtilPrinterStatus standardStatus;
    UtilPrinterStatus qzStatus;
    WalkZeroVectors standardWalk;
    WalkZeroVectors qzWalk;
    return standardStatus.parseRecvBuf(standardBytes, standardLength) == 1 &&
        WalkStandardReply(standardWalk, standardBytes, standardLength) && HasSame(standardWalk, standardStatus) &&
        qzStatus.parseRecvBuf_QZ(qzBytes, qzLength) == 1 && WalkQZReply(qzWalk, qzBytes, qzLength) &&
        HasSame(qzWalk, qzStatus);
}
