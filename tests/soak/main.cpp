// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Runs the assistant among failing printers and judges what it used. Exit codes: 0 good, 1 bad, 2 wrong arguments.

#include "Soak.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QProcess>

#include <cstdio>

namespace {

constexpr double SecondsPerMinute = 60;

int Fail(const char* reason)
{
    std::fprintf(stderr, "soak: %s\n", reason);
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption seedOption(QStringLiteral("seed"), QString(), QStringLiteral("number"));
    parser.addOption(seedOption);
    parser.process(application);
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() != 2) {
        return Fail("expects the minutes and the path of the record; use script/soak");
    }
    bool isMinutes = false;
    const double minutes = arguments.first().toDouble(&isMinutes);
    bool isSeed = true;
    const quint64 seed = parser.isSet(seedOption) ? parser.value(seedOption).toULongLong(&isSeed)
                                                  : static_cast<quint64>(QDateTime::currentSecsSinceEpoch());
    if (!isMinutes || !(minutes > 0) || !isSeed) {
        return Fail("minutes and seed must be numbers");
    }
    std::printf("%g minutes, seed %llu, record %s\n", minutes, seed, qPrintable(arguments.last()));
    std::fflush(stdout);
    Soak soak(SoakPlan(minutes * SecondsPerMinute), seed, arguments.last());
    const bool hasAnswered = soak.run();
    std::fflush(stdout);
    const QStringList verdict{QStringLiteral("-B"), QStringLiteral(SOAK_VERDICT), arguments.last()};
    const bool isFlat = QProcess::execute(QStringLiteral("/usr/bin/python3"), verdict) == 0;
    return hasAnswered && isFlat ? 0 : 1;
}
