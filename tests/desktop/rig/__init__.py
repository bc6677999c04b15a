# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""A desktop as the tests use it: its screen, tray, notifications and screen reader, the driver package's folder and the
assistant itself. Runs in a sandbox with a screen and a tray."""
