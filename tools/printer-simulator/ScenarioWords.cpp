// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT
#include "ScenarioWords.h"

#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace {

bool IsBlank(QChar character)
{
    return character == QLatin1Char(' ') || character == QLatin1Char('\t');
}

std::optional<QString> DecodeUtf8(const QByteArray& bytes)
{
    const QString text = QString::fromUtf8(bytes.constData(), bytes.size());
    // The conversion replaces what is not valid, and drops a byte order mark.
    const QByteArray valid = text.toUtf8();
    if (bytes != valid && bytes != "\xEF\xBB\xBF" + valid) {
        return std::nullopt;
    }
    return text;
}

bool HasControlCharacter(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar character) {
        return character.category() == QChar::Other_Control && character != QLatin1Char('\t');
    });
}

class LineReader
{
public:
    explicit LineReader(QString line)
        : m_line(std::move(line))
    {
    }

    ScenarioWords Read()
    {
        ScenarioWords result;
        while (SkipBlanks()) {
            const QString word = m_line.at(m_position) == QLatin1Char('"') ? QuotedWord() : PlainWord();
            if (!m_reason.isEmpty()) {
                return {{}, m_reason};
            }
            result.words.append(word);
        }
        return result;
    }

private:
    // Returns false at the end of the line or at a comment.
    bool SkipBlanks()
    {
        while (m_position < m_line.size() && IsBlank(m_line.at(m_position))) {
            ++m_position;
        }
        return m_position < m_line.size() && m_line.at(m_position) != QLatin1Char('#');
    }

    QString PlainWord()
    {
        const int start = m_position;
        while (m_position < m_line.size() && !IsBlank(m_line.at(m_position))) {
            if (m_line.at(m_position) == QLatin1Char('"')) {
                m_reason = QStringLiteral("a quote inside a word; quote the whole word");
                return {};
            }
            ++m_position;
        }
        return m_line.mid(start, m_position - start);
    }

    QString QuotedWord()
    {
        QString word;
        for (++m_position; m_position < m_line.size(); ++m_position) {
            QChar character = m_line.at(m_position);
            if (character == QLatin1Char('"')) {
                ++m_position;
                CheckWordEnd();
                return word;
            }
            if (character == QLatin1Char('\\')) {
                ++m_position;
                character = m_position < m_line.size() ? m_line.at(m_position) : QChar();
                if (character != QLatin1Char('"') && character != QLatin1Char('\\')) {
                    m_reason = QStringLiteral("in quotes a backslash must stand before a quote or a backslash");
                    return {};
                }
            } else if (character == QLatin1Char('\t')) {
                m_reason = QStringLiteral("a tab inside quotes");
                return {};
            }
            word.append(character);
        }
        m_reason = QStringLiteral("the closing quote is missing");
        return {};
    }

    void CheckWordEnd()
    {
        if (m_position < m_line.size() && !IsBlank(m_line.at(m_position))) {
            m_reason = QStringLiteral("text right after a closing quote");
        }
    }

    const QString m_line;
    int m_position = 0;
    QString m_reason;
};

} // namespace

ScenarioWords SplitScenarioLine(const QByteArray& utf8Line)
{
    const auto line = DecodeUtf8(utf8Line);
    if (!line) {
        return {{}, QStringLiteral("not valid UTF-8")};
    }
    if (HasControlCharacter(*line)) {
        return {{}, QStringLiteral("a control character")};
    }
    return LineReader(*line).Read();
}

std::optional<quint32> ParseDecimal(const QString& word, int decimals, quint32 maximum)
{
    static const QRegularExpression pattern(QStringLiteral(R"(\A([0-9]{1,10})(?:\.([0-9]{1,3}))?\z)"));
    const QRegularExpressionMatch match = pattern.match(word);
    const QString fraction = match.captured(2);
    if (!match.hasMatch() || fraction.size() > decimals) {
        return std::nullopt;
    }
    const quint64 value = (match.captured(1) + fraction.leftJustified(decimals, QLatin1Char('0'))).toULongLong();
    if (value > maximum) {
        return std::nullopt;
    }
    return static_cast<quint32>(value);
}

std::optional<quint16> ParseCode(const QString& word)
{
    static const QRegularExpression pattern(QStringLiteral(R"(\A0x[0-9A-Fa-f]{1,4}\z)"));
    if (!pattern.match(word).hasMatch()) {
        return std::nullopt;
    }
    return word.mid(2).toUShort(nullptr, 16);
}
