// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QVector>

#include <random>

/// A random number generator that gives the same numbers for the same seed on every machine.
class Chance
{
public:
    explicit Chance(quint64 seed)
        : m_engine(seed)
    {
    }

    /// A number from 0 to `limit` - 1. The bias of the remainder does not matter here.
    int below(int limit)
    {
        return static_cast<int>(m_engine() % static_cast<quint64>(limit));
    }
    template <typename T> const T& of(const QVector<T>& values)
    {
        return values.at(below(values.size()));
    }
    template <typename T> void shuffle(QVector<T>& values)
    {
        for (int i = values.size() - 1; i > 0; --i) {
            std::swap(values[i], values[below(i + 1)]);
        }
    }
    QByteArray bytes(int count)
    {
        QByteArray result;
        for (int i = 0; i < count; ++i) {
            result.append(static_cast<char>(below(256)));
        }
        return result;
    }

private:
    std::mt19937_64 m_engine;
};
