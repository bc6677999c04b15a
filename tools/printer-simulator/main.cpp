// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "infrastructure/StopSignals.h"
#include "ScenarioParser.h"
#include "ScenarioPlayer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cmath>
#include <cstdio>

namespace {

constexpr int ExitDone = 0;
constexpr int ExitFailure = 1; // wrong arguments, or a file that cannot be read or written
constexpr int ExitBadScenario = 2;

constexpr qint64 LargestScenarioBytes = 16 << 20; // a recorded day
constexpr double SlowestSpeed = 0.01;
constexpr double FastestSpeed = 1000;

const char* const DriverDirectory = "/opt/tolmar/tolmar-printer-q727/cfg";

int Fail(const QString& reason)
{
    std::fprintf(stderr, "printer-simulator: %s\n", qUtf8Printable(reason));
    return ExitFailure;
}

int ReportErrors(const QString& fileName, const QVector<ScenarioError>& errors)
{
    for (const ScenarioError& error : errors) {
        std::fprintf(stderr, "%s:%d: %s\n", qUtf8Printable(fileName), error.line, qUtf8Printable(error.reason));
    }
    return ExitBadScenario;
}

int PlayFile(const QString& fileName, const QString& directory, double speed, const StopSignals& stopSignals)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        return Fail(QStringLiteral("cannot read %1: %2").arg(fileName, file.errorString()));
    }
    const QByteArray text = file.read(LargestScenarioBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        return Fail(QStringLiteral("cannot read %1: %2").arg(fileName, file.errorString()));
    }
    if (text.size() > LargestScenarioBytes) {
        return Fail(QStringLiteral("%1 is longer than a scenario may be (%2 bytes)")
                        .arg(fileName, QString::number(LargestScenarioBytes)));
    }
    const ParsedScenario parsed = ParseScenario(text);
    if (!parsed.errors.isEmpty()) {
        return ReportErrors(fileName, parsed.errors);
    }
    if (!QDir().mkpath(directory)) {
        return Fail(QStringLiteral("cannot create the folder %1").arg(directory));
    }
    ScenarioPlayer player(parsed.scenario, QDir(directory));
    const auto wait = [&stopSignals, speed](std::chrono::milliseconds time) {
        return stopSignals.sleep(std::chrono::milliseconds(std::llround(static_cast<double>(time.count()) / speed)));
    };
    return player.play(wait) ? ExitDone : Fail(player.errorText());
}

} // namespace

int main(int argc, char* argv[])
{
    const StopSignals stopSignals;
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays the driver package: writes the printer list and the status files that a scenario "
                       "describes.\nEnds after the last step, or on SIGINT or SIGTERM, and leaves the files. "
                       "Exit code 0: done; 1: failure; 2: bad scenario."));
    parser.addPositionalArgument(QStringLiteral("scenario"), QStringLiteral("The scenario file."));
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption directory(QStringLiteral("directory"),
                                       QStringLiteral("Write into <folder>, which is created if it is missing."),
                                       QStringLiteral("folder"), QLatin1String(DriverDirectory));
    parser.addOption(directory);
    const QCommandLineOption speed(QStringLiteral("speed"),
                                   QStringLiteral("Play <factor> times as fast: 0.01 to 1000."),
                                   QStringLiteral("factor"), QStringLiteral("1"));
    parser.addOption(speed);
    if (!parser.parse(QCoreApplication::arguments())) {
        return Fail(parser.errorText());
    }
    if (parser.isSet(help)) {
        std::fputs(qUtf8Printable(parser.helpText()), stdout);
        return ExitDone;
    }
    const QStringList scenarios = parser.positionalArguments();
    if (scenarios.size() != 1) {
        return Fail(QStringLiteral("give one scenario file; see --help"));
    }
    bool isNumber = false;
    const double factor = parser.value(speed).toDouble(&isNumber);
    if (!isNumber || !(factor >= SlowestSpeed && factor <= FastestSpeed)) {
        return Fail(QStringLiteral("--speed needs a number from 0.01 to 1000"));
    }
    return PlayFile(scenarios.first(), parser.value(directory), factor, stopSignals);
}
