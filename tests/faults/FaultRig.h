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

/// The real window with its device manager and status workers, watched while a test spoils what they live on.
///
/// The event loop runs only within waitUntil(), run() and settlesAt(); what a test does in between counts for nothing.
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
    /// Ends the window with its workers; returns the milliseconds that this took.
    qint64 endWindow();

    /// Runs the event loop until `isSo`, and returns whether it came to that in time.
    bool waitUntil(const std::function<bool()>& isSo, int timeoutMs = 15000);
    bool waitForRows(int count);
    void run(int ms);

    /// What is shown of a printer: toner and status, "80.00% 就绪".
    QString shown(int row) const;
    QStringList shown() const;
    bool waitUntilShown(int row, const QString& text);
    /// What a row has shown since startRecord(), one text after another, the one of that moment first; and how often
    /// since then the row's worker has said that there is something new.
    QStringList record(int row) const;
    int signalsOf(int row) const;
    void startRecord();

    /// Whether descriptors and threads come down to those of `before`, and the heap too but for `noiseBytes`; prints
    /// what they were and are.
    bool settlesAt(const ProcessUse& before, qint64 noiseBytes);

    /// Whether the window has answered in time whenever its event loop ran; prints how promptly it did.
    bool hasAnsweredInTime() const;

private:
    void look();

    ResponseWatch m_watch;
    std::unique_ptr<TestWindow> m_window = std::make_unique<TestWindow>();
    QVector<QStringList> m_record;
    QVector<int> m_signals;
};
