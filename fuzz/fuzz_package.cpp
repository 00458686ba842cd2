// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "Apk.h"
#include "ApkFile.h"
#include "LogCapture.h"
#include "PackedInput.h"
#include "Walker.h"

using namespace fixture;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const LogCapture log;
    const QByteArray input(reinterpret_cast<const char *>(data), int(size));
    PackageDevice device(packageOf(input, {{QStringLiteral("res/icon.png"), picture(2, 2, 0x808080)}}));
    ApkFile apk(&device);
    visit(apk, LongestGap);
    return 0;
}
