// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Lets the kernel end each pause of the calling thread up to 5 ms late.
///
/// Many threads that pause for the same time wake up one after another, each with a timer interrupt of its own and
/// perhaps a sleeping core to rouse. With some leeway the kernel wakes them together: with 100 printers that is a third
/// of what the idle program costs. Child processes inherit it.
void AllowLateWakeUps();
