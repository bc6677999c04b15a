// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "brelprintertoolwidget.h"
#include "DiagnosticDumps.h"
#include "ModelCatalogue.h"
#include "PrinterFamily.h"
#include "SharedPrinterList.h"
#include "ui_brelprintertoolwidget.h"
#include "UtilLanguageCtrl.h"

#include <QTableWidgetItem>

namespace {

enum Column
{
    NameColumn,
    ConnectionColumn,
    TonerColumn,
    StatusColumn
};

constexpr int MessageTimeMs = 3000;

QString ConnectionText(const stPrinterInfo& info)
{
    if (info.iConnectType == CONNECT_TYPE_USB) {
        return QStringLiteral("USB");
    }
    return QStringLiteral("网络") + QLatin1Char('(') + info.strPort + QLatin1Char(')');
}

} // namespace

bool BrelPrinterToolWidget::isQZPrinter(QString name)
{
    return IsQZPrinterName(name);
}

void BrelPrinterToolWidget::SlotUpdatePrinterList()
{
    const QList<stPrinterInfo> printers = SharedPrinterList(&listPrinter).copyInfos();
    ui->tableDeviceManage->clearContents();
    ui->tableDeviceManage->setRowCount(printers.size());
    for (int row = 0; row < printers.size(); ++row) {
        FillPrinterRow(row, printers.at(row));
    }
    for (int k = iStatusThreadCount; k < printers.size(); ++k) {
        listWaitingIndex.append(k);
    }
    StartWaitingWorkers();
    // Also when the list has shrunk: the workers beyond it idle on, and a list that grows again gets new ones.
    iStatusThreadCount = printers.size();
    DumpPrinters(printers);
}

// A row starts off-line without toner whatever is known of the printer: its worker's next change fills it.
void BrelPrinterToolWidget::FillPrinterRow(int row, const stPrinterInfo& info)
{
    QTableWidget& table = *ui->tableDeviceManage;
    table.setItem(row, NameColumn, new QTableWidgetItem(info.strPrinterName));
    table.setItem(row, ConnectionColumn, new QTableWidgetItem(ConnectionText(info)));
    table.setItem(row, TonerColumn, new QTableWidgetItem(QStringLiteral("0.00%")));
    table.setItem(row, StatusColumn, new QTableWidgetItem(c_strStatusLanguageText[PS_OFFLINE][iLanguage]));
}

void BrelPrinterToolWidget::SlotUpdatePrinterStatus(int index)
{
    stPrinterManager printer;
    // The list may have been replaced since the worker spoke, and its rows may be still to come.
    if (!SharedPrinterList(&listPrinter).copy(index, printer) || index >= ui->tableDeviceManage->rowCount()) {
        return;
    }
    ui->tableDeviceManage->item(index, TonerColumn)->setText(TonerText(printer));
    ui->tableDeviceManage->item(index, StatusColumn)->setText(AnnounceStatus(printer));
    DumpPrinter(index, printer);
}

QString BrelPrinterToolWidget::TonerText(const stPrinterManager& printer)
{
    const double unitsPerPercent = FamilyOf(printer.stInfo.strPrinterName).tonerUnitsPerPercent;
    return QString::asprintf("%.2f%%", static_cast<double>(printer.stState.dwRemainingToner) / unitsPerPercent);
}

// Only the first error, or without errors the first warning, is shown. Returns the row's status text.
QString BrelPrinterToolWidget::AnnounceStatus(const stPrinterManager& printer)
{
    const QString& name = printer.stInfo.strPrinterName;
    const stPrinterState& state = printer.stState;
    if (!state.listError.isEmpty()) {
        const QString& error = c_strErrorDescText[state.listError.first()][iLanguage];
        pTrayIcon->showMessage(name, error, QSystemTrayIcon::Critical, MessageTimeMs);
        return error;
    }
    const QString& status = c_strStatusLanguageText[state.enCurrentStatus][iLanguage];
    if (state.listWarning.isEmpty()) {
        pTrayIcon->setIcon(windowIcon());
        return status;
    }
    const QString& warning = c_strErrorDescText[state.listWarning.first()][iLanguage];
    pTrayIcon->showMessage(name, warning, QSystemTrayIcon::Warning, MessageTimeMs);
    if (state.enCurrentStatus == PS_PRINTING) {
        return status + QLatin1Char('(') + warning + QLatin1Char(')');
    }
    return status;
}
