// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
//
// window-observer: the assistant's real window with its workers. For each change of a remaining toner in the table, it
// prints a line with the monotonic time in nanoseconds, the row and the text. Several copies may run at the same time.

#include "shell/brelprintertoolwidget.h"

#include <QApplication>
#include <QTableWidget>

#include <chrono>
#include <cstdio>

namespace {

constexpr int TonerColumn = 2;

void Report(const QTableWidgetItem& item)
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const long long ns = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    printf("%lld %d %s\n", ns, item.row(), qPrintable(item.text()));
    fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const BrelPrinterToolWidget window(nullptr);
    const auto* table = window.findChild<QTableWidget*>();
    QObject::connect(table, &QTableWidget::itemChanged, table, [](const QTableWidgetItem* item) {
        if (item->column() == TonerColumn) {
            Report(*item);
        }
    });
    return QApplication::exec();
}
