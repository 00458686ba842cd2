// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ANDROIDFWMANIFEST_H
#define ANDROIDFWMANIFEST_H

#include <androidfw/ResourceTypes.h>

#include <cstdint>
#include <string>
#include <vector>

/// A package as Android's own resource library reads it, with the names of Sorrel's results.
namespace peer {

/// The value of an attribute: a resource id when it is a reference, else a text.
struct AttributeValue {
    std::string text;
    uint32_t reference = 0;

    bool isEmpty() const { return reference == 0 && text.empty(); }
};

/// The attributes of an element that launchers need.
struct ManifestElement {
    std::u16string tag;
    AttributeValue label;
    AttributeValue icon;
    AttributeValue name;
    AttributeValue targetActivity;
    AttributeValue enabled;
    AttributeValue exported;
    bool hasMainAction = false;
    bool hasLauncherCategory = false;
};

/// An intent filter for launchers, inside an activity, or an alias of one, inside the application.
struct LauncherFilter {
    ManifestElement filter;
    ManifestElement activity;
    ManifestElement application;
};

/**
 * Walks through a manifest once, from its first event to its last. Attributes are recognized by their resource ids, as
 * Android does. The attribute `package` has no id and is recognized by its name.
 */
class AndroidfwManifest
{
public:
    explicit AndroidfwManifest(android::ResXMLTree *document);

    const std::string &package() const { return m_package; }
    /// The minimum SDK of the first element that has one; 1 when none has, 0 when it is no number.
    int minSdkVersion() const { return m_minSdkVersion < 0 ? 1 : m_minSdkVersion; }
    const std::vector<LauncherFilter> &launcherFilters() const { return m_launcherFilters; }

private:
    void startElement();
    void endElement();
    ManifestElement currentElement();
    AttributeValue attributeValue(size_t index) const;

    android::ResXMLTree *m_document;
    std::vector<ManifestElement> m_open;
    std::string m_package;
    int m_minSdkVersion = -1;
    std::vector<LauncherFilter> m_launcherFilters;
};

} // namespace peer

#endif
