// SPDX-License-Identifier: LGPL-2.1-or-later
#include "WindowFixture.h"

#include "pages/Page.h"
#include "reading/Reading.h"
#include "window/HeadView.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

using Viewer::PackageWindow;

namespace {

QString plain(QString text)
{
    for (const char16_t mark : {u'\u2068', u'\u2069'})
        text.remove(QChar(mark));
    return text;
}

QColor iconColor(const PackageWindow *window)
{
    const auto *const button = window->findChild<QToolButton *>(QStringLiteral("icon"));
    return button->icon().pixmap(button->iconSize()).toImage().pixelColor(20, 20);
}

} // namespace

class TestPackageWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(WindowFixture::prepare()); }
    void paintsBeforeItReads();
    void showsTheHead();
    void showsWhyAPackageIsNotVerified_data();
    void showsWhyAPackageIsNotVerified();
    void switchesPagesByKeysAndClicks();
    void readsAgain();
    void remembersTheShape();
    void changesTheLanguage();
    void proposesToCompareVersions();
    void proposesToOpenAnotherPackage();
    void cancelsADrop();
    void showsABrokenPackage();
    void showsAReaderThatDied();
    void startsWithoutAFile();
    void everyActionHasKeys();
    void everyWidgetHasAName();
    void mirrorsForRightToLeft();
};

void TestPackageWindow::paintsBeforeItReads()
{
    WindowFixture fixture;
    PackageWindow window;
    window.openFile(fixture.write(FakePackage()));
    QCOMPARE(window.findChild<Viewer::Reading *>(), nullptr);
    QCOMPARE(window.windowTitle(), QStringLiteral("notes.apk"));
    QCOMPARE(window.findChild<QLabel *>(QStringLiteral("label"))->text(), QStringLiteral("notes.apk"));
    QVERIFY(!window.grab().isNull()); // paints the window once
    QCOMPARE(window.findChild<Viewer::Reading *>(), nullptr);
    QTRY_VERIFY(window.findChild<Viewer::Reading *>() != nullptr);
    QTRY_COMPARE(window.findChild<QLabel *>(QStringLiteral("label"))->text(), QStringLiteral("Notes"));
}

void TestPackageWindow::showsTheHead()
{
    WindowFixture fixture;
    QVERIFY(fixture.open(FakePackage()));
    QCOMPARE(fixture.text(QStringLiteral("label")), QStringLiteral("Notes"));
    QCOMPARE(plain(fixture.text(QStringLiteral("name"))), QStringLiteral("org.example.notes · version 1.2 (12)"));
    QCOMPARE(plain(fixture.text(QStringLiteral("signature"))), QStringLiteral("Verified, signed by Jane Doe"));
    QVERIFY(fixture.text(QStringLiteral("size")).startsWith(QStringLiteral("Package · 4")));
    QTRY_COMPARE(iconColor(fixture.window()), QColor(Qt::blue));
    QVERIFY(fixture.open(FakePackage().set(QStringLiteral("head"), QStringLiteral("isSet"), true)));
    QVERIFY(fixture.text(QStringLiteral("size")).startsWith(QStringLiteral("Set of packages · ")));
}

void TestPackageWindow::showsWhyAPackageIsNotVerified_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("no reason") << "errors" << QJsonValue(QJsonArray()) << "Not verified";
    const QJsonObject issue{{"code", "content-changed"}, {"message", "notes.txt: changed"}};
    QTest::newRow("a reason") << "errors" << QJsonValue(QJsonArray{issue, QJsonObject{{"message", "other"}}})
                              << "Not verified: notes.txt: changed";
    QTest::newRow("no result") << "error" << QJsonValue("the disk fails")
                               << "The signature could not be read: the disk fails";
}

void TestPackageWindow::showsWhyAPackageIsNotVerified()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, value);
    WindowFixture fixture;
    FakePackage package;
    package.set(QStringLiteral("signature"), QStringLiteral("verified"), false);
    QVERIFY(fixture.open(package.set(QStringLiteral("signature"), key, value)));
    QTEST(plain(fixture.text(QStringLiteral("signature"))), "expected");
}

void TestPackageWindow::switchesPagesByKeysAndClicks()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    const QStringList pages = fixture.pages();
    QCOMPARE(fixture.currentPage(), pages.first());
    for (int i = int(pages.size()) - 1; i >= 0; --i) {
        QTest::keyClick(window, Qt::Key(int(Qt::Key_1) + i), Qt::AltModifier);
        QCOMPARE(fixture.currentPage(), pages.at(i));
    }
    auto *const list = window->findChild<QListWidget *>(QStringLiteral("pages"));
    const int last = list->count() - 1;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(last)).center());
    QCOMPARE(fixture.currentPage(), pages.last());
    // No page waits for facts any more.
    const QList<Viewer::Page *> all = window->findChildren<Viewer::Page *>();
    QCOMPARE(all.size(), pages.size());
    for (const Viewer::Page *const page : all)
        QVERIFY2(!page->message().startsWith(QLatin1String("Reading")), qPrintable(page->title()));
}

void TestPackageWindow::readsAgain()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    fixture.write(FakePackage().set(QStringLiteral("head"), QStringLiteral("label"), QStringLiteral("Newer")));
    QTest::keyClick(window, Qt::Key_F5);
    QTRY_COMPARE(fixture.text(QStringLiteral("label")), QStringLiteral("Newer"));
}

void TestPackageWindow::remembersTheShape()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    QTRY_COMPARE(fixture.requests().size(), 1);
    QCOMPARE(fixture.requests().first().value(QLatin1String("shape")).toString(), QStringLiteral("squircle"));
    QTest::keyClick(window, Qt::Key_2, Qt::ControlModifier);
    QTRY_COMPARE(iconColor(window), QColor(Qt::red));
    QVERIFY(fixture.action(QStringLiteral("shape-circle"))->isChecked());
    WindowFixture::prepare();
    QVERIFY(fixture.open(FakePackage()));
    QTRY_COMPARE(iconColor(fixture.window()), QColor(Qt::red));
    QCOMPARE(fixture.requests().last().value(QLatin1String("shape")).toString(), QStringLiteral("circle"));
}

void TestPackageWindow::changesTheLanguage()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    const QList<QAction *> languages = window->findChild<QMenu *>(QStringLiteral("languages"))->actions();
    QCOMPARE(languages.size(), 2);
    QVERIFY(languages.first()->isChecked());
    QCOMPARE(languages.last()->text(), QStringLiteral("Deutsch"));
    languages.last()->trigger();
    QTRY_COMPARE(fixture.text(QStringLiteral("label")), QStringLiteral("Notizen"));
    QCOMPARE(fixture.requests().last().value(QLatin1String("tag")).toString(), QStringLiteral("de"));
}

void TestPackageWindow::proposesToCompareVersions()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    const QStringList pages = fixture.pages();
    const QString other = fixture.write(FakePackage(), QStringLiteral("newer.apk"));
    fixture.drop(other);
    QTRY_VERIFY(window->findChild<QMessageBox *>(QStringLiteral("dropQuestion")) != nullptr);
    auto *const question = window->findChild<QMessageBox *>(QStringLiteral("dropQuestion"));
    QCOMPARE(question->defaultButton()->objectName(), QStringLiteral("compareButton"));
    QCOMPARE(question->textFormat(), Qt::PlainText);
    QTest::keyClick(question, Qt::Key_Return);
    QTRY_COMPARE(fixture.pages().size(), pages.size() + 1);
    QCOMPARE(fixture.currentPage(), fixture.pages().last());
    // A dropped file is never text of a search.
    const QList<QLineEdit *> edits = window->findChildren<QLineEdit *>();
    QVERIFY(!edits.isEmpty());
    for (const QLineEdit *const edit : edits)
        QVERIFY(!edit->acceptDrops());
    // The window still shows its package, and reading it again ends the comparison.
    QApplication::setActiveWindow(window);
    QCOMPARE(fixture.text(QStringLiteral("label")), QStringLiteral("Notes"));
    QTest::keyClick(window, Qt::Key_F5);
    QTRY_COMPARE(fixture.pages(), pages);
}

void TestPackageWindow::proposesToOpenAnotherPackage()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    FakePackage other;
    other.set(QStringLiteral("head"), QStringLiteral("packageName"), QStringLiteral("org.example.other"));
    other.set(QStringLiteral("head"), QStringLiteral("label"), QStringLiteral("Other"));
    fixture.drop(fixture.write(other, QStringLiteral("other.apk")));
    QTRY_VERIFY(window->findChild<QMessageBox *>(QStringLiteral("dropQuestion")) != nullptr);
    auto *const question = window->findChild<QMessageBox *>(QStringLiteral("dropQuestion"));
    QCOMPARE(question->defaultButton()->objectName(), QStringLiteral("openButton"));
    QTest::keyClick(question, Qt::Key_Return);
    QTRY_COMPARE(fixture.text(QStringLiteral("label")), QStringLiteral("Other"));
    QCOMPARE(window->windowTitle(), QStringLiteral("other.apk"));
}

void TestPackageWindow::cancelsADrop()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    fixture.drop(fixture.write(FakePackage(), QStringLiteral("newer.apk")));
    QTRY_VERIFY(window->findChild<QMessageBox *>(QStringLiteral("dropQuestion")) != nullptr);
    const QStringList pages = fixture.pages();
    QTest::keyClick(window->findChild<QMessageBox *>(QStringLiteral("dropQuestion")), Qt::Key_Escape);
    QTRY_VERIFY(window->findChild<QMessageBox *>(QStringLiteral("dropQuestion")) == nullptr);
    QCOMPARE(fixture.pages(), pages);
    QCOMPARE(window->windowTitle(), QStringLiteral("notes.apk"));
}

void TestPackageWindow::showsABrokenPackage()
{
    WindowFixture fixture;
    const QJsonObject fault{{"code", 3}, {"message", "the manifest ends early"}};
    FakePackage broken;
    broken.set(QStringLiteral("head"), QStringLiteral("error"), fault);
    PackageWindow *const window = fixture.open(broken, QStringLiteral("/bin/echo %f"));
    QVERIFY(window);
    QCOMPARE(fixture.currentPage(), QStringLiteral("Problem"));
    QCOMPARE(fixture.text(QStringLiteral("heading")), QStringLiteral("This package is broken"));
    QCOMPARE(fixture.text(QStringLiteral("reason")), QStringLiteral("the manifest ends early"));
    QVERIFY(!fixture.action(QStringLiteral("installAction"))->isEnabled());
    // The known facts are still there.
    QCOMPARE(plain(fixture.text(QStringLiteral("signature"))), QStringLiteral("Verified, signed by Jane Doe"));
    QVERIFY(fixture.pages().size() > 1);

    fixture.write(FakePackage());
    QTest::mouseClick(window->findChild<QPushButton *>(QStringLiteral("readAgain")), Qt::LeftButton);
    QTRY_VERIFY(!fixture.pages().contains(QStringLiteral("Problem")));
    QTRY_VERIFY(fixture.action(QStringLiteral("installAction"))->isEnabled());
}

void TestPackageWindow::showsAReaderThatDied()
{
    WindowFixture fixture;
    QVERIFY(fixture.open(FakePackage().dies()));
    QCOMPARE(fixture.currentPage(), QStringLiteral("Problem"));
    QCOMPARE(fixture.text(QStringLiteral("heading")), QStringLiteral("Reading this package ended early"));
    QVERIFY(!fixture.text(QStringLiteral("reason")).isEmpty());
    QCOMPARE(fixture.text(QStringLiteral("label")), QStringLiteral("Notes"));
    QVERIFY(!fixture.action(QStringLiteral("installAction"))->isEnabled());
    fixture.write(FakePackage());
    QTest::keyClick(fixture.window(), Qt::Key_F5);
    QTRY_VERIFY(!fixture.pages().contains(QStringLiteral("Problem")));
}

void TestPackageWindow::startsWithoutAFile()
{
    PackageWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTRY_VERIFY(window.findChild<QAction *>(QStringLiteral("open")) != nullptr);
    for (const char *const name : {"reload", "compare", "installAction", "signatureAction"})
        QVERIFY2(!window.findChild<QAction *>(QLatin1String(name))->isEnabled(), name);
    QVERIFY(window.findChild<QAction *>(QStringLiteral("installCommand"))->isEnabled());
}

void TestPackageWindow::everyActionHasKeys()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    const QList<QMenu *> menus = window->menuBar()->findChildren<QMenu *>();
    QVERIFY(menus.size() >= 6);
    QStringList shortcuts;
    for (const QMenu *const menu : menus) {
        QStringList mnemonics;
        const QList<QAction *> actions = menu->actions();
        for (const QAction *const action : actions) {
            if (action->isSeparator() || menu->objectName() == QLatin1String("languages"))
                continue;
            const QString mnemonic = QKeySequence::mnemonic(action->text()).toString();
            QVERIFY2(!mnemonic.isEmpty(), qPrintable(action->text()));
            QVERIFY2(!mnemonics.contains(mnemonic), qPrintable(action->text()));
            mnemonics.append(mnemonic);
            if (action->menu() != nullptr)
                continue;
            const QString shortcut = action->shortcut().toString();
            QVERIFY2(!shortcut.isEmpty(), qPrintable(action->text()));
            QVERIFY2(!shortcuts.contains(shortcut), qPrintable(action->text()));
            shortcuts.append(shortcut);
        }
    }
}

void TestPackageWindow::everyWidgetHasAName()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    const auto *const icon = window->findChild<QToolButton *>(QStringLiteral("icon"));
    QTRY_VERIFY(!icon->accessibleName().isEmpty());
    int reached = 0;
    for (QWidget *widget = window->nextInFocusChain(); widget != window; widget = widget->nextInFocusChain()) {
        if ((widget->focusPolicy() & Qt::TabFocus) == 0 || !widget->isVisible())
            continue;
        ++reached;
        QAccessibleInterface *const interface = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(interface);
        QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), widget->metaObject()->className());
    }
    QVERIFY(reached >= 3);
    const auto *const label = window->findChild<QLabel *>(QStringLiteral("signature"));
    QCOMPARE(label->accessibleName(), label->text());
    QVERIFY(label->accessibleDescription().contains(QStringLiteral("aaaa aaaa")));
}

void TestPackageWindow::mirrorsForRightToLeft()
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    WindowFixture fixture;
    const PackageWindow *const window = fixture.open(FakePackage());
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QVERIFY(window);
    const auto left = [window](const char *name) {
        return window->findChild<QWidget *>(QLatin1String(name))->mapTo(window, QPoint()).x();
    };
    QVERIFY(left("icon") > left("label"));
    QVERIFY(left("pages") > left("label"));
}

QTEST_MAIN(TestPackageWindow)
#include "tst_packagewindow.moc"
