// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Cancels the current job of the queue called `name`: runs the command `cancel`, waits for its end and writes to the
/// log. Refuses names that the command would misread.
void CancelJobOfQueue(const QString& name);

/// Returns whether the print system says that the queue called `name` is printing. Blocks while the command runs. The
/// answer goes through the file at `outputPath`, which is removed in every case.
bool IsQueuePrinting(const QString& name, const QString& outputPath);
