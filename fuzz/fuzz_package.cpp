// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "Apk.h"
#include "ApkFile.h"
#include "Bytes.h"
#include "LogCapture.h"
#include "Walker.h"

using namespace fixture;

namespace {

// An archive as it is; anything else is a table and a manifest, which are told apart by the table's size, and packed.
QByteArray packageOf(const QByteArray &input)
{
    constexpr int SizeAt = 4;
    if (input.startsWith("PK") || input.size() < SizeAt + 4)
        return input;
    const int tableSize = int(qMin(qint64(peek32(input, SizeAt)), qint64(input.size())));
    return package(input.left(tableSize), input.mid(tableSize),
                   {{QStringLiteral("res/icon.png"), picture(2, 2, 0x808080)}});
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const LogCapture log;
    PackageDevice device(packageOf(QByteArray(reinterpret_cast<const char *>(data), int(size))));
    ApkFile apk(&device);
    visit(apk, LongestGap);
    return 0;
}
