// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef NAMESPACEBINDINGS_H
#define NAMESPACEBINDINGS_H

#include <QMap>
#include <QString>
#include <QVector>

/**
 * The namespaces that are bound at one place of a document, and their prefixes. Nested declarations may bind a URI
 * several times; the latest binding in force gives its prefix. Each operation takes logarithmic time, amortized. Maps,
 * not hash tables, because strangers choose the texts and could put all of them into one bucket.
 */
class NamespaceBindings
{
public:
    void bind(const QString &uri, const QString &prefix);
    /// Ends every binding of @p uri to @p prefix. Those to other prefixes stay.
    void release(const QString &uri, const QString &prefix);

    bool isBound(const QString &uri) const { return m_byUri.contains(uri); }
    /// The prefix in force for @p uri; a null string when it is not bound.
    QString prefix(const QString &uri) const;

private:
    struct Binding {
        qint64 serial;
        QString prefix;
    };
    struct OfUri {
        QVector<Binding> bindings;      ///< the last one is in force
        QMap<QString, qint64> released; ///< by prefix, the serial up to which its bindings have ended
    };

    QMap<QString, OfUri> m_byUri;
    qint64 m_serial = 0;
};

#endif
