// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DIAGNOSTICS_H
#define DIAGNOSTICS_H

#include <QMessageLogger>
#include <QString>
#include <QVector>

/// The place in the source for a line on Qt's debug log, as qDebug() notes it.
#define SORREL_LOGGER QMessageLogger(QT_MESSAGELOG_FILE, QT_MESSAGELOG_LINE, QT_MESSAGELOG_FUNC)

/**
 * The oddities that libsorrel's readers skipped in a table or document, or accepted as they are. Each is printed on
 * Qt's debug log when it is added, and kept. A fault is no oddity: it is on the Extractor, and the loader prints it.
 */
class Diagnostics
{
public:
    enum class Code {
        UnexpectedTableChunk,      ///< its type is `number`
        UnknownStringPool,         ///< its header ends at the position `number`, and the package does not refer to it
        UnexpectedDocumentChunk,   ///< its type is `number`, sign-extended
        UnknownElementNamespace,   ///< `uri` is not declared, and the element `name` is in it
        UnknownAttributeNamespace, ///< `uri` is not declared, and an attribute is in it
        NoAndroidNamespace,        ///< Android's namespace is not declared, and an attribute is in it
    };
    struct Item {
        Code code;
        unsigned number = 0;
        QString uri = QString();
        QString name = QString();
    };

    /// Oddities that are printed and kept of one table or document; further ones are dropped.
    static constexpr int MaxItems = 100;

    /// From now on nothing is printed. For callers that read items().
    void setQuiet() { m_isQuiet = true; }
    bool isQuiet() const { return m_isQuiet; }

    /// Prints @p item by @p logger, and keeps it.
    void add(const QMessageLogger &logger, const Item &item);
    /// In the order in which they were added.
    const QVector<Item> &items() const { return m_items; }
    void clear() { m_items.clear(); }

private:
    QVector<Item> m_items;
    bool m_isQuiet = false;
};

#endif
