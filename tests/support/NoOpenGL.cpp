// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
//
// Part of every test program that opens windows: the program fails if Qt has loaded OpenGL for a window. Mesa never
// frees some memory, how much depends on the processor, and is unloaded before a leak checker looks.

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

// Must run before Qt unloads its plug-ins.
void FailIfOpenGLIsLoaded()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    const QByteArray content = maps.open(QIODevice::ReadOnly) ? maps.readAll() : QByteArray("_dri.so: cannot be read");
    for (const char* library : {"_dri.so", "libGLX_mesa", "libEGL_mesa"}) {
        if (content.contains(library)) {
            fprintf(stderr, "OpenGL is loaded: %s\n", library);
            fflush(nullptr);
            _exit(EXIT_FAILURE);
        }
    }
}

void CheckAtTheEnd()
{
    qAddPostRoutine(FailIfOpenGLIsLoaded);
}
Q_COREAPP_STARTUP_FUNCTION(CheckAtTheEnd)

} // namespace
