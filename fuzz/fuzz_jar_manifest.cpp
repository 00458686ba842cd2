// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"
#include "JarSeeds.h"

#include "GuardedBytes.h"
#include "JarSigner.h"
#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "trust/jar/JarDigests.h"
#include "trust/jar/JarVerifier.h"

#include <limits>

using namespace fixture;
using namespace SorrelKit;

namespace {

constexpr qint64 MaxWork = 1 << 26;
constexpr qint64 MaxHeld = 32 << 20;

void readManifest(const QByteArray &bytes)
{
    const GuardedBytes guarded(bytes);
    const ByteView view = guarded.atPageEnd();
    Budget budget(MaxWork, MaxHeld);
    const JarManifest manifest(QByteArray::fromRawData(reinterpret_cast<const char *>(view.data()), int(view.size())),
                               &budget);
    qint64 size = manifest.mainSection().size();
    for (int i = 0; i < manifest.count(); ++i) {
        size += manifest.section(i).size();
        const int found = manifest.find(ByteView(manifest.name(i)));
        if (found != i && manifest.fault() == JarManifest::Fault::None)
            failed("a section is not found by its name");
        jarDigests(manifest.section(i), "-Digest", SdkRange());
    }
    if (size > bytes.size())
        failed("sections overlap");
    if (budget.bytesLeft() != MaxHeld - manifest.heldBytes())
        failed("a manifest holds other bytes than it reports");
}

/// The lines of @p manifest, unfolded.
QByteArray unfolded(QByteArray manifest)
{
    manifest.replace("\r\n", "\n").replace('\r', '\n').replace("\n ", "");
    return manifest;
}

bool hasDigest(const QByteArray &lines, const QByteArray &content)
{
    for (const HashAlgorithm hash : {HashAlgorithm::Md5, HashAlgorithm::Sha1, HashAlgorithm::Sha256,
                                     HashAlgorithm::Sha384, HashAlgorithm::Sha512}) {
        // Padding, and the bits of the last character that are not needed, may be missing.
        if (lines.contains(Digest::of(hash, content).toBase64(QByteArray::OmitTrailingEquals).chopped(1)))
            return true;
    }
    return false;
}

void verifyPackage(const QByteArray &manifest, const QByteArray &file)
{
    static const TestKey key = TestKey::ec();
    static const QByteArray certificate = key.certificate();
    JarOptions options;
    options.certificateDer = certificate;
    QVector<Member> members = jarSeedMembers();
    members.append({QStringLiteral("META-INF/MANIFEST.MF"), manifest});
    members.append({QStringLiteral("META-INF/A.SF"), file});
    members.append({QStringLiteral("META-INF/A.EC"), jarSignatureBlock(file, key, options)});
    const QByteArray package = zip(members, Compression::Stored);
    for (const SdkRange sdk : {SdkRange{18, 23}, SdkRange{24, std::numeric_limits<int>::max()}}) {
        ZipArchive archive(package);
        if (!archive.open())
            failed("the package is no archive");
        Budget budget(MaxWork, MaxHeld);
        const SchemeResult result = JarVerifier(archive, &budget).verify(sdk, {});
        if (budget.bytesLeft() != MaxHeld || budget.workLeft() < 0)
            failed("the budget is overdrawn, or bytes were not given back");
        if (!result.isVerified()) {
            if (!result.issues.hasErrors())
                failed("a package is not verified for no reason");
            continue;
        }
        const QByteArray lines = unfolded(manifest);
        for (const Member &member : jarSeedMembers()) {
            if (!hasDigest(lines, member.content))
                failed("a member has no digest in the manifest");
            if (!unfolded(file).contains(member.name.toUtf8()))
                failed("a member is not in the signature file");
        }
    }
}

} // namespace

// A manifest, a byte of 0, and a signature file. The harness signs it, and the package has the members of jarSeedMembers().
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input(reinterpret_cast<const char *>(data), int(size));
    readManifest(input);
    const int end = int(input.indexOf('\0'));
    if (end >= 0)
        verifyPackage(input.left(end), input.mid(end + 1));
    return 0;
}
