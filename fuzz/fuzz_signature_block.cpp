// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"
#include "JarSeeds.h"

#include "GuardedBytes.h"
#include "limits/Budget.h"
#include "trust/jar/SignatureBlockFile.h"

#include <limits>

using namespace fixture;
using namespace SorrelKit;

namespace {

SignatureBlockFile::Result verify(const ByteView &block, const QByteArray &file, SdkRange sdk)
{
    constexpr qint64 MaxWork = 1 << 26;
    Budget budget(MaxWork, 0);
    const SignatureBlockFile::Result result = SignatureBlockFile::verify(block, ByteView(file), sdk, &budget);
    if (budget.workLeft() < 0)
        failed("the budget is overdrawn");
    if ((result.code == SignatureIssue::Code::None) == result.certificate.isNull())
        failed("there is a signer although there is an error, or none without one");
    return result;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), int(size));
    const GuardedBytes guarded(input);
    const QByteArray file = jarSeedFile();
    for (const SdkRange sdk : {SdkRange(), SdkRange{18, 23}, SdkRange{24, std::numeric_limits<int>::max()}}) {
        const SignatureBlockFile::Result result = verify(guarded.atPageEnd(), file, sdk);
        if (result.code != SignatureIssue::Code::None)
            continue;
        if (!input.contains(result.certificate.der()))
            failed("the signer's certificate is not in the block");
        if (verify(guarded.atPageEnd(), file + '\n', sdk).code == SignatureIssue::Code::None)
            failed("a signature is that of two files");
    }
    return 0;
}
