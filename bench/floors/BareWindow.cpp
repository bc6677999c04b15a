// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
//
// bare-window [-hide]: the cost of any Qt Widgets program with a window like the assistant's. It has an empty table, a
// tray icon with a menu of four entries, and the same picture and texts. Fonts for Chinese texts are most of the cost.

#include <QApplication>
#include <QHeaderView>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTableWidget>

namespace {

constexpr int TablePointSize = 9;

void AddTable(QWidget& window)
{
    auto* table = new QTableWidget(0, 4, &window);
    QFont font;
    font.setPointSize(TablePointSize);
    table->setFont(font);
    table->setGeometry(20, 20, 560, 260);
    int column = 0;
    table->horizontalHeader()->setStretchLastSection(true);
    table->setHorizontalHeaderLabels({QStringLiteral("打印机名称"), QStringLiteral("连接方式"),
                                      QStringLiteral("剩余碳粉量"), QStringLiteral("状态")});
    for (const int width : {120, 150, 85, 185}) {
        table->setColumnWidth(column++, width);
    }
}

void AddTrayIcon(QWidget& window)
{
    auto* menu = new QMenu(&window);
    for (const QString& text : {QStringLiteral("显示主界面"), QStringLiteral("打印机更新助手"), QStringLiteral("设置"),
                                QStringLiteral("退出")}) {
        menu->addAction(text);
    }
    auto* trayIcon = new QSystemTrayIcon(window.windowIcon(), &window);
    trayIcon->setToolTip(window.windowTitle());
    trayIcon->setContextMenu(menu);
    trayIcon->show();
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QWidget window;
    window.setWindowTitle(QStringLiteral("拓玛激光打印助手"));
    window.setWindowIcon(QIcon(QStringLiteral(":/Icon/Resource/Tolmar.png")));
    window.setFixedSize(600, 300);
    AddTable(window);
    AddTrayIcon(window);
    if (!QApplication::arguments().contains(QStringLiteral("-hide"))) {
        window.show();
    }
    return QApplication::exec();
}
