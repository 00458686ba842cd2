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

/// The result of loading a document, and the state of the device afterwards.
struct Loaded {
    Loaded(const ApkResources &resources, const QByteArray &bytes, QIODevice::OpenMode mode)
    {
        SequentialDevice device(bytes, mode);
        document = resources.loadXml(&device, &ok);
        taken = device.taken();
    }

    QDomDocument document;
    bool ok = false;
    int taken = 0;
};

} // namespace

// A buffered and an unbuffered device must give the same result.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const ApkResources resources = smallTable();
    const LogCapture log;
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    const Loaded read(resources, bytes, QIODevice::ReadOnly | QIODevice::Unbuffered);
    const Loaded buffered(resources, bytes, QIODevice::ReadOnly);
    if (read.taken != buffered.taken || read.ok != buffered.ok)
        failed("the devices were left at different places, or one document alone is good");
    if (read.document.toByteArray() != buffered.document.toByteArray())
        failed("the documents differ");
    visit(read.document, resources);
    read.document.cloneNode(true);
    return 0;
}
