// SPDX-License-Identifier: LGPL-2.1-or-later
#include "TestKey.h"

#include "trust/result/IssueList.h"

#include <SorrelKit/SignatureRequest.h>
#include <SorrelKit/Signatures.h>

#include <QMetaEnum>
#include <QMetaProperty>
#include <QSet>
#include <QtTest>

#include <type_traits>

using namespace SorrelKit;
using Code = SignatureIssue::Code;
using Scheme = Signer::Scheme;

/// SignatureIssue, IssueList, and the rules for all value classes of the library.
class TestSignatureIssue : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeHasATextOfItsOwn();
    void messagesHaveSubjectAndDetail();
    void listsEnd();
    void valuesMove();
    void valuesAreShared();
    void propertiesReadTheirValues();
    void schemesHaveNames();
};

void TestSignatureIssue::everyCodeHasATextOfItsOwn()
{
    const QMetaEnum codes = QMetaEnum::fromType<Code>();
    QSet<QString> texts;
    for (int i = 0; i < codes.keyCount(); ++i) {
        const QString text = SignatureIssue(Code(codes.value(i)), Scheme::None).message();
        QVERIFY2(!text.isEmpty(), codes.key(i));
        QVERIFY2(!texts.contains(text), qPrintable(text));
        texts.insert(text);
    }
}

void TestSignatureIssue::messagesHaveSubjectAndDetail()
{
    const SignatureIssue issue(Code::MemberChanged, Scheme::V1, QStringLiteral("classes.dex"),
                               QStringLiteral("SHA-256"));
    QCOMPARE(issue.message(), QStringLiteral("classes.dex: a member was changed: SHA-256"));
    QCOMPARE(issue.code(), Code::MemberChanged);
    QCOMPARE(issue.scheme(), Scheme::V1);
    QCOMPARE(issue.subject(), QStringLiteral("classes.dex"));
    QCOMPARE(issue.detail(), QStringLiteral("SHA-256"));
    QCOMPARE(SignatureIssue(Code::NotSigned, Scheme::None).message(),
             QStringLiteral("the package has no signature that this version of Android accepts"));
}

void TestSignatureIssue::listsEnd()
{
    IssueList list(Scheme::V2);
    QVERIFY(!list.hasErrors());
    for (int i = 0; i < IssueList::MaxIssues; ++i) {
        list.addError(Code::BadSigner);
        list.addWarning(Code::UnknownAttribute);
    }
    QVERIFY(list.hasErrors());
    QCOMPARE(list.errors().size(), IssueList::MaxIssues);
    QCOMPARE(list.errors().last().code(), Code::BadSigner);
    for (int i = 0; i < 2; ++i) {
        list.addError(Code::BadSigner);
        list.addWarning(Code::UnknownAttribute);
    }
    QCOMPARE(list.errors().size(), IssueList::MaxIssues + 1);
    QCOMPARE(list.errors().last().code(), Code::TooManyIssues);
    QCOMPARE(list.errors().last().scheme(), Scheme::V2);
    QCOMPARE(list.warnings().size(), IssueList::MaxIssues + 1);
    QCOMPARE(list.warnings().last().code(), Code::TooManyIssues);
}

template <typename Type>
constexpr bool isSmallValue()
{
    return std::is_nothrow_move_constructible_v<
               Type> && std::is_nothrow_move_assignable_v<Type> && std::is_copy_constructible_v<Type> && std::is_copy_assignable_v<Type> && std::is_nothrow_swappable_v<Type> && sizeof(Type) == sizeof(void *);
}

void TestSignatureIssue::valuesMove()
{
    static_assert(isSmallValue<Certificate>());
    static_assert(isSmallValue<PastSigner>());
    static_assert(isSmallValue<Signer>());
    static_assert(isSmallValue<SignatureIssue>());
    static_assert(isSmallValue<SignatureRequest>());
    static_assert(isSmallValue<Signatures>());
    SignatureIssue first(Code::BadSigner, Scheme::V3);
    SignatureIssue second(Code::NoSigner, Scheme::V2);
    first.swap(second);
    QCOMPARE(first.code(), Code::NoSigner);
    const SignatureIssue moved = std::move(second);
    QCOMPARE(moved.code(), Code::BadSigner);
}

void TestSignatureIssue::valuesAreShared()
{
    SignatureRequest request;
    QCOMPARE(request.minSdkVersion(), 0);
    QCOMPARE(request.maxSdkVersion(), 0);
    QVERIFY(request.v4SignatureFile().isEmpty());
    const SignatureRequest copy = request;
    request.setMinSdkVersion(21);
    request.setMaxSdkVersion(34);
    request.setV4SignatureFile(QStringLiteral("a.idsig"));
    QCOMPARE(copy.minSdkVersion(), 0);
    QCOMPARE(request.minSdkVersion(), 21);
    QCOMPARE(request.maxSdkVersion(), 34);
    QCOMPARE(request.v4SignatureFile(), QStringLiteral("a.idsig"));
}

void TestSignatureIssue::propertiesReadTheirValues()
{
    const Signatures none;
    const QMetaObject &meta = Signatures::staticMetaObject;
    for (int i = 0; i < meta.propertyCount(); ++i)
        QVERIFY2(meta.property(i).readOnGadget(&none).isValid(), meta.property(i).name());
    const Certificate certificate = Certificate::fromDer(fixture::TestKey::ec().certificate());
    QCOMPARE(Certificate::staticMetaObject.property(Certificate::staticMetaObject.indexOfProperty("subject"))
                 .readOnGadget(&certificate)
                 .toString(),
             QStringLiteral("CN=Test signer"));
}

void TestSignatureIssue::schemesHaveNames()
{
    QCOMPARE(Signer::schemeName(Scheme::None), QString());
    QCOMPARE(Signer::schemeName(Scheme::V1), QStringLiteral("v1"));
    QCOMPARE(Signer::schemeName(Scheme::V2), QStringLiteral("v2"));
    QCOMPARE(Signer::schemeName(Scheme::V3), QStringLiteral("v3"));
    QCOMPARE(Signer::schemeName(Scheme::V31), QStringLiteral("v3.1"));
    QCOMPARE(Signer::schemeName(Scheme::V4), QStringLiteral("v4"));
    QCOMPARE(Signer::schemeName(Scheme::Stamp), QStringLiteral("stamp"));
}

QTEST_GUILESS_MAIN(TestSignatureIssue)
#include "tst_signatureissue.moc"
