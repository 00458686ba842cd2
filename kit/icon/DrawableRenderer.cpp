// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/DrawableRenderer.h>

#include "icon/IconRenderer.h"
#include "package/PackageData.h"

namespace SorrelKit {

QImage DrawableRenderer::render(quint32 id, int size)
{
    m_package.d->load();
    ResolvedValue reference;
    reference.value = {ValueType::Reference, id};
    reference.resource = id;
    IconRenderer renderer(m_package.d->resolver(), m_package.d->files());
    IconRequest request(size);
    request.setMask(m_mask);
    const QImage picture = renderer.icon(reference, request);
    m_error = renderer.error().text();
    return picture;
}

} // namespace SorrelKit
