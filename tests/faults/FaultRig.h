// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "ProcessUse.h"
#include "ResponseWatch.h"
#include "TestWindow.h"

#include <QObject>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

/// The real window with its device manager and status workers, observed while a test damages their files.
///
/// The event loop runs only within waitUntil(), run() and settlesAt(). What a test does in between is not measured.
class FaultRig : public QObject
{
    Q_OBJECT

public:
    FaultRig();
    ~FaultRig() override;

    TestWindow& window()
    {
        return *m_window;
    }
    /// Ends the window with its workers. Returns the duration in ms.
    qint64 endWindow();

    /// Runs the event loop until `isSo` returns true. Returns false on a timeout.
    bool waitUntil(const std::function<bool()>& isSo, int timeoutMs = 15000);
    bool waitForRows(int count);
    void run(int ms);

    /// The toner and status in a row, for example "80.00% 就绪".
    QString shown(int row) const;
    QStringList shown() const;
    bool waitUntilShown(int row, const QString& text);
    /// The successive texts of a row since startRecord(), starting with the current one, and the number of signals from
    /// the row's worker since then.
    QStringList record(int row) const;
    int signalsOf(int row) const;
    void startRecord();

    /// Waits until descriptors and threads are down to those of `before`, and the heap, too, except for `noiseBytes`.
    /// Returns false on a timeout. Prints both figures.
    bool settlesAt(const ProcessUse& before, qint64 noiseBytes);

    /// Whether the window has always answered in time while its event loop ran. Prints the worst time.
    bool hasAnsweredInTime() const;

private:
    void look();

    ResponseWatch m_watch;
    std::unique_ptr<TestWindow> m_window = std::make_unique<TestWindow>();
    QVector<QStringList> m_record;
    QVector<int> m_signals;
};
