// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_STAMPBLOCK_H
#define SORRELKIT_STAMPBLOCK_H

#include "trust/block/PrefixedFields.h"

#include <QVector>

namespace SorrelKit {

/**
 * The value of a source stamp in the signing block. Each field in parentheses has its size before it, and so has each
 * element of a list:
 *
 *     (stamp)
 *         (certificate)
 *         (schemes: (scheme, (signatures: (algorithm, (signature))...))...)
 *         (attributes: (id, value)..., with their size before them once more)
 *         (signatures: (algorithm, (signature))...)
 *
 * The signatures of a scheme are over the digests that its signers sign: (digest, (bytes))... The last signatures are
 * over the attributes with their size. Older stamps end before the attributes.
 *
 * All views are into the value, which outlives this object.
 */
class StampBlock
{
public:
    /// The number of a stamp of this form in the signing block.
    static constexpr quint32 Id = 0x6dff800d;
    /// The number of the first form of stamps, which Android does not read.
    static constexpr quint32 OldId = 0x2b09189e;
    /// Elements of each list. Stamps have one to three.
    static constexpr int MaxElements = 64;

    struct Signature {
        quint32 algorithm = 0;
        ByteView bytes;
    };
    struct Scheme {
        quint32 id; ///< the number in its name, 1 to 3
        QVector<Signature> signatures;
    };
    struct Attribute {
        quint32 id = 0;
        ByteView value;
    };

    /// Reads @p value. False when it is damaged, has bytes behind its fields, or a list is longer than MaxElements.
    bool read(const ByteView &value);

    ByteView certificate() const { return m_certificate; }
    const QVector<Scheme> &schemes() const { return m_schemes; }
    /// Whether the stamp has the fields of attributes, which may be empty.
    bool hasAttributes() const { return m_hasAttributes; }
    const QVector<Attribute> &attributes() const { return m_attributes; }
    /// The attributes as they are signed.
    ByteView signedAttributes() const { return m_signedAttributes; }
    const QVector<Signature> &attributeSignatures() const { return m_attributeSignatures; }

private:
    bool readAttributes(PrefixedFields list);

    ByteView m_certificate;
    QVector<Scheme> m_schemes;
    bool m_hasAttributes = false;
    QVector<Attribute> m_attributes;
    ByteView m_signedAttributes;
    QVector<Signature> m_attributeSignatures;
};

} // namespace SorrelKit

#endif
