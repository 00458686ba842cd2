// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "DrawableFixture.h"
#include "KitSeeds.h"
#include "LogCapture.h"

using namespace SorrelKit;

namespace {

ResourceResolver resolverOfKit()
{
    const auto table = QSharedPointer<const ResourceTable>::create(kitTable());
    if (table->fault() != FormatFault::None)
        failed("the table is damaged");
    return ResourceResolver({table}, Configuration::phone(Configuration::MediumDensity));
}

fixture::Files filesOfKit()
{
    fixture::Files files;
    for (const fixture::Member &member : kitFiles())
        files.add(member.name, member.content);
    return files;
}

} // namespace

// The input is the drawable InputDrawable, and other drawables refer back to it. The last byte of the input chooses the
// mask.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr QSize Size(48, 48);
    constexpr IconMask masks[] = {IconMask::None, IconMask::Circle, IconMask::RoundedSquare, IconMask::Squircle};
    static const ResourceResolver resolver = resolverOfKit();
    static fixture::Files files = filesOfKit();
    const fixture::LogCapture log;
    files.add(inputPath(), QByteArray(reinterpret_cast<const char *>(data), int(size)));

    Budget budget = fixture::iconBudget();
    DrawableInflater loader(resolver, files, budget, 1);
    loader.setIconMask(masks[size > 0 ? data[size - 1] % 4 : 0]);
    const DrawablePointer drawable = loader.fromResource(InputDrawable);
    if (drawable == nullptr) {
        if (!loader.error())
            failed("there is no drawable, and no error");
        return 0;
    }
    Canvas canvas(Size, budget);
    drawable->draw(canvas, QRectF(QPointF(), QSizeF(Size)));
    const QImage image = canvas.image();
    if (image.size() != Size || image.format() != QImage::Format_ARGB32_Premultiplied)
        failed("the picture has another size or format");
    return 0;
}
