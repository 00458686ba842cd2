// SPDX-License-Identifier: LGPL-2.1-or-later
#include "format/XmlElement.h"

#include <algorithm>

namespace {

template <typename Test>
const XmlAttribute *firstOf(const QVector<XmlAttribute> &attributes, Test test)
{
    const auto found = std::find_if(attributes.cbegin(), attributes.cend(), test);
    return found == attributes.cend() ? nullptr : &*found;
}

} // namespace

const XmlAttribute *XmlElement::attribute(quint32 id) const
{
    return firstOf(attributes, [id](const XmlAttribute &attribute) { return attribute.id == id; });
}

const XmlAttribute *XmlElement::attribute(const QString &plainName) const
{
    return firstOf(attributes,
                   [&](const XmlAttribute &attribute) { return attribute.id == 0 && attribute.name == plainName; });
}
