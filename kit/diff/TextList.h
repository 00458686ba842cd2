// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_TEXTLIST_H
#define SORRELKIT_TEXTLIST_H

#include <SorrelKit/Package.h>
#include <SorrelKit/Signatures.h>
#include <SorrelKit/TextChange.h>

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace SorrelKit {

/// Texts of a package with different names, in an order.
class TextList
{
public:
    static TextList facts(const Package &package);
    static TextList features(const Package &package);
    static TextList launchers(const Package &package);
    static TextList labels(const Package &package);
    /// The certificates of the signers.
    static TextList signers(const Signatures &signatures);
    /// The schemes that verified.
    static TextList schemes(const Signatures &signatures);
    /// Names without values.
    static TextList names(const QStringList &names);

    /// The differences: first the texts that @p before does not have, then those that this list does not have, then those
    /// that have another value.
    QList<TextChange> changesSince(const TextList &before) const;

private:
    /// Adds a text. The first of several with one name counts.
    void add(const QString &name, const QString &value);

    QStringList m_names;
    QHash<QString, QString> m_values;
};

} // namespace SorrelKit

#endif
