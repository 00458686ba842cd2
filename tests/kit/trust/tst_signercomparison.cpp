// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TestKey.h"

#include "trust/SignerComparison.h"

#include <QtTest>

using namespace SorrelKit;
using Capability = PastSigner::Capability;
using Match = Signer::Match;
using Scheme = Signer::Scheme;

Q_DECLARE_METATYPE(QList<SorrelKit::Signer>)

namespace {

// The same bytes for each call: signatures by EC are random.
Certificate certificate(int number)
{
    static QMap<int, Certificate> made;
    if (!made.contains(number))
        made.insert(number, Certificate::fromDer(fixture::TestKey::ec(number).certificate()));
    return made.value(number);
}

Signer signer(int number, const QList<PastSigner> &lineage = {}, Scheme scheme = Scheme::V3,
              int maxSdkVersion = std::numeric_limits<int>::max())
{
    return {certificate(number), scheme, 0, maxSdkVersion, lineage};
}

/// The lineage from key 1 to key 2.
QList<PastSigner> lineage(PastSigner::Capabilities ofFirst)
{
    return {PastSigner(certificate(1), ofFirst), PastSigner(certificate(2), {})};
}

} // namespace

/// SignerComparison, and the comparison of Signatures.
class TestSignerComparison : public QObject
{
    Q_OBJECT

private slots:
    void compares_data();
    void compares();
    void theNewestSchemeCounts();
    void theSignerForTheNewestVersionCounts();
};

void TestSignerComparison::compares_data()
{
    QTest::addColumn<QList<Signer>>("installed");
    QTest::addColumn<QList<Signer>>("update");
    QTest::addColumn<Match>("match");
    const QList<Signer> first{signer(1)};
    const QList<Signer> second{signer(2)};
    const PastSigner::Capabilities all = Capability::InstalledData | Capability::SharedUserId | Capability::Permission
                                         | Capability::Rollback | Capability::Auth;
    QTest::newRow("same") << first << first << Match::Same;
    QTest::newRow("other") << first << second << Match::Different;
    QTest::newRow("none installed") << QList<Signer>() << first << Match::Unverified;
    QTest::newRow("none of the update") << first << QList<Signer>() << Match::Unverified;
    QTest::newRow("rotated") << first << QList<Signer>{signer(2, lineage(Capability::InstalledData))} << Match::Rotated;
    QTest::newRow("rotated, no capability") << first << QList<Signer>{signer(2, lineage({}))} << Match::Different;
    QTest::newRow("rotated, other capabilities")
        << first << QList<Signer>{signer(2, lineage(all & ~PastSigner::Capabilities(Capability::InstalledData)))}
        << Match::Different;
    QTest::newRow("rotated from another key")
        << QList<Signer>{signer(3)} << QList<Signer>{signer(2, lineage(all))} << Match::Different;
    QTest::newRow("rollback") << QList<Signer>{signer(2, lineage(Capability::Rollback))} << first << Match::Rollback;
    QTest::newRow("rollback, no capability")
        << QList<Signer>{signer(2, lineage(Capability::InstalledData))} << first << Match::Different;
    QTest::newRow("both rotated") << QList<Signer>{signer(2, lineage(all))} << QList<Signer>{signer(2, lineage({}))}
                                  << Match::Same;
    const QList<Signer> both{signer(1), signer(3)};
    QTest::newRow("several, same") << both << QList<Signer>{signer(3), signer(1)} << Match::Same;
    QTest::newRow("several, one left") << both << first << Match::Different;
    QTest::newRow("several, one added") << first << both << Match::Different;
    QTest::newRow("several to one that is rotated")
        << both << QList<Signer>{signer(2, lineage(all))} << Match::Different;
}

void TestSignerComparison::compares()
{
    QFETCH(QList<Signer>, installed);
    QFETCH(QList<Signer>, update);
    QTEST(SignerComparison::compare(installed, update), "match");
}

void TestSignerComparison::theNewestSchemeCounts()
{
    SignaturesData fields;
    QVERIFY(SignerComparison::currentSigners(fields).isEmpty());
    for (const Scheme scheme : {Scheme::V1, Scheme::V2, Scheme::V3, Scheme::V31}) {
        fields.signers.insert(scheme, {signer(1, {}, scheme)});
        QCOMPARE(SignerComparison::currentSigners(fields).size(), 1);
        QCOMPARE(SignerComparison::currentSigners(fields).first().scheme(), scheme);
    }
}

void TestSignerComparison::theSignerForTheNewestVersionCounts()
{
    SignaturesData fields;
    fields.signers.insert(Scheme::V3, {signer(2), signer(1, {}, Scheme::V3, 30)});
    QCOMPARE(SignerComparison::currentSigners(fields).size(), 1);
    QCOMPARE(SignerComparison::currentSigners(fields).first().certificate(), certificate(2));
}

QTEST_GUILESS_MAIN(TestSignerComparison)
#include "tst_signercomparison.moc"
