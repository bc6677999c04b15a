# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import subprocess
import tempfile

from rig.waiting import eventually

# A panel loads a menu with several calls. This is the last one.
_CALL = "type='method_call',interface='com.canonical.dbusmenu',member='GetGroupProperties'"


class MenuReads:
    """Notes which programs' menus the panel has read, from the traffic on the session bus."""

    def __init__(self):
        self._record = tempfile.NamedTemporaryFile()  # pylint: disable=consider-using-with
        self._process = subprocess.Popen(["dbus-monitor", "--session", _CALL], stdout=self._record)
        # The monitor says something as soon as it listens.
        eventually(self._text, "dbus-monitor listens")

    def has_read(self, program):
        """Whether the panel has read the menu of the program with this unique name on the bus."""
        return f"destination={program} " in self._text()

    def end(self):
        """Ends the record."""
        self._process.kill()
        self._process.wait()

    def _text(self):
        with open(self._record.name, encoding="utf-8", errors="replace") as record:
            return record.read()
