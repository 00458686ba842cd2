// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MANIFEST_H
#define SORRELKIT_MANIFEST_H

#include "entry/EntryRule.h"
#include "format/XmlElement.h"

#include <QHash>
#include <QString>
#include <QVector>

namespace SorrelKit {

/// Finds elements of a decoded manifest by their place, and attributes of Android's namespace by their ids. Does not
/// resolve references.
class Manifest
{
public:
    /// A component that is an entry of a kind. The pointers lead to elements of the manifest.
    struct EntryElements {
        /// The activity that is started; null when an alias names none.
        const XmlElement *activity() const { return isAlias ? target : component; }

        const XmlElement *component = nullptr;
        const XmlElement *filter = nullptr; ///< the first that makes the component an entry; else the `meta-data`
        const XmlElement *target = nullptr; ///< the activity that an alias names; may be null
        QString name;                       ///< of the component, completed
        QString className;                  ///< of the class that runs, completed
        bool isAlias = false;
    };
    /// Entries of a kind at most; those that follow are left out. Each takes lookups of its own. Applications that let users
    /// choose among icons have some dozens.
    static constexpr int MaxEntries = 1024;
    /// Characters of the names of all entries of a kind, and of all components. Completed names repeat the name of the
    /// package, which may be long.
    static constexpr int MaxNameCharacters = 4 << 20;

    /// A component of the application: the element of an activity, alias, service, receiver or provider.
    struct ComponentEntry {
        const XmlElement *element = nullptr;
        QString name; ///< completed
    };
    /// Components at most; those that follow are left out. Each takes lookups of its own. The largest applications have
    /// some thousands.
    static constexpr int MaxComponents = 8192;

    Manifest() = default;
    explicit Manifest(const XmlElement &root);

    const XmlElement &root() const { return m_root; }
    /// The attribute `package`.
    QString packageName() const { return m_packageName; }
    /// The attribute `split`, which only splits have; empty for a base.
    QString splitName() const;
    /// The element `application`; a null pointer when there is none.
    const XmlElement *application() const;
    /// The attribute @p id of the application; a null pointer when there is none.
    const XmlAttribute *applicationAttribute(quint32 id) const;
    /// The attribute @p id of the first that has it: filter, component, an alias's target, application. When the first
    /// with one of both has @p preferred, that is the result.
    const XmlAttribute *innermostAttribute(const EntryElements &entry, quint32 id, quint32 preferred = 0) const;
    /// The attribute @p id of the first of the root's children of the name @p element that has it.
    const XmlAttribute *childAttribute(const QString &element, quint32 id) const;
    /// One entry for each component that @p rule takes, with its first filter of that kind, in the order of the
    /// manifest; up to MaxEntries and MaxNameCharacters.
    QVector<EntryElements> entries(const EntryRule &rule) const;
    /// The entries for home screens.
    QVector<EntryElements> launchers() const { return entries(*EntryRule::find(EntryRule::Kind::Launcher)); }
    /// The components that have a name, each once, in the order of the manifest; up to MaxComponents and
    /// MaxNameCharacters. The first of several elements with one tag and one name counts.
    QVector<ComponentEntry> components() const;
    /// @p name as the full name of a class: with the package in front when it begins with a dot or has no dot. An empty name
    /// stays empty.
    QString completed(const QString &name) const;

    /// The text of the attribute @p id of @p element; empty when the element has no such attribute.
    static QString text(const XmlElement &element, quint32 id);

private:
    /// The most characters that completed() makes of @p name.
    int completedSize(const QString &name) const;
    /// The last activity of each name, which is completed.
    QHash<QString, const XmlElement *> activitiesByName(const XmlElement &application) const;

    XmlElement m_root;
    QString m_packageName;
};

} // namespace SorrelKit

#endif
