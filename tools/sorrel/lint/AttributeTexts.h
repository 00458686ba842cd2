// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ATTRIBUTETEXTS_H
#define ATTRIBUTETEXTS_H

#include "format/StringPoolView.h"
#include "format/XmlStartChunk.h"

#include <QStringList>

/**
 * Compares the attributes of a manifest with their texts in the source. Each attribute of binary XML has a typed value,
 * which Android takes, and may have the text of the source, which some readers take. Only attributes with a resource id
 * count: of others, such as the package's name, Android takes the text too. Elements after a damaged node are not
 * compared.
 */
class AttributeTexts
{
public:
    /// Characters of texts and values that are compared at most. Attributes after them count as equal.
    static constexpr int MaxCompared = 4 << 20;
    /// Names of attributes that are kept.
    static constexpr int MaxNames = 6;

    explicit AttributeTexts(const QByteArray &manifest);

    /// Number of attributes whose text in the source is not their value.
    int differentTexts() const { return m_differentTexts; }
    /// Their names, each once.
    const QStringList &names() const { return m_names; }

private:
    /// Compares the @p attribute with the resource id @p id; 0 for none.
    void compare(const XmlStartChunk::Attribute &attribute, quint32 id);
    /// Whether the attribute @p id with the value @p value may have the string @p raw as its text in the source.
    bool agrees(quint32 id, quint32 raw, const TypedValue &value);
    QString string(quint32 index);

    StringPoolView m_strings;
    int m_compared = 0;
    int m_differentTexts = 0;
    QStringList m_names;
};

#endif
