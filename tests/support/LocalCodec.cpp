// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "LocalCodec.h"

#include <QtGlobal>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

#include <QTextCodec>

namespace {

class CountingCodec : public QTextCodec
{
public:
    explicit CountingCodec(const QTextCodec& codec)
        : m_codec(codec)
    {
    }
    int conversions() const
    {
        return m_conversions;
    }
    QByteArray name() const override
    {
        return "counting";
    }
    int mibEnum() const override
    {
        return -1;
    }

protected:
    QString convertToUnicode(const char* bytes, int length, ConverterState* state) const override
    {
        return m_codec.toUnicode(bytes, length, state);
    }
    QByteArray convertFromUnicode(const QChar* text, int length, ConverterState* state) const override
    {
        ++m_conversions;
        return m_codec.fromUnicode(text, length, state);
    }

private:
    const QTextCodec& m_codec;
    mutable int m_conversions = 0;
};

} // namespace

LocalCodec::LocalCodec(const char* name)
    : m_usual(QTextCodec::codecForLocale())
{
    const QTextCodec* codec = QTextCodec::codecForName(name);
    if (codec == nullptr) {
        qFatal("Qt has no codec %s", name);
    }
    m_codec = new CountingCodec(*codec);
    QTextCodec::setCodecForLocale(m_codec);
}

LocalCodec::~LocalCodec()
{
    QTextCodec::setCodecForLocale(m_usual);
}

int LocalCodec::conversions() const
{
    return isUsed() ? static_cast<CountingCodec*>(m_codec)->conversions() : 0;
}

#else

LocalCodec::LocalCodec(const char* /*name*/) { }

LocalCodec::~LocalCodec() = default;

int LocalCodec::conversions() const
{
    return 0;
}

#endif

bool LocalCodec::isUsed() const
{
    return m_codec != nullptr;
}
