// SPDX-License-Identifier: LGPL-2.1-or-later
#include "JarSigner.h"

#include "trust/crypto/CertificateAccess.h"

#include <openssl/x509.h>

#include <algorithm>

using namespace SorrelKit;

namespace fixture {

namespace {

constexpr int LineLength = 72; // with neither its end nor, in a continuation line, more for the blank

// Identifiers of objects, in DER.
QByteArray oid(const char *hex)
{
    return der(0x06, QByteArray::fromHex(hex));
}

const char *const dataOid = "2a864886f70d010701";
const char *const signedDataOid = "2a864886f70d010702";
const char *const contentTypeOid = "2a864886f70d010903";
const char *const messageDigestOid = "2a864886f70d010904";

QByteArray hashOid(HashAlgorithm hash)
{
    switch (hash) {
    case HashAlgorithm::Md5:
        return oid("2a864886f70d0205");
    case HashAlgorithm::Sha1:
        return oid("2b0e03021a");
    case HashAlgorithm::Sha224:
        return oid("608648016503040204");
    case HashAlgorithm::Sha256:
        return oid("608648016503040201");
    case HashAlgorithm::Sha384:
        return oid("608648016503040202");
    case HashAlgorithm::Sha512:
        return oid("608648016503040203");
    }
    return {};
}

QByteArray sequence(const QByteArray &content)
{
    return der(0x30, content);
}

PublicKey::Algorithm algorithmOf(const TestKey &key)
{
    const QByteArray spki = key.publicKey();
    return PublicKey::fromDer(ByteView(spki)).algorithm();
}

SignatureMethod methodOf(const TestKey &key, HashAlgorithm hash)
{
    switch (algorithmOf(key)) {
    case PublicKey::Algorithm::Dsa:
        return {SignatureMethod::Key::Dsa, hash};
    case PublicKey::Algorithm::Ec:
        return {SignatureMethod::Key::Ec, hash};
    default:
        return {SignatureMethod::Key::Rsa, hash};
    }
}

QByteArray keyAlgorithm(SignatureMethod::Key key)
{
    const QByteArray null = der(0x05, QByteArray());
    switch (key) {
    case SignatureMethod::Key::Dsa:
        return sequence(oid("2a8648ce380401"));
    case SignatureMethod::Key::Ec:
        return sequence(oid("2a8648ce3d0201"));
    default:
        return sequence(oid("2a864886f70d010101") + null);
    }
}

QByteArray extensionOf(const TestKey &key)
{
    switch (algorithmOf(key)) {
    case PublicKey::Algorithm::Dsa:
        return "DSA";
    case PublicKey::Algorithm::Ec:
        return "EC";
    default:
        return "RSA";
    }
}

QByteArray digestLines(const QByteArray &suffix, const QByteArray &bytes, const JarOptions &options)
{
    QByteArray lines;
    for (const HashAlgorithm hash : options.digests)
        lines += jarLine(jarName(hash) + suffix, Digest::of(hash, bytes).toBase64(), options.lineEnd);
    return lines;
}

// The end of the section that begins at a position, behind its empty line.
int sectionEnd(const QByteArray &manifest, int at, const QByteArray &lineEnd)
{
    const int end = int(manifest.indexOf(lineEnd + lineEnd, at));
    return end < 0 ? int(manifest.size()) : end + 2 * int(lineEnd.size());
}

QByteArray attribute(const char *type, const QByteArray &value)
{
    return sequence(oid(type) + der(0x31, value));
}

QByteArray signedAttributes(const QByteArray &signatureFile, const JarOptions &options)
{
    QByteArray attributes;
    if (options.hasContentType)
        attributes += attribute(contentTypeOid, oid(dataOid));
    if (options.hasMessageDigest)
        attributes += attribute(messageDigestOid, der(0x04, Digest::of(options.signatureHash, signatureFile)));
    return attributes;
}

QByteArray certificateOf(const TestKey &key, const JarOptions &options)
{
    return options.certificateDer.isNull() ? key.certificate(options.certificate) : options.certificateDer;
}

QByteArray signerInfo(const QByteArray &signatureFile, const TestKey &key, const JarOptions &options)
{
    const Certificate certificate = Certificate::fromDer(certificateOf(key, options));
    const CertificateData &fields = CertificateAccess::data(certificate);
    const bool hasAlgorithm = !options.signatureAlgorithm.isNull();
    const SignatureMethod method = methodOf(key, hasAlgorithm ? options.signedHash : options.signatureHash);
    const QByteArray version = der(0x02, QByteArray(1, '\x01'));
    const QByteArray hash = sequence(hashOid(options.signatureHash) + der(0x05, QByteArray()));
    const QByteArray algorithm =
        hasAlgorithm ? sequence(oid(options.signatureAlgorithm.constData())) : keyAlgorithm(method.key);
    const QByteArray head = version + sequence(fields.issuerDer + fields.serialDer) + hash;
    QByteArray attributes;
    QByteArray signature;
    if (options.hasSignedAttributes) {
        const QByteArray content = signedAttributes(signatureFile, options);
        attributes = der(0xa0, content);
        signature = key.sign(method, der(0x31, content));
    } else {
        signature = key.sign(method, signatureFile);
    }
    if (options.editSignature)
        options.editSignature(signature);
    return sequence(head + attributes + algorithm + der(0x04, signature));
}

Member memberOf(const QByteArray &name, const QByteArray &content)
{
    return {QString::fromLatin1("META-INF/" + name), content};
}

} // namespace

QByteArray der(int tag, const QByteArray &content)
{
    const int size = int(content.size());
    QByteArray head(1, char(tag));
    if (size < 0x80) {
        head += char(size);
    } else if (size < 0x100) {
        head += '\x81';
        head += char(size);
    } else if (size < 0x10000) {
        head += '\x82';
        head += char(size >> 8);
        head += char(size & 0xff);
    } else {
        head += '\x83';
        head += char(size >> 16);
        head += char(size >> 8 & 0xff);
        head += char(size & 0xff);
    }
    return head + content;
}

QByteArray jarName(HashAlgorithm hash)
{
    return hash == HashAlgorithm::Sha1 ? QByteArray("SHA1") : QByteArray(Digest::name(hash));
}

QByteArray jarLine(const QByteArray &name, const QByteArray &value, const QByteArray &lineEnd)
{
    QByteArray rest = name + ": " + value;
    QByteArray lines = rest.left(LineLength - 2) + lineEnd;
    rest.remove(0, LineLength - 2);
    while (!rest.isEmpty()) {
        lines += ' ' + rest.left(LineLength - 3) + lineEnd;
        rest.remove(0, LineLength - 3);
    }
    return lines;
}

QByteArray jarManifest(const QVector<Member> &members, const JarOptions &options)
{
    QByteArray manifest = jarLine("Manifest-Version", "1.0", options.lineEnd)
                          + jarLine("Created-By", "1.0 (Test)", options.lineEnd) + options.lineEnd;
    for (const Member &member : members) {
        if (member.name.startsWith(QLatin1String("META-INF/")) || member.name.endsWith(QLatin1Char('/')))
            continue;
        manifest += jarLine("Name", member.name.toUtf8(), options.lineEnd);
        if (!options.digestAlgorithms.isNull())
            manifest += jarLine("Digest-Algorithms", options.digestAlgorithms, options.lineEnd);
        manifest += digestLines("-Digest", member.content, options) + options.lineEnd;
    }
    if (options.editManifest)
        options.editManifest(manifest);
    return manifest;
}

QByteArray jarSignatureFile(const QByteArray &manifest, const JarOptions &options)
{
    QByteArray file = jarLine("Signature-Version", "1.0", options.lineEnd);
    if (!options.createdBy.isNull())
        file += jarLine("Created-By", options.createdBy, options.lineEnd);
    if (options.hasManifestDigest)
        file += digestLines("-Digest-Manifest", manifest, options);
    const int mainEnd = sectionEnd(manifest, 0, options.lineEnd);
    if (options.hasMainDigest)
        file += digestLines("-Digest-Manifest-Main-Attributes", manifest.left(mainEnd), options);
    if (!options.schemes.isNull())
        file += jarLine("X-Android-APK-Signed", options.schemes, options.lineEnd);
    file += options.lineEnd;
    for (int at = mainEnd; options.hasSectionDigests && at < manifest.size();) {
        const int end = sectionEnd(manifest, at, options.lineEnd);
        const QByteArray section = manifest.mid(at, end - at);
        // The name's lines are those of the manifest.
        QByteArray name = section.left(section.indexOf(options.lineEnd) + options.lineEnd.size());
        while (section.size() > name.size() && section.at(name.size()) == ' ')
            name = section.left(section.indexOf(options.lineEnd, name.size()) + options.lineEnd.size());
        file += name + digestLines("-Digest", section, options) + options.lineEnd;
        at = end;
    }
    if (options.editSignatureFile)
        options.editSignatureFile(file);
    return file;
}

QByteArray jarSignatureBlock(const QByteArray &signatureFile, const TestKey &key, const JarOptions &options)
{
    QByteArray certificates;
    if (options.hasCertificate)
        certificates += certificateOf(key, options);
    for (const QByteArray &other : options.otherCertificates)
        certificates += other;
    QByteArray infos = signerInfo(signatureFile, key, options);
    if (options.hasWrongInfoFirst)
        infos.prepend(signerInfo("another file", key, options));
    const QByteArray hashes = der(0x31, sequence(hashOid(options.signatureHash) + der(0x05, QByteArray())));
    const QByteArray signedData = sequence(der(0x02, QByteArray(1, '\x01')) + hashes + sequence(oid(dataOid))
                                           + der(0xa0, certificates) + der(0x31, infos));
    QByteArray block = sequence(oid(signedDataOid) + der(0xa0, signedData));
    if (options.editBlock)
        options.editBlock(block);
    return block;
}

QVector<Member> signedJar(const QVector<Member> &members, const TestKey &key, const JarOptions &options)
{
    QVector<Member> result = members;
    result.append(memberOf("MANIFEST.MF", jarManifest(members, options)));
    addJarSigner(result, key, options);
    return result;
}

void addJarSigner(QVector<Member> &members, const TestKey &key, const JarOptions &options)
{
    const QByteArray manifest = contentOf(members, QStringLiteral("META-INF/MANIFEST.MF"));
    const QByteArray file = jarSignatureFile(manifest, options);
    const QByteArray extension = options.extension.isNull() ? extensionOf(key) : options.extension;
    members.append(memberOf(options.name + ".SF", file));
    members.append(memberOf(options.name + '.' + extension, jarSignatureBlock(file, key, options)));
}

QByteArray &contentOf(QVector<Member> &members, const QString &name)
{
    const auto member =
        std::find_if(members.begin(), members.end(), [&name](const Member &each) { return each.name == name; });
    if (member == members.end())
        qFatal("there is no member %s", qPrintable(name));
    return member->content;
}

} // namespace fixture
