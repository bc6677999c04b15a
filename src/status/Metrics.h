// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "status/PrinterReport.h"

/// The reports in Prometheus' text format 0.0.4. docs/fleet.md explains the metrics. Of printers with the same name,
/// which also have the same status file, only the first is included. A value that is not known has no sample.
QByteArray FormatMetrics(const PrinterReports& reports);
