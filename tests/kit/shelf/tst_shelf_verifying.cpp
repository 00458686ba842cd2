// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Files.h"
#include "IdSigBuilder.h"
#include "ShelfFixture.h"
#include "SigningBlockBuilder.h"
#include "TestKey.h"

#include <SorrelKit/Shelf.h>

#include <QCryptographicHash>
#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

/// Packages, and a shelf of them.
struct SignedPlace {
    SignedPlace()
    {
        shelf.setWorkerProgram(QStringLiteral(SORREL_DRAW));
        shelf.setJobs(1);
        ShelfPackage package;
        package.minSdk = 24;
        const QByteArray unsignedPackage = package.build();
        const QByteArray good = SigningBlockBuilder(unsignedPackage).v2({BlockSigner(TestKey::rsa())}).build();
        QByteArray changed = good;
        changed[40] = char(changed.at(40) ^ 1);
        writeFile(path("1-signed"), good);
        writeFile(path("2-unsigned"), unsignedPackage);
        writeFile(path("3-changed"), changed);
    }

    QString path(const char *name) const
    {
        return directory.filePath(QStringLiteral("packages/%1.apk").arg(QString::fromLatin1(name)));
    }
    bool open() { return shelf.open(directory.filePath(QStringLiteral("index/shelf.db"))); }
    QStringList signers() const
    {
        QStringList all;
        for (const ShelfItem &item : shelf.items())
            all.append(item.signer());
        return all;
    }

    QTemporaryDir directory;
    Shelf shelf;
};

QString expectedSigner()
{
    const QByteArray certificate = certificateOf(TestKey::rsa());
    return QString::fromLatin1(QCryptographicHash::hash(certificate, QCryptographicHash::Sha256).toHex());
}

} // namespace

class TestShelfVerifying : public QObject
{
    Q_OBJECT

private slots:
    void onlyWhenItIsAsked();
    void laterForKnownPackages();
    void theSignerStaysWithoutVerifying();
};

void TestShelfVerifying::onlyWhenItIsAsked()
{
    SignedPlace place;
    QVERIFY(!place.shelf.isVerifying());
    QVERIFY(place.open() && place.shelf.setFolders({place.directory.filePath(QStringLiteral("packages"))}));
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(place.signers(), QStringList({QString(), QString(), QString()}));
    QCOMPARE(place.shelf.find(expectedSigner()).size(), 0);
}

void TestShelfVerifying::laterForKnownPackages()
{
    SignedPlace place;
    QVERIFY(place.open() && place.shelf.setFolders({place.directory.filePath(QStringLiteral("packages"))}));
    QVERIFY(refreshed(place.shelf));
    const qint64 id = place.shelf.items().value(0).id();
    place.shelf.setVerifying(true);
    QVERIFY(place.shelf.isVerifying());
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(place.signers(), QStringList({expectedSigner(), QString(), QString()}));
    QCOMPARE(place.shelf.items().value(0).id(), id);
    QCOMPARE(place.shelf.find(expectedSigner()).size(), 1);
    QCOMPARE(place.shelf.find(expectedSigner().left(20)).value(0).id(), id);
}

void TestShelfVerifying::theSignerStaysWithoutVerifying()
{
    SignedPlace place;
    place.shelf.setVerifying(true);
    QVERIFY(place.open() && place.shelf.setFolders({place.directory.filePath(QStringLiteral("packages"))}));
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(place.signers().value(0), expectedSigner());
    place.shelf.setVerifying(false);
    place.shelf.setIcons({ShelfIcon(32)});
    QVERIFY(refreshed(place.shelf));
    QCOMPARE(place.signers().value(0), expectedSigner());
    QVERIFY(!place.shelf.icon(place.shelf.items().value(0).id(), ShelfIcon(32)).isEmpty());
}

QTEST_GUILESS_MAIN(TestShelfVerifying)
#include "tst_shelf_verifying.moc"
