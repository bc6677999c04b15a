// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SoakPrinters.h"

#include "records/PrinterRecords.h"
#include "SampleReplies.h"
#include "texts/UtilLanguageCtrl.h"

namespace {

constexpr quint8 RawReadyQZ = 3;
constexpr int FullTonerPercent = 100;
constexpr int FullTonerHundredths = 10000;
constexpr int ChineseColumn = 1;
constexpr int QZEvery = 4;
constexpr int OddNameEvery = 10;

QString Name(int index)
{
    static const QStringList s_oddNames{
        QStringLiteral("two words"),
        QStringLiteral("$(touch injected)"),
        QStringLiteral("`touch injected`"),
        QStringLiteral("a;touch injected"),
        QStringLiteral("a'\"quoted\""),
        QStringLiteral("%s%n%d"),
        QStringLiteral("-a"),
        QStringLiteral("打印机,一"),
    };
    const QString model = index % QZEvery == 0 ? QStringLiteral("J4990E") : QStringLiteral("K4510A");
    const int odd = index / OddNameEvery;
    if (index % OddNameEvery == 1 && odd < s_oddNames.size()) {
        return s_oddNames.at(odd);
    }
    return QStringLiteral("Soak_%1_%2").arg(model).arg(index);
}

// Known codes of both kinds, and an unknown one.
const QVector<quint16>& ConditionCodes()
{
    static const QVector<quint16> s_codes{0x11B0, 0x1106, 0x110D, 0x1107, 0xFFFF};
    return s_codes;
}

QVector<quint16> RandomCodes(Chance& chance)
{
    QVector<quint16> codes;
    while (chance.below(3) == 0) {
        codes.append(chance.of(ConditionCodes()));
    }
    return codes;
}

} // namespace

QVector<SimulatedPrinter> MakePrinters(int count)
{
    QVector<SimulatedPrinter> printers;
    for (int i = 0; i < count; ++i) {
        SimulatedPrinter printer;
        printer.name = Name(i);
        printer.model = QStringLiteral("K4510A");
        printer.family = printer.name.contains(QStringLiteral("J4990E")) ? PrinterFamily::QZ : PrinterFamily::Standard;
        printer.connectType = i % 2 == 0 ? ConnectTypeUsb : ConnectTypeNetwork;
        printer.port = QStringLiteral("127.0.0.%1").arg(i + 1);
        printer.uri = QStringLiteral("socket://127.0.0.%1").arg(i + 1);
        printer.vendorName = "Tolmar";
        printer.productName = "QV K4510A";
        printer.serialNumber = "QVK451A" + QByteArray::number(i);
        ReportReady(printer, i);
        printers.append(printer);
    }
    return printers;
}

void ReportAtRandom(SimulatedPrinter& printer, Chance& chance)
{
    static const QVector<quint8> s_standardStatus{0, 1, 2, 16, 17, 18, 19, 250};
    static const QVector<quint8> s_qzStatus{3, 4, 5, 8, 9, 10, 12};
    const bool isQZ = printer.family == PrinterFamily::QZ;
    printer.status = chance.of(isQZ ? s_qzStatus : s_standardStatus);
    printer.errorCodes = RandomCodes(chance);
    printer.warningCodes = RandomCodes(chance);
    printer.supplies[SupplyField::RemainingToner] =
        static_cast<quint32>(chance.below((isQZ ? FullTonerPercent : FullTonerHundredths) + 1));
}

void ReportCancelling(SimulatedPrinter& printer)
{
    printer.status = RawCancelling;
    printer.errorCodes.clear();
    printer.warningCodes.clear();
}

void ReportReady(SimulatedPrinter& printer, int index)
{
    const bool isQZ = printer.family == PrinterFamily::QZ;
    printer.status = isQZ ? RawReadyQZ : quint8{RawReady};
    printer.errorCodes.clear();
    printer.warningCodes.clear();
    printer.supplies[SupplyField::RemainingToner] =
        static_cast<quint32>(isQZ ? index % FullTonerPercent : index * 97 % FullTonerHundredths);
}

QStringList ReadyRow(const SimulatedPrinter& printer)
{
    const QString connection = printer.connectType == ConnectTypeUsb
        ? QStringLiteral("USB")
        : QStringLiteral("网络(") + printer.port + QLatin1Char(')');
    const auto toner = static_cast<double>(printer.supplies.value(SupplyField::RemainingToner));
    const double percent = printer.family == PrinterFamily::QZ ? toner : toner / FullTonerPercent;
    return {printer.name, connection, QString::asprintf("%.2f%%", percent),
            c_strStatusLanguageText[PS_READY][ChineseColumn]};
}
