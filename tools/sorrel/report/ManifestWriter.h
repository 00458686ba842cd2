// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef MANIFESTWRITER_H
#define MANIFESTWRITER_H

#include <QDomElement>
#include <QMap>
#include <QSet>
#include <QString>
#include <QXmlStreamWriter>

/**
 * Writes a decoded manifest as indented XML 1.0 that any XML tool reads. Every namespace is declared on the root,
 * Android's as `android`. A compiled manifest may hold names and characters that XML does not know: in names they
 * become "_", in values U+FFFD. Characters that steersText() are written as references (`&#x9b;`).
 */
class ManifestWriter
{
public:
    /// The XML of @p root and what is below it, as UTF-8.
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
