// SPDX-License-Identifier: LGPL-2.1-or-later
#include "WindowFixture.h"

#include "Arguments.h"

#include <QAction>
#include <QApplication>
#include <QDropEvent>
#include <QFile>
#include <QJsonDocument>
#include <QLabel>
#include <QListWidget>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>
#include <QtTest>

WindowFixture::WindowFixture()
{
    QSettings().clear();
}

bool WindowFixture::prepare()
{
    static const QTemporaryDir settings;
    QCoreApplication::setOrganizationName(QStringLiteral("sorrel"));
    QCoreApplication::setApplicationName(QStringLiteral("sorrel-viewer"));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    // bubblewrap would hide the files that the fake reader writes.
    qputenv("SORREL_VIEWER_SANDBOX", "none");
    return settings.isValid() && qputenv("SORREL_VIEWER_READER", SORREL_FAKE_READER);
}

QString WindowFixture::write(const FakePackage &package, const QString &name) const
{
    package.write(path(name));
    return path(name);
}

Viewer::PackageWindow *WindowFixture::openFile(const QString &path, const QString &command)
{
    m_window = std::make_unique<Viewer::PackageWindow>();
    if (!command.isEmpty())
        m_window->setInstallCommand(command);
    m_window->openFile(argumentText(QFile::encodeName(path)));
    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get()))
        return nullptr;
    QApplication::setActiveWindow(m_window.get());
    return m_window.get();
}

Viewer::PackageWindow *WindowFixture::open(const FakePackage &package, const QString &command)
{
    Viewer::PackageWindow *const window = openFile(write(package), command);
    if (window == nullptr)
        return nullptr;
    // The message is gone when everything was read.
    const bool isRead = QTest::qWaitFor([window] { return window->findChild<QAction *>(QStringLiteral("reload")); })
                        && QTest::qWaitFor([window] { return window->statusBar()->currentMessage().isEmpty(); });
    return isRead ? window : nullptr;
}

void WindowFixture::drop(const QString &path) const
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(m_window.get(), &event);
}

QString WindowFixture::text(const QString &name) const
{
    const auto *const label = m_window->findChild<QLabel *>(name);
    return label == nullptr ? QStringLiteral("(no such label)") : label->text();
}

QAction *WindowFixture::action(const QString &name) const
{
    return m_window->findChild<QAction *>(name);
}

QStringList WindowFixture::pages() const
{
    const auto *const list = m_window->findChild<QListWidget *>(QStringLiteral("pages"));
    QStringList titles;
    for (int i = 0; i < list->count(); ++i) {
        if (!list->item(i)->isHidden())
            titles.append(list->item(i)->text());
    }
    return titles;
}

QString WindowFixture::currentPage() const
{
    const QListWidgetItem *const item = m_window->findChild<QListWidget *>(QStringLiteral("pages"))->currentItem();
    return item == nullptr ? QString() : item->text();
}

QList<QJsonObject> WindowFixture::requests(const QString &name) const
{
    QFile file(path(name + QStringLiteral(".requests")));
    QList<QJsonObject> requests;
    if (!file.open(QIODevice::ReadOnly))
        return requests;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            requests.append(QJsonDocument::fromJson(line).object());
    }
    return requests;
}
