// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_DIGEST_H
#define SORRELKIT_DIGEST_H

#include "format/ByteView.h"

#include <QByteArray>

#include <memory>

// OpenSSL's own names for its types; its headers stay in the sources.
using EVP_MD = struct evp_md_st;
using EVP_MD_CTX = struct evp_md_ctx_st;

namespace SorrelKit {

/// The hash functions of signatures on packages.
enum class HashAlgorithm {
    Md5,
    Sha1,
    Sha224,
    Sha256,
    Sha384,
    Sha512
};

/// A digest that is computed piece by piece, by OpenSSL. One thread at a time; different objects may be used in
/// different threads.
class Digest
{
public:
    explicit Digest(HashAlgorithm algorithm);
    ~Digest();

    void add(const ByteView &bytes);
    void add(const QByteArray &bytes) { add(ByteView(bytes)); }
    /// The digest of what was added; empty when OpenSSL refuses the algorithm, as a system's policy may demand. The
    /// object then begins a new digest.
    QByteArray result();

    /// The digest of @p bytes.
    static QByteArray of(HashAlgorithm algorithm, const ByteView &bytes);
    static QByteArray of(HashAlgorithm algorithm, const QByteArray &bytes) { return of(algorithm, ByteView(bytes)); }
    /// Bytes of a digest.
    static int size(HashAlgorithm algorithm);
    /// "SHA-256".
    static const char *name(HashAlgorithm algorithm);
    /// OpenSSL's object for @p algorithm, which is never destroyed.
    static const EVP_MD *function(HashAlgorithm algorithm);

private:
    Q_DISABLE_COPY(Digest)

    struct Deleter {
        void operator()(EVP_MD_CTX *context) const;
    };

    void begin();

    const HashAlgorithm m_algorithm;
    std::unique_ptr<EVP_MD_CTX, Deleter> m_context;
    bool m_isGood = false;
};

} // namespace SorrelKit

#endif
