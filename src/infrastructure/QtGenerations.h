// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractEventDispatcher>
#include <QSettings>
#include <QVariant>

class QTextCodec;

// The only place where the sources for Qt 5 and Qt 6 differ. docs/architecture.md explains each difference.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

#include <QTextCodec>

using TimerInterval = int;
using EventDispatcherBase = QAbstractEventDispatcher;

inline QTextCodec* Utf8Codec()
{
    return QTextCodec::codecForName("utf-8");
}

/// Lets no session manager close the windows of an application that does not answer it.
template <typename Application> void AnswerSessionManagersOnly()
{
    Application::setFallbackSessionManagementEnabled(false);
}

/// Makes UTF-8 the encoding of file names, arguments and terminals, whatever the locale says.
inline void UseUtf8EverywhereLocally()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

/// Reads an INI file as UTF-8.
inline void ReadAsUtf8(QSettings& settings)
{
    settings.setIniCodec("utf-8");
}

/// Returns what QSettings should read instead of an INI file's contents.
inline const QByteArray& WithValidUtf8(const QByteArray& ini)
{
    return ini;
}

/// Returns the number of a text, reduced to 32 bits; 0 for other texts.
inline int IntegerOf(const QVariant& text)
{
    return text.toInt();
}

#else

#include <algorithm>

using TimerInterval = qint64;

/// Qt 6 no longer asks for these two.
class EventDispatcherBase : public QAbstractEventDispatcher
{
public:
    using QAbstractEventDispatcher::QAbstractEventDispatcher;

    virtual bool hasPendingEvents() = 0;
    virtual void flush() = 0;
};

/// Qt 6 has no codecs.
inline QTextCodec* Utf8Codec()
{
    return nullptr;
}

/// Qt 6 no longer does this.
template <typename Application> void AnswerSessionManagersOnly() { }

/// Qt 6 knows no other encoding.
inline void UseUtf8EverywhereLocally() { }

/// Qt 6 reads every INI file as UTF-8.
inline void ReadAsUtf8(QSettings& /*settings*/) { }

/// Returns what QSettings should read instead of an INI file's contents, to get the same values as with Qt 5. QSettings
/// would lose a cut character at the end of a value and before a quote, a comma or a backslash; with Qt 5 each of its
/// bytes becomes U+FFFD. It would keep a byte order mark after a quote or a comma.
inline QByteArray WithValidUtf8(const QByteArray& ini)
{
    const auto isAscii = [](char c) {
        return static_cast<unsigned char>(c) < 0x80;
    };
    QByteArray text;
    for (auto at = ini.begin(); at != ini.end();) {
        auto begin = std::find_if_not(at, ini.end(), isAscii);
        text.append(at, begin - at);
        at = std::find_if(begin, ini.end(), isAscii);
        const auto lastOther = std::find_if(text.rbegin(), text.rend(), [](char c) { return c != '\\'; });
        if (begin != at && std::distance(text.rbegin(), lastOther) % 2 == 1) {
            text += *begin++; // QSettings skips the byte after a backslash
        }
        // fromUtf8() drops a byte order mark at the beginning.
        const bool isPieceOfValue = text.endsWith('"') || text.endsWith(',');
        const QByteArray run(begin, at - begin);
        text += QString::fromUtf8(isPieceOfValue ? run : "\xEF\xBB\xBF" + run).toUtf8();
    }
    return text;
}

/// Returns the number of a text, reduced to 32 bits; 0 for other texts.
inline int IntegerOf(const QVariant& text)
{
    return text.toString().contains(QChar(QChar::Null)) ? 0 : static_cast<int>(text.toLongLong());
}

#endif
