// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SHORTTEXT_H
#define SHORTTEXT_H

#include <QHash>
#include <QString>

#include <cstring>

/// Up to eight ASCII characters, as the codes of languages, scripts and regions have. A value that owns no memory: it is
/// compared and hashed as a number.
class ShortText
{
public:
    static constexpr int Capacity = 8;

    ShortText() = default;
    /// The first Capacity characters of @p text, which are ASCII.
    explicit ShortText(const char *text)
    {
        for (; *text != '\0' && m_size < Capacity; ++text)
            append(*text);
    }

    bool isEmpty() const { return m_size == 0; }
    int size() const { return m_size; }
    /// Precondition: @p number is less than size().
    char at(int number) const { return m_characters[number]; }
    /// Precondition: size() is less than Capacity, and @p character is ASCII, but not zero.
    void append(char character) { m_characters[m_size++] = character; }

    ShortText toLower() const
    {
        ShortText lower;
        for (int i = 0; i < m_size; ++i)
            lower.append(isBetween(at(i), 'A', 'Z') ? char(at(i) - 'A' + 'a') : at(i));
        return lower;
    }
    ShortText toUpper() const
    {
        ShortText upper;
        for (int i = 0; i < m_size; ++i)
            upper.append(isBetween(at(i), 'a', 'z') ? char(at(i) - 'a' + 'A') : at(i));
        return upper;
    }
    QLatin1String latin1() const { return QLatin1String(m_characters, m_size); }
    QString toString() const { return latin1(); }

    static bool isLetter(char character) { return isBetween(character, 'A', 'Z') || isBetween(character, 'a', 'z'); }
    static bool isDigit(char character) { return isBetween(character, '0', '9'); }
    static bool isLetterOrDigit(char character) { return isLetter(character) || isDigit(character); }
    /// Whether @p test holds for each character.
    bool isAll(bool (*test)(char)) const
    {
        for (int i = 0; i < m_size; ++i) {
            if (!test(at(i)))
                return false;
        }
        return true;
    }

    friend bool operator==(const ShortText &a, const ShortText &b) { return a.number() == b.number(); }
    friend bool operator!=(const ShortText &a, const ShortText &b) { return !(a == b); }
    friend auto qHash(const ShortText &text, decltype(::qHash(0)) seed = 0) { return ::qHash(text.number(), seed); }

private:
    static bool isBetween(char character, char first, char last) { return character >= first && character <= last; }
    quint64 number() const
    {
        quint64 number = 0;
        std::memcpy(&number, m_characters, sizeof number);
        return number;
    }

    char m_characters[Capacity] = {}; ///< zeros after the text
    quint8 m_size = 0;
};

#endif
