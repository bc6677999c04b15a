// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "shell/DiagnosticDumps.h"

#include "infrastructure/UtilLog.h"

#include <QStringList>

namespace {

// Passes the line as an argument: a printer's name may contain a percent sign.
void DumpLine(int sourceLine, const char* function, const QString& text)
{
    WriteStringLog("brelprintertoolwidget", sourceLine, function, QStringLiteral("%s"), text.toLocal8Bit().constData());
}

// Texts that a printer reports are dumped in Latin-1, with a question mark for every other character.
QByteArray Latin1Text(const QString& text)
{
    return QString::fromLatin1(text.toLatin1()).toUtf8();
}

QString CodeList(const QList<enErrorStatus>& codes)
{
    QStringList numbers;
    for (const enErrorStatus code : codes) {
        numbers.append(QString::number(code));
    }
    return numbers.join(QLatin1Char(','));
}

} // namespace

void DumpPrinters(const QList<stPrinterInfo>& printers)
{
    if (!IsLogEnabled()) {
        return;
    }
    const char* function = "DebugOutputPrinterInfo";
    DumpLine(__LINE__, function, QString::asprintf("printer number=%d", static_cast<int>(printers.size())));
    for (int i = 0; i < printers.size(); ++i) {
        const stPrinterInfo& info = printers.at(i);
        const QByteArray name = info.strPrinterName.toUtf8();
        DumpLine(__LINE__, function,
                 QString::asprintf("printer[%d] %s=%s", i, name.constData(), info.strPort.toUtf8().constData()));
        DumpLine(__LINE__, function,
                 QString::asprintf("%s: enType=%s", name.constData(), info.enType.toUtf8().constData()));
        DumpLine(__LINE__, function, QString::asprintf("%s: iConnectType=%d", name.constData(), info.iConnectType));
    }
}

void DumpPrinter(int index, const stPrinterManager& printer)
{
    if (!IsLogEnabled()) {
        return;
    }
    const stPrinterState& state = printer.stState;
    const QByteArray nameBytes = printer.stInfo.strPrinterName.toUtf8();
    const char* name = nameBytes.constData();
    const auto dump = [](int sourceLine, const QString& text) {
        DumpLine(sourceLine, "DebugOutputPrinterStatus", text);
    };
    dump(__LINE__, QString::asprintf("printer[%d]=%s", index, name));
    dump(
        __LINE__,
        QString::asprintf("%s: strPrinterSerialNumber=%s", name, Latin1Text(state.strPrinterSerialNumber).constData()));
    dump(__LINE__, QString::asprintf("%s: enCurrentStatus=%d", name, state.enCurrentStatus));
    dump(__LINE__, QString::asprintf("%s: strFWVersion=%s", name, Latin1Text(state.strFWVersion).constData()));
    dump(__LINE__, QString::asprintf("%s: strVenderName=%s", name, Latin1Text(state.strVenderName).constData()));
    dump(__LINE__, QString::asprintf("%s: strProductName=%s", name, Latin1Text(state.strProductName).constData()));
    // The lengths of the lists are reliable; the reported counts are not.
    dump(__LINE__, QString::asprintf("%s: iNumberOfError=%d", name, static_cast<int>(state.listError.size())));
    dump(__LINE__, QString::asprintf("%s: iNumberOfWarning=%d", name, static_cast<int>(state.listWarning.size())));
    dump(__LINE__, QString::asprintf("%s: error code=", name) + CodeList(state.listError));
    dump(__LINE__, QString::asprintf("%s: warning code=", name) + CodeList(state.listWarning));
    dump(__LINE__,
         QString::asprintf("%s: strSupplySerialNumber=%s", name, Latin1Text(state.strSupplySerialNumber).constData()));
    dump(__LINE__, QString::asprintf("%s: enSpplyType=%d", name, state.enSpplyType));
    dump(__LINE__, QString::asprintf("%s: dwRemainingToner=%lu", name, state.dwRemainingToner));
    dump(__LINE__, QString::asprintf("%s: dwWasteToner=%lu", name, state.dwWasteToner));
    dump(__LINE__, QString::asprintf("%s: dwOPCRotation=%lu", name, state.dwOPCRotation));
    dump(__LINE__, QString::asprintf("%s: dwNumberOfPages=%lu", name, state.dwNumberOfPages));
    dump(__LINE__, QString::asprintf("%s: dwNumberOfPrint=%lu", name, state.dwNumberOfPrint));
    dump(__LINE__, QString::asprintf("%s: dwPrintDotsCount=%lu", name, state.dwPrintDotsCount));
    dump(__LINE__, QString::asprintf("%s: dwPrinterNumOfPages=%lu", name, state.dwPrinterNumOfPages));
    dump(__LINE__, QString::asprintf("%s: dwPrinterNumOfPrint=%lu", name, state.dwPrinterNumOfPrint));
}
