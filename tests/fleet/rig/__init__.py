# SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
# SPDX-License-Identifier: MIT
"""Simulated desktops and the monitoring programs that watch them. Everything runs inside the test's sandbox."""
