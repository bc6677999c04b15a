// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

class QTextCodec;

/// Changes the local encoding while it lives, and counts the texts that are converted to it. With Qt 6 the local
/// encoding is always UTF-8: the object does nothing, and a test that needs it skips.
class LocalCodec
{
public:
    explicit LocalCodec(const char* name);
    ~LocalCodec();
    LocalCodec(const LocalCodec&) = delete;
    LocalCodec& operator=(const LocalCodec&) = delete;

    /// Whether the local encoding has changed.
    bool isUsed() const;
    int conversions() const;

private:
    QTextCodec* m_codec = nullptr; ///< owned by Qt, like every codec
    QTextCodec* m_usual = nullptr;
};
