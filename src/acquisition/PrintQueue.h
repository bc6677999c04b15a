// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Cancels the current job of the print queue called `name` with the command `cancel`, and waits for its end; says so
/// in the log. A name that the command would take for something else is refused.
void CancelJobOfQueue(const QString& name);

/// Asks the print system whether the queue called `name` is printing. Its answer goes through the file at `outputPath`,
/// which is removed in every case.
bool IsQueuePrinting(const QString& name, const QString& outputPath);
