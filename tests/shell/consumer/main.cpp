// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "brelprintertoolwidget.h"
#include "ModelCatalogue.h"
#include "PrinterRecords.h"
#include "TrdDeviceManage.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLanguageCtrl.h"
#include "UtilLog.h"
#include "UtilPrinterStatus.h"
#include "UtilThreadBase.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>

#include <cstdio>

namespace {

bool HasImage(const char* name)
{
    const QString path = QStringLiteral(":/Icon/Resource/%1.png").arg(QString::fromLatin1(name));
    const bool isThere = !QImage(path).isNull();
    if (!isThere) {
        std::fprintf(stderr, "the image %s is missing\n", name);
    }
    return isThere;
}

// Whether the log shows the set-up steps in order, after the size of the desktop.
bool HasLog()
{
    const QDir folder(QStringLiteral("/opt/tolmar/tolmar-printer-q727/tool"));
    const QStringList files = folder.entryList({QStringLiteral("log_tool_*_0.log")});
    QFile log(files.isEmpty() ? QString() : folder.filePath(files.first()));
    if (!log.open(QIODevice::ReadOnly)) {
        std::fputs("there is no log\n", stderr);
        return false;
    }
    // Each line ends with a function's name, a parenthesis and the text.
    QList<QByteArray> texts;
    while (!log.atEnd()) {
        const QByteArray line = log.readLine();
        texts.append(line.mid(line.lastIndexOf(") ") + 2).trimmed());
    }
    const QList<QByteArray> expected{"desktop = 800, 600", "InitDeviceTable start", "InitDeviceTable end",
                                     "InitTrayIcon start", "InitTrayIcon end",      "InitThread start",
                                     "InitThread end"};
    if (texts != expected) {
        std::fprintf(stderr, "the set-up steps are logged as:\n%s\n", texts.join('\n').constData());
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the desktop of this platform is 800 x 600
    const QApplication application(argc, argv);
    const BrelPrinterToolWidget window;
    const bool hasImages = HasImage("Tolmar") && HasImage("Brel") && HasImage("Halvet");
    return hasImages && !window.windowIcon().isNull() && HasLog() ? 0 : 1;
}
