# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""What programs load, and what they leave behind when they end."""

import ctypes
import os
import re

import dbus

_PR_SET_CHILD_SUBREAPER = 36
# Everything else is shared with the machine.
_PRIVATE_FOLDERS = ("/opt", "/tmp")
_PANEL_FOLDER = "/tmp/home/.config/xfce4/xfconf/xfce-perchannel-xml"


def adopt_orphans():
    """From now on processes whose parent has ended become children of this one."""
    ctypes.CDLL(None).prctl(_PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)


def children():
    """The child processes of this one, including ended ones that it has not waited for."""
    found = set()
    for task in os.listdir("/proc/self/task"):
        with open(f"/proc/self/task/{task}/children", encoding="ascii") as file:
            found.update(int(pid) for pid in file.read().split())
    return found


def files():
    """All files and folders that the sandbox does not share with the machine, except those of the panel."""
    found = set()
    for top in _PRIVATE_FOLDERS:
        for folder, subfolders, names in os.walk(top):
            if folder != _PANEL_FOLDER:
                found.update(os.path.join(folder, name) for name in subfolders + names)
    return found


def bus_names():
    """All names on the session bus, including those of connections (":1.5")."""
    bus = dbus.SessionBus().get_object("org.freedesktop.DBus", "/org/freedesktop/DBus", introspect=False)
    return {str(name) for name in bus.ListNames(dbus_interface="org.freedesktop.DBus")}


def opengl_libraries(pid):
    """The OpenGL drivers that a process has loaded."""
    return _mapped_files(pid, r"(?:_dri\.so|lib(?:GLX|EGL)_mesa)")


def picture_plugins(pid):
    """The plug-ins for picture formats that a process has loaded."""
    return _mapped_files(pid, "/imageformats/")


def _mapped_files(pid, pattern):
    with open(f"/proc/{pid}/maps", encoding="utf-8") as file:
        return set(re.findall(rf"\S*{pattern}\S*", file.read()))
