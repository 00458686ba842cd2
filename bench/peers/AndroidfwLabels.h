// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDFWLABELS_H
#define ANDROIDFWLABELS_H

#include <androidfw/LoadedArsc.h>

#include <cstdint>
#include <map>
#include <string>

namespace peer {

/// Texts by locale, in the form of Sorrel's labels: "de", "pt-BR", empty for the default.
using Texts = std::map<std::string, std::string>;

/**
 * The texts of a resource in every locale that the table has it for. What Android's library is made for is the one
 * value that suits a device best; all of them are found by going through the types of the table one by one.
 */
class AndroidfwLabels
{
public:
    explicit AndroidfwLabels(const android::LoadedArsc *table) : m_table(table) {}

    /// References are followed @p depth levels deep, and left out below. Of the values for one locale, the first counts.
    Texts byLocale(uint32_t resource, int depth) const;

private:
    void add(Texts *texts, const android::ResTable_type *type, uint16_t entry, int depth) const;

    const android::LoadedArsc *m_table;
};

} // namespace peer

#endif
