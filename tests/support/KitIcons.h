// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef KITICONS_H
#define KITICONS_H

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/Entry.h>
#include <SorrelKit/Package.h>

namespace fixture {

/// The icon of @p owner, a Package or an Entry, in @p size pixels, and the text of the error.
template <typename Owner>
QImage iconOf(const Owner &owner, int size, SorrelKit::IconMask mask = SorrelKit::IconMask::None,
              QString *error = nullptr)
{
    SorrelKit::IconRequest request(size);
    request.setMask(mask);
    QImage image;
    QString text;
    if constexpr (std::is_same_v<Owner, SorrelKit::Entry>) {
        SorrelKit::DrawableRenderer renderer{SorrelKit::Package()};
        image = renderer.icon(owner, request);
        text = renderer.error().text();
    } else {
        SorrelKit::DrawableRenderer renderer(owner);
        image = renderer.icon(request);
        text = renderer.error().text();
    }
    if (error != nullptr)
        *error = text;
    return image;
}

} // namespace fixture

#endif
