// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "ApkResources.h"
#include "Devices.h"
#include "LogCapture.h"
#include "Walker.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const fixture::LogCapture log;
    fixture::SequentialDevice device(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    ApkResources resources;
    resources.load(&device);
    fixture::visit(resources, LongestGap);
    return 0;
}
