# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT

import time

# Generous, because a busy machine is slow but not wrong.
TIMEOUT_S = 60
_PAUSE_S = 0.02


def eventually(check, what, timeout=TIMEOUT_S):
    """Calls check() until its result is true and returns it. Fails after the timeout."""
    end = time.monotonic() + timeout
    while True:
        result = check()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError(f"not within {timeout} s: {what}; last seen: {result!r}")
        time.sleep(_PAUSE_S)


def eventually_equals(read, expected, timeout=TIMEOUT_S):
    """Calls read() until it returns `expected`. Fails after the timeout."""
    end = time.monotonic() + timeout
    while (result := read()) != expected:
        assert time.monotonic() < end, f"not within {timeout} s: {expected!r}; last seen: {result!r}"
        time.sleep(_PAUSE_S)
