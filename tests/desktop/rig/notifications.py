# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

from collections import namedtuple

import dbus

from rig.waiting import eventually_equals

# urgency: 0 low, 1 normal, 2 critical.
Message = namedtuple("Message", "app icon title body urgency timeout_ms")


class Notifications:
    """The messages that the desktop's notification service received since the start or the last clear()."""

    def __init__(self):
        service = dbus.SessionBus().get_object("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                               introspect=False)
        self._mock = dbus.Interface(service, "org.freedesktop.DBus.Mock")

    def messages(self):
        """The messages in order."""
        messages = []
        for _, (app, _, icon, title, body, _, hints, timeout_ms) in self._mock.GetMethodCalls("Notify"):
            messages.append(Message(str(app), str(icon), str(title), str(body), int(hints.get("urgency", -1)),
                                    int(timeout_ms)))
        return messages

    def texts(self):
        """Title and body of each message."""
        return [(message.title, message.body) for message in self.messages()]

    def wait_for_texts(self, *expected):
        """Waits until exactly these titles and bodies have arrived."""
        eventually_equals(self.texts, list(expected))

    def wait_for_count(self, count):
        """Waits until this number of messages has arrived."""
        eventually_equals(lambda: len(self.messages()), count)

    def clear(self):
        """Forgets the messages so far."""
        self._mock.ClearCalls()
