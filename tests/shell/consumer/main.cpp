// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers

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

// The log of a start, whose first line gives the size of the desktop.
bool HasLog()
{
    const QDir folder(QStringLiteral("/opt/tolmar/tolmar-printer-q727/tool"));
    const QStringList files = folder.entryList({QStringLiteral("log_tool_*_0.log")});
    QFile log(files.isEmpty() ? QString() : folder.filePath(files.first()));
    if (!log.open(QIODevice::ReadOnly)) {
        std::fputs("there is no log\n", stderr);
        return false;
    }
    const QByteArray text = log.readAll();
    for (const char* line :
         {" InitLog) desktop = 800, 600\n", " InitDeviceTable) InitDeviceTable start\n",
          " InitDeviceTable) InitDeviceTable end\n", " InitTrayIcon) InitTrayIcon start\n",
          " InitTrayIcon) InitTrayIcon end\n", " InitThread) InitThread start\n", " InitThread) InitThread end\n"}) {
        if (!text.contains(line)) {
            std::fprintf(stderr, "the log lacks:%sand has:\n%s", line, text.constData());
            return false;
        }
    }
    return text.count('\n') == 7;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // its desktop is 800 x 600
    const QApplication application(argc, argv);
    const BrelPrinterToolWidget window;
    const bool hasImages = HasImage("Tolmar") && HasImage("Brel") && HasImage("Halvet");
    return hasImages && !window.windowIcon().isNull() && HasLog() ? 0 : 1;
}
