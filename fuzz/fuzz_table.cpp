// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "ApkResources.h"
#include "Devices.h"
#include "LogCapture.h"
#include "Walker.h"

namespace {

/// The result of loading a table, and the state of the device afterwards.
struct Loaded {
    Loaded(const QByteArray &bytes, QIODevice::OpenMode mode)
    {
        fixture::SequentialDevice device(bytes, mode);
        resources.load(&device);
        taken = device.taken();
    }

    ApkResources resources;
    int taken = 0;
};

} // namespace

// A buffered and an unbuffered device must give the same result.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const fixture::LogCapture log;
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    const Loaded read(bytes, QIODevice::ReadOnly | QIODevice::Unbuffered);
    const Loaded buffered(bytes, QIODevice::ReadOnly);
    if (read.taken != buffered.taken || read.resources.isValid() != buffered.resources.isValid())
        failed("the devices were left at different places, or one table alone is valid");
    if (fixture::visit(read.resources, LongestGap) != fixture::visit(buffered.resources, LongestGap))
        failed("the tables answer differently");
    return 0;
}
