// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_SOURCENUMBER_H
#define SORRELQML_SOURCENUMBER_H

#include <QString>

namespace SorrelQml {

/**
 * The number by which URLs of icons name an index or a package, while an object of this class lives. URLs have no
 * paths, so a text of a stranger that a view shows as rich text cannot name a file. Objects with one file name share
 * a number. A number is not used again for another file. Every function may be called in any thread.
 */
class SourceNumber
{
public:
    /// No file: value() is 0.
    SourceNumber() = default;
    explicit SourceNumber(const QString &fileName);
    SourceNumber(SourceNumber &&other) noexcept;
    SourceNumber &operator=(SourceNumber &&other) noexcept;
    ~SourceNumber();

    int value() const { return m_value; }
    /// The file of the number @p value; empty when no object has the number.
    static QString fileName(int value);

private:
    Q_DISABLE_COPY(SourceNumber)

    int m_value = 0;
};

} // namespace SorrelQml

#endif
