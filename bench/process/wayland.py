# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The same starts under Wayland, with a headless compositor that leaves title bars to the programs."""

import os
import pathlib
import socket
import subprocess
import time

import startup

SOCKET = "wayland-bench"
LOG = pathlib.Path("/tmp/weston.log")
TIMEOUT_S = 30
POLL_S = 0.001

# A hidden start shows nothing, so it has no wall time.
LIMITS = {"-hide": (1, None, 1, 1), "-show": (1, 1, 1, 1)}

ENVIRONMENT = {"QT_QPA_PLATFORM": "wayland", "WAYLAND_DISPLAY": SOCKET,
               # The machine's graphics driver, which the sandbox of the tests hides.
               "__EGL_VENDOR_LIBRARY_DIRS": "/etc/glvnd/egl_vendor.d:/usr/share/glvnd/egl_vendor.d"}


class SurfaceWatch:
    """Reads the requests of programs from the compositor's log."""

    def __init__(self):
        self._seen = 0

    def forget(self):
        """Ignores the log so far."""
        self._seen = LOG.stat().st_size

    def wait_for_icon(self):
        """Returns at once: there is no tray."""
        return time.monotonic()

    def wait_for_window(self):
        """Returns when (monotonic seconds) a surface got a picture."""
        return _wait(lambda: b".attach(" in LOG.read_bytes()[self._seen:])


def measure(programs, rounds):
    compositor = subprocess.Popen(["weston", "--backend=headless-backend.so", "--width=1920", "--height=1080",
                                   f"--socket={SOCKET}", "--idle-time=0", f"--log={LOG}", "--logger-scopes=log,proto"],
                                  stderr=subprocess.DEVNULL)
    try:
        _wait(_compositor_listens)
        startup.measure(programs, SurfaceWatch(), 1, LIMITS, environment=ENVIRONMENT)  # fills caches
        return startup.measure(programs, SurfaceWatch(), rounds, LIMITS, "Wayland, ", ENVIRONMENT)
    finally:
        compositor.kill()
        compositor.wait()


# The socket's file exists before programs can connect.
def _compositor_listens():
    with socket.socket(socket.AF_UNIX) as client:
        return client.connect_ex(os.path.join(os.environ["XDG_RUNTIME_DIR"], SOCKET)) == 0


def _wait(has_happened):
    deadline = time.monotonic() + TIMEOUT_S
    while not has_happened():
        if time.monotonic() > deadline:
            raise TimeoutError("the compositor or a window does not appear")
        time.sleep(POLL_S)
    return time.monotonic()
