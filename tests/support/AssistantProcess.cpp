// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "AssistantProcess.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QtTest>

#include <algorithm>
#include <utility>

namespace {

constexpr int StartTimeoutMs = 15000;
constexpr int AbsenceMs = 500;
constexpr int KeyAttempts = 10;
constexpr int KeyTimeoutMs = 1000;
constexpr int CommandTimeoutMs = 5000;

QString WindowTitle()
{
    return QStringLiteral("拓玛激光打印助手");
}

struct MenuEntry
{
    int id = 0;
    QVariantMap properties;
    QList<MenuEntry> children;
};

// A menu item on the bus: (ia{sv}av). The last element is its children.
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEntry& entry)
{
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        MenuEntry childEntry;
        child.variant().value<QDBusArgument>() >> childEntry;
        entry.children.append(childEntry);
    }
    argument.endArray();
    argument.endStructure();
    return argument;
}

QList<MenuEntry> ReadMenu(const QString& trayItem)
{
    QDBusInterface menu(trayItem, QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"));
    const QDBusMessage reply = menu.call(QStringLiteral("GetLayout"), 0, -1, QStringList());
    MenuEntry root;
    if (reply.arguments().size() == 2) { // revision and layout
        reply.arguments().at(1).value<QDBusArgument>() >> root;
    }
    return root.children;
}

QStringList TrayItems()
{
    const QDBusInterface watcher(QStringLiteral("org.kde.StatusNotifierWatcher"),
                                 QStringLiteral("/StatusNotifierWatcher"),
                                 QStringLiteral("org.kde.StatusNotifierWatcher"));
    return watcher.property("RegisteredStatusNotifierItems").toStringList();
}

} // namespace

AssistantProcess::AssistantProcess(QString program)
    : m_program(std::move(program))
{
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
}

AssistantProcess::~AssistantProcess()
{
    if (isRunning()) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

void AssistantProcess::traceTo(const QString& tracePath)
{
    m_tracePath = tracePath;
    // A leak checker in the program fails under strace.
    const QString options = QStringLiteral("ASAN_OPTIONS");
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(options, environment.value(options) + QStringLiteral(":detect_leaks=0"));
    m_process.setProcessEnvironment(environment);
}

bool AssistantProcess::start(const QStringList& arguments)
{
    if (m_tracePath.isEmpty()) {
        m_process.start(m_program, arguments);
    } else {
        // -ttt adds the time in seconds since 1970. %file means all calls with a path, including program starts.
        m_process.start(QStringLiteral("strace"),
                        QStringList{QStringLiteral("-f"), QStringLiteral("-ttt"), QStringLiteral("-e"),
                                    QStringLiteral("trace=%file,socket"), QStringLiteral("-o"), m_tracePath,
                                    m_program} +
                            arguments);
    }
    return m_process.waitForStarted();
}

// The window is waited for as well, even by tests that do not look at it. If a program is killed while openbox is
// taking its window over, openbox keeps the dead window, and never shows the next program's window, which gets the same
// X id.
bool AssistantProcess::startIntoTray(const QStringList& arguments)
{
    const QStringList before = TrayItems();
    const int windowsBefore = VisibleWindows(WindowTitle()).size();
    if (!start(arguments)) {
        return false;
    }
    const bool hasItem = QTest::qWaitFor(
        [this, &before]() {
            const QStringList items = TrayItems();
            const auto added = std::find_if(items.begin(), items.end(),
                                            [&before](const QString& item) { return !before.contains(item); });
            if (added == items.end()) {
                return false;
            }
            m_trayItem = *added;
            return true;
        },
        StartTimeoutMs);
    const auto isShown = [windowsBefore]() {
        return VisibleWindows(WindowTitle()).size() > windowsBefore;
    };
    return hasItem &&
        (arguments.contains(QStringLiteral("-hide"), Qt::CaseInsensitive) || QTest::qWaitFor(isShown, StartTimeoutMs));
}

bool AssistantProcess::isRunning() const
{
    return m_process.state() == QProcess::Running;
}

qint64 AssistantProcess::processId() const
{
    return m_process.processId();
}

int AssistantProcess::waitForExit(int timeoutMs)
{
    if (isRunning() && !m_process.waitForFinished(timeoutMs)) {
        return -1;
    }
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

bool AssistantProcess::hasTrayItem() const
{
    const QStringList items = TrayItems();
    if (!m_trayItem.isEmpty()) {
        return items.contains(m_trayItem);
    }
    const QString ofProcess = QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(m_process.processId());
    return std::any_of(items.begin(), items.end(),
                       [&ofProcess](const QString& item) { return item.startsWith(ofProcess); });
}

QString AssistantProcess::toolTip() const
{
    QDBusInterface properties(m_trayItem, QStringLiteral("/StatusNotifierItem"),
                              QStringLiteral("org.freedesktop.DBus.Properties"));
    const QDBusReply<QDBusVariant> reply =
        properties.call(QStringLiteral("Get"), QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("ToolTip"));
    // (sa(iiay)ss): icon name, pictures, title, text.
    const auto argument = reply.value().variant().value<QDBusArgument>();
    QString icon;
    QString title;
    argument.beginStructure();
    argument >> icon;
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray picture;
        argument.beginStructure();
        argument >> width >> height >> picture;
        argument.endStructure();
    }
    argument.endArray();
    argument >> title;
    argument.endStructure();
    return title;
}

QStringList AssistantProcess::menu() const
{
    QStringList labels;
    const QList<MenuEntry> entries = ReadMenu(m_trayItem);
    for (const MenuEntry& entry : entries) {
        QString label = entry.properties.value(QStringLiteral("label")).toString();
        for (const char* special : {"type", "icon-data", "icon-name", "toggle-type", "children-display"}) {
            const QString value = entry.properties.value(QString::fromLatin1(special)).toString();
            if (!value.isEmpty()) {
                label += QStringLiteral(" %1=%2").arg(QString::fromLatin1(special), value);
            }
        }
        labels.append(label);
    }
    return labels;
}

bool AssistantProcess::chooseFromMenu(const QString& label) const
{
    const QList<MenuEntry> entries = ReadMenu(m_trayItem);
    for (const MenuEntry& entry : entries) {
        if (entry.properties.value(QStringLiteral("label")).toString() == label) {
            QDBusInterface menu(m_trayItem, QStringLiteral("/MenuBar"), QStringLiteral("com.canonical.dbusmenu"));
            menu.asyncCall(QStringLiteral("Event"), entry.id, QStringLiteral("clicked"),
                           QVariant::fromValue(QDBusVariant(0)), 0U);
            return true;
        }
    }
    return false;
}

QString AssistantProcess::fileName()
{
    return QFileInfo(QStringLiteral(ASSISTANT_PROGRAM)).fileName();
}

QStringList VisibleWindows(const QString& title)
{
    QStringList windows = OutputOf(QStringLiteral("xdotool"),
                                   {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                                    QLatin1Char('^') + title + QLatin1Char('$')})
                              .split(QLatin1Char('\n'));
    windows.removeAll(QString());
    return windows;
}

bool IsEverVisible(const QString& title)
{
    return QTest::qWaitFor([&title]() { return !VisibleWindows(title).isEmpty(); }, AbsenceMs);
}

// A key press is lost if the window does not yet have the focus.
bool PressUntilGone(const QString& title, const QString& key)
{
    const auto isGone = [&title]() {
        return VisibleWindows(title).isEmpty();
    };
    for (int i = 0; i < KeyAttempts; ++i) {
        const QStringList windows = VisibleWindows(title);
        if (windows.isEmpty()) {
            return true;
        }
        OutputOf(
            QStringLiteral("xdotool"),
            {QStringLiteral("windowactivate"), QStringLiteral("--sync"), windows.first(), QStringLiteral("key"), key});
        if (QTest::qWaitFor(isGone, KeyTimeoutMs)) {
            return true;
        }
    }
    return false;
}

QString OutputOf(const QString& command, const QStringList& arguments)
{
    QProcess process;
    process.start(command, arguments);
    process.waitForFinished(CommandTimeoutMs);
    return QString::fromUtf8(process.readAllStandardOutput());
}
