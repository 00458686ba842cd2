// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_THEME_H
#define SORRELKIT_THEME_H

#include "resources/ResourceResolver.h"

#include <QHash>
#include <QVector>

#include <optional>

namespace SorrelKit {

/**
 * A theme: the values of attributes (`?attr/x`), as the styles that are applied to it give them.
 *
 * A style is a map in the resource table: its items are attributes and their values, and its parent is another style,
 * whose items count where the style itself has none. Each style of the chain is chosen for the device, so that
 * `values-night` and `values-v21` may change one of them alone. As on Android:
 *
 * - An item `@null` without a type removes the attribute; `@empty` is a value.
 * - The value of an attribute may be an attribute again, MaxAttributes times in a row. The last one may be a reference,
 *   which is followed. A resource whose own value is an attribute has no value.
 * - A chain of parents ends where it comes back to one of its styles.
 * - Attributes and styles with a staged id are those with their final id (ResourceResolver::finalId()).
 *
 * Android 9 and later refuse a whole style when one of its parents is missing. Here the chain ends at that parent, as in
 * earlier versions: packages inherit from the platform's styles, and the platform's package may not be at hand.
 * missingStyle() names the parent.
 *
 * The first value() that is asked for reads the styles. Everything spends from the budget of the resolver, so a theme
 * without a use costs nothing. Styles and items that do not fit are left out. Not thread-safe.
 */
class Theme
{
public:
    /// Attributes that one leads to in a row. This ends cycles.
    static constexpr int MaxAttributes = 20;
    /// Styles of a chain of parents; those that follow are left out. The largest libraries have some twenty.
    static constexpr int MaxParents = 256;
    /// The work of reading an item, and the bytes that it holds.
    static constexpr qint64 ItemWork = 32;
    static constexpr qint64 ItemBytes = 64;

    /// A theme without values. @p resolver outlives this object.
    explicit Theme(const ResourceResolver &resolver) : m_resolver(resolver) {}

    enum class Apply {
        Missing, ///< the style gives values to attributes that have none
        Forced,  ///< the style also replaces values
    };
    /// Applies the style @p id with its parents, over the styles before it. A `ThemeOverlay` is applied with
    /// Apply::Forced. An id that is no style changes nothing.
    void applyStyle(quint32 id, Apply apply);

    /// The value of the attribute @p attribute, with attributes and references followed; nothing when it has none. A
    /// null value is `@empty`, and a reference is a resource that is missing.
    std::optional<ResolvedValue> value(quint32 attribute) const;
    /// The first style that is missing, a parent or an applied one; 0 when all were found. Reads the styles.
    quint32 missingStyle() const;

private:
    Q_DISABLE_COPY(Theme)

    struct Style {
        quint32 id;
        Apply apply;
    };
    struct Item {
        bool isRemoved() const;

        TypedValue value;
        const ResourceTable *table = nullptr; ///< whose pool has a string
        ResourceOwner owner = ResourceOwner::Package;
    };
    using Items = QHash<quint32, Item>; ///< by attribute

    /// The id @p id, which a table with the own package @p packageId or a document has, with its package; the final id
    /// for a staged one.
    quint32 fullId(quint32 id, quint8 packageId) const;
    void readStyles() const;
    Items itemsOf(quint32 style) const;
    void addItems(const ResolvedMap &style, Items *items) const;
    void merge(const Items &items, Apply apply) const;
    ResolvedValue resolved(const Item &item) const;

    const ResourceResolver &m_resolver;
    mutable QVector<Style> m_unread;
    mutable Items m_items;
    mutable quint32 m_missingStyle = 0;
};

} // namespace SorrelKit

#endif
