// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
//
// stat-loop COUNT [SPREAD_MS]: the cost of only watching COUNT status files. Each file has a thread that calls stat
// once and sleeps twice for 500 ms, with POSIX calls alone. The threads start at once, or evenly over SPREAD_MS: a
// thread that wakes up together with others costs half as much as one that wakes up alone.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr useconds_t PauseUs = 500000;
constexpr long UsPerMs = 1000;
constexpr int Decimal = 10;

long Argument(int argc, char** argv, int index, long otherwise)
{
    return index < argc ? strtol(argv[index], nullptr, Decimal) : otherwise;
}

// The argument is the printer's number, cast to a pointer.
void* Watch(void* number)
{
    char path[256] = {};
    snprintf(path, sizeof path, "/opt/tolmar/tolmar-printer-q727/cfg/Printer_%d.dat",
             static_cast<int>(reinterpret_cast<intptr_t>(number)));
    for (;;) {
        struct stat properties = {};
        stat(path, &properties);
        usleep(PauseUs);
        usleep(PauseUs);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const long count = Argument(argc, argv, 1, 1);
    const long intervalUs = Argument(argc, argv, 2, 0) * UsPerMs / count;
    for (intptr_t i = 0; i < count; ++i) {
        pthread_t thread = {};
        if (pthread_create(&thread, nullptr, Watch, reinterpret_cast<void*>(i)) != 0) {
            perror("stat-loop: cannot start a thread");
            return 1;
        }
        if (intervalUs > 0) {
            usleep(static_cast<useconds_t>(intervalUs));
        }
    }
    pause();
    return 0;
}
