// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ResourcesFixture.h"

#include "archive/FileSource.h"
#include "theme/Theme.h"

#include <QtTest>

using namespace SorrelKit;
using namespace fixture;

namespace {

constexpr quint32 AttributeId = 0x7f010000;
constexpr quint32 StyleId = 0x7f020000;
constexpr quint32 ValueId = 0x7f030000;
constexpr int AttributeType = int(ValueType::Attribute);
constexpr int NullType = int(ValueType::Null);
constexpr qint64 EmptyData = 1;

using Items = QVector<QByteArray>;

QByteArray number(quint32 attribute, int value)
{
    return mapItem(attribute, Integer, value);
}

QSharedPointer<const ResourceTable> themeTable(PackageBuilder package, const QStringList &strings = {})
{
    package.types({latin("attr"), latin("style"), latin("dimen")});
    return QSharedPointer<const ResourceTable>(
        new ResourceTable(TableBuilder().strings(strings).package(package).build()));
}

/// Styles 0, 1, ... of one configuration.
TypeBuilder styles(const QVector<QByteArray> &maps, const ConfigBuilder &configuration = ConfigBuilder())
{
    TypeBuilder type(2, configuration.build());
    for (int i = 0; i < maps.size(); ++i) {
        if (!maps.at(i).isEmpty())
            type.entry(i, maps.at(i));
    }
    return type;
}

/// A resolver for a phone, and an empty theme.
struct Themed {
    explicit Themed(const ResourceTables &tables, const Configuration &device = Configuration::phone(160),
                    const Budget &limits = Budget(ResourceResolver::MaxWork, ResourceResolver::MaxBytes))
        : budget(limits), resolver(tables, device, &budget)
    {
    }
    explicit Themed(const PackageBuilder &package, const QStringList &strings = {})
        : Themed(ResourceTables{themeTable(package, strings)})
    {
    }

    void apply(quint32 style, Theme::Apply apply = Theme::Apply::Forced) { theme.applyStyle(style, apply); }
    /// The number that the attribute has, -1 for another value, or -2 for none.
    int number(quint32 attribute) const
    {
        const auto value = theme.value(attribute);
        return value ? value->value.integer().value_or(-1) : -2;
    }

    Budget budget;
    ResourceResolver resolver;
    Theme theme{resolver};
};

constexpr int NoValue = -2;

/// A platform that is a table, without files.
class TablePlatform : public PlatformSource, private FileSource
{
public:
    explicit TablePlatform(ResourceTables tables) : m_tables(std::move(tables)) {}
    const ResourceTables &tables() override { return m_tables; }
    FileSource &files() override { return *this; }

private:
    QByteArray file(const QString & /*path*/, qint64 /*maxBytes*/, Budget * /*budget*/) override { return {}; }

    ResourceTables m_tables;
};

/// The table of a package, and its platform.
class Tables : public TableSource
{
public:
    Tables(ResourceTables own, PlatformSource *platform) : m_own(std::move(own)), m_platform(platform) {}
    const ResourceTables &tables() override { return m_own; }
    PlatformSource *platform() override { return m_platform; }

private:
    ResourceTables m_own;
    PlatformSource *m_platform;
};

} // namespace

class TestTheme : public QObject
{
    Q_OBJECT

private slots:
    void withoutAStyleThereAreNoValues();
    void valuesOfAStyle();
    void parentsGiveWhatIsMissing();
    void nullRemovesAndEmptyStays();
    void cyclesOfParentsEnd();
    void missingParentsEndTheChain();
    void styleThatIsNone();
    void parentsUpToTheCeiling();
    void attributesLeadToAttributes();
    void attributesUpToTheCeiling();
    void cyclesOfAttributesEnd();
    void referencesAreFollowed();
    void resourceThatIsAnAttributeHasNoValue();
    void stringsOfTheStylesTable();
    void bestConfigurationOfEachStyle();
    void stylesAreForced();
    void stylesOfThePlatform();
    void stagedIdsOfThePlatform();
    void stagedIdsWithoutAPlatform();
    void packageZeroIsTheTablesOwn();
    void unusedThemesCostNothing();
    void largeStylesStayInTheBudget();
    void longChainsStayInTheBudget();
    void damagedTables();
};

void TestTheme::withoutAStyleThereAreNoValues()
{
    const Themed themed(PackageBuilder{});
    QCOMPARE(themed.number(AttributeId), NoValue);
    QCOMPARE(themed.theme.missingStyle(), 0u);
    const Themed nothing(ResourceTables{});
    QCOMPARE(nothing.number(AttributeId), NoValue);
}

void TestTheme::valuesOfAStyle()
{
    Themed themed(PackageBuilder().type(styles({mapOf({number(AttributeId, 7), number(0x01010030, 8)})})));
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId), 7);
    QCOMPARE(themed.number(0x01010030), 8);
    QCOMPARE(themed.number(AttributeId + 1), NoValue);
    QCOMPARE(themed.theme.missingStyle(), 0u);
}

void TestTheme::parentsGiveWhatIsMissing()
{
    Themed themed(PackageBuilder().type(styles({
        mapOf({number(AttributeId, 1)}, StyleId + 1),
        mapOf({number(AttributeId, 2), number(AttributeId + 1, 3)}, StyleId + 2),
        mapOf({number(AttributeId + 1, 4), number(AttributeId + 2, 5)}),
    })));
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId), 1);
    QCOMPARE(themed.number(AttributeId + 1), 3);
    QCOMPARE(themed.number(AttributeId + 2), 5);
}

void TestTheme::nullRemovesAndEmptyStays()
{
    const QByteArray parent = mapOf({number(AttributeId, 1), number(AttributeId + 1, 2)});
    const Items nulls{mapItem(AttributeId, NullType, 0), mapItem(AttributeId + 1, NullType, EmptyData)};
    const PackageBuilder package = PackageBuilder().type(styles({mapOf(nulls, StyleId + 1), parent, mapOf(nulls)}));
    Themed child(package);
    child.apply(StyleId);
    QCOMPARE(child.number(AttributeId), NoValue);
    QCOMPARE(child.number(AttributeId + 1), -1);
    QVERIFY(child.theme.value(AttributeId + 1)->isNull());
    Themed forced(package);
    forced.apply(StyleId + 1);
    forced.apply(StyleId + 2);
    QCOMPARE(forced.number(AttributeId), NoValue);
    QCOMPARE(forced.number(AttributeId + 1), -1);
    Themed unforced(package);
    unforced.apply(StyleId + 1);
    unforced.apply(StyleId + 2, Theme::Apply::Missing);
    QCOMPARE(unforced.number(AttributeId), 1);
    QCOMPARE(unforced.number(AttributeId + 1), 2);
}

void TestTheme::cyclesOfParentsEnd()
{
    Themed themed(PackageBuilder().type(styles({
        mapOf({number(AttributeId, 1)}, StyleId + 1),
        mapOf({number(AttributeId + 1, 2)}, StyleId),
        mapOf({number(AttributeId + 2, 3)}, StyleId + 2),
    })));
    themed.apply(StyleId);
    themed.apply(StyleId + 2);
    QCOMPARE(themed.number(AttributeId), 1);
    QCOMPARE(themed.number(AttributeId + 1), 2);
    QCOMPARE(themed.number(AttributeId + 2), 3);
    QCOMPARE(themed.theme.missingStyle(), 0u);
}

void TestTheme::missingParentsEndTheChain()
{
    Themed themed(PackageBuilder().type(styles({mapOf({number(AttributeId, 1)}, 0x01030005)})));
    themed.apply(StyleId);
    QCOMPARE(themed.theme.missingStyle(), 0x01030005u);
    QCOMPARE(themed.number(AttributeId), 1);
    QCOMPARE(themed.number(AttributeId + 1), NoValue);
}

void TestTheme::styleThatIsNone()
{
    Themed themed(PackageBuilder().type(styles({mapOf({number(AttributeId, 1)}), simpleEntry(Reference, StyleId)})));
    themed.apply(StyleId + 1);
    themed.apply(StyleId + 9);
    themed.apply(0);
    QCOMPARE(themed.number(AttributeId), NoValue);
    QCOMPARE(themed.theme.missingStyle(), StyleId + 1);
}

void TestTheme::parentsUpToTheCeiling()
{
    QVector<QByteArray> maps;
    for (int i = 0; i <= Theme::MaxParents; ++i)
        maps.append(mapOf({number(AttributeId + quint32(i), i)}, StyleId + quint32(i) + 1));
    Themed themed(PackageBuilder().type(styles(maps)));
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId + Theme::MaxParents - 1), Theme::MaxParents - 1);
    QCOMPARE(themed.number(AttributeId + Theme::MaxParents), NoValue);
}

void TestTheme::attributesLeadToAttributes()
{
    Themed themed(
        PackageBuilder().type(styles({mapOf({mapItem(AttributeId, AttributeType, AttributeId + 1)}, StyleId + 1),
                                      mapOf({mapItem(AttributeId + 1, AttributeType, 0x01010030), number(0x01010030, 7),
                                             mapItem(AttributeId + 2, AttributeType, AttributeId + 9)})})));
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId), 7);
    QCOMPARE(themed.number(AttributeId + 2), NoValue);
}

void TestTheme::attributesUpToTheCeiling()
{
    Items items;
    for (int i = 0; i <= Theme::MaxAttributes; ++i)
        items.append(mapItem(AttributeId + quint32(i), AttributeType, AttributeId + quint32(i) + 1));
    items.append(number(AttributeId + Theme::MaxAttributes + 1, 7));
    Themed themed(PackageBuilder().type(styles({mapOf(items)})));
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId + 1), 7);
    QCOMPARE(themed.number(AttributeId), NoValue);
}

void TestTheme::cyclesOfAttributesEnd()
{
    Themed themed(PackageBuilder().type(styles({mapOf({mapItem(AttributeId, AttributeType, AttributeId),
                                                       mapItem(AttributeId + 1, AttributeType, AttributeId + 2),
                                                       mapItem(AttributeId + 2, AttributeType, AttributeId + 1)})})));
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId), NoValue);
    QCOMPARE(themed.number(AttributeId + 1), NoValue);
}

void TestTheme::referencesAreFollowed()
{
    PackageBuilder package;
    package
        .type(styles(
            {mapOf({mapItem(AttributeId, AttributeType, AttributeId + 1), mapItem(AttributeId + 1, Reference, ValueId),
                    mapItem(AttributeId + 2, Reference, ValueId + 9), mapItem(AttributeId + 3, Reference, 0)})}))
        .type(TypeBuilder(3).value(0, Reference, ValueId + 1).value(1, String, 1));
    Themed themed(package, names({"other", "res/shape.xml"}));
    themed.apply(StyleId);
    const auto value = themed.theme.value(AttributeId);
    QVERIFY(value.has_value());
    QCOMPARE(value->text, latin("res/shape.xml"));
    QCOMPARE(value->resource, ValueId + 1);
    const auto missing = themed.theme.value(AttributeId + 2);
    QVERIFY(missing && missing->value.isReference());
    QCOMPARE(missing->resource, ValueId + 9);
    // `@null` is the reference 0.
    const auto null = themed.theme.value(AttributeId + 3);
    QVERIFY(null && null->value.isReference());
    QCOMPARE(null->resource, 0u);
}

void TestTheme::resourceThatIsAnAttributeHasNoValue()
{
    PackageBuilder package;
    package.type(styles({mapOf({mapItem(AttributeId, Reference, ValueId), number(AttributeId + 1, 7)})}))
        .type(TypeBuilder(3).value(0, AttributeType, AttributeId + 1));
    Themed themed(package);
    themed.apply(StyleId);
    const auto value = themed.theme.value(AttributeId);
    QVERIFY(value && value->isNull());
}

void TestTheme::stringsOfTheStylesTable()
{
    const auto own = themeTable(PackageBuilder().type(styles({mapOf({mapItem(AttributeId, String, 0)}, 0x01020000)})),
                                {latin("own")});
    const auto platform =
        themeTable(PackageBuilder(1).type(styles({mapOf({mapItem(0x01010000, String, 0)})})), {latin("platform")});
    Themed themed({own, platform});
    themed.apply(StyleId);
    QCOMPARE(themed.theme.value(AttributeId)->text, latin("own"));
    QCOMPARE(themed.theme.value(0x01010000)->text, latin("platform"));
    QCOMPARE(themed.theme.value(0x01010000)->resource, 0u);
}

void TestTheme::bestConfigurationOfEachStyle()
{
    constexpr int UiModeAt = 29;
    constexpr int Night = 0x20;
    PackageBuilder package;
    package
        .type(styles({mapOf({number(AttributeId, 1)}, StyleId + 1), mapOf({number(AttributeId + 1, 2)}),
                      mapOf({number(AttributeId + 2, 3)})}))
        .type(styles({mapOf({number(AttributeId, 4)}, StyleId + 2)}, ConfigBuilder().sdkVersion(21)))
        .type(styles({QByteArray(), QByteArray(), mapOf({number(AttributeId + 2, 5)})},
                     ConfigBuilder().u8(UiModeAt, Night)));
    const ResourceTables tables{themeTable(package)};
    Configuration old = Configuration::phone(160);
    old.sdkVersion = 19;
    Themed before(tables, old);
    before.apply(StyleId);
    QCOMPARE(before.number(AttributeId), 1);
    QCOMPARE(before.number(AttributeId + 1), 2);
    QCOMPARE(before.number(AttributeId + 2), NoValue);
    Themed day(tables);
    day.apply(StyleId);
    QCOMPARE(day.number(AttributeId), 4);
    QCOMPARE(day.number(AttributeId + 1), NoValue);
    QCOMPARE(day.number(AttributeId + 2), 3);
    Configuration dark = Configuration::phone(160);
    dark.uiModeNight = Configuration::Night;
    Themed night(tables, dark);
    night.apply(StyleId);
    QCOMPARE(night.number(AttributeId), 4);
    QCOMPARE(night.number(AttributeId + 2), 5);
}

void TestTheme::stylesAreForced()
{
    const PackageBuilder package = PackageBuilder().type(styles({
        mapOf({number(AttributeId, 1), mapItem(AttributeId + 3, AttributeType, AttributeId)}),
        mapOf({number(AttributeId, 2)}, StyleId + 2),
        mapOf({number(AttributeId, 3), number(AttributeId + 1, 4)}),
    }));
    Themed forced(package);
    forced.apply(StyleId);
    forced.apply(StyleId + 1);
    QCOMPARE(forced.number(AttributeId), 2);
    QCOMPARE(forced.number(AttributeId + 1), 4);
    QCOMPARE(forced.number(AttributeId + 3), 2);
    Themed unforced(package);
    unforced.apply(StyleId);
    QCOMPARE(unforced.number(AttributeId + 1), NoValue);
    unforced.apply(StyleId + 1, Theme::Apply::Missing);
    QCOMPARE(unforced.number(AttributeId), 1);
    QCOMPARE(unforced.number(AttributeId + 1), 4);
}

void TestTheme::stylesOfThePlatform()
{
    const auto own = themeTable(PackageBuilder().type(styles({mapOf({number(AttributeId, 1)}, 0x01020000)})));
    const auto platform = themeTable(PackageBuilder(1)
                                         .type(styles({mapOf({mapItem(0x01010030, Reference, 0x01030000)}, 0x01020001),
                                                       mapOf({number(0x01010031, 8)})}))
                                         .type(TypeBuilder(3).value(0, Integer, 7)));
    Themed themed({own, platform});
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId), 1);
    QCOMPARE(themed.number(0x01010030), 7);
    QCOMPARE(themed.number(0x01010031), 8);
    QCOMPARE(themed.theme.missingStyle(), 0u);
}

// The package was built with a preview of the platform, and names an attribute, a style and a value by staged ids.
void TestTheme::stagedIdsOfThePlatform()
{
    constexpr quint32 StagedAttribute = 0x01ff0000;
    constexpr quint32 StagedStyle = 0x01fe0000;
    constexpr quint32 StagedValue = 0x01fd0000;
    const auto own = themeTable(PackageBuilder().type(
        styles({mapOf({number(StagedAttribute, 1), mapItem(AttributeId, Reference, StagedValue),
                       mapItem(AttributeId + 1, AttributeType, StagedAttribute + 1)},
                      StagedStyle),
                mapOf({number(0x01010030, 2)}, StyleId), mapOf({number(StagedAttribute, 3)}, StyleId)})));
    TablePlatform platform({themeTable(
        PackageBuilder(1)
            .type(styles({mapOf({number(0x01010030, 4), number(0x01010031, 5), number(StagedAttribute + 2, 6)})}))
            .type(TypeBuilder(3).value(0, Integer, 7))
            .chunk(aliasChunk({StagedAttribute, 0x01010030, StagedAttribute + 1, 0x01010031, StagedAttribute + 2,
                               0x01010032, StagedStyle, 0x01020000, StagedValue, 0x01030000})))});
    Tables tables({own}, &platform);
    const auto numberOf = [&tables](quint32 style, quint32 attribute) {
        const ResourceResolver resolver(tables, Configuration::phone(160));
        Theme theme(resolver);
        theme.applyStyle(style, Theme::Apply::Forced);
        const auto value = theme.value(attribute);
        return value ? value->value.integer().value_or(-1) : NoValue;
    };
    QCOMPARE(numberOf(StyleId, 0x01010030), 1);
    QCOMPARE(numberOf(StyleId, StagedAttribute), 1);
    QCOMPARE(numberOf(StyleId, AttributeId), 7);
    QCOMPARE(numberOf(StyleId, AttributeId + 1), 5);
    QCOMPARE(numberOf(StyleId, StagedAttribute + 1), 5);
    QCOMPARE(numberOf(StyleId, 0x01010032), 6);
    QCOMPARE(numberOf(StyleId + 1, StagedAttribute), 2);
    QCOMPARE(numberOf(StyleId + 2, 0x01010030), 3);
    QCOMPARE(numberOf(StagedStyle, StagedAttribute), 4);
}

void TestTheme::stagedIdsWithoutAPlatform()
{
    Themed themed(PackageBuilder().type(styles({mapOf({number(0x01ff0000, 1)}, 0x01fe0000)})));
    themed.apply(StyleId);
    QCOMPARE(themed.number(0x01ff0000), 1);
    QCOMPARE(themed.number(0x01010030), NoValue);
    QCOMPARE(themed.theme.missingStyle(), 0x01fe0000u);
}

void TestTheme::packageZeroIsTheTablesOwn()
{
    PackageBuilder package;
    package
        .type(
            styles({mapOf({}, 0x00020001), mapOf({mapItem(0x00010000, Reference, 0x00030000),
                                                  mapItem(0x00010001, int(ValueType::DynamicAttribute), 0x00010000)})}))
        .type(TypeBuilder(3).value(0, Integer, 7));
    Themed themed(package);
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId), 7);
    QCOMPARE(themed.number(0x00010001), 7);
}

void TestTheme::unusedThemesCostNothing()
{
    Themed themed(PackageBuilder().type(styles({mapOf({number(AttributeId, 1)})})));
    const qint64 work = themed.budget.workLeft();
    themed.apply(StyleId);
    QCOMPARE(themed.budget.workLeft(), work);
    QCOMPARE(themed.number(AttributeId), 1);
    QVERIFY(themed.budget.workLeft() < work);
    const qint64 afterReading = themed.budget.workLeft();
    QCOMPARE(themed.number(AttributeId), 1);
    QCOMPARE(afterReading - themed.budget.workLeft(), qint64(Budget::LookupWork));
}

void TestTheme::largeStylesStayInTheBudget()
{
    constexpr int Count = 65535;
    Items items;
    items.reserve(Count);
    for (int i = 0; i < Count; ++i)
        items.append(number(AttributeId + quint32(i), i));
    const ResourceTables tables{themeTable(PackageBuilder().type(styles({mapOf(items)})))};
    Themed whole(tables);
    whole.apply(StyleId);
    QCOMPARE(whole.number(AttributeId + Count - 1), Count - 1);
    QVERIFY(!whole.budget.isSpent());
    constexpr qint64 Room = 1000;
    const qint64 reading = Room * Theme::ItemWork + Budget::LookupWork + Budget::ValueWork;
    Themed workEnds(tables, Configuration::phone(160), Budget(reading, ResourceResolver::MaxBytes));
    workEnds.apply(StyleId);
    QCOMPARE(workEnds.number(AttributeId), NoValue);
    QVERIFY(workEnds.budget.isSpent());
    QVERIFY(workEnds.budget.workLeft() < Budget::LookupWork);
    Themed bytesEnd(tables, Configuration::phone(160), Budget(ResourceResolver::MaxWork, 2 * Room * Theme::ItemBytes));
    bytesEnd.apply(StyleId);
    QCOMPARE(bytesEnd.number(AttributeId + 2 * Room), NoValue);
    QVERIFY(bytesEnd.budget.isSpent());
}

void TestTheme::longChainsStayInTheBudget()
{
    constexpr int Count = 10000;
    QVector<QByteArray> maps;
    for (int i = 0; i < Count; ++i)
        maps.append(mapOf({number(AttributeId + quint32(i % 8), i)}, StyleId + quint32(i + 1) % Count));
    Themed themed(PackageBuilder().type(styles(maps)));
    const qint64 work = themed.budget.workLeft();
    themed.apply(StyleId);
    QCOMPARE(themed.number(AttributeId + 7), 7);
    const qint64 style = Budget::LookupWork + Budget::ValueWork + Theme::ItemWork;
    QCOMPARE(work - themed.budget.workLeft(), Theme::MaxParents * style + Budget::LookupWork);
}

void TestTheme::damagedTables()
{
    PackageBuilder package;
    package.types({latin("attr"), latin("style"), latin("dimen")})
        .type(
            styles({mapOf({number(AttributeId, 1), mapItem(AttributeId + 1, AttributeType, AttributeId)}, StyleId + 1),
                    mapOf({mapItem(AttributeId + 2, Reference, ValueId)})}))
        .type(TypeBuilder(3).value(0, String, 0));
    const QByteArray good = TableBuilder().strings({latin("text")}).package(package).build();
    int damaged = 0;
    for (int at = 0; at < good.size(); ++at) {
        for (const int mask : {0x01, 0x80, 0xff}) {
            QByteArray bytes = good;
            bytes[at] = char(bytes.at(at) ^ mask);
            constexpr qint64 Work = 1 << 20;
            Themed themed({QSharedPointer<const ResourceTable>(new ResourceTable(bytes))}, Configuration::phone(160),
                          Budget(Work, Work));
            themed.apply(StyleId);
            bool isSame = themed.number(AttributeId) == 1;
            isSame = themed.number(AttributeId + 1) == 1 && isSame;
            const auto text = themed.theme.value(AttributeId + 2);
            isSame = text && text->text == latin("text") && isSame;
            damaged += isSame ? 0 : 1;
            QVERIFY(themed.budget.workLeft() >= 0 && themed.budget.bytesLeft() >= 0);
        }
    }
    QVERIFY(damaged > 0);
}

QTEST_GUILESS_MAIN(TestTheme)
#include "tst_theme.moc"
