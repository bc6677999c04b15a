// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "brelprintertoolwidget.h"
#include "FixedPaths.h"
#include "UtilLog.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <QProcess>

namespace {

constexpr char LogSource[] = "brelprintertoolwidget";

} // namespace

void BrelPrinterToolWidget::InitTrayIcon()
{
    WriteStringLog(LogSource, __LINE__, "InitTrayIcon", QStringLiteral("InitTrayIcon start"));
    pTrayIcon = new QSystemTrayIcon(this);
    // Shared with the window: read anew, the picture would be decoded and kept once more, 256 KiB each time.
    pTrayIcon->setIcon(windowIcon());
    pTrayIcon->setToolTip(QStringLiteral("拓玛激光打印助手"));
    connect(pTrayIcon, &QSystemTrayIcon::activated, this, &BrelPrinterToolWidget::SlotActivatedTrayIcon);
    pActionShow = AddTrayAction(QStringLiteral("显示主界面"), &BrelPrinterToolWidget::SlotTrayActionShow);
    pActionUpdateFW = AddTrayAction(QStringLiteral("打印机更新助手"), &BrelPrinterToolWidget::SlotTrayActionUpdateFW);
    pActionSetting = AddTrayAction(QStringLiteral("设置"), &BrelPrinterToolWidget::SlotTrayActionSetting);
    pActionExit = AddTrayAction(QStringLiteral("退出"), &BrelPrinterToolWidget::SlotTrayActionExit);
    pTrayMenu = new QMenu(this);
    pTrayMenu->addActions({pActionShow, pActionUpdateFW, pActionSetting, pActionExit});
    pTrayIcon->setContextMenu(pTrayMenu);
    pTrayIcon->show();
    WriteStringLog(LogSource, __LINE__, "InitTrayIcon", QStringLiteral("InitTrayIcon end"));
}

QAction* BrelPrinterToolWidget::AddTrayAction(const QString& text, void (BrelPrinterToolWidget::*slot)())
{
    auto* action = new QAction(text, this);
    connect(action, &QAction::triggered, this, slot);
    return action;
}

void BrelPrinterToolWidget::SlotActivatedTrayIcon(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Trigger) {
        SlotTrayActionShow();
    }
}

void BrelPrinterToolWidget::SlotTrayActionShow()
{
    if (!isActiveWindow()) {
        showNormal();
    }
}

void BrelPrinterToolWidget::SlotTrayActionUpdateFW()
{
    QProcess::startDetached(QString::fromLatin1(FixedPaths::FirmwareUpdateTool), QStringList());
}

void BrelPrinterToolWidget::SlotTrayActionSetting()
{
    pAppSetting->show();
}

void BrelPrinterToolWidget::SlotTrayActionExit()
{
    pAppSetting->close();
    hide();
    pTrayIcon->hide();
    emit SgnThreadQuit();
    QCoreApplication::quit();
}
