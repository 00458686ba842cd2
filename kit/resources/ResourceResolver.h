// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_RESOURCERESOLVER_H
#define SORRELKIT_RESOURCERESOLVER_H

#include "format/Allowance.h"
#include "format/ResourceTable.h"

#include <QHash>
#include <QSharedPointer>
#include <QVector>

namespace SorrelKit {

/// What a reference leads to.
struct ResolvedValue {
    bool isNull() const { return value.isNull(); }
    /// The text of a string, or what another value is as one: a label may be a number.
    QString plainText() const { return value.type == ValueType::String ? text : value.plainText(); }

    TypedValue value;                     ///< no reference, unless it is one to a resource that is not there
    QString text;                         ///< of a string: a label, the path of a file
    quint32 resource = 0;                 ///< the last resource on the way; 0 for a value that was no reference
    int density = 0;                      ///< that the value is for
    QString languageTag;                  ///< that the value is for; empty for every language
    const ResourceTable *table = nullptr; ///< that a string is in
};

/**
 * Looks up resources in the tables of a package and its splits, as a device of a given configuration does: the best
 * value, and of that, when it is a reference, again the best.
 *
 * References are followed up to MaxDepth in a row, which ends cycles as well. A table may have thousands of values for each
 * of thousands of resources, so that what resource() and resolved() look at is limited for all calls together. Their
 * answers are kept, and cost nothing the next time: an object is used from one thread.
 */
class ResourceResolver
{
public:
    static constexpr int MaxDepth = 20;
    /// What resource() and resolved() may take: a type chunk that is looked into and a character count one each, and a
    /// resource another StepsPerResource. When nothing is left, a resource has no value.
    static constexpr qint64 MaxSteps = 1 << 22;
    static constexpr int StepsPerResource = 64;
    /// Values that count among the candidates() of a resource, in the order of the table. The largest applications have a
    /// value for each of a hundred languages, or of a dozen densities.
    static constexpr int MaxCandidates = 4096;

    /// @p tables are looked through in their order; of values that are as good as each other, the first counts.
    ResourceResolver(QVector<QSharedPointer<const ResourceTable>> tables, const Configuration &device);

    const Configuration &device() const { return m_device; }
    /// The same tables seen by @p device.
    ResourceResolver forDevice(const Configuration &device) const { return {m_tables, device}; }

    /// The value of the resource @p id.
    ResolvedValue resource(quint32 id) const;
    /// What @p value stands for: itself, or what it refers to. A string as value has no text here: its pool is that of
    /// the document it is from. Null for an attribute of the theme, as there is no theme.
    ResolvedValue resolved(const TypedValue &value) const;
    /// Which values count: those for every language, or all.
    enum class Locales {
        None,
        Any,
    };
    /// Every value of the resource that matches the device but for its density, and as @p locales says; best first, none
    /// followed, and without texts: there may be any number of values, and all of them one text.
    QVector<ResolvedValue> candidates(quint32 id, Locales locales = Locales::None) const;
    /// What candidates() takes for @p id: the type chunks that it looks into, and StepsPerResource.
    qint64 steps(quint32 id) const;
    /// @p value, one of the candidates(), with its text, or as many characters of it as @p maxLength.
    static ResolvedValue withText(ResolvedValue value, int maxLength = ResourceTable::MaxStringLength);
    /// The name of the resource's type ("mipmap", "color"); empty when there is none.
    QString typeName(quint32 id) const;

private:
    ResolvedValue best(quint32 id) const;
    ResolvedValue bestOfTables(quint32 id) const;

    QVector<QSharedPointer<const ResourceTable>> m_tables;
    Configuration m_device;
    mutable Allowance m_steps{MaxSteps};
    mutable QHash<quint32, ResolvedValue> m_best; ///< what was looked up
};

} // namespace SorrelKit

#endif
