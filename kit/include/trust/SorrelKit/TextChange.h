// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TEXTCHANGE_H
#define SORRELKIT_TEXTCHANGE_H

#include <SorrelKit/TrustExport.h>

#include <QMetaType>
#include <QSharedDataPointer>
#include <QString>

namespace SorrelKit {

class TextChangeData;

/**
 * A text with a name that differs between two packages, such as a permission, a label or a version. PackageDiff returns
 * these.
 *
 * Texts are those of the packages, with any characters; a program that shows them has to make them harmless.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT TextChange
{
    Q_GADGET
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString before READ before CONSTANT)
    Q_PROPERTY(QString after READ after CONSTANT)

public:
    /// Which of the packages has it. @since 0.5.1
    enum class Kind {
        Added,   ///< only the package after the change
        Removed, ///< only the package before the change
        Changed, ///< both, with different values
    };
    Q_ENUM(Kind)

    /// A change without a name. @since 0.5.1
    TextChange();
    /// The change of @p name from @p before to @p after; one of them is empty when @p kind is not Kind::Changed.
    /// @since 0.5.1
    TextChange(Kind kind, const QString &name, const QString &before, const QString &after);
    /// A copy of @p other. @since 0.5.1
    TextChange(const TextChange &other);
    /// Takes the value of @p other. @since 0.5.1
    TextChange(TextChange &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    TextChange &operator=(const TextChange &other);
    /// Takes the value of @p other. @since 0.5.1
    TextChange &operator=(TextChange &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~TextChange();
    /// Exchanges two values. @since 0.5.1
    void swap(TextChange &other) noexcept { d.swap(other.d); }

    /// Which of the packages has it. @since 0.5.1
    Kind kind() const;
    /// The subject of the change: the function of PackageDiff that returns the change describes it. @since 0.5.1
    QString name() const;
    /// The value before the change; empty when it was added, and for things that have no value. @since 0.5.1
    QString before() const;
    /// The value after the change; empty when it was removed, and for things that have no value. @since 0.5.1
    QString after() const;

private:
    QSharedDataPointer<TextChangeData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::TextChange)
Q_DECLARE_METATYPE(SorrelKit::TextChange)

#endif
