// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTWRITER_H
#define MANIFESTWRITER_H

#include <QDomElement>
#include <QMap>
#include <QSet>
#include <QString>
#include <QXmlStreamWriter>

/**
 * Writes a decoded manifest as indented XML 1.0. The root declares every namespace, and Android's prefix is `android`.
 * A compiled manifest may have characters that XML does not allow: in names they become "_", in values U+FFFD.
 * Characters for which steersText() is true are written as references (`&#x9b;`).
 */
class ManifestWriter
{
public:
    /// The XML of @p root and its descendants, as UTF-8.
    static QByteArray toXml(const QDomElement &root);

private:
    explicit ManifestWriter(QByteArray *output);

    void collectNamespaces(const QDomElement &element);
    void bind(const QString &uri, const QString &wantedPrefix);
    void writeElement(const QDomElement &element);
    void writeAttributes(const QDomElement &element);

    QXmlStreamWriter m_xml;
    QMap<QString, QString> m_prefixes; ///< by namespace URI
    QSet<QString> m_usedPrefixes;
};

#endif
