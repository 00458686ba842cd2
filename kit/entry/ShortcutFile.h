// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHORTCUTFILE_H
#define SORRELKIT_SHORTCUTFILE_H

#include "format/XmlElement.h"

#include <QSet>
#include <QString>
#include <QVector>

namespace SorrelKit {

/**
 * The document that an activity names with the `meta-data` of the name MetaData: the shortcuts of a launcher and the
 * targets for sharing.
 *
 *     <shortcuts>
 *         <shortcut android:shortcutId="new" android:shortcutShortLabel="@string/new" android:icon="@drawable/new">
 *             <intent android:action="android.intent.action.VIEW" android:targetClass="org.example.Editor" />
 *         </shortcut>
 *         <share-target android:targetClass="org.example.Share">
 *             <data android:mimeType="text/plain" />
 *             <category android:name="org.example.category.TEXT" />
 *         </share-target>
 *     </shortcuts>
 */
namespace ShortcutFile {

constexpr char MetaData[] = "android.app.shortcuts";
/// Shortcuts of one activity that Android takes.
constexpr int TakenShortcuts = 15;

/// A shortcut or a target for sharing. The pointer leads to an element of the document.
struct Item {
    const XmlElement *element = nullptr;
    QString id;        ///< of a shortcut; the first category of a target
    QString className; ///< of the class that the last intent or the target starts; may be empty
    /// Whether Android takes it. It takes a shortcut with a label that is a resource, and, when it is enabled, at least
    /// one intent, each with an action; up to TakenShortcuts of them. It takes a target with a class, a type of data and a
    /// category.
    bool isTaken = false;
};

/// The shortcuts of @p root that have an id, a text, which is not in @p known; the first of each counts. Adds the ids
/// to @p known.
QVector<Item> shortcuts(const XmlElement &root, QSet<QString> *known);
/// The targets for sharing of @p root.
QVector<Item> shareTargets(const XmlElement &root);

} // namespace ShortcutFile

} // namespace SorrelKit

#endif
