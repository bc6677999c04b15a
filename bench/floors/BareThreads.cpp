// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
//
// bare-threads COUNT [-started]: what COUNT Qt threads cost before they do anything. Each has its event loop and one
// object that lives on it. With -started each new object also makes a start signal be sent, by queued connections, to
// all objects there are; the first one that an object receives keeps it asleep for ever, the others stay in its queue.

#include <QCoreApplication>
#include <QThread>

#include <unistd.h>

class Starter : public QObject
{
    Q_OBJECT

signals:
    void started();
};

class Sleeper : public QObject
{
    Q_OBJECT

public slots:
    void sleepForEver()
    {
        for (;;) {
            pause();
        }
    }
};

namespace {

template <typename Object> Object* StartThreadOf(Object* object)
{
    auto* thread = new QThread;
    object->moveToThread(thread);
    thread->start();
    return object;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const bool isStarted = arguments.contains(QStringLiteral("-started"));
    Starter starter;
    for (int i = arguments.value(1).toInt(); i > 0; --i) {
        if (isStarted) {
            const Sleeper* sleeper = StartThreadOf(new Sleeper);
            QObject::connect(&starter, &Starter::started, sleeper, &Sleeper::sleepForEver);
            emit starter.started();
        } else {
            StartThreadOf(new QObject);
        }
    }
    return QCoreApplication::exec();
}

#include "BareThreads.moc"
