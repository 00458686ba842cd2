// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_VALUEFORMATTER_H
#define SORRELKIT_VALUEFORMATTER_H

#include "format/TypedValue.h"
#include "resources/ResourceNames.h"

#include <SorrelKit/ResourceItem.h>

#include <QString>

namespace SorrelKit {

/// Writes compiled values as texts, in the notation of resource files: "@string/app_name", "48dp", "#ff204080".
class ValueFormatter
{
public:
    /// @p names outlives this object.
    explicit ValueFormatter(const ResourceNames &names) : m_names(names) {}

    /// The text of @p value. A string is looked up in @p table and cut after @p maxLength characters; only names make
    /// other texts long.
    QString text(const TypedValue &value, const ResourceTable &table, int maxLength) const;
    /// The text of @p value, which is no string.
    QString text(const TypedValue &value) const;
    /// The type of @p value.
    static ResourceItem::Type type(const TypedValue &value);
    /// The word for the type of @p value ("dimension"); "type 0x09" for an unknown one.
    static QString typeName(const TypedValue &value);
    /// The name of the item @p name of @p map: the name of an attribute ("attr/color"), the index in an array ("0"), a
    /// quantity ("other"), or a property of an attribute ("type"). aapt numbers the items of arrays from 0x02000000,
    /// aapt2 from 0x01000001. In other maps the latter is the lower bound of an attribute, which is never the first
    /// item.
    QString itemName(const EntryView &map, quint32 name) const;

private:
    const ResourceNames &m_names;
};

} // namespace SorrelKit

#endif
