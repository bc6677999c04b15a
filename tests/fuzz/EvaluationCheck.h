// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

/// Evaluates a reply in a new worker that holds a filled record, and checks that the record is left alone when the
/// decoder rejects the reply, and else that each field of the state is in its range and what the decoder read.
void CheckStandardEvaluation(const unsigned char* data, unsigned long size);
void CheckQZEvaluation(const unsigned char* data, unsigned long size);
