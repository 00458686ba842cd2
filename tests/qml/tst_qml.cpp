// SPDX-License-Identifier: LGPL-2.1-or-later
#include "QmlFixture.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlPropertyMap>
#include <QUrl>
#include <QtQuickTest>

namespace {

constexpr int FullLaunchers = 60;

/// Makes the packages that the tests in QML show, and names them in the property `places`.
class QmlSetup : public QObject
{
    Q_OBJECT

public slots:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        m_place.add(QStringLiteral("notes.apk"), QStringLiteral("Notes"), 1);
        m_place.add(QStringLiteral("markup.apk"), QStringLiteral("<b>Bold</b><img src='x'>"), 1);
        m_place.add(QStringLiteral("full.apk"), QStringLiteral("Full"), FullLaunchers);
        m_place.addBroken(QStringLiteral("broken.apk"));
        const bool isFilled = m_place.fill();
        m_places.insert(QStringLiteral("filled"), isFilled);
        m_places.insert(QStringLiteral("packages"), m_place.packages());
        m_places.insert(QStringLiteral("index"), m_place.index());
        m_places.insert(QStringLiteral("notes"), QUrl::fromLocalFile(m_place.path(QStringLiteral("notes.apk"))));
        engine->rootContext()->setContextProperty(QStringLiteral("places"), &m_places);
    }

private:
    fixture::QmlPlace m_place;
    QQmlPropertyMap m_places;
};

} // namespace

QUICK_TEST_MAIN_WITH_SETUP(sorrel, QmlSetup)
#include "tst_qml.moc"
