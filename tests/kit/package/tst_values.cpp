// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Files.h"

#include <SorrelKit/DrawableRenderer.h>
#include <SorrelKit/PackageNormalizer.h>
#include <SorrelKit/PackageSet.h>
#include <SorrelKit/Resources.h>
#include <SorrelKit/Version.h>

#include <QMetaEnum>
#include <QMetaProperty>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>
#include <type_traits>
#include <utility>

using namespace SorrelKit;

/// The rules for all public classes of the kit: copies, moves, properties, the version, and names of any bytes.
class TestValues : public QObject
{
    Q_OBJECT

private slots:
    void versions();
    void movesAreCheap();
    void swapsExchange();
    void propertiesReadTheirValues();
    void enumsHaveNames();
    void errorsHaveMessages();
    void aPackageHasAnyName();
    void aFileThatIsMissingIsNotFound();
};

void TestValues::versions()
{
    QCOMPARE(QString(SORRELKIT_VERSION_STR), QString(PROJECT_VERSION));
    const QVersionNumber version(SORRELKIT_VERSION_MAJOR, SORRELKIT_VERSION_MINOR, SORRELKIT_VERSION_PATCH);
    QCOMPARE(version, QVersionNumber::fromString(QString(PROJECT_VERSION)));
    QCOMPARE(SORRELKIT_VERSION,
             SORRELKIT_VERSION_CHECK(version.majorVersion(), version.minorVersion(), version.microVersion()));
    QVERIFY(SORRELKIT_VERSION >= SORRELKIT_VERSION_CHECK(0, 5, 1));
    QVERIFY(SORRELKIT_VERSION_CHECK(1, 0, 0) > SORRELKIT_VERSION_CHECK(0, 255, 255));
}

template <typename Type>
constexpr bool movesWithoutThrowing()
{
    return std::is_nothrow_move_constructible_v<
               Type> && std::is_nothrow_move_assignable_v<Type> && std::is_nothrow_swappable_v<Type> && sizeof(Type) == sizeof(void *);
}

template <typename Type>
constexpr bool isValue()
{
    return movesWithoutThrowing<Type>() && std::is_copy_constructible_v<Type> && std::is_copy_assignable_v<Type>;
}

void TestValues::movesAreCheap()
{
    static_assert(isValue<Package>() && isValue<Entry>() && isValue<Resources>());
    static_assert(isValue<Component>() && isValue<Diagnostic>() && isValue<Error>() && isValue<Feature>()
                  && isValue<IconFile>() && isValue<Permission>() && isValue<Platform>());
    static_assert(isValue<Device>() && isValue<ExpansionFile>() && isValue<PackageSet>() && isValue<SetPackage>()
                  && isValue<SplitChoice>());
    static_assert(isValue<ResourceItem>() && isValue<ResourceValue>());
    static_assert(isValue<IconError>() && isValue<IconFrame>() && isValue<IconRequest>());
    static_assert(movesWithoutThrowing<DrawableRenderer>() && movesWithoutThrowing<PackageNormalizer>());
    static_assert(!std::is_copy_constructible_v<DrawableRenderer>);

    Error error(Error::Code::BadTable, QStringLiteral("fault"));
    const Error copy = error;
    const Error moved = std::move(error);
    QCOMPARE(moved, copy);
    error = copy;
    QCOMPARE(error, moved);
}

void TestValues::swapsExchange()
{
    IconError one(IconError::Code::Damaged, QStringLiteral("one"));
    IconError none;
    swap(one, none);
    QCOMPARE(none.text(), QStringLiteral("one"));
    QVERIFY(!one);
    Package package(QStringLiteral("/nowhere"));
    Package other;
    swap(package, other);
    QCOMPARE(other.error(), Error(Error::Code::CannotOpen));
}

template <typename Type>
int readProperties(const Type &value)
{
    int count = 0;
    const QMetaObject &type = Type::staticMetaObject;
    for (int i = 0; i < type.propertyCount(); ++i)
        count += int(type.property(i).readOnGadget(&value).isValid());
    return count == type.propertyCount() ? count : -1;
}

void TestValues::propertiesReadTheirValues()
{
    QCOMPARE(readProperties(Package()), 17);
    QCOMPARE(readProperties(Entry()), 22);
    QCOMPARE(readProperties(Component()), 6);
    QCOMPARE(readProperties(Diagnostic()), 9);
    QCOMPARE(readProperties(Error()), 3);
    QCOMPARE(readProperties(Feature()), 6);
    QCOMPARE(readProperties(IconFile()), 5);
    QCOMPARE(readProperties(Permission()), 13);
    QCOMPARE(readProperties(Platform()), 4);
    QCOMPARE(readProperties(Device()), 8);
    QCOMPARE(readProperties(PackageSet()), 3);
    QCOMPARE(readProperties(SetPackage()), 12);
    QCOMPARE(readProperties(SplitChoice()), 8);
    QCOMPARE(readProperties(ExpansionFile()), 4);
    QCOMPARE(readProperties(ResourceItem()), 4);
    QCOMPARE(readProperties(ResourceValue()), 5);
    QCOMPARE(readProperties(IconError()), 2);
    QCOMPARE(readProperties(IconFrame(QImage(1, 1, QImage::Format_ARGB32), 1)), 2);
    QCOMPARE(readProperties(IconRequest()), 12);

    IconRequest request(24);
    const QMetaObject &type = IconRequest::staticMetaObject;
    QVERIFY(type.property(type.indexOfProperty("mask")).writeOnGadget(&request, QVariant::fromValue(IconMask::Circle)));
    QCOMPARE(request.mask(), IconMask::Circle);
    QVERIFY(type.property(type.indexOfProperty("night")).writeOnGadget(&request, true));
    QVERIFY(request.isNight());
}

void TestValues::enumsHaveNames()
{
    QCOMPARE(QMetaEnum::fromType<Error::Code>().valueToKey(int(Error::Code::BadTable)), "BadTable");
    QCOMPARE(QMetaEnum::fromType<Entry::Kind>().valueToKey(int(Entry::Kind::InputMethod)), "InputMethod");
    QCOMPARE(QMetaEnum::fromType<Component::Kind>().valueToKey(int(Component::Kind::Alias)), "Alias");
    QCOMPARE(QMetaEnum::fromType<Device::Fault>().valueToKey(int(Device::Fault::NotJson)), "NotJson");
    QCOMPARE(QMetaEnum::fromType<SetPackage::Kind>().valueToKey(int(SetPackage::Kind::Feature)), "Feature");
    QCOMPARE(QMetaEnum::fromType<SetPackage::Reason>().valueToKey(int(SetPackage::Reason::Abi)), "Abi");
    QCOMPARE(QMetaEnum::fromType<SplitChoice::Code>().valueToKey(int(SplitChoice::Code::SdkTooLow)), "SdkTooLow");
    QCOMPARE(QMetaEnum::fromType<IconError::Code>().valueToKey(int(IconError::Code::TooMuch)), "TooMuch");
    QCOMPARE(QMetaEnum::fromType<IconRequest::Theme>().valueToKey(int(IconRequest::Theme::Style)), "Style");
    QCOMPARE(QMetaEnum::fromType<ResourceItem::Type>().valueToKey(int(ResourceValue::Type::Map)), "Map");
    QCOMPARE(QMetaEnum::fromType<IconMask>().valueToKey(int(IconMask::Squircle)), "Squircle");
}

void TestValues::errorsHaveMessages()
{
    QCOMPARE(Error().message(), QStringLiteral("no error"));
    QVERIFY(!Error());
    QVERIFY(Error(Error::Code::NoManifest));
    QCOMPARE(Error(Error::Code::NoManifest).message(), QStringLiteral("could not find AndroidManifest.xml"));
    const Error table(Error::Code::BadTable, QStringLiteral("not a resource table"));
    QCOMPARE(table.message(), QStringLiteral("could not parse resources.arsc: not a resource table"));
    QCOMPARE(table.detail(), QStringLiteral("not a resource table"));
    QVERIFY(table != Error(Error::Code::BadTable));
}

void TestValues::aPackageHasAnyName()
{
    const QTemporaryDir directory;
    const QByteArray bytes = fixture::zip({{QStringLiteral("a"), QByteArray("b")}});
    for (const char *name : {"/a", "/\xff", "/\xed\xa0\x80"}) {
        const QByteArray path = QFile::encodeName(directory.path()) + name;
        std::FILE *const written = std::fopen(path.constData(), "w");
        QVERIFY(written != nullptr);
        QCOMPARE(std::fwrite(bytes.constData(), 1, size_t(bytes.size()), written), size_t(bytes.size()));
        QCOMPARE(std::fclose(written), 0);
        QCOMPARE(Package::fromNativePath(path).error(), Error(Error::Code::NoManifest));
        QCOMPARE(PackageNormalizer::fromNativePath(path).error(), Error());
        QCOMPARE(std::remove(path.constData()), 0);
    }
}

void TestValues::aFileThatIsMissingIsNotFound()
{
    const QTemporaryDir directory;
    const QByteArray place = QFile::encodeName(directory.path());
    // A directory is no file, and a path ends at its first NUL.
    for (const QByteArray &path : {QByteArray(), QByteArray("/nowhere/\xff"), place, QByteArray("/dev/null\0/a", 12)}) {
        QCOMPARE(Package::fromNativePath(path).error(), Error(Error::Code::CannotOpen));
        QCOMPARE(PackageNormalizer::fromNativePath(path).error(), Error(Error::Code::CannotOpen));
    }
}

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"
