// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "TestWindow.h"

#include "records/SharedPrinterList.h"

#include <QTableWidget>

namespace {

// An explicit instantiation may name a private member. This reaches the lists without any change to the window.
struct SharedList
{
    using Member = QList<stPrinterManager> BrelPrinterToolWidget::*;
    friend Member MemberOf(SharedList tag);
};

struct StatusWorkers
{
    using Member = QList<TrdGetPrinterStatus*> BrelPrinterToolWidget::*;
    friend Member MemberOf(StatusWorkers tag);
};

struct SettingsDialog
{
    using Member = AppSetting* BrelPrinterToolWidget::*;
    friend Member MemberOf(SettingsDialog tag);
};

template <typename Tag, typename Tag::Member member> struct Reach
{
    friend typename Tag::Member MemberOf(Tag /*tag*/)
    {
        return member;
    }
};

template struct Reach<SharedList, &BrelPrinterToolWidget::listPrinter>;
template struct Reach<StatusWorkers, &BrelPrinterToolWidget::listStatusWorker>;
template struct Reach<SettingsDialog, &BrelPrinterToolWidget::pAppSetting>;

} // namespace

TestWindow::TestWindow()
    : BrelPrinterToolWidget(nullptr)
    , m_settingsDialog(this->*MemberOf(SettingsDialog()))
{
}

TestWindow::~TestWindow()
{
    delete m_settingsDialog;
}

void TestWindow::setVisible(bool isWanted)
{
    if (isWanted) {
        ++m_timesShown;
    }
    BrelPrinterToolWidget::setVisible(isWanted);
}

QTableWidget& TestWindow::table() const
{
    return *findChild<QTableWidget*>(QStringLiteral("tableDeviceManage"));
}

QStringList TestWindow::row(int index) const
{
    QStringList texts;
    for (int column = 0; column < table().columnCount(); ++column) {
        const QTableWidgetItem* item = table().item(index, column);
        texts.append(item != nullptr ? item->text() : QStringLiteral("(none)"));
    }
    return texts;
}

QSystemTrayIcon& TestWindow::trayIcon() const
{
    return *findChild<QSystemTrayIcon*>();
}

AppSetting& TestWindow::settingsDialog() const
{
    return *m_settingsDialog;
}

int TestWindow::startedWorkers() const
{
    return receivers(SIGNAL(SgnThreadQuit())) - 1; // the device manager is the other receiver
}

QList<TrdGetPrinterStatus*> TestWindow::statusWorkers() const
{
    return this->*MemberOf(StatusWorkers());
}

int TestWindow::timesShown() const
{
    return m_timesShown;
}

QList<stPrinterManager>* TestWindow::sharedList()
{
    return &(this->*MemberOf(SharedList()));
}

QList<stPrinterManager> TestWindow::printers()
{
    const SharedPrinterList shared(sharedList());
    QList<stPrinterManager> printers;
    stPrinterManager printer;
    while (shared.copy(printers.size(), printer)) {
        printers.append(printer);
    }
    return printers;
}

void TestWindow::setState(int index, const stPrinterState& state)
{
    SharedPrinterList shared(sharedList());
    stPrinterManager printer;
    SharedPrinterList::Origin origin;
    shared.copy(index, printer, &origin);
    printer.stState = state;
    if (shared.writeBack(printer, true, origin) == SharedPrinterList::WriteBack::CancelFirst) {
        shared.writeBackCancelled(printer, origin);
    }
}

// The signal arrives before a new worker's start request is queued, so the stop request is queued first.
void TestWindow::letWorkersPollOnce()
{
    connect(this, &BrelPrinterToolWidget::SgnStatusThreadStart, this, &BrelPrinterToolWidget::SgnThreadQuit);
}
