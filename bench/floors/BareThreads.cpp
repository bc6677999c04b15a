// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
//
// bare-threads COUNT [-started]: the cost of COUNT idle Qt threads. Each thread has an event loop and one object. With
// -started, each new object also causes a start signal to all objects, through queued connections. The first start
// signal puts an object to sleep for ever; later ones stay in its queue.

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
