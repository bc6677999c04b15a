// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "Accessibility.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>

namespace {

QDBusMessage Call(const QDBusConnection& bus, const AccessibleObject& object, const QString& interface,
                  const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage call = QDBusMessage::createMethodCall(object.service, object.path, interface, method);
    call.setArguments(arguments);
    return bus.call(call);
}

QString BusAddress()
{
    const QDBusReply<QString> address =
        Call(QDBusConnection::sessionBus(), {QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"), {}},
             QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    return address.value();
}

QDBusConnection AccessibilityBus()
{
    static const QDBusConnection s_bus = QDBusConnection::connectToBus(BusAddress(), QStringLiteral("accessibility"));
    return s_bus;
}

QString AccessibleInterface()
{
    return QStringLiteral("org.a11y.atspi.Accessible");
}

// The answer is an array of bus names and paths.
QList<AccessibleObject> Children(const AccessibleObject& parent)
{
    const QDBusConnection bus = AccessibilityBus();
    const QDBusMessage reply = Call(bus, parent, AccessibleInterface(), QStringLiteral("GetChildren"));
    QList<AccessibleObject> children;
    if (reply.type() != QDBusMessage::ReplyMessage) { // the object has gone
        return children;
    }
    const auto argument = reply.arguments().constFirst().value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        AccessibleObject child;
        QDBusObjectPath path;
        argument.beginStructure();
        argument >> child.service >> path;
        argument.endStructure();
        child.path = path.path();
        const QDBusReply<QDBusVariant> name =
            Call(bus, child, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                 {AccessibleInterface(), QStringLiteral("Name")});
        child.name = name.value().variant().toString();
        children.append(child);
    }
    argument.endArray();
    return children;
}

void AppendDescendants(const AccessibleObject& parent, QList<AccessibleObject>& objects)
{
    const QList<AccessibleObject> children = Children(parent);
    objects.append(children);
    for (const AccessibleObject& child : children) {
        AppendDescendants(child, objects);
    }
}

} // namespace

QList<AccessibleObject> AccessibleObjects(const QString& name)
{
    const AccessibleObject desktop{
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/accessible/root"), {}};
    QList<AccessibleObject> objects;
    const QList<AccessibleObject> programs = Children(desktop);
    for (const AccessibleObject& program : programs) {
        if (program.name == name) {
            AppendDescendants(program, objects);
        }
    }
    return objects;
}
