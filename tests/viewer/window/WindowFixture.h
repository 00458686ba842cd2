// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef WINDOWFIXTURE_H
#define WINDOWFIXTURE_H

#include "FakePackage.h"
#include "window/PackageWindow.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>

class QAction;

/// A window that reads fake packages in a folder of its own, with settings of its own.
class WindowFixture
{
public:
    WindowFixture();

    /// Prepares the process: the reader and the settings of all windows. Returns whether it could.
    static bool prepare();

    QString path(const QString &name) const { return m_folder.filePath(name); }
    /// Writes @p package to the file @p name, and returns its path.
    QString write(const FakePackage &package, const QString &name = QStringLiteral("notes.apk")) const;
    /// Opens a window with the package, and waits until it was read.
    Viewer::PackageWindow *open(const FakePackage &package, const QString &command = {});
    /// Opens a window with the file, and waits for its first paint.
    Viewer::PackageWindow *openFile(const QString &path, const QString &command = {});
    /// Drops the file onto the window.
    void drop(const QString &path) const;

    Viewer::PackageWindow *window() const { return m_window.get(); }
    /// The text of the label @p name of the window.
    QString text(const QString &name) const;
    QAction *action(const QString &name) const;
    /// The titles of the pages that the list shows.
    QStringList pages() const;
    QString currentPage() const;
    /// The requests that the window sent to the reader of @p name.
    QList<QJsonObject> requests(const QString &name = QStringLiteral("notes.apk")) const;

private:
    QTemporaryDir m_folder;
    std::unique_ptr<Viewer::PackageWindow> m_window;
};

#endif
