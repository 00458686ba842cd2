// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/DrawableRenderer.h>

#include "format/XmlElement.h"
#include "package/PackageData.h"

namespace SorrelKit {

QImage DrawableRenderer::render(quint32 id, int size)
{
    XmlAttribute reference;
    reference.value = {ValueType::Reference, id};
    m_package.d->load();
    return m_package.d->icon(&reference, size, m_mask, &m_error);
}

} // namespace SorrelKit
