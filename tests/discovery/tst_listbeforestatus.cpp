// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "acquisition/TrdGetPrinterStatus.h"
#include "discovery/TrdDeviceManage.h"
#include "PrinterFolder.h"

#include <QThread>
#include <QtTest>

namespace {

// Status workers poll once a second.
constexpr unsigned long SlowToSpeakMs = 3000;

// A status worker on its own thread, as in the window.
class RunningStatusWorker
{
public:
    explicit RunningStatusWorker(QList<stPrinterManager>* list)
    {
        m_worker.Init(0, list);
        m_worker.moveToThread(&m_thread);
        m_thread.start();
    }
    ~RunningStatusWorker()
    {
        m_worker.bThreadQuit = true;
        m_thread.quit();
        m_thread.wait();
    }
    RunningStatusWorker(const RunningStatusWorker&) = delete;
    RunningStatusWorker& operator=(const RunningStatusWorker&) = delete;

    void start()
    {
        QMetaObject::invokeMethod(&m_worker, &TrdGetPrinterStatus::SlotTaskStart, Qt::QueuedConnection);
    }
    TrdGetPrinterStatus& worker()
    {
        return m_worker;
    }

private:
    QThread m_thread;
    TrdGetPrinterStatus m_worker{nullptr};
};

} // namespace

class ListBeforeStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void noStatusOvertakesTheList();
};

// The window rebuilds its rows when the list's signal arrives. A status signal that arrives earlier would be lost.
void ListBeforeStatusTest::noStatusOvertakesTheList()
{
    PrinterFolder::Create();
    PrinterFolder::WriteStatusFile(QStringLiteral("A"), QByteArray(64, '\0')); // ready, no texts, no supplies
    PrinterFolder::WritePrinterList({PrinterFolder::Printer(QStringLiteral("A"), QStringLiteral("another port"))});
    QList<stPrinterManager> list{PrinterFolder::ListedPrinter(QStringLiteral("A"))};
    QString heard;
    RunningStatusWorker status(&list);
    connect(&status.worker(), &TrdGetPrinterStatus::SgnUpdatePrinterStatus, this,
            [&heard] { heard += QLatin1Char('S'); });
    status.start();
    QTRY_COMPARE(heard, QStringLiteral("S"));
    TrdDeviceManage manager(nullptr);
    manager.Init(&list);
    connect(&manager, &TrdDeviceManage::SgnUpdatePrinterList, [] { QThread::msleep(SlowToSpeakMs); });
    const auto hearOfTheList = [&heard] {
        heard += QLatin1Char('L');
    };
    connect(&manager, &TrdDeviceManage::SgnUpdatePrinterList, this, hearOfTheList, Qt::QueuedConnection);
    manager.SlotThreadQuit();
    manager.SlotTaskStart(); // one pass
    QTRY_COMPARE(heard, QStringLiteral("SLS"));
}

QTEST_GUILESS_MAIN(ListBeforeStatusTest)
#include "tst_listbeforestatus.moc"
