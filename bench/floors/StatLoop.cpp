// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
//
// stat-loop COUNT: what watching COUNT status files costs when nothing but the watching is done. As many threads, each
// with one stat and two pauses of 500 ms a second; POSIX calls alone.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr useconds_t PauseUs = 500000;
constexpr int Decimal = 10;

// The printer's number comes in place of a pointer.
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
    const long count = argc > 1 ? strtol(argv[1], nullptr, Decimal) : 1;
    for (intptr_t i = 0; i < count; ++i) {
        pthread_t thread = {};
        if (pthread_create(&thread, nullptr, Watch, reinterpret_cast<void*>(i)) != 0) {
            perror("stat-loop: cannot start a thread");
            return 1;
        }
    }
    pause();
    return 0;
}
