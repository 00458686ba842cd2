// SPDX-License-Identifier: LGPL-2.1-or-later
#include "WindowFixture.h"

#include "install/CommandDialog.h"
#include "install/InstallCommand.h"

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

using Viewer::PackageWindow;

namespace {

QDialog *dialog(const PackageWindow *window, const char *name)
{
    return window->findChild<QDialog *>(QLatin1String(name));
}

QString textIn(const QDialog *dialog, const char *name)
{
    QString text = dialog->findChild<QLabel *>(QLatin1String(name))->text();
    return text.remove(QChar(u'\u2068')).remove(QChar(u'\u2069'));
}

QPushButton *button(const QDialog *dialog, const char *name)
{
    return dialog->findChild<QPushButton *>(QLatin1String(name));
}

/// Asks to install by the keyboard, and returns the question.
QDialog *question(PackageWindow *window)
{
    QTest::keyClick(window, Qt::Key_I, Qt::ControlModifier);
    return dialog(window, "installQuestion");
}

} // namespace

class TestInstall : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(WindowFixture::prepare()); }
    void needsACommand();
    void editsTheCommand();
    void names();
    void cancels();
    void passesTheFile();
    void showsAFailure_data();
    void showsAFailure();
    void stops();
    void boundsTheOutput();
    void needsATickForAnUnverifiedPackage();
    void refusesAChangedFile();
    void refusesAFileThatNoCommandCanName();
};

void TestInstall::needsACommand()
{
    WindowFixture fixture;
    QVERIFY(fixture.open(FakePackage()));
    QVERIFY(!fixture.action(QStringLiteral("installAction"))->isEnabled());
    QCOMPARE(fixture.text(QStringLiteral("installFault")), QStringLiteral("No install command is set."));
    QVERIFY(fixture.open(FakePackage(), QStringLiteral("/bin/echo")));
    QVERIFY(!fixture.action(QStringLiteral("installAction"))->isEnabled());
    QVERIFY(fixture.text(QStringLiteral("installFault")).contains(QStringLiteral("%f")));
}

void TestInstall::editsTheCommand()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage());
    QVERIFY(window);
    QTest::keyClick(window, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    auto *const editor = window->findChild<Viewer::CommandDialog *>();
    QVERIFY(editor);
    auto *const line = editor->findChild<QLineEdit *>(QStringLiteral("command"));
    const QPushButton *const ok = editor->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    QVERIFY(ok->isEnabled());
    QTest::keyClicks(line, QStringLiteral("/bin/echo a;b"));
    QVERIFY(!ok->isEnabled());
    line->clear();
    QTest::keyClicks(line, QStringLiteral("/bin/echo %f"));
    QVERIFY(ok->isEnabled());
    QTest::keyClick(line, Qt::Key_Return);
    QTRY_VERIFY(fixture.action(QStringLiteral("installAction"))->isEnabled());
    // Another window has the same command, unless its user gives another one.
    QVERIFY(fixture.open(FakePackage()));
    QVERIFY(fixture.action(QStringLiteral("installAction"))->isEnabled());
}

void TestInstall::names()
{
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage(), QStringLiteral("/bin/echo --now %f"));
    QVERIFY(window);
    const QDialog *const asked = question(window);
    QVERIFY(asked);
    QCOMPARE(textIn(asked, "question"), QStringLiteral("Install “Notes” (org.example.notes, version 1.2 (12))?"));
    QCOMPARE(textIn(asked, "signer"), QStringLiteral("Verified, signed by Jane Doe"));
    QCOMPARE(textIn(asked, "commandLine"),
             QStringLiteral("This command runs: /bin/echo --now ") + fixture.path(QStringLiteral("notes.apk")));
    const auto *const permissions = asked->findChild<QListWidget *>(QStringLiteral("permissions"));
    QCOMPARE(permissions->count(), 1);
    QCOMPARE(permissions->item(0)->text(), QStringLiteral("take pictures"));
    QVERIFY(asked->findChild<QCheckBox *>() == nullptr);
    const QList<QLabel *> labels = asked->findChildren<QLabel *>();
    for (const QLabel *const label : labels)
        QVERIFY(label->textFormat() == Qt::PlainText || label->text().isEmpty());
}

void TestInstall::cancels()
{
    WindowFixture fixture;
    const QString proof = fixture.path(QStringLiteral("proof"));
    PackageWindow *const window = fixture.open(FakePackage(), QStringLiteral("/bin/cp %f ") + proof);
    QVERIFY(window);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
        QDialog *const asked = question(window);
        QVERIFY(asked);
        const QPushButton *const cancel = asked->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Cancel);
        QVERIFY(cancel->isDefault());
        QVERIFY(!button(asked, "install")->isDefault());
        QTest::keyClick(asked->focusWidget(), key);
        QTRY_VERIFY(dialog(window, "installQuestion") == nullptr);
        QVERIFY(dialog(window, "installRun") == nullptr);
        QApplication::setActiveWindow(window);
    }
    QVERIFY(!QFile::exists(proof));
}

void TestInstall::passesTheFile()
{
    WindowFixture fixture;
    const QString name = QStringLiteral("a b;$(id) 100% 'x'.apk");
    PackageWindow *const window =
        fixture.openFile(fixture.write(FakePackage(), name), QStringLiteral("/bin/echo \"with a space\" %f"));
    QVERIFY(window);
    QTRY_VERIFY(fixture.action(QStringLiteral("installAction")) != nullptr
                && fixture.action(QStringLiteral("installAction"))->isEnabled());
    QDialog *const asked = question(window);
    QVERIFY(asked);
    QTest::mouseClick(button(asked, "install"), Qt::LeftButton);
    QTRY_VERIFY(dialog(window, "installRun") != nullptr);
    const QDialog *const run = dialog(window, "installRun");
    QTRY_COMPARE(textIn(run, "state"), QStringLiteral("The command succeeded, with exit code 0."));
    QCOMPARE(run->findChild<QPlainTextEdit *>()->toPlainText(),
             QStringLiteral("with a space ") + fixture.path(name) + QLatin1Char('\n'));
    QVERIFY(button(run, "close")->isEnabled());
    QTest::mouseClick(button(run, "close"), Qt::LeftButton);
    QTRY_VERIFY(dialog(window, "installRun") == nullptr);
}

void TestInstall::showsAFailure_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("state");
    QTest::newRow("exit code") << "/bin/false %f"
                               << "The command failed, with exit code 1.";
    QTest::newRow("signal") << R"(/bin/sh -c "kill -9 \$\$" %f)"
                            << "The command was ended before it was done.";
    QTest::newRow("no program") << "/nonexistent/install %f"
                                << "The command could not be started: ";
}

void TestInstall::showsAFailure()
{
    QFETCH(QString, command);
    QFETCH(QString, state);
    WindowFixture fixture;
    PackageWindow *const window = fixture.open(FakePackage(), command);
    QVERIFY(window);
    button(question(window), "install")->click();
    QTRY_VERIFY(dialog(window, "installRun") != nullptr);
    QTRY_VERIFY(button(dialog(window, "installRun"), "close")->isEnabled());
    QVERIFY2(textIn(dialog(window, "installRun"), "state").startsWith(state),
             qPrintable(textIn(dialog(window, "installRun"), "state")));
}

void TestInstall::stops()
{
    WindowFixture fixture;
    PackageWindow *const window =
        fixture.open(FakePackage(), QStringLiteral("/bin/sh -c \"echo on; cat /dev/zero\" %f"));
    QVERIFY(window);
    button(question(window), "install")->click();
    QTRY_VERIFY(dialog(window, "installRun") != nullptr);
    QDialog *const run = dialog(window, "installRun");
    QTRY_VERIFY(run->findChild<QPlainTextEdit *>()->toPlainText().startsWith(QLatin1String("on")));
    QVERIFY(!button(run, "close")->isEnabled());
    QTest::keyClick(run, Qt::Key_Escape);
    QVERIFY(run->isVisible());
    button(run, "stop")->click();
    button(run, "stop")->click();
    QTRY_VERIFY(button(run, "close")->isEnabled());
    QCOMPARE(textIn(run, "state"), QStringLiteral("The command was ended before it was done."));
}

void TestInstall::boundsTheOutput()
{
    WindowFixture fixture;
    PackageWindow *const window =
        fixture.open(FakePackage(), QStringLiteral("/bin/sh -c \"yes '<b>x</b>' | head -c 3000000\" %f"));
    QVERIFY(window);
    button(question(window), "install")->click();
    QTRY_VERIFY(dialog(window, "installRun") != nullptr);
    const QDialog *const run = dialog(window, "installRun");
    QTRY_VERIFY_WITH_TIMEOUT(button(run, "close")->isEnabled(), 60000);
    const QString output = run->findChild<QPlainTextEdit *>()->toPlainText();
    QVERIFY(output.startsWith(QLatin1String("<b>x</b>\n")));
    QVERIFY(output.size() < (1 << 20) + 100);
    QVERIFY(output.endsWith(QLatin1String("More output is left out.")));
}

void TestInstall::needsATickForAnUnverifiedPackage()
{
    WindowFixture fixture;
    FakePackage package;
    package.set(QStringLiteral("signature"), QStringLiteral("verified"), false);
    PackageWindow *const window = fixture.open(package, QStringLiteral("/bin/echo %f"));
    QVERIFY(window);
    QDialog *const asked = question(window);
    QVERIFY(asked);
    QPushButton *const install = button(asked, "install");
    QVERIFY(!install->isEnabled());
    QTest::mouseClick(install, Qt::LeftButton);
    QVERIFY(dialog(window, "installRun") == nullptr);
    auto *const confirmation = asked->findChild<QCheckBox *>(QStringLiteral("confirmation"));
    QVERIFY(!confirmation->isChecked());
    QTest::keyClick(confirmation, Qt::Key_Space);
    QVERIFY(install->isEnabled());
    QTest::keyClick(confirmation, Qt::Key_Space);
    QVERIFY(!install->isEnabled());
    QTest::keyClick(confirmation, Qt::Key_Space);
    QTest::mouseClick(install, Qt::LeftButton);
    QTRY_VERIFY(dialog(window, "installRun") != nullptr);
    QTRY_VERIFY(button(dialog(window, "installRun"), "close")->isEnabled());
}

void TestInstall::refusesAChangedFile()
{
    WindowFixture fixture;
    const QString proof = fixture.path(QStringLiteral("proof"));
    PackageWindow *const window = fixture.open(FakePackage(), QStringLiteral("/bin/cp %f ") + proof);
    QVERIFY(window);
    QDialog *const asked = question(window);
    QVERIFY(asked);
    QFile file(fixture.path(QStringLiteral("notes.apk")));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    file.close();
    button(asked, "install")->click();
    QVERIFY(dialog(window, "installRun") == nullptr);
    auto *const message = window->findChild<QMessageBox *>();
    QVERIFY(message);
    QVERIFY(message->text().startsWith(QLatin1String("The file changed since it was read")));
    QVERIFY(!QFile::exists(proof));
}

void TestInstall::refusesAFileThatNoCommandCanName()
{
    QString fault;
    const Viewer::InstallCommand command(QStringLiteral("run %f"));
    QCOMPARE(command.arguments(QStringLiteral("/a\u0001b.apk"), &fault), QStringList());
    QCOMPARE(fault, QStringLiteral("The name of the file has characters that no command can contain."));
    fault.clear();
    QCOMPARE(command.arguments(QString(), &fault), QStringList());
    QVERIFY(!fault.isEmpty());
}

QTEST_MAIN(TestInstall)
#include "tst_install.moc"
