// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// The texts about a printer's status and conditions. Row: the enumeration value; column: the language, 0 English, 1
// Chinese. Built before main() and never written. Values from the code mappings are always in range.

constexpr int TextLanguages = 2;
constexpr int StatusTextRows = 13;
constexpr int ErrorTextRows = 51;

/// Status names by enPrinterStatus; the last row is spare and empty.
extern const QString c_strStatusLanguageText[StatusTextRows][TextLanguages];
/// Descriptions of errors and warnings by enErrorStatus. Several conditions share a text.
extern const QString c_strErrorDescText[ErrorTextRows][TextLanguages];
/// Remedies by enErrorStatus; empty where there is none. See docs/contract.md.
extern const QString c_strErrorSolutionText[ErrorTextRows][TextLanguages];
