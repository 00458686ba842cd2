// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "ApkResources.h"
#include "Devices.h"
#include "LogCapture.h"
#include "TableBuilder.h"
#include "Walker.h"

#include <QDomDocument>

using namespace fixture;

namespace {

// A table for the references in the document.
ApkResources smallTable()
{
    constexpr int StringValue = 3;
    SequentialDevice device(
        TableBuilder()
            .strings({QStringLiteral("text")})
            .package(PackageBuilder().types({QStringLiteral("string")}).type(TypeBuilder(1).value(0, StringValue, 0)))
            .build());
    ApkResources resources;
    resources.load(&device);
    return resources;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ApkResources resources = smallTable();
    const LogCapture log;
    SequentialDevice device(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    bool ok = false;
    const QDomDocument document = resources.loadXml(&device, &ok);
    visit(document, resources);
    document.cloneNode(true);
    document.toByteArray();
    return 0;
}
