// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "shell/AppSetting.h"

#include "infrastructure/FixedPaths.h"
#include "shell/ScreenScale.h"
#include "ui_AppSetting.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QString AutoStartEntry()
{
    return QString::fromLatin1(FixedPaths::AutoStartDirectory) + QString::fromLatin1(FixedPaths::AutoStartEntryName);
}

// The package installs a copy of the entry beside the executable.
QString AutoStartEntrySource()
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') +
        QString::fromLatin1(FixedPaths::AutoStartEntryName);
}

} // namespace

AppSetting::AppSetting(QWidget* parent)
    : QWidget(parent)
    , ui(std::make_unique<Ui_AppSetting>())
{
    ui->setupUi(this);
    if (ScreenScale::IsScaled()) {
        ScaleControl(this);
        ScaleControl(ui->checkBoxAutoStart);
        ScaleControl(ui->pushButtonOK);
        ScaleControl(ui->pushButtonCancel);
    }
    ScreenScale::FixSize(*this);
    setWindowTitle(QStringLiteral("设置"));
    ScreenScale::Centre(*this);
    ui->checkBoxAutoStart->setText(QStringLiteral("开机启动"));
    ui->pushButtonOK->setText(QStringLiteral("确定"));
    ui->pushButtonCancel->setText(QStringLiteral("取消"));
    InitOption();
}

AppSetting::~AppSetting() = default;

bool AppSetting::ReadAutoStartOption()
{
    return QFileInfo::exists(AutoStartEntry());
}

bool AppSetting::SaveAutoStartOption(bool isWanted)
{
    if (!isWanted) {
        return QFile::remove(AutoStartEntry());
    }
    QDir().mkpath(QString::fromLatin1(FixedPaths::AutoStartDirectory));
    return QFile::copy(AutoStartEntrySource(), AutoStartEntry());
}

void AppSetting::InitOption()
{
    ui->checkBoxAutoStart->setChecked(ReadAutoStartOption());
}

bool AppSetting::SaveOption()
{
    return SaveAutoStartOption(ui->checkBoxAutoStart->checkState() != Qt::Unchecked);
}

void AppSetting::ScaleControl(QWidget* widget)
{
    widget->resize(ScreenScale::Scaled(widget->width()), ScreenScale::Scaled(widget->height()));
    widget->move(ScreenScale::Scaled(widget->x()), ScreenScale::Scaled(widget->y()));
}

void AppSetting::on_pushButtonOK_clicked()
{
    hide();
    SaveOption();
    InitOption();
}

void AppSetting::on_pushButtonCancel_clicked()
{
    hide();
    InitOption();
}

void AppSetting::closeEvent(QCloseEvent* event)
{
    event->ignore();
    on_pushButtonCancel_clicked();
}
