// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PACKAGEWINDOW_H
#define VIEWER_PACKAGEWINDOW_H

#include "facts/PackageFacts.h"
#include "install/InstallCommand.h"

#include <QDateTime>
#include <QMainWindow>

namespace Viewer {

class Comparison;
class HeadView;
class PagePanel;
class Reading;
class WindowActions;

/**
 * The window of one package: its head, its pages, and the actions. It reads nothing of the package itself: a Reading
 * does.
 *
 * The first paint shows the name of the file. Menus and pages are made, and the file is read, after that paint.
 * Names of files are argumentTexts(), so files with names in no encoding can be opened.
 */
class PackageWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit PackageWindow(QWidget *parent = nullptr);
    ~PackageWindow() override;

    /// Reads @p file, and forgets the file that was open. Before the first paint, the file waits for it. With
    /// @p compareWith, the window compares both at once.
    void openFile(const QString &file, const QString &compareWith = {});
    /// A command that counts instead of the user's setting; it is not stored.
    void setInstallCommand(const QString &command);

protected:
    void paintEvent(QPaintEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void build();
    void connectActions();
    void startReading();
    void take(const QString &topic, const QJsonObject &content);
    void fail(const QString &reason);
    void showFacts();
    void requestIcon();
    void updateActions();
    QString installFault() const;
    /// Asks for a file, and returns its name; empty when there is none.
    QString chosenFile(const QString &title);
    void editCommand();
    void showSignature();
    void askToInstall();
    void install(const QStringList &command);

    HeadView *const m_head;
    PagePanel *const m_panel;
    WindowActions *m_actions = nullptr;
    Reading *m_reading = nullptr;
    Comparison *m_comparison = nullptr;

    QString m_file;
    QString m_waitingComparison; ///< a file to compare with once the head is known
    QDateTime m_fileTime;        ///< when the file was changed before it was read
    QString m_locale;
    QString m_shape;
    PackageFacts m_facts;
    QString m_failure;
    InstallCommand m_command;
    bool m_hasOwnCommand = false; ///< the command is from the command line
};

} // namespace Viewer

#endif
