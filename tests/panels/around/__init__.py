# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""The tests' view of a desktop: its screen, tray, notifications and screen reader, the driver package's folder and the
assistant itself. Runs in a sandbox with a screen and a tray."""
