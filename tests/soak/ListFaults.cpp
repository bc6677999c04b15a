// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "ListFaults.h"

#include "PrinterFolder.h"

#include <QFile>

#include <cstdio>
#include <unistd.h>
#include <utility>

namespace {

// The assistant reads the list every three seconds. The rest is a margin for a busy machine.
constexpr qint64 SeenForSureMs = 6000;
constexpr qint64 FlapMs = 100;
constexpr int Flaps = 100;
constexpr int LossesInAStorm = 7;
constexpr int MostPrintersLeftOut = 3;
constexpr int StormKinds = 3;

QString ListPath()
{
    return QString::fromLatin1(PrinterFolder::PrinterListPath);
}

// Losses that PathFaults() does not have.
const QVector<PathFault>& ListLosses()
{
    static const QVector<PathFault> s_losses{
        {"Count negative",
         [](const QString& path, Chance&) {
             PrinterFolder::WriteFile(path, "[Main]\nCount=-1\n[printer_0]\nName=x\n");
         }},
        {"Count no number",
         [](const QString& path, Chance&) {
             PrinterFolder::WriteFile(path, "[Main]\nCount=many\n[printer_0]\nName=x\n");
         }},
        {"no section Main",
         [](const QString& path, Chance&) {
             PrinterFolder::WriteFile(path, "[printer_0]\nName=x\nConnectType=1\n");
         }},
    };
    return s_losses;
}

struct Alteration
{
    const char* name = "";
    // Changes the printers, or returns a different text that lists the same printers.
    QByteArray (*apply)(QVector<SimulatedPrinter>& printers, Chance& chance) = nullptr;
};

SimulatedPrinter& AnyOf(QVector<SimulatedPrinter>& printers, Chance& chance)
{
    return printers[chance.below(printers.size())];
}

const QVector<Alteration>& Alterations()
{
    static const QVector<Alteration> s_alterations{
        {"printer renamed",
         [](QVector<SimulatedPrinter>& printers, Chance& chance) {
             SimulatedPrinter& printer = AnyOf(printers, chance);
             FreePath(PrinterFolder::StatusFilePath(printer.name));
             const QString suffix = QStringLiteral("_renamed");
             printer.name = printer.name.endsWith(suffix) ? printer.name.chopped(suffix.size()) : printer.name + suffix;
             return EncodePrinterList(printers);
         }},
        {"other port",
         [](QVector<SimulatedPrinter>& printers, Chance& chance) {
             AnyOf(printers, chance).port = QStringLiteral("127.0.1.%1").arg(chance.below(256));
             return EncodePrinterList(printers);
         }},
        {"other order",
         [](QVector<SimulatedPrinter>& printers, Chance& chance) {
             std::swap(AnyOf(printers, chance), AnyOf(printers, chance));
             return EncodePrinterList(printers);
         }},
        {"other model",
         [](QVector<SimulatedPrinter>& printers, Chance& chance) {
             AnyOf(printers, chance).model = QString::number(chance.below(10000));
             return EncodePrinterList(printers);
         }},
        {"written anew",
         [](QVector<SimulatedPrinter>& printers, Chance&) {
             return EncodePrinterList(printers);
         }},
        {"cut in the middle",
         [](QVector<SimulatedPrinter>& printers, Chance& chance) {
             const QByteArray list = EncodePrinterList(printers);
             return list.left(list.size() / 2 + chance.below(list.size() / 2));
         }},
        {"foreign sections",
         [](QVector<SimulatedPrinter>& printers, Chance&) {
             return EncodePrinterList(printers) + "\n[other]\nName=x\n[printer_100]\nName=y\n=\n[";
         }},
        {"two of one name",
         [](QVector<SimulatedPrinter>& printers, Chance& chance) {
             QVector<SimulatedPrinter> listed = printers;
             AnyOf(listed, chance).name = AnyOf(listed, chance).name;
             return EncodePrinterList(listed);
         }},
    };
    return s_alterations;
}

} // namespace

ListFaults::ListFaults(QVector<SimulatedPrinter>& printers, const Chance& chance)
    : m_printers(printers)
    , m_chance(chance)
{
}

void ListFaults::clear()
{
    show(m_printers);
}

// The file is replaced atomically, because the assistant may read it at any moment.
void ListFaults::alter()
{
    const Alteration& alteration = m_chance.of(Alterations());
    PrinterFolder::WriteFile(ListPath(), alteration.apply(m_printers, m_chance));
    ++m_counts[QString::fromLatin1(alteration.name)];
}

void ListFaults::beginStorm()
{
    switch (m_storms++ % StormKinds) {
    case 0:
        addFlapping();
        break;
    case 1:
        addShorterList();
        break;
    default:
        addLosses();
        break;
    }
    addReturnOfAll();
}

void ListFaults::tick(qint64 nowMs)
{
    followFlapping();
    if (nowMs < m_nextStepMs || m_steps.isEmpty()) {
        return;
    }
    const Step step = m_steps.dequeue();
    step.apply();
    ++m_counts[step.name];
    m_nextStepMs = nowMs + step.holdMs;
}

void ListFaults::addStep(const QString& name, qint64 holdMs, std::function<void()> apply)
{
    m_steps.enqueue({name, std::move(apply), holdMs});
}

void ListFaults::addReturnOfAll()
{
    addStep(QStringLiteral("all printers listed again"), SeenForSureMs, [this]() {
        followFlapping(); // counts the last list that was seen
        m_opened.reset();
        FreePath(ListPath() + QStringLiteral(".flap"));
        clear();
    });
    addStep(QStringLiteral("end of a storm"), 0, []() {});
}

// Two files swap the list's name: one lists all printers, the other omits the last ones.
void ListFaults::addFlapping()
{
    const int shorter = m_printers.size() - 1 - m_chance.below(MostPrintersLeftOut);
    const QString all = QString::fromLatin1(PrinterFolder::ConfigurationDirectory) + QStringLiteral("all.list");
    const QString less = QString::fromLatin1(PrinterFolder::ConfigurationDirectory) + QStringLiteral("less.list");
    PrinterFolder::WriteFile(all, EncodePrinterList(m_printers));
    PrinterFolder::WriteFile(less, EncodePrinterList(m_printers.mid(0, shorter)));
    m_flappingLengths = {static_cast<int>(m_printers.size()), shorter};
    m_opened = std::make_unique<OpenedFiles>(QStringList{all, less});
    for (int i = 0; i < Flaps; ++i) {
        const QString& path = i % 2 == 0 ? less : all;
        addStep(QStringLiteral("flap"), FlapMs, [this, path]() { putInPlace(path); });
    }
}

void ListFaults::addShorterList()
{
    const int shorter = m_printers.size() - 1 - m_chance.below(MostPrintersLeftOut);
    addStep(QStringLiteral("shorter list"), SeenForSureMs, [this, shorter]() { show(m_printers.mid(0, shorter)); });
}

// The list stays lost between two losses, whenever the assistant reads it.
void ListFaults::addLosses()
{
    for (int i = 0; i < LossesInAStorm; ++i) {
        if (m_losses.isEmpty()) {
            m_losses = PathFaults() + ListLosses();
            m_chance.shuffle(m_losses);
        }
        const PathFault loss = m_losses.takeLast();
        addStep(QStringLiteral("list: ") + QString::fromLatin1(loss.name), SeenForSureMs, [this, loss]() {
            FreePath(ListPath());
            loss.put(ListPath(), m_chance);
            m_workers.see(0);
        });
    }
    addStep(QStringLiteral("list made way"), 0, []() { FreePath(ListPath()); });
}

void ListFaults::show(const QVector<SimulatedPrinter>& printers)
{
    PrinterFolder::WriteFile(ListPath(), EncodePrinterList(printers));
    m_workers.see(printers.size());
}

void ListFaults::putInPlace(const QString& path) const
{
    const QByteArray link = QFile::encodeName(ListPath() + QStringLiteral(".flap"));
    const bool isDone = ::link(QFile::encodeName(path).constData(), link.constData()) == 0 &&
        std::rename(link.constData(), QFile::encodeName(ListPath()).constData()) == 0;
    if (!isDone) {
        qFatal("cannot put %s in place", qPrintable(path));
    }
}

void ListFaults::followFlapping()
{
    if (m_opened == nullptr) {
        return;
    }
    const QVector<int> opened = m_opened->take();
    for (const int file : opened) {
        m_workers.see(m_flappingLengths.at(file));
    }
}
