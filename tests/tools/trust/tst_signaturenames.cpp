// SPDX-License-Identifier: LGPL-2.1-or-later
#include "SignatureNames.h"

#include <QMetaEnum>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

using SorrelKit::PastSigner;
using SorrelKit::SignatureIssue;
using SorrelKit::Signer;

class TestSignatureNames : public QObject
{
    Q_OBJECT

private slots:
    void codes();
    void everyCodeHasAName();
    void capabilities();
    void lists();
};

void TestSignatureNames::codes()
{
    using Code = SignatureIssue::Code;
    QCOMPARE(SignatureNames::code(Code::None), QStringLiteral("none"));
    QCOMPARE(SignatureNames::code(Code::ContentChanged), QStringLiteral("content-changed"));
    QCOMPARE(SignatureNames::code(Code::BadV4Signature), QStringLiteral("bad-v4-signature"));
}

void TestSignatureNames::everyCodeHasAName()
{
    const QRegularExpression form(QStringLiteral("^[a-z0-9]+(-[a-z0-9]+)*$"));
    const QMetaEnum all = QMetaEnum::fromType<SignatureIssue::Code>();
    QSet<QString> names;
    for (int i = 0; i < all.keyCount(); ++i) {
        const QString name = SignatureNames::code(SignatureIssue::Code(all.value(i)));
        QVERIFY2(form.match(name).hasMatch(), qPrintable(name));
        names.insert(name);
    }
    QCOMPARE(names.size(), all.keyCount());
    QVERIFY(all.keyCount() > 50);
}

void TestSignatureNames::capabilities()
{
    using Capability = PastSigner::Capability;
    QCOMPARE(SignatureNames::capabilities({}), QStringList());
    QCOMPARE(SignatureNames::capabilities(Capability::Rollback | Capability::InstalledData),
             QStringList({QStringLiteral("installedData"), QStringLiteral("rollback")}));
    QCOMPARE(SignatureNames::capabilities(PastSigner::Capabilities(31)).size(), 5);
}

void TestSignatureNames::lists()
{
    using Scheme = Signer::Scheme;
    QCOMPARE(SignatureNames::schemesText({Scheme::V2}), QStringLiteral("scheme v2"));
    QCOMPARE(SignatureNames::schemesText({Scheme::V2, Scheme::V31}), QStringLiteral("schemes v2 and v3.1"));
    QCOMPARE(SignatureNames::schemesText({Scheme::V1, Scheme::V2, Scheme::V3}),
             QStringLiteral("schemes v1, v2 and v3"));
    QCOMPARE(SignatureNames::joined({}), QString());
}

QTEST_GUILESS_MAIN(TestSignatureNames)
#include "tst_signaturenames.moc"
