// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TestKey.h"

#include "limits/Budget.h"
#include "trust/crypto/PublicKey.h"

#include <QtTest>

#include <limits>

using namespace SorrelKit;
using Result = PublicKey::Result;

namespace {

constexpr SignatureMethod rsa{SignatureMethod::Key::Rsa, HashAlgorithm::Sha256};
constexpr SignatureMethod ec{SignatureMethod::Key::Ec, HashAlgorithm::Sha256};

Result verify(const PublicKey &key, const SignatureMethod &method, const QByteArray &signature, const QByteArray &data,
              qint64 work = std::numeric_limits<qint64>::max())
{
    Budget budget(work, 0);
    return key.verify(method, ByteView(signature), ByteView(data), &budget);
}

} // namespace

/// PublicKey.
class TestPublicKey : public QObject
{
    Q_OBJECT

private slots:
    void verifiesWhatWasSigned_data();
    void verifiesWhatWasSigned();
    void refusesEveryOtherBit();
    void refusesAnotherKindOfKey();
    void refusesOtherCurves();
    void refusesDamagedKeys();
    void spendsItsWork();
    void refusesKeysThatAreTooLong();
};

void TestPublicKey::verifiesWhatWasSigned_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("hash");
    for (const char *const kind : {"rsa", "pss", "dsa", "ec256", "ec521"}) {
        for (const HashAlgorithm hash :
             {HashAlgorithm::Sha1, HashAlgorithm::Sha256, HashAlgorithm::Sha384, HashAlgorithm::Sha512})
            QTest::addRow("%s %s", kind, Digest::name(hash)) << QByteArray(kind) << int(hash);
    }
}

void TestPublicKey::verifiesWhatWasSigned()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, hash);
    SignatureMethod method{SignatureMethod::Key::Rsa, HashAlgorithm(hash)};
    fixture::TestKey key = fixture::TestKey::rsa();
    auto algorithm = PublicKey::Algorithm::Rsa;
    int bits = 2048;
    if (kind == "pss") {
        method.key = SignatureMethod::Key::RsaPss;
    } else if (kind == "dsa") {
        method.key = SignatureMethod::Key::Dsa;
        key = fixture::TestKey::dsa();
        algorithm = PublicKey::Algorithm::Dsa;
    } else if (kind.startsWith("ec")) {
        method.key = SignatureMethod::Key::Ec;
        bits = kind == "ec256" ? 256 : 521;
        key = fixture::TestKey::ec(1, kind == "ec256" ? "prime256v1" : "secp521r1");
        algorithm = PublicKey::Algorithm::Ec;
    }
    const QByteArray spki = key.publicKey();
    const PublicKey known = PublicKey::fromDer(ByteView(spki));
    QCOMPARE(known.algorithm(), algorithm);
    QCOMPARE(known.bits(), bits);
    const QByteArray data = "signed";
    const QByteArray signature = key.sign(method, data);
    QCOMPARE(verify(known, method, signature, data), Result::Good);
    QCOMPARE(verify(known, method, signature, "Signed"), Result::Wrong);
    QCOMPARE(verify(known, method, signature.left(signature.size() - 1), data), Result::Wrong);
    QCOMPARE(verify(known, method, QByteArray(), data), Result::Wrong);
}

void TestPublicKey::refusesEveryOtherBit()
{
    const fixture::TestKey key = fixture::TestKey::ec();
    const QByteArray spki = key.publicKey();
    const PublicKey known = PublicKey::fromDer(ByteView(spki));
    const QByteArray signature = key.sign(ec, "data");
    for (int i = 0; i < signature.size() * 8; ++i) {
        QByteArray other = signature;
        other[i / 8] = char(other.at(i / 8) ^ 1 << i % 8);
        QCOMPARE(verify(known, ec, other, "data"), Result::Wrong);
    }
}

void TestPublicKey::refusesAnotherKindOfKey()
{
    const QByteArray spki = fixture::TestKey::ec().publicKey();
    QCOMPARE(verify(PublicKey::fromDer(ByteView(spki)), rsa, "signature", "data"), Result::Mismatched);
    QCOMPARE(verify(PublicKey(), rsa, "signature", "data"), Result::Mismatched);
}

void TestPublicKey::refusesOtherCurves()
{
    const fixture::TestKey key = fixture::TestKey::ec(1, "brainpoolP256r1");
    const QByteArray spki = key.publicKey();
    const PublicKey known = PublicKey::fromDer(ByteView(spki));
    QCOMPARE(known.algorithm(), PublicKey::Algorithm::Other);
    QCOMPARE(verify(known, ec, key.sign(ec, "data"), "data"), Result::Mismatched);
}

void TestPublicKey::refusesDamagedKeys()
{
    const QByteArray spki = fixture::TestKey::ec().publicKey();
    for (int size = 0; size < spki.size(); ++size)
        QVERIFY(PublicKey::fromDer(ByteView(spki).part(0, size)).isNull());
    const QByteArray longer = spki + '\0';
    QVERIFY(PublicKey::fromDer(ByteView(longer)).isNull());
}

void TestPublicKey::spendsItsWork()
{
    const fixture::TestKey key = fixture::TestKey::rsa();
    const QByteArray spki = key.publicKey();
    const PublicKey known = PublicKey::fromDer(ByteView(spki));
    const QByteArray signature = key.sign(rsa, "data");
    QVERIFY(known.work() > 0);
    QCOMPARE(verify(known, rsa, signature, "data", known.work() + 4), Result::Good);
    QCOMPARE(verify(known, rsa, signature, "data", known.work() + 3), Result::TooCostly);
}

void TestPublicKey::refusesKeysThatAreTooLong()
{
    // A modulus of MaxBits + 8 bits, which needs no prime factors: (SEQUENCE (INTEGER modulus) (INTEGER 65537)).
    const auto der = [](char tag, const QByteArray &content) {
        const auto size = int(content.size());
        QByteArray head(1, tag);
        head += char(0x83);
        head += char(size >> 16);
        head += char(size >> 8);
        head += char(size);
        return head + content;
    };
    const auto spki = [&der](int bits) {
        const QByteArray modulus = QByteArray(1, '\0') + QByteArray(bits / 8, '\xff');
        const QByteArray key = der(0x30, der(2, modulus) + QByteArray::fromHex("0203010001"));
        const QByteArray algorithm = QByteArray::fromHex("300d06092a864886f70d0101010500");
        return der(0x30, algorithm + der(3, QByteArray(1, '\0') + key));
    };
    const QByteArray longest = spki(PublicKey::MaxBits);
    const QByteArray longer = spki(PublicKey::MaxBits + 8);
    const QByteArray signature(PublicKey::MaxBits / 8, '\x01');
    QCOMPARE(verify(PublicKey::fromDer(ByteView(longest)), rsa, signature, "data"), Result::Wrong);
    QCOMPARE(PublicKey::fromDer(ByteView(longer)).bits(), PublicKey::MaxBits + 8);
    QCOMPARE(verify(PublicKey::fromDer(ByteView(longer)), rsa, signature, "data"), Result::TooCostly);
}

QTEST_GUILESS_MAIN(TestPublicKey)
#include "tst_publickey.moc"
