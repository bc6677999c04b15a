# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import time

# A machine may be busy: what is late is not wrong.
TIMEOUT_S = 60
_PAUSE_S = 0.02


def eventually(check, what, timeout=TIMEOUT_S):
    """Calls check() until its result is true, and returns that; fails when it never is."""
    end = time.monotonic() + timeout
    while True:
        result = check()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError(f"not within {timeout} s: {what}; last seen: {result!r}")
        time.sleep(_PAUSE_S)


def eventually_equals(read, expected, timeout=TIMEOUT_S):
    """Calls read() until it returns what is expected."""
    end = time.monotonic() + timeout
    while (result := read()) != expected:
        assert time.monotonic() < end, f"not within {timeout} s: {expected!r}; last seen: {result!r}"
        time.sleep(_PAUSE_S)
