// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/LateWakeUps.h"

#include <sys/prctl.h>

namespace {

constexpr unsigned long LeewayNs = 5000000;

} // namespace

void AllowLateWakeUps()
{
    prctl(PR_SET_TIMERSLACK, LeewayNs, 0UL, 0UL, 0UL);
}
