// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "shell/PrinterTable.h"

#include "decoding/PrinterFamily.h"
#include "shell/ScreenScale.h"

#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QStyleOption>

#include <array>

namespace {

enum Column
{
    NameColumn,
    ConnectionColumn,
    TonerColumn,
    StatusColumn
};

constexpr std::array<int, 4> c_columnWidths{{120, 150, 85, 185}};
constexpr int DrawnCharacters = 1000;

// A name may be as long as the printer list, and Qt lays out the whole text whenever it draws a part of it: 1 MB would
// block the window for a third of a second each time. No column is wide enough for DrawnCharacters.
class CutTextDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override
    {
        return QStyledItemDelegate::displayText(value.toString().left(DrawnCharacters), locale);
    }
};

// A header that measures its texts in the normal face. QHeaderView measures them in bold, which it draws only over
// selected cells; loading a bold Chinese face takes 1 MiB and 8 % of the start with a window.
class PlainHeader : public QHeaderView
{
public:
    using QHeaderView::QHeaderView;

protected:
    QSize sectionSizeFromContents(int section) const override
    {
        QStyleOptionHeader option;
        initStyleOption(&option);
        option.section = section;
        option.text = model()->headerData(section, orientation()).toString();
        return style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
    }
};

QString ConnectionText(const stPrinterInfo& info)
{
    if (info.iConnectType == CONNECT_TYPE_USB) {
        return QStringLiteral("USB");
    }
    return QStringLiteral("网络") + QLatin1Char('(') + info.strPort + QLatin1Char(')');
}

QString TonerText(const stPrinterManager& printer)
{
    const double unitsPerPercent = FamilyOf(printer.stInfo.strPrinterName).tonerUnitsPerPercent;
    return QString::asprintf("%.2f%%", static_cast<double>(printer.stState.dwRemainingToner) / unitsPerPercent);
}

} // namespace

void PrinterTable::setUp()
{
    auto* header = new PlainHeader(Qt::Horizontal, this);
    header->setSectionsClickable(true);
    header->setHighlightSections(true);
    setHorizontalHeader(header);
    setHeadersVisible(false);
    setColumnCount(static_cast<int>(c_columnWidths.size()));
    horizontalHeader()->setStretchLastSection(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setItemDelegate(new CutTextDelegate(this));
    setHorizontalHeaderLabels({QStringLiteral("打印机名称"), QStringLiteral("连接方式"), QStringLiteral("剩余碳粉量"),
                               QStringLiteral("状态")});
    resizeRowsToContents();
    if (ScreenScale::IsScaled()) {
        resize(ScreenScale::Scaled(width()), ScreenScale::Scaled(height()));
        move(ScreenScale::Scaled(x()), ScreenScale::Scaled(y()));
    }
    for (int column = 0; column < columnCount(); ++column) {
        const int width = c_columnWidths.at(static_cast<std::size_t>(column));
        setColumnWidth(column, ScreenScale::IsScaled() ? ScreenScale::Scaled(width) : width);
    }
}

// The table measures visible headers at each change, which loads the face for their Chinese texts. The headers
// therefore stay hidden until the window is first shown.
void PrinterTable::setHeadersVisible(bool visible)
{
    horizontalHeader()->setVisible(visible);
    verticalHeader()->setVisible(visible);
}

void PrinterTable::showPrinters(const QList<stPrinterInfo>& printers, const QString& initialStatus)
{
    clearContents();
    setRowCount(printers.size());
    for (int row = 0; row < printers.size(); ++row) {
        setItem(row, NameColumn, new QTableWidgetItem(printers.at(row).strPrinterName));
        setItem(row, ConnectionColumn, new QTableWidgetItem(ConnectionText(printers.at(row))));
        setItem(row, TonerColumn, new QTableWidgetItem(QStringLiteral("0.00%")));
        setItem(row, StatusColumn, new QTableWidgetItem(initialStatus));
    }
}

void PrinterTable::showToner(int row, const stPrinterManager& printer)
{
    item(row, TonerColumn)->setText(TonerText(printer));
}

void PrinterTable::showStatus(int row, const QString& status)
{
    item(row, StatusColumn)->setText(status);
}
