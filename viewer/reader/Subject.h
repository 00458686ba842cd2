// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_SUBJECT_H
#define VIEWER_SUBJECT_H

#include "FileName.h"

#include <SorrelKit/Package.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>
#include <QString>
#include <QStringList>

namespace Viewer {

/// The package that the reader reads, and for whom.
struct Subject {
    FileName file;
    SorrelKit::Package package;
    QLocale locale;
    QStringList sandbox; ///< names of what confines the reader

    /// The paths of the packages in a set; empty for a single package. Reads the directories and the manifests of all.
    QStringList packagePaths() const;
};

/// The locale of the language tag @p tag; that of the user when it is empty.
QLocale localeOf(const QString &tag);
/// @p text cut to @p length characters.
QString cutText(const QString &text, int length);
/// The same for texts in lists and heads.
QString cutText(const QString &text);

/// The items of an answer: up to a number of them, and up to Protocol::MaxListLength characters.
class ItemList
{
public:
    explicit ItemList(int maxItems);

    bool isFull() const { return m_isFull; }
    /// Adds @p item, or counts it when the list is full.
    void add(const QJsonObject &item);
    /// Counts @p count items that are left out.
    void skip(qint64 count) { m_more += count; }
    /// `items`, and `more` when some were left out.
    QJsonObject toJson() const;

private:
    int m_maxItems;
    QJsonArray m_items;
    qint64 m_length = 0; ///< characters of the texts
    bool m_isFull = false;
    qint64 m_more = 0;
};

} // namespace Viewer

#endif
