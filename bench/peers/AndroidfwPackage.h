// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDFWPACKAGE_H
#define ANDROIDFWPACKAGE_H

#include "AndroidfwIcons.h"
#include "AndroidfwLabels.h"
#include "AndroidfwManifest.h"

#include <androidfw/ApkAssets.h>

#include <memory>
#include <string>
#include <vector>

namespace peer {

struct Launcher {
    std::string className;
    Texts labels;
    uint32_t icon = 0; ///< resource id; 0 when the manifest names a path
};

/**
 * Reads a package by Android's own resource library and answers the same queries as Sorrel. The constructor maps the
 * archive, checks and indexes the table in place, and walks through the manifest.
 */
class AndroidfwPackage
{
public:
    explicit AndroidfwPackage(const std::string &file);

    /// Whether both the table and the manifest were read. When not, all results are empty.
    bool isOpen() const { return m_manifest != nullptr; }
    std::string package() const { return isOpen() ? m_manifest->package() : std::string(); }
    int minSdkVersion() const { return isOpen() ? m_manifest->minSdkVersion() : 1; }
    /// The entries that a home screen shows, as ApkFile::getLauncherInfo(false) has them, without their icons.
    std::vector<Launcher> launchers() const;
    /// The files of a launcher's icon.
    std::vector<IconFile> iconFiles(const Launcher &launcher) const;

private:
    bool isShown(const LauncherFilter &launcher, const AndroidfwLabels &labels) const;
    std::string className(const ManifestElement &activity) const;

    std::unique_ptr<const android::ApkAssets> m_assets;
    std::unique_ptr<android::Asset> m_manifestBytes;
    android::ResXMLTree m_document;
    std::unique_ptr<const AndroidfwManifest> m_manifest;
};

} // namespace peer

#endif
