# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""How each desktop's panel is started, with that desktop's own notification service."""

import glob
from dataclasses import dataclass


@dataclass(frozen=True)
class Recipe:
    """How a desktop is started, and how its tray differs from others.

    desktop: the value of XDG_CURRENT_DESKTOP
    notifier: the notification service; none if the program shows its messages itself
    helpers: programs that start before the panel and outlive it, the StatusNotifierWatcher first
    has_items: whether the panel hosts StatusNotifierItems. Otherwise its tray is of the XEmbed kind only, and the
        program shows tool tips and messages itself.
    is_gtk: whether the panel uses GTK, whose tool tips have no text for screen readers
    copies_icon: whether the tray hides an XEmbed icon and shows a copy
    """

    desktop: str
    panel: tuple
    notifier: str = ""
    helpers: tuple = ()
    has_items: bool = True
    is_gtk: bool = False
    copies_icon: bool = False


def _path(pattern):
    """The only installed file that fits; the pattern itself if there is none."""
    return (glob.glob(pattern) or [pattern])[0]


RECIPES = {
    "ukui": Recipe("UKUI", ("ukui-panel",), "/usr/lib/ukui-notification-daemon/ukui-notifications",
                   helpers=("sni-daemon", "sni-xembed-proxy"), copies_icon=True),
    "lxqt": Recipe("LXQt", ("lxqt-panel",), "lxqt-notificationd", copies_icon=True),
    "mate": Recipe("MATE", ("mate-panel",), "/usr/lib/mate-notification-daemon/mate-notification-daemon", is_gtk=True),
    "xfce": Recipe("XFCE", ("xfce4-panel", "--disable-wm-check"), _path("/usr/lib/*/xfce4/notifyd/xfce4-notifyd"),
                   is_gtk=True),
    "tint2": Recipe("tint2", ("tint2",), has_items=False),
}

ENVIRONMENT = {
    # Settings are neither read from nor kept in a database.
    "GSETTINGS_BACKEND": "memory",
    "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
    "XDG_CONFIG_DIRS": "/etc/xdg:/usr/share",
}
