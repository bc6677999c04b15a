// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "discovery/PrinterListSnapshot.h"

#include "infrastructure/QtGenerations.h"
#include "infrastructure/RegularFile.h"

#include <QByteArray>
#include <QVariant>
#include <QVector>

#include <atomic>
#include <cstring>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qint64 MaximumListSizeBytes = 1048576;
// Replaces an "@" while QSettings reads: U+FDD0, a Unicode noncharacter, which no text contains.
constexpr char StandInBytes[] = "\xEF\xB7\x90";
constexpr QChar StandIn(0xFDD0);

int DigitValue(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const int letter = c | 0x20; // in lower case
    return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : 16;
}

// Returns the character of a numeric escape sequence, in 16 bits like QSettings, and 0 for all other sequences. Moves
// `at` from the position after the backslash to the end of the sequence.
char16_t NumberedCharacter(const QByteArray& ini, int& at)
{
    const int base = ini.at(at) == 'x' ? 16 : 8;
    if (base == 16) {
        ++at;
    } else if (DigitValue(ini.at(at)) >= base) {
        ++at;
        return 0;
    }
    unsigned int value = 0;
    for (; at < ini.size() && DigitValue(ini.at(at)) < base; ++at) {
        value = value * static_cast<unsigned int>(base) + static_cast<unsigned int>(DigitValue(ini.at(at)));
    }
    return static_cast<char16_t>(value);
}

// An "@" of the text: its byte range there and its position in the condensed text.
struct AtSign
{
    int begin;
    int end;
    int condensedAt;
};

// Removes everything that QSettings might skip between two characters of a value: quotes, blanks, line ends, byte order
// marks and escape sequences without a value. Resolves numeric escape sequences.
QByteArray Condensed(const QByteArray& ini, QVector<AtSign>& atSigns)
{
    QByteArray text;
    text.reserve(ini.size());
    int at = 0;
    while (at < ini.size()) {
        const int begin = at;
        const char c = ini.at(at++);
        char16_t character = c == '"' ? 0 : static_cast<unsigned char>(c);
        if (c == '\\') {
            character = at < ini.size() ? NumberedCharacter(ini, at) : 0;
        }
        if (character == '@') {
            atSigns.append({begin, at, static_cast<int>(text.size())});
        }
        if (character > 0x20 && character < 0x7F) {
            text += static_cast<char>(character);
        }
    }
    return text;
}

// QSettings takes an "@" after another "@" as text.
bool MayBeginStoredObject(const QByteArray& condensed, int at)
{
    const auto continuesWith = [&condensed, at](const char* word) {
        return std::strncmp(condensed.constData() + at, word, std::strlen(word)) == 0;
    };
    return (at == 0 || condensed.at(at - 1) != '@') && (continuesWith("@Variant(") || continuesWith("@DateTime("));
}

// Replaces each "@" that would begin a stored object at the beginning of a value, wherever it stands: only QSettings
// can tell where values begin.
QByteArray WithoutStoredObjects(const QByteArray& ini)
{
    QVector<AtSign> atSigns;
    const QByteArray condensed = Condensed(ini, atSigns);
    QByteArray text;
    int copied = 0;
    for (const AtSign& atSign : qAsConst(atSigns)) {
        if (MayBeginStoredObject(condensed, atSign.condensedAt)) {
            text += ini.mid(copied, atSign.begin - copied) + StandInBytes;
            copied = atSign.end;
        }
    }
    return text + ini.mid(copied);
}

bool Write(int descriptor, const QByteArray& text)
{
    int written = 0;
    while (written < text.size()) {
        const ssize_t n =
            write(descriptor, text.constData() + written, static_cast<std::size_t>(text.size() - written));
        if (n <= 0) {
            return false;
        }
        written += static_cast<int>(n);
    }
    return true;
}

// Sets a timestamp one second after that of the previous copy, independently of the clock.
bool SetTimeOfItsOwn(int descriptor)
{
    static std::atomic<time_t> s_seconds{0};
    const time_t seconds = ++s_seconds;
    const timespec times[2] = {{seconds, 0}, {seconds, 0}};
    return futimens(descriptor, times) == 0;
}

} // namespace

PrinterListSnapshot::PrinterListSnapshot(const QString& path)
{
    const RegularFile file(path);
    if (!file.isOpen() || file.size() > MaximumListSizeBytes) {
        return;
    }
    QByteArray text(static_cast<int>(file.size()), '\0');
    const unsigned long count =
        file.read(reinterpret_cast<unsigned char*>(text.data()), static_cast<unsigned long>(text.size()));
    text.truncate(static_cast<int>(count));
    text = WithoutStoredObjects(WithValidUtf8(text));
    m_descriptor = memfd_create("printerlist", MFD_CLOEXEC);
    if (m_descriptor >= 0 && !(Write(m_descriptor, text) && SetTimeOfItsOwn(m_descriptor))) {
        close(m_descriptor);
        m_descriptor = -1;
    }
}

PrinterListSnapshot::~PrinterListSnapshot()
{
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

QString PrinterListSnapshot::path() const
{
    return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor);
}

QString PrinterListSnapshot::text(const QVariant& value)
{
    QString text = value.toString();
    const bool mayBeObject = text.startsWith(StandIn) && text.endsWith(QLatin1Char(')'));
    text.replace(StandIn, QLatin1Char('@'));
    const bool isObject =
        mayBeObject && (text.startsWith(QLatin1String("@Variant(")) || text.startsWith(QLatin1String("@DateTime(")));
    return isObject ? QString() : text;
}
