// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "Apk.h"
#include "KitSeeds.h"
#include "LogCapture.h"
#include "PackageWalker.h"
#include "PackedInput.h"

#include <SorrelKit/Package.h>

using namespace fixture;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr int IconCount = 8;
    constexpr int IconSize = 32;
    static const QVector<Member> files = kitFiles();
    const LogCapture log;
    PackageDevice device(packageOf(QByteArray(reinterpret_cast<const char *>(data), int(size)), files));
    if (visit(SorrelKit::Package(&device), IconCount, IconSize) < 0)
        failed("an icon has another size or format");
    return 0;
}
