// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CATALOGPAGE_H
#define CATALOGPAGE_H

#include <QByteArray>
#include <QJsonObject>
#include <QString>

class QIODevice;

/**
 * Writes an HTML page with a card for each package. The page contains its style, script and pictures, and its policy
 * forbids a browser to load or run anything else. The script searches, sorts, filters and switches the language of the
 * labels. Without scripts the page is a plain list.
 *
 * The page is also well-formed XML. Equal packages give equal bytes.
 *
 * add() writes each card at once and keeps nothing in memory.
 */
class CatalogPage
{
public:
    /// Starts the page with the heading @p title on @p output, which is open for writing and must outlive this object.
    CatalogPage(QIODevice *output, const QString &title);

    /**
     * Writes a card of @p package: the object of PackageReport::toJson(), with three optional keys. "labels" has the
     * application's labels by language, in the form of a launcher's; the card shows them when there is no launcher.
     * "icon" is a PNG picture in base64. "lint" is an array of findings: objects with the texts "check" (the name of
     * the check), "severity" ("note", "warning" or "error") and "text".
     *
     * Keys that are missing or have another type count as empty.
     */
    void add(const QJsonObject &package);

    /// Writes the end of the page. Returns whether @p output accepted the whole page. Call it once.
    bool finish();

private:
    void writeTemplate();
    QByteArray valueOf(const QByteArray &name) const;
    void write(const QByteArray &bytes);

    QIODevice *m_output;
    QString m_title;
    QByteArray m_style;
    QByteArray m_script;
    QByteArray m_template; ///< the rest that is not written yet
    int m_count = 0;
    bool m_hasFailed = false;
};

#endif
