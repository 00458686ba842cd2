// SPDX-License-Identifier: LGPL-2.1-or-later
#include "JarCheck.h"

#include "archive/ZipArchive.h"
#include "limits/Budget.h"
#include "trust/jar/JarVerifier.h"

using namespace SorrelKit;

namespace fixture {

SchemeResult verifyJar(const QByteArray &package, SdkRange sdk, const QVector<int> &schemes)
{
    ZipArchive archive(package);
    if (!archive.open())
        qFatal("the fixture is no archive");
    Budget budget(JarWork, JarBytes);
    SchemeResult result = JarVerifier(archive, &budget).verify(sdk, schemes);
    if (budget.bytesLeft() != JarBytes)
        qFatal("the verifier holds bytes");
    return result;
}

SchemeResult verifyJar(const QVector<Member> &members, SdkRange sdk, const QVector<int> &schemes)
{
    return verifyJar(zip(members, Compression::Stored), sdk, schemes);
}

QVector<Member> unsignedMembers()
{
    return {{QStringLiteral("a.txt"), "hello"},
            {QStringLiteral("res/b.bin"), QByteArray(300, 'b')},
            {QStringLiteral("classes.dex"), "dex"}};
}

QVector<Member> signedMembers(const JarOptions &options, const TestKey &key)
{
    return signedJar(unsignedMembers(), key, options);
}

QStringList textsOf(const QList<SignatureIssue> &issues)
{
    QStringList texts;
    for (const SignatureIssue &issue : issues)
        texts.append(issue.message());
    return texts;
}

QString errorsOf(const SchemeResult &result)
{
    return textsOf(result.issues.errors()).join(QStringLiteral("; "));
}

QString warningsOf(const SchemeResult &result)
{
    return textsOf(result.issues.warnings()).join(QStringLiteral("; "));
}

} // namespace fixture
