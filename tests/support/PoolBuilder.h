// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef POOLBUILDER_H
#define POOLBUILDER_H

#include <QByteArray>
#include <QStringList>
#include <QVector>

namespace fixture {

enum class Encoding {
    Utf8,
    Utf16,
};

/// A string in the form that a pool's data has it: lengths, text, terminator.
QByteArray encodedString(const QString &text, Encoding encoding);

/// Builds a string pool chunk. Without further ado it is as build tools write it; each part can be put wrong.
class PoolBuilder
{
public:
    static constexpr int CountAt = 8;
    static constexpr int StyleCountAt = 12;
    static constexpr int FlagsAt = 16;
    static constexpr int StringsStartAt = 20;
    static constexpr int StylesStartAt = 24;
    /// Of the first string offset, unless extraHeader() moves it.
    static constexpr int OffsetsAt = 28;

    explicit PoolBuilder(Encoding encoding = Encoding::Utf8) : m_encoding(encoding) {}

    PoolBuilder &strings(const QStringList &strings);
    PoolBuilder &string(const QString &string);
    /// A string given as its bytes in the data, lengths and terminator included.
    PoolBuilder &rawString(const QByteArray &bytes);
    /// An offset that points to @p offset within the data, whatever is there.
    PoolBuilder &offset(qint64 offset);
    /// Header bytes after the 28 known ones.
    PoolBuilder &extraHeader(int count);
    /// Styles: @p count offsets, and @p data behind the string data.
    PoolBuilder &styles(int count, const QByteArray &data);
    /// Further flag bits.
    PoolBuilder &flags(int flags);
    /// The string data ends right after the last string, and is not padded to 4 bytes.
    PoolBuilder &unpadded();

    QByteArray build() const;

private:
    Encoding m_encoding;
    QVector<qint64> m_offsets;
    QByteArray m_data;
    QByteArray m_styleData;
    int m_styleCount = 0;
    int m_extraHeader = 0;
    int m_flags = 0;
    bool m_padded = true;
};

} // namespace fixture

#endif
