// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "EvaluationCheck.h"
#include "FuzzTarget.h"

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    CheckQZEvaluation(data, size);
    return 0;
}
