# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A private CUPS with its own socket, spool and queues."""

import contextlib
import grp
import os
import pwd
import re
import select
import signal
import subprocess
from urllib.parse import unquote

_FILES_CONFIGURATION = """\
ServerRoot {folder}
RequestRoot {folder}/spool
CacheDir {folder}/cache
StateDir {folder}/state
TempDir {folder}/tmp
AccessLog {folder}/access.log
ErrorLog {folder}/error.log
PageLog {folder}/page.log
DataDir /usr/share/cups
ServerBin {folder}/bin
FileDevice Yes
User {user}
Group {group}
SystemGroup root
"""

_SERVICE_CONFIGURATION = """\
Listen {folder}/cups.sock
Browsing No
WebInterface No
DefaultAuthType None
<Location />
Order allow,deny
Allow all
</Location>
<Location /admin>
Order allow,deny
Allow all
</Location>
<Policy default>
<Limit All>
Order deny,allow
Allow all
</Limit>
</Policy>
"""

# Writes the job that it prints to a pipe, and prints until it is killed.
_SLOW_PRINTER = """\
#!/bin/sh
echo "$PRINTER-$1" >"{folder}/printing"
exec sleep infinity
"""


class PrintService:
    """A running cupsd. `environment` directs the CUPS commands of a program to it."""

    def __init__(self, folder):
        self._folder = folder
        self.environment = {"CUPS_SERVER": f"{folder}/cups.sock"}
        for name in ("spool", "cache", "state", "tmp", "bin/backend"):
            os.makedirs(f"{folder}/{name}")
        os.symlink("/usr/lib/cups/daemon", f"{folder}/bin/daemon")
        user, group = _account()
        self._write("cups-files.conf", _FILES_CONFIGURATION.format(folder=folder, user=user, group=group))
        self._write("cupsd.conf", _SERVICE_CONFIGURATION.format(folder=folder))
        self._write("bin/backend/slow", _SLOW_PRINTER.format(folder=folder))
        os.chmod(f"{folder}/bin/backend/slow", 0o755)
        self._write("document", "a page")
        os.mkfifo(f"{folder}/printing")
        os.chmod(f"{folder}/printing", 0o666)
        # cupsd goes to the background when it is ready.
        command = ["/usr/sbin/cupsd", "-c", f"{folder}/cupsd.conf", "-s", f"{folder}/cups-files.conf"]
        assert subprocess.run(command, check=False).returncode == 0, self._read("error.log")
        self._process = os.pidfd_open(int(self._read("state/cupsd.pid")))

    def stop(self):
        """Ends cupsd and the jobs in print, unless it has already ended."""
        with contextlib.suppress(ProcessLookupError):
            signal.pidfd_send_signal(self._process, signal.SIGTERM)
            select.select([self._process], [], [])

    def add_queue(self, name):
        """Adds a queue whose jobs finish at once unless they are held."""
        self._run("/usr/sbin/lpadmin", "-p", name, "-E", "-v", "file:/dev/null", "-m", "raw")

    def add_slow_queue(self, name):
        """Adds a queue that prints its first job for ever."""
        self._run("/usr/sbin/lpadmin", "-p", name, "-E", "-v", "slow:/", "-m", "raw")

    def submit(self, queue, *options):
        """Submits a job with options of lp. Returns its name, QUEUE-NUMBER."""
        answer = self._run("lp", "-d", queue, *options, f"{self._folder}/document")
        return re.search(r"request id is (\S+)", answer).group(1)

    def hold(self, queue):
        """Submits a held job."""
        return self.submit(queue, "-H", "hold")

    def jobs(self):
        """The names of the unfinished jobs in all queues, in the order of each queue."""
        return [unquote(line.split()[0]) for line in self._run("lpstat", "-o").splitlines()]

    def next_printed(self):
        """Waits until a slow queue starts a job and returns its name."""
        return self._read("printing").strip()

    def _run(self, *command):
        environment = {**os.environ, **self.environment, "LC_ALL": "C.UTF-8"}
        return subprocess.run(command, env=environment, check=True, stdout=subprocess.PIPE, text=True).stdout

    def _write(self, name, text):
        with open(f"{self._folder}/{name}", "w", encoding="utf-8") as file:
            file.write(text)

    def _read(self, name):
        with open(f"{self._folder}/{name}", encoding="utf-8") as file:
            return file.read()


def _account():
    """User and group of the print programs. cupsd refuses root."""
    if os.getuid() == 0:
        return "lp", "lp"
    return pwd.getpwuid(os.getuid()).pw_name, grp.getgrgid(os.getgid()).gr_name
