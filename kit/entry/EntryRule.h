// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ENTRYRULE_H
#define SORRELKIT_ENTRYRULE_H

#include "format/XmlElement.h"

#include <QString>

namespace SorrelKit {

/**
 * How Android finds the components that are entries of a kind: by the element, an intent filter, and the permission
 * that guards the component. Entry::Kind has the table in words.
 */
struct EntryRule {
    /// The kinds, with the numbers of Entry::Kind.
    enum class Kind {
        Launcher,
        Television,
        Car,
        CarService,
        WatchFace,
        HomeScreen,
        QuickSettingsTile,
        LiveWallpaper,
        InputMethod,
        ScreenSaver,
        Widget,
        ShareTarget,
        DirectShare,
        Instant,
        Shortcut,
    };
    /// The elements that may be entries.
    enum class Element {
        Activity, ///< `activity` and `activity-alias`
        Service,
        Receiver,
    };

    Kind kind;
    Element element;
    const char *action;      ///< of the filter; null for kinds without a filter
    const char *otherAction; ///< that counts as well; may be null
    const char *category;    ///< of the filter; may be null
    const char *metaData;    ///< name of the `meta-data` that an entry without a filter needs, or of that with details
    const char *permission;  ///< that the component has to require; may be null

    /// The rule of @p kind; null for kinds whose entries are not in the manifest.
    static const EntryRule *find(Kind kind);

    /// Whether @p component is one of the elements of this rule.
    bool isFor(const XmlElement &component) const;
    /// Whether the child @p child of a component makes it an entry: the filter, or the `meta-data`.
    bool matches(const XmlElement &child) const;

    /// The child of @p component of the name @p element with `android:name` @p name; null when there is none.
    static const XmlElement *childNamed(const XmlElement &component, QLatin1String element, QLatin1String name);
};

} // namespace SorrelKit

#endif
