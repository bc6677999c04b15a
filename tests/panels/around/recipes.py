# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""How each desktop's panel is started, with that desktop's own notification service."""

import glob
from collections import namedtuple

# desktop: the value of XDG_CURRENT_DESKTOP. notifier: the notification service. helpers: programs that start before the
# panel, outlive it and begin with a StatusNotifierWatcher. has_items: whether the panel hosts StatusNotifierItems; if
# not, its tray is of the XEmbed kind only, and the program shows tool tips and messages itself. is_gtk: whether the
# panel uses GTK, whose tool tips have no text for screen readers.
Recipe = namedtuple("Recipe", "desktop notifier helpers panel has_items is_gtk")


def _path(pattern):
    """The only installed file that fits; the pattern itself if there is none."""
    return (glob.glob(pattern) or [pattern])[0]


RECIPES = {
    "ukui": Recipe("UKUI", "/usr/lib/ukui-notification-daemon/ukui-notifications", ["sni-daemon", "sni-xembed-proxy"],
                   ["ukui-panel"], True, False),
    "lxqt": Recipe("LXQt", "lxqt-notificationd", [], ["lxqt-panel"], True, False),
    "mate": Recipe("MATE", "/usr/lib/mate-notification-daemon/mate-notification-daemon", [], ["mate-panel"], True,
                   True),
    "xfce": Recipe("XFCE", _path("/usr/lib/*/xfce4/notifyd/xfce4-notifyd"), [], ["xfce4-panel", "--disable-wm-check"],
                   True, True),
    "tint2": Recipe("tint2", None, [], ["tint2"], False, False),
}

ENVIRONMENT = {
    # Settings are neither read from nor kept in a database.
    "GSETTINGS_BACKEND": "memory",
    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
    "XDG_CONFIG_DIRS": "/etc/xdg:/usr/share",
}
