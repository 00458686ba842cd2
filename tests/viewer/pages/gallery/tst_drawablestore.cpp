// SPDX-License-Identifier: LGPL-2.1-or-later
#include "PageFacts.h"

#include "pages/gallery/DrawableStore.h"

#include <QSignalSpy>
#include <QtTest>

using Viewer::DrawableStore;

namespace {

QJsonObject answer(const QString &name, const QString &png, const QString &error = QString())
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("png"), png}, {QStringLiteral("error"), error}};
}

} // namespace

class TestDrawableStore : public QObject
{
    Q_OBJECT

private slots:
    void asksOnce();
    void pendingRequestsHaveACeiling();
    void onlyAnswersAreTaken();
    void errors();
    void picturesHaveACeiling();
    void longNames();
    void clears();
};

void TestDrawableStore::asksOnce()
{
    DrawableStore store;
    store.setSide(80);
    QSignalSpy wants(&store, &DrawableStore::wants);
    QSignalSpy changed(&store, &DrawableStore::changed);
    const QString name = QStringLiteral("a:drawable/b");
    QCOMPARE(store.peek(name), nullptr);
    QCOMPARE(wants.size(), 0);
    QCOMPARE(store.look(name), nullptr);
    QCOMPARE(store.look(name), nullptr);
    QCOMPARE(wants.size(), 1);
    QCOMPARE(wants.constFirst().constFirst().toJsonObject(),
             (QJsonObject{{QStringLiteral("want"), QStringLiteral("drawable")},
                          {QStringLiteral("name"), name},
                          {QStringLiteral("size"), 80}}));
    store.take(answer(name, PageFacts::png(8)));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(store.look(name)->picture.size(), QSize(8, 8));
    QCOMPARE(store.look(name)->error, QString());
    QCOMPARE(wants.size(), 1);
}

void TestDrawableStore::pendingRequestsHaveACeiling()
{
    DrawableStore store;
    QSignalSpy wants(&store, &DrawableStore::wants);
    for (int i = 0; i < 2 * DrawableStore::MaxPending; ++i)
        store.look(QString::number(i));
    QCOMPARE(wants.size(), DrawableStore::MaxPending);
    store.take(answer(QStringLiteral("0"), QString()));
    store.look(QStringLiteral("20"));
    store.look(QStringLiteral("21"));
    QCOMPARE(wants.size(), DrawableStore::MaxPending + 1);
}

void TestDrawableStore::onlyAnswersAreTaken()
{
    DrawableStore store;
    QSignalSpy changed(&store, &DrawableStore::changed);
    store.take(answer(QStringLiteral("a"), PageFacts::png(8)));
    store.take({});
    QCOMPARE(changed.size(), 0);
    QCOMPARE(store.peek(QStringLiteral("a")), nullptr);
}

void TestDrawableStore::errors()
{
    DrawableStore store;
    const auto errorOf = [&store](const QJsonObject &content) {
        store.clear();
        store.look(QStringLiteral("a"));
        store.take(content);
        return store.peek(QStringLiteral("a"))->error;
    };
    const QString name = QStringLiteral("a");
    QCOMPARE(errorOf(answer(name, QString(), QStringLiteral("drawing takes too much"))),
             QStringLiteral("drawing takes too much"));
    QCOMPARE(errorOf(answer(name, QString())), QStringLiteral("This drawable has no picture."));
    QCOMPARE(errorOf(answer(name, PageFacts::png(DrawableStore::MaxSide + 1))),
             QStringLiteral("This drawable has no picture."));
    for (const QString &text : PageFacts::hostileTexts())
        QVERIFY(PageFacts::isSafe(errorOf(answer(name, QString(), text))));
    QVERIFY(PageFacts::forEachWrongType(answer(name, PageFacts::png(3)),
                                        [&](const QJsonObject &content) {
                                            store.clear();
                                            store.look(name);
                                            store.take(content);
                                        })
            > 20);
}

void TestDrawableStore::picturesHaveACeiling()
{
    DrawableStore store;
    const QString png = PageFacts::png(DrawableStore::MaxSide);
    constexpr int Fitting = DrawableStore::MaxBytes / (DrawableStore::MaxSide * DrawableStore::MaxSide * 4);
    int kept = 0;
    for (int i = 0; i < 2 * Fitting; ++i) {
        store.look(QString::number(i));
        store.take(answer(QString::number(i), png));
    }
    for (int i = 0; i < 2 * Fitting; ++i)
        kept += store.peek(QString::number(i)) != nullptr ? 1 : 0;
    QVERIFY(kept <= Fitting);
    QVERIFY(kept >= Fitting - 1);
    QVERIFY(store.peek(QString::number(2 * Fitting - 1)) != nullptr);
}

void TestDrawableStore::longNames()
{
    DrawableStore store;
    QSignalSpy wants(&store, &DrawableStore::wants);
    store.look(QString(DrawableStore::MaxNameLength, QLatin1Char('a')));
    QCOMPARE(wants.size(), 1);
    store.look(QString(DrawableStore::MaxNameLength + 1, QLatin1Char('a')));
    QCOMPARE(wants.size(), 1);
}

void TestDrawableStore::clears()
{
    DrawableStore store;
    QSignalSpy wants(&store, &DrawableStore::wants);
    store.look(QStringLiteral("a"));
    store.clear();
    // An answer for the last file.
    store.take(answer(QStringLiteral("a"), PageFacts::png(8)));
    QCOMPARE(store.peek(QStringLiteral("a")), nullptr);
    store.look(QStringLiteral("a"));
    QCOMPARE(wants.size(), 2);
}

QTEST_MAIN(TestDrawableStore)
#include "tst_drawablestore.moc"
