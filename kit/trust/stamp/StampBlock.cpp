// SPDX-License-Identifier: LGPL-2.1-or-later
#include "trust/stamp/StampBlock.h"

namespace SorrelKit {

namespace {

bool readStampSignatures(PrefixedFields list, QVector<StampBlock::Signature> *signatures)
{
    while (list.hasMore() && signatures->size() < StampBlock::MaxElements) {
        PrefixedFields fields = list.fields();
        const quint32 algorithm = fields.u32();
        signatures->append({algorithm, fields.bytes()});
        if (!fields.isRead())
            return false;
    }
    return list.isRead();
}

bool readStampSchemes(PrefixedFields list, QVector<StampBlock::Scheme> *schemes)
{
    while (list.hasMore() && schemes->size() < StampBlock::MaxElements) {
        PrefixedFields fields = list.fields();
        StampBlock::Scheme scheme{fields.u32(), {}};
        if (!readStampSignatures(fields.fields(), &scheme.signatures) || !fields.isRead())
            return false;
        schemes->append(scheme);
    }
    return list.isRead();
}

} // namespace

bool StampBlock::read(const ByteView &value)
{
    PrefixedFields whole(value);
    PrefixedFields fields = whole.fields();
    m_certificate = fields.bytes();
    if (!whole.isRead() || !readStampSchemes(fields.fields(), &m_schemes))
        return false;
    m_hasAttributes = fields.hasMore();
    if (m_hasAttributes) {
        m_signedAttributes = fields.bytes();
        PrefixedFields attributes(m_signedAttributes);
        if (!readAttributes(attributes.fields()) || !attributes.isRead()
            || !readStampSignatures(fields.fields(), &m_attributeSignatures))
            return false;
    }
    return fields.isRead();
}

bool StampBlock::readAttributes(PrefixedFields list)
{
    while (list.hasMore() && m_attributes.size() < MaxElements) {
        PrefixedFields fields = list.fields();
        const quint32 id = fields.u32();
        m_attributes.append({id, fields.rest()});
        if (!fields.isRead())
            return false;
    }
    return list.isRead();
}

} // namespace SorrelKit
