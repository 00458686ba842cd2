// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDFWICONS_H
#define ANDROIDFWICONS_H

#include <androidfw/ApkAssets.h>
#include <androidfw/LoadedArsc.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace peer {

/// A file of an icon, with the facts of SorrelKit::IconFile that Android's library can read.
struct IconFile {
    std::string path;
    std::string kind; ///< the root element of an XML file; empty for a picture, which this library does not decode
    int density = 0;
};

/**
 * Collects the files of an icon in every configuration without a locale, with references followed, and reads each. An XML
 * file is opened up to its root element.
 */
class AndroidfwIcons
{
public:
    explicit AndroidfwIcons(const android::ApkAssets *assets) : m_assets(assets) {}

    std::vector<IconFile> files(uint32_t resource) const;

private:
    void add(std::vector<IconFile> *files, const android::ResTable_type *type, uint16_t entry,
             std::vector<uint32_t> *open) const;
    bool read(IconFile *file) const;

    const android::ApkAssets *m_assets;
};

} // namespace peer

#endif
