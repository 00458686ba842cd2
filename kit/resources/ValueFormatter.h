// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_VALUEFORMATTER_H
#define SORRELKIT_VALUEFORMATTER_H

#include "format/TypedValue.h"
#include "resources/ResourceNames.h"

#include <QString>

namespace SorrelKit {

/**
 * Texts of compiled values, as resource files have them: "@string/app_name", "48dp", "#ff204080". Data types are those
 * of `Res_value`, names of items those of `ResTable_map`.
 */
class ValueFormatter
{
public:
    /// @p names outlives this object.
    explicit ValueFormatter(const ResourceNames &names) : m_names(names) {}

    /// Of a string, which is one of @p table, at most @p maxLength characters; other texts have a few, but for names.
    QString text(const TypedValue &value, const ResourceTable &table, int maxLength) const;
    /// The word for the type of @p value ("dimension").
    static QString typeWord(const TypedValue &value);
    /// What the map @p map calls its item @p name: the name of an attribute ("attr/color"), the index in an array
    /// ("0"), a quantity ("other"), or what an attribute tells of itself ("type"). aapt counts the items of arrays
    /// from 0x02000000 on; aapt2 from 0x01000001, which elsewhere is a bound of an attribute, and never comes first
    /// there.
    QString itemName(const EntryView &map, quint32 name) const;

private:
    const ResourceNames &m_names;
};

} // namespace SorrelKit

#endif
