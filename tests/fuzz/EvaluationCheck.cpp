// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "EvaluationCheck.h"

#include "decoding/UtilPrinterStatus.h"
#include "Requirement.h"
#include "SampleRecords.h"
#include "StatusWorker.h"

#include <algorithm>
#include <initializer_list>
#include <tuple>

namespace {

constexpr int TextBytes = 255;
constexpr int SupplyTextBytes = 64;

bool IsOneOf(int value, std::initializer_list<int> values)
{
    return std::find(values.begin(), values.end(), value) != values.end();
}

bool IsCondition(enErrorStatus condition)
{
    // The missing conditions have no code.
    return condition >= ERR_UNKNOWN && condition <= ERR_PRINTING &&
        !IsOneOf(condition,
                 {ERR_UNSUPPORTED_CARTRIDGE_SERIAL, ERR_CARTRIDGE_MISMATCH, ERR_CARTRIDGE_INVALID,
                  ERR_CARTRIDGE_NEAR_FULL, ERR_CARTRIDGE_LIFE_FULL});
}

bool IsText(const QString& text, const char* sent, int mostBytes)
{
    return text.size() <= mostBytes && !text.contains(QChar::Null) && text == QString::fromUtf8(sent);
}

int ListedCodes(unsigned long isSet, const std::vector<unsigned long>& codes)
{
    return isSet != 0 ? static_cast<int>(codes.size()) : 0;
}

// Checks the fields that both families have.
void CheckCommonFields(const stPrinterState& state, const UtilPrinterStatus& reply)
{
    Require(std::all_of(state.listError.begin(), state.listError.end(), IsCondition), "each error is in its range");
    Require(std::all_of(state.listWarning.begin(), state.listWarning.end(), IsCondition),
            "each warning is in its range");
    Require(IsText(state.strSupplySerialNumber, reply.szSupplySerialNumber, SupplyTextBytes),
            "the supply's serial number is that of the reply");
    Require(state.enSpplyType == 0, "the supply type is 0");
    Require(state.dwRemainingToner == reply.dwRemainingToner && state.dwWasteToner == reply.dwWasteToner &&
                state.dwOPCRotation == reply.dwOPCRotation && state.dwNumberOfPages == reply.dwNumberOfPages &&
                state.dwNumberOfPrint == reply.dwNumberOfPrint && state.dwPrintDotsCount == reply.dwPrintDotsCount &&
                state.dwPrinterNumOfPages == reply.dwPrinterNumOfPages &&
                state.dwPrinterNumOfPrint == reply.dwPrinterNumOfPrint,
            "the counters are those of the reply");
    Require(state.iFailCount == 0, "an accepted reply resets the failure count");
}

bool IsSamePrinter(const stPrinterInfo& a, const stPrinterInfo& b)
{
    const auto fields = [](const stPrinterInfo& info) {
        return std::tie(info.strPrinterName, info.enType, info.iConnectType, info.strPort, info.strURI);
    };
    return fields(a) == fields(b);
}

bool IsSameState(const stPrinterState& a, const stPrinterState& b)
{
    const auto fields = [](const stPrinterState& state) {
        return std::tie(state.strPrinterSerialNumber, state.enCurrentStatus, state.strFWVersion, state.strVenderName,
                        state.strProductName, state.iNumberOfError, state.iNumberOfWarning, state.listError,
                        state.listWarning, state.strSupplySerialNumber, state.enSpplyType, state.dwRemainingToner,
                        state.dwWasteToner, state.dwOPCRotation, state.dwNumberOfPages, state.dwNumberOfPrint,
                        state.dwPrintDotsCount, state.dwPrinterNumOfPages, state.dwPrinterNumOfPrint, state.iFailCount);
    };
    return fields(a) == fields(b);
}

void CheckStandardState(const stPrinterState& state, const UtilPrinterStatus& reply)
{
    Require(IsOneOf(state.enCurrentStatus,
                    {PS_UNKNOWN, PS_READY, PS_INITIALIZE, PS_BUSY, PS_CANCELING_JOB, PS_PRINTING, PS_SCANNING,
                     PS_COPYING, PS_REPORTING}),
            "the status is one that the standard family reports");
    Require(IsText(state.strPrinterSerialNumber, reply.szSerialNumber, TextBytes) &&
                IsText(state.strFWVersion, reply.szFWVersion, TextBytes) &&
                IsText(state.strVenderName, reply.szVenderName, TextBytes) &&
                IsText(state.strProductName, reply.szProductName, TextBytes),
            "the texts are those of the reply");
    Require(state.iNumberOfError == state.listError.size(), "as many errors are listed as counted");
    Require(state.iNumberOfWarning == state.listWarning.size(), "as many warnings are listed as counted");
    Require(state.iNumberOfError == static_cast<int>(reply.dwErrorCount) &&
                state.iNumberOfWarning == static_cast<int>(reply.dwWarningCount),
            "the counts are those of the reply");
    CheckCommonFields(state, reply);
}

void CheckQZState(const stPrinterState& state, const UtilPrinterStatus& reply)
{
    Require(IsOneOf(state.enCurrentStatus,
                    {PS_UNKNOWN, PS_READY, PS_INITIALIZE, PS_BUSY, PS_PRINTING, PS_SCANNING, PS_COPYING}),
            "the status is one that the QZ family reports");
    Require(state.strPrinterSerialNumber.isEmpty() && state.strFWVersion.isEmpty() && state.strVenderName.isEmpty() &&
                state.strProductName.isEmpty() && state.strSupplySerialNumber.isEmpty(),
            "the QZ family reports no texts");
    Require(state.iNumberOfError == 1 && state.iNumberOfWarning == 1, "both counts are 1");
    Require(state.listError.size() == ListedCodes(reply.dwErrorCount, reply.vecErrorCode),
            "all errors are listed, or none when the last error item says so");
    Require(state.listWarning.size() == ListedCodes(reply.dwWarningCount, reply.vecWarningCode),
            "all warnings are listed, or none when the last warning item says so");
    Require(state.dwRemainingToner <= 255, "the toner is one byte");
    CheckCommonFields(state, reply);
}

using Evaluate = int (TrdGetPrinterStatus::*)(unsigned char*, unsigned long);
using Parse = unsigned int (UtilPrinterStatus::*)(unsigned char*, unsigned long);
using CheckState = void (*)(const stPrinterState& state, const UtilPrinterStatus& reply);

void CheckEvaluation(const unsigned char* data, unsigned long size, Evaluate evaluate, Parse parse,
                     CheckState checkState)
{
    static const stPrinterManager s_filled = FilledPrinter(QStringLiteral("Office"));
    auto* const bytes = const_cast<unsigned char*>(data);
    StatusWorker worker;
    worker.stCurrent = s_filled;
    const int result = (worker.*evaluate)(bytes, size);
    UtilPrinterStatus reply;
    const bool isAccepted = (reply.*parse)(bytes, size) == 1;
    Require(result == (isAccepted ? 0 : -1), "a reply is evaluated if and only if the decoder accepts it");
    Require(IsSamePrinter(worker.stCurrent.stInfo, s_filled.stInfo), "the printer is not touched");
    if (isAccepted) {
        checkState(worker.stCurrent.stState, reply);
    } else {
        Require(IsSameState(worker.stCurrent.stState, s_filled.stState), "a rejected reply leaves the state alone");
    }
}

} // namespace

void CheckStandardEvaluation(const unsigned char* data, unsigned long size)
{
    CheckEvaluation(data, size, &TrdGetPrinterStatus::CheckPrinterStatus, &UtilPrinterStatus::parseRecvBuf,
                    CheckStandardState);
}

void CheckQZEvaluation(const unsigned char* data, unsigned long size)
{
    CheckEvaluation(data, size, &TrdGetPrinterStatus::CheckPrinterStatus_QZ, &UtilPrinterStatus::parseRecvBuf_QZ,
                    CheckQZState);
}
