// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CATALOGPAGE_H
#define CATALOGPAGE_H

#include <QByteArray>
#include <QJsonObject>
#include <QString>

class QIODevice;

/**
 * Writes one page of HTML that shows packages, a card each. The page needs nothing but itself: style, script and
 * pictures are in it, and its policy lets a browser load and run nothing else. Without a script it is a plain list; the
 * script searches, sorts, filters and switches the language of the labels.
 *
 * The page is well-formed XML as well. Equal packages give equal bytes.
 *
 * Cards are written as they are added, and nothing of them is kept.
 */
class CatalogPage
{
public:
    /// Starts the page on @p output, which is open for writing and outlives this object. @p title is for people.
    CatalogPage(QIODevice *output, const QString &title);

    /**
     * Writes a card of @p package: an object as PackageReport::toJson() makes it, with three more keys, each of which
     * may be missing. "labels" is the application's label by language, as launchers have theirs; it is shown when there
     * is no launcher. "icon" is a picture in the format PNG, in base64. "lint" is an array of findings, each an object
     * of the texts "check" (the name of what was checked), "severity" ("note", "warning" or "error") and "text".
     *
     * Keys that are missing, or of another type, count as empty.
     */
    void add(const QJsonObject &package);

    /// Writes what follows the last card. Returns whether @p output has taken the whole page. Called once.
    bool finish();

private:
    void writeTemplate();
    QByteArray valueOf(const QByteArray &name) const;
    void write(const QByteArray &bytes);

    QIODevice *m_output;
    QString m_title;
    QByteArray m_style;
    QByteArray m_script;
    QByteArray m_template; ///< what of it is still to be written
    int m_count = 0;
    bool m_hasFailed = false;
};

#endif
