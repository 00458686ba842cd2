// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Apk.h"
#include "Devices.h"
#include "PoolBuilder.h"
#include "stream/Extractor.h"
#include "stream/StringCache.h"
#include "stream/StringPool.h"

#include <QtTest>

using namespace fixture;

class TestStringCache : public QObject
{
    Q_OBJECT

private slots:
    void stringsAreThoseOfThePool();
    void stringIsDecodedOnce();
    void stringsAtOnePlaceAreOne();
    void clearForgets();
    void missingStringIsTheReadersFault();
    void valuesAreThoseOfThePool();
};

namespace {

class LoadedPool
{
public:
    explicit LoadedPool(const PoolBuilder &builder) : m_device(builder.build()), reader(&m_device), pool(QString("p"))
    {
        constexpr int KnownHeaderSize = 28;
        reader.get32();
        reader.pushBoundary(reader.get32() - 8);
        pool.load(&reader, KnownHeaderSize);
        reader.popBoundary();
    }

private:
    SequentialDevice m_device;

public:
    Extractor reader;
    StringPool pool;
};

} // namespace

void TestStringCache::stringsAreThoseOfThePool()
{
    for (const Encoding encoding : {Encoding::Utf8, Encoding::Utf16}) {
        const LoadedPool loaded(PoolBuilder(encoding).strings({QString("a"), QString(""), QString::fromUtf8("ü😀")}));
        StringCache cache(loaded.pool);
        for (const int index : {2, 0, 1, 2, 0})
            QCOMPARE(cache.get(index), loaded.pool.get(index));
        QVERIFY(!loaded.reader.failed());
    }
}

void TestStringCache::stringIsDecodedOnce()
{
    const LoadedPool loaded(PoolBuilder().strings({QString("abc"), QString("abc")}));
    StringCache cache(loaded.pool);
    QVERIFY(cache.get(0).isSharedWith(cache.get(0)));
    QVERIFY(!cache.get(0).isSharedWith(cache.get(1)));
    QVERIFY(!cache.get(0).isSharedWith(loaded.pool.get(0)));
}

void TestStringCache::stringsAtOnePlaceAreOne()
{
    const LoadedPool loaded(PoolBuilder().string(QString("abc")).offset(0));
    StringCache cache(loaded.pool);
    QCOMPARE(loaded.pool.count(), 2);
    QVERIFY(cache.get(0).isSharedWith(cache.get(1)));
}

void TestStringCache::clearForgets()
{
    LoadedPool first(PoolBuilder().string(QString("first")));
    const LoadedPool second(PoolBuilder().string(QString("second")));
    StringCache cache(first.pool);
    QCOMPARE(cache.get(0), QString("first"));
    first.pool = second.pool;
    cache.clear();
    QCOMPARE(cache.get(0), QString("second"));
}

void TestStringCache::missingStringIsTheReadersFault()
{
    const LoadedPool loaded(PoolBuilder().string(QString("a")));
    StringCache cache(loaded.pool);
    QVERIFY(cache.get(1).isNull());
    QVERIFY(loaded.reader.errorString().startsWith(QLatin1String("bad index in p pool")));
}

void TestStringCache::valuesAreThoseOfThePool()
{
    const LoadedPool loaded(PoolBuilder().string(QString("a")));
    StringCache cache(loaded.pool);
    for (int type = -1; type < 0x20; ++type) {
        for (const int data : {0, 1, -1, 0x7f010000})
            QCOMPARE(cache.valueToString(type, data), loaded.pool.valueToString(type, data));
    }
    QVERIFY(cache.valueToString(String, 0).isSharedWith(cache.get(0)));
    QVERIFY(!loaded.reader.failed());
}

QTEST_GUILESS_MAIN(TestStringCache)
#include "tst_stringcache.moc"
