// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "ScenarioParser.h"

#include "PrinterProperties.h"
#include "ScenarioWords.h"

#include <QSet>
#include <QStringList>

#include <algorithm>

namespace {

constexpr int MaximumPrinters = 1000;
constexpr quint32 LongestWaitMSec = 24 * 60 * 60 * 1000;

// A file name has at most 255 bytes. The status file adds ".dat", and the temporary file that replaces it adds 7 more.
constexpr int MaximumNameBytes = 244;

const char* const QZModelCode = "J4990E"; // a queue whose name contains it belongs to the QZ family

bool SetDeclarationOption(SimulatedPrinter& printer, const QString& option)
{
    if (option == QLatin1String("standard")) {
        printer.family = PrinterFamily::Standard;
    } else if (option == QLatin1String("qz")) {
        printer.family = PrinterFamily::QZ;
    } else if (option == QLatin1String("absent")) {
        printer.listed = false;
    } else {
        return false;
    }
    return true;
}

// Reads the statements one by one. The last frame holds the current state. Each function returns an error message or
// nothing. A statement with an error may leave a half-changed frame; a scenario with errors is never played.
class ScenarioParser
{
public:
    QString ReadStatement(const QStringList& words);
    Scenario Result() const
    {
        return m_scenario;
    }
    bool HasPrinters()
    {
        return !Printers().isEmpty();
    }

private:
    struct Statement
    {
        const char* verb;
        bool isStep; // not allowed among the declarations
        QString (ScenarioParser::*read)(const QStringList& words);
    };

    QString CheckNewName(const QString& name);
    QString DeclarePrinter(const QStringList& words);
    QString SetProperty(const QString& name, QStringList values);
    QString Wait(const QStringList& words);
    QString Repeat(const QStringList& words);
    QString Add(const QStringList& words);
    QString Remove(const QStringList& words);
    QString Rename(const QStringList& words);
    QString Reorder(const QStringList& words);

    QVector<SimulatedPrinter>& Printers()
    {
        return m_scenario.frames.last().printers;
    }
    bool IsDeclaring() const
    {
        return m_scenario.frames.size() == 1;
    }
    int IndexOf(const QString& name);
    QString FindPrinter(const QString& name, int& index);
    QString SetListed(const QStringList& words, bool listed);

    Scenario m_scenario = {{ScenarioFrame()}, false};
    QString m_verb; // of the line being read
    QString m_previousVerb;
    int m_revision = 0;
};

QString ScenarioParser::ReadStatement(const QStringList& words)
{
    static constexpr Statement statements[] = {
        {"printer", false, &ScenarioParser::DeclarePrinter}, {"wait", false, &ScenarioParser::Wait},
        {"repeat", false, &ScenarioParser::Repeat},          {"add", true, &ScenarioParser::Add},
        {"remove", true, &ScenarioParser::Remove},           {"rename", true, &ScenarioParser::Rename},
        {"reorder", true, &ScenarioParser::Reorder},
    };
    const QString& verb = words.first();
    m_previousVerb = m_verb;
    m_verb = verb;
    if (m_scenario.repeats) {
        return QStringLiteral("nothing may follow repeat");
    }
    for (const Statement& statement : statements) {
        if (verb != QLatin1String(statement.verb)) {
            continue;
        }
        if (statement.isStep && IsDeclaring()) {
            return QStringLiteral("\"%1\" is allowed only after the first wait").arg(verb);
        }
        return (this->*statement.read)(words);
    }
    if (IsPrinterProperty(verb)) {
        return SetProperty(verb, words.mid(1));
    }
    return QStringLiteral("\"%1\" is not known").arg(verb);
}

QString ScenarioParser::CheckNewName(const QString& name)
{
    if (name.isEmpty()) {
        return QStringLiteral("a printer needs a name");
    }
    if (name.contains(QLatin1Char('/'))) {
        return QStringLiteral("a name must not contain /");
    }
    if (name.toUtf8().size() > MaximumNameBytes) {
        return QStringLiteral("a name may have at most %1 bytes").arg(MaximumNameBytes);
    }
    if (IndexOf(name) >= 0) {
        return QStringLiteral("there is already a printer called \"%1\"").arg(name);
    }
    return {};
}

// printer NAME [standard|qz] [absent]
QString ScenarioParser::DeclarePrinter(const QStringList& words)
{
    if (!IsDeclaring()) {
        return QStringLiteral("printers must be declared before the first wait");
    }
    if (Printers().size() == MaximumPrinters) {
        return QStringLiteral("more than %1 printers").arg(MaximumPrinters);
    }
    SimulatedPrinter printer;
    printer.name = words.value(1);
    const bool isQZ = printer.name.contains(QLatin1String(QZModelCode));
    printer.family = isQZ ? PrinterFamily::QZ : PrinterFamily::Standard;
    QString reason = CheckNewName(printer.name);
    const QStringList options = words.mid(2);
    for (const QString& option : options) {
        const bool isKnown = SetDeclarationOption(printer, option);
        if (!isKnown && reason.isEmpty()) {
            reason = QStringLiteral("\"%1\" is not standard, qz or absent").arg(option);
        }
    }
    printer.status = ReadyStatus(printer.family);
    printer.revision = ++m_revision;
    Printers().append(printer); // even with an error, so that the lines below are still checked
    return reason;
}

// In a declaration: PROPERTY VALUE..., for the printer declared last. In a step: PROPERTY NAME VALUE...
QString ScenarioParser::SetProperty(const QString& name, QStringList values)
{
    int index = Printers().size() - 1;
    if (IsDeclaring()) {
        if (index < 0) {
            return QStringLiteral("\"%1\" before the first printer").arg(name);
        }
    } else {
        if (values.isEmpty()) {
            return QStringLiteral("\"%1\" needs the name of a printer").arg(name);
        }
        QString reason = FindPrinter(values.takeFirst(), index);
        if (!reason.isEmpty()) {
            return reason;
        }
    }
    return SetPrinterProperty(Printers()[index], name, values, ++m_revision);
}

// wait SECONDS
QString ScenarioParser::Wait(const QStringList& words)
{
    const quint32 mSec = ParseDecimal(words.value(1), 3, LongestWaitMSec).value_or(0);
    m_scenario.frames.append({std::chrono::milliseconds(mSec), Printers()});
    if (mSec == 0 || words.size() > 2) {
        return QStringLiteral("wait needs one number of seconds, 0.001 to %1").arg(LongestWaitMSec / 1000);
    }
    return {};
}

// repeat
QString ScenarioParser::Repeat(const QStringList& words)
{
    m_scenario.repeats = true;
    if (words.size() > 1) {
        return QStringLiteral("repeat takes no value");
    }
    if (m_previousVerb != QLatin1String("wait")) {
        return QStringLiteral("repeat must follow a wait, or the steps before it would not be seen");
    }
    return {};
}

// add NAME: puts the printer at the end of the list.
QString ScenarioParser::Add(const QStringList& words)
{
    return SetListed(words, true);
}

// remove NAME: removes the printer from the list, and its status file.
QString ScenarioParser::Remove(const QStringList& words)
{
    return SetListed(words, false);
}

QString ScenarioParser::SetListed(const QStringList& words, bool listed)
{
    if (words.size() != 2) {
        return QStringLiteral("\"%1\" needs the name of one printer").arg(words.first());
    }
    int index = -1;
    QString reason = FindPrinter(words.at(1), index);
    if (!reason.isEmpty()) {
        return reason;
    }
    if (Printers().at(index).listed == listed) {
        return listed ? QStringLiteral("\"%1\" is already on the list").arg(words.at(1))
                      : QStringLiteral("\"%1\" is not on the list").arg(words.at(1));
    }
    SimulatedPrinter printer = Printers().takeAt(index);
    printer.listed = listed;
    printer.revision = ++m_revision;
    Printers().append(printer);
    return {};
}

// rename OLD NEW: the printer keeps its place and its family.
QString ScenarioParser::Rename(const QStringList& words)
{
    if (words.size() != 3) {
        return QStringLiteral("rename needs the old and the new name");
    }
    int index = -1;
    QString reason = FindPrinter(words.at(1), index);
    if (reason.isEmpty()) {
        reason = CheckNewName(words.at(2));
    }
    if (reason.isEmpty()) {
        Printers()[index].name = words.at(2);
        Printers()[index].revision = ++m_revision;
    }
    return reason;
}

// reorder NAME...: names all listed printers in their new order.
QString ScenarioParser::Reorder(const QStringList& words)
{
    QVector<SimulatedPrinter> ordered;
    QSet<QString> seen;
    const QStringList names = words.mid(1);
    for (const QString& name : names) {
        int index = -1;
        QString reason = FindPrinter(name, index);
        if (!reason.isEmpty()) {
            return reason;
        }
        if (!Printers().at(index).listed) {
            return QStringLiteral("\"%1\" is not on the list").arg(name);
        }
        if (seen.contains(name)) {
            return QStringLiteral("\"%1\" is named twice").arg(name);
        }
        seen.insert(name);
        ordered.append(Printers().at(index));
    }
    for (const SimulatedPrinter& printer : qAsConst(Printers())) {
        if (printer.listed && !seen.contains(printer.name)) {
            return QStringLiteral("reorder leaves out \"%1\"").arg(printer.name);
        }
        if (!printer.listed) {
            ordered.append(printer);
        }
    }
    Printers() = ordered;
    return {};
}

int ScenarioParser::IndexOf(const QString& name)
{
    const QVector<SimulatedPrinter>& printers = Printers();
    const QVector<SimulatedPrinter>::const_iterator found = std::find_if(
        printers.begin(), printers.end(), [&name](const SimulatedPrinter& printer) { return printer.name == name; });
    return found == printers.end() ? -1 : static_cast<int>(found - printers.begin());
}

QString ScenarioParser::FindPrinter(const QString& name, int& index)
{
    index = IndexOf(name);
    return index < 0 ? QStringLiteral("there is no printer called \"%1\"").arg(name) : QString();
}

} // namespace

ParsedScenario ParseScenario(const QByteArray& text)
{
    ParsedScenario result;
    ScenarioParser parser;
    int line = 0;
    QList<QByteArray> lines = text.split('\n');
    for (QByteArray& bytes : lines) {
        ++line;
        if (bytes.endsWith('\r')) {
            bytes.chop(1);
        }
        const ScenarioWords split = SplitScenarioLine(bytes);
        const QString reason = split.words.isEmpty() ? split.reason : parser.ReadStatement(split.words);
        if (!reason.isEmpty()) {
            result.errors.append({line, reason});
        }
    }
    if (result.errors.isEmpty() && !parser.HasPrinters()) {
        result.errors.append({1, QStringLiteral("no printer is declared")});
    }
    result.scenario = parser.Result();
    return result;
}
