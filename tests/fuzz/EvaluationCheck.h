// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Evaluates a reply in a new worker with a filled record. A rejected reply must leave the record alone. Otherwise each
/// field must be in its range and equal what the decoder read.
void CheckStandardEvaluation(const unsigned char* data, unsigned long size);
void CheckQZEvaluation(const unsigned char* data, unsigned long size);
