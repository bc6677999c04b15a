// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

// Runs the assistant among failing printers and judges what it used. Exit codes: 0 good, 1 bad, 2 wrong arguments.

#include "Soak.h"
#include "Verdict.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>

#include <cstdio>

namespace {

constexpr double SecondsPerMinute = 60;

int Fail(const char* reason)
{
    std::fprintf(stderr, "soak: %s\n", reason);
    return 2;
}

bool Report(const QVector<Finding>& findings)
{
    bool isGood = true;
    for (const Finding& finding : findings) {
        std::printf("%s  %s\n", finding.isGood ? "good" : "BAD ", qPrintable(finding.text));
        isGood = isGood && finding.isGood;
    }
    return isGood;
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
    const SoakPlan plan(minutes * SecondsPerMinute);
    Soak soak(plan, seed, arguments.last());
    const bool hasAnswered = soak.run();
    const bool isFlat = Report(Judge(soak.samples(), plan.window));
    return hasAnswered && isFlat ? 0 : 1;
}
