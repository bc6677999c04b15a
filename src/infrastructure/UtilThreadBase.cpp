// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "infrastructure/UtilThreadBase.h"

#include <unistd.h>

namespace {

constexpr int SliceMs = 500;
constexpr useconds_t MicrosecondsPerMs = 1000;

} // namespace

UtilThreadBase::UtilThreadBase(QObject* parent)
    : QObject(parent)
{
}

bool UtilThreadBase::WaitForSleep(int ms) const
{
    for (int slice = 0; slice < ms / SliceMs; ++slice) {
        if (bThreadQuit) {
            return true;
        }
        usleep(SliceMs * MicrosecondsPerMs);
    }
    const int rest = ms % SliceMs;
    if (rest > 0) {
        usleep(static_cast<useconds_t>(rest) * MicrosecondsPerMs);
    }
    return bThreadQuit;
}
