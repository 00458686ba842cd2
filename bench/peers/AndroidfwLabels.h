// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDFWLABELS_H
#define ANDROIDFWLABELS_H

#include <androidfw/LoadedArsc.h>

#include <cstdint>
#include <map>
#include <string>

namespace peer {

/// Texts by locale, with the keys of Sorrel's labels: "de", "pt-BR", empty for the default.
using Texts = std::map<std::string, std::string>;

/**
 * Collects the texts of a resource in every locale. Android's library returns the one value that suits a device best,
 * so this class walks through the types of the table.
 */
class AndroidfwLabels
{
public:
    explicit AndroidfwLabels(const android::LoadedArsc *table) : m_table(table) {}

    /// References are followed @p depth levels deep, and left out below. Of the values for one locale, the first
    /// counts.
    Texts byLocale(uint32_t resource, int depth) const;

private:
    void add(Texts *texts, const android::ResTable_type *type, uint16_t entry, int depth) const;

    const android::LoadedArsc *m_table;
};

} // namespace peer

#endif
