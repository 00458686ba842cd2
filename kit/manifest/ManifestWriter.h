// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_MANIFESTWRITER_H
#define SORRELKIT_MANIFESTWRITER_H

#include "format/XmlReader.h"
#include "resources/ResourceNames.h"
#include "resources/ResourceResolver.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QVector>
#include <QXmlStreamWriter>

#include <optional>

class ByteView;
class XmlNodes;
class XmlStartChunk;

namespace SorrelKit {

/**
 * Writes a binary XML document as indented XML 1.0. The root declares every namespace that the document uses, and
 * Android's prefix is `android`. Attributes are in the order of their names. Values are those that Android reads: the
 * typed value, not its text in the source.
 *
 * A compiled document may have characters that XML does not allow: in names they become "_", in values U+FFFD. Of
 * several attributes of one name in an element, all but the first get a suffix. An attribute without a name gets its
 * resource id.
 *
 * Goes over the chunks twice, without making elements: once for the namespaces, once to write.
 */
class ManifestWriter
{
public:
    /// Characters that are decoded or written. XmlReader limits the texts of the document; a writer repeats some.
    static constexpr qint64 MaxCharacters = 2 * XmlReader::MaxCharacters;

    enum class References {
        Names,   ///< "@string/app_name"
        Numbers, ///< "@string/12"
    };

    /// Both outlive this object. Without a @p platform, its resources have no names.
    ManifestWriter(const ResourceIndex &index, References references, PlatformSource *platform = nullptr);
    /// Writes the values that @p values, which outlives this object, finds for references. The others have names.
    ManifestWriter(const ResourceIndex &index, const ResourceResolver &values);

    /**
     * The XML of @p document, as UTF-8; empty when it would exceed MaxCharacters.
     * Precondition: XmlReader reads @p document without a fault.
     */
    QByteArray toXml(const QByteArray &document);

private:
    enum class Pass {
        Collect, ///< the namespaces
        Write,
    };
    struct Attribute {
        QString name;
        QString uri;
        QString value;
    };

    void walk(const QByteArray &document, Pass pass);
    void declare(const ByteView &body);
    void bind(const QString &uri, const QString &wantedPrefix);
    void collect(const XmlStartChunk &start);
    void collect(quint32 uri);
    void write(const XmlStartChunk &start, int depth);
    void writeNamespaces();
    QVector<Attribute> attributes(const XmlStartChunk &start);
    QString qualifiedName(const QString &uri, const QString &name) const;
    QString valueText(quint32 raw, const TypedValue &value, bool hasId);
    QString referenceText(const TypedValue &value) const;
    /// The value of the resource that @p value refers to; empty when it has no simple one.
    std::optional<QString> resolvedText(const TypedValue &value) const;
    /// The string @p index; empty when there is none.
    QString string(quint32 index);
    void count(qint64 characters) { m_characters += characters; }
    bool isTooLong() const { return m_characters > MaxCharacters; }

    const ResourceIndex &m_index;
    const ResourceNames m_names;
    const References m_references;
    const ResourceResolver *m_values = nullptr; ///< of references; null to write names
    QByteArray m_output;
    QXmlStreamWriter m_xml;
    XmlNodes *m_nodes = nullptr;       ///< of the document, during a walk
    QHash<quint32, QString> m_strings; ///< by index in the pool
    QSet<quint32> m_collected;         ///< indices of the URIs that are bound
    QMap<QString, QString> m_declared; ///< by URI, the prefix of the latest declaration
    QMap<QString, QString> m_prefixes; ///< by URI, in the output
    QSet<QString> m_usedPrefixes;
    int m_lastNumber = 0; ///< of a prefix that was made
    qint64 m_characters = 0;
};

} // namespace SorrelKit

#endif
