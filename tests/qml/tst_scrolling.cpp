// SPDX-License-Identifier: LGPL-2.1-or-later
#include "QmlFixture.h"
#include "icons/IconProvider.h"
#include "rows/ShelfModel.h"

#include <QIdentityProxyModel>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QtTest>

#include <atomic>
#include <ctime>

using namespace SorrelQml;

namespace {

constexpr int Patience = 60000;
constexpr int Entries = 1000;

/// Processor time of this thread in nanoseconds: other programs do not count.
qint64 processorTime()
{
    timespec time = {};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return qint64(time.tv_sec) * 1000000000 + time.tv_nsec;
}

std::atomic<qint64> spentTime{0};

/// Adds the processor time of the code of the model that a view calls.
class TimedModel : public QIdentityProxyModel
{
public:
    QVariant data(const QModelIndex &index, int role) const override
    {
        const qint64 start = processorTime();
        const QVariant value = QIdentityProxyModel::data(index, role);
        spentTime += processorTime() - start;
        return value;
    }
};

/// The same for the code of the provider that the engine calls.
class TimedProvider : public IconProvider
{
public:
    QQuickImageResponse *requestImageResponse(const QString &id, const QSize &size) override
    {
        const qint64 start = processorTime();
        QQuickImageResponse *const response = IconProvider::requestImageResponse(id, size);
        spentTime += processorTime() - start;
        ++requests;
        return response;
    }

    std::atomic<int> requests{0};
};

constexpr char GridSource[] = R"(
import QtQuick 2.15
GridView {
    width: 360; height: 600; cellWidth: 90; cellHeight: 100
    model: shelf
    delegate: Item {
        width: 90; height: 100
        Image { width: 56; height: 56; asynchronous: true; source: model.icon }
        Text { y: 60; width: 90; text: model.label; textFormat: Text.PlainText; elide: Text.ElideRight }
        Text { y: 80; width: 90; text: model.packageName; textFormat: Text.PlainText; elide: Text.ElideRight }
    }
}
)";

} // namespace

class TestScrolling : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFrameIsShort();
    void everySearchIsShort();

private:
    fixture::QmlPlace m_place;
};

void TestScrolling::initTestCase()
{
    for (int i = 0; i < 10; ++i)
        m_place.add(QStringLiteral("p%1.apk").arg(i), QStringLiteral("Label %1").arg(i), Entries / 10);
    QVERIFY(m_place.fill(56));
}

void TestScrolling::everyFrameIsShort()
{
    ShelfModel model;
    model.setFileName(m_place.index());
    model.setIconSize(56);
    model.componentComplete();
    QCOMPARE(model.count(), Entries);
    QTRY_VERIFY_WITH_TIMEOUT(!model.isRefreshing(), Patience);
    TimedModel timed;
    timed.setSourceModel(&model);

    QQuickView view;
    auto *const provider = new TimedProvider;
    view.engine()->addImageProvider(QStringLiteral("sorrel"), provider);
    view.engine()->rootContext()->setContextProperty(QStringLiteral("shelf"), &timed);
    QQmlComponent component(view.engine());
    component.setData(GridSource, QUrl(QStringLiteral("qrc:/grid.qml")));
    auto *const grid = qobject_cast<QQuickItem *>(component.create());
    QVERIFY2(grid != nullptr, qPrintable(component.errorString()));
    view.resize(360, 600);
    view.setContent(component.url(), &component, grid);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));

    const qreal end = grid->property("contentHeight").toReal() - grid->height();
    QVERIFY(end > 20000);
    qint64 longest = 0;
    constexpr qreal Step = 200;
    for (qreal y = 0; y < end; y += Step) {
        spentTime = 0;
        grid->setProperty("contentY", y);
        view.grabWindow();
        QCoreApplication::processEvents();
        longest = qMax(longest, spentTime.load());
    }
    QTRY_VERIFY_WITH_TIMEOUT(provider->requests >= Entries / 2, Patience);
    qInfo("longest frame: %.3f ms of processor time in the model and the provider", double(longest) / 1e6);
    constexpr qint64 FrameTime = 16000000;
    QVERIFY2(longest < FrameTime, qPrintable(QString::number(longest)));
}

void TestScrolling::everySearchIsShort()
{
    ShelfModel model;
    model.setFileName(m_place.index());
    model.componentComplete();
    QTRY_VERIFY_WITH_TIMEOUT(!model.isRefreshing(), Patience);
    const QString word = QStringLiteral("label 7");
    qint64 longest = 0;
    for (int length = 1; length <= word.size(); ++length) {
        const qint64 start = processorTime();
        model.setSearch(word.left(length));
        longest = qMax(longest, processorTime() - start);
    }
    QTRY_VERIFY_WITH_TIMEOUT(!model.isSearching(), Patience);
    QCOMPARE(model.count(), Entries / 10);
    constexpr qint64 FrameTime = 16000000;
    QVERIFY2(longest < FrameTime, qPrintable(QString::number(longest)));
}

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    TestScrolling test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scrolling.moc"
