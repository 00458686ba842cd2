// SPDX-License-Identifier: LGPL-2.1-or-later
#include "window/PackageWindow.h"

#include "FileName.h"
#include "install/CommandDialog.h"
#include "install/InstallQuestion.h"
#include "install/InstallRun.h"
#include "reading/Reading.h"
#include "reading/SafeText.h"
#include "window/BrokenPage.h"
#include "window/Comparison.h"
#include "window/HeadView.h"
#include "window/PagePanel.h"
#include "window/ViewerSettings.h"
#include "window/WindowActions.h"

#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QIcon>
#include <QMessageBox>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace Viewer {

namespace {

/// The sides of the largest icon that the reader draws.
constexpr int MostIconPixels = 1024;

/// The name without its folder, for people.
QString shownFileName(const QString &file)
{
    return safeText(QFileInfo(FileName(file).text()).fileName());
}

/// The absolute path for Qt; empty when the name is in no encoding.
QString absolutePath(const QString &file)
{
    const QString path = FileName(file).forQt();
    return path.isEmpty() ? QString() : QFileInfo(path).absoluteFilePath();
}

QString droppedFile(const QMimeData *data)
{
    const QList<QUrl> urls = data->urls();
    return urls.isEmpty() || !urls.first().isLocalFile() ? QString() : urls.first().toLocalFile();
}

QMessageBox *makeMessage(QWidget *parent, QMessageBox::Icon icon, const QString &title, const QString &text)
{
    auto *const box = new QMessageBox(icon, title, QString(), QMessageBox::Ok, parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setText(text);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return box;
}

} // namespace

PackageWindow::PackageWindow(QWidget *parent) : QMainWindow(parent), m_head(new HeadView), m_panel(new PagePanel)
{
    auto *const center = new QWidget;
    auto *const layout = new QVBoxLayout(center);
    layout->addWidget(m_head);
    layout->addWidget(m_panel, 1);
    setCentralWidget(center);
    setAcceptDrops(true);
    if (!restoreGeometry(ViewerSettings::geometry()))
        resize(960, 720);
    setWindowTitle(tr("Android Packages"));
    m_head->showName(tr("Drop a package here, or open one."));
}

PackageWindow::~PackageWindow() = default;

void PackageWindow::paintEvent(QPaintEvent *event)
{
    QMainWindow::paintEvent(event);
    // The system shows the picture only after this event.
    if (m_actions == nullptr)
        QTimer::singleShot(0, this, &PackageWindow::build);
}

void PackageWindow::build()
{
    if (m_actions != nullptr)
        return;
    m_actions = new WindowActions(this);
    m_panel->makePages();
    m_reading = new Reading(this);
    m_comparison = new Comparison(m_panel, this);
    if (!m_hasOwnCommand)
        m_command = InstallCommand(ViewerSettings::installCommand());
    m_shape = ViewerSettings::shape();
    m_actions->setShape(m_shape);
    m_actions->setLanguages(m_facts, m_locale);
    m_actions->setPages(m_panel);
    m_head->setIconMenu(m_actions->shapes());
    m_head->setInstallAction(m_actions->install);
    setWindowIcon(QIcon::fromTheme(QStringLiteral("org.example.sorrel.viewer")));
    statusBar()->setSizeGripEnabled(true);
    connectActions();
    if (m_file.isEmpty())
        updateActions();
    else
        startReading();
}

void PackageWindow::connectActions()
{
    connect(m_reading, &Reading::answered, this, &PackageWindow::take);
    connect(m_reading, &Reading::failed, this, &PackageWindow::fail);
    connect(m_reading, &Reading::finished, this, [this] { statusBar()->clearMessage(); });
    connect(m_panel, &PagePanel::wants, m_reading, &Reading::request);
    connect(m_panel, &PagePanel::pagesChanged, m_actions, [this] { m_actions->setPages(m_panel); });
    connect(m_panel->brokenPage(), &BrokenPage::readAgain, this, &PackageWindow::startReading);
    connect(m_comparison, &Comparison::openInstead, this, [this](const QString &file) { openFile(file); });
    connect(m_comparison, &Comparison::statusChanged, this,
            [this](const QString &text) { statusBar()->showMessage(text); });
    connect(m_actions->open, &QAction::triggered, this, [this] {
        const QString file = chosenFile(tr("Open a Package"));
        if (!file.isEmpty())
            openFile(file);
    });
    connect(m_actions->compare, &QAction::triggered, this, [this] {
        const QString file = chosenFile(tr("Compare With a Package"));
        if (!file.isEmpty())
            m_comparison->compareWith(file);
    });
    connect(m_actions->reload, &QAction::triggered, this, &PackageWindow::startReading);
    connect(m_actions->install, &QAction::triggered, this, &PackageWindow::askToInstall);
    connect(m_actions->installCommand, &QAction::triggered, this, &PackageWindow::editCommand);
    connect(m_actions->signature, &QAction::triggered, this, &PackageWindow::showSignature);
    connect(m_actions->close, &QAction::triggered, this, &QWidget::close);
    connect(m_actions->quit, &QAction::triggered, qApp, &QApplication::closeAllWindows);
    connect(m_actions->about, &QAction::triggered, this, [this] {
        makeMessage(this, QMessageBox::Information, tr("About"),
                    tr("Sorrel %1 shows Android packages before they are opened. A process of its own, within a "
                       "sandbox, reads them.")
                        .arg(QCoreApplication::applicationVersion()))
            ->open();
    });
    connect(m_actions, &WindowActions::shapeChosen, this, [this](const QString &shape) {
        m_shape = shape;
        ViewerSettings::setShape(shape);
        m_actions->setShape(shape);
        requestIcon();
    });
    connect(m_actions, &WindowActions::languageChosen, this, [this](const QString &tag) {
        m_locale = tag;
        m_comparison->setLocale(tag);
        const QString wanted = tag.isEmpty() ? QLocale().bcp47Name() : tag;
        m_reading->request({{QStringLiteral("want"), QStringLiteral("locale")}, {QStringLiteral("tag"), wanted}});
    });
}

void PackageWindow::openFile(const QString &file, const QString &compareWith)
{
    m_file = file;
    m_waitingComparison = compareWith;
    m_locale.clear();
    const QString name = shownFileName(file);
    // Qt replaces this mark of changed documents, unless it is doubled.
    setWindowTitle(QString(name).replace(QLatin1String("[*]"), QLatin1String("[*][*]")));
    m_head->showName(name);
    if (m_actions != nullptr)
        startReading();
}

void PackageWindow::startReading()
{
    if (m_file.isEmpty())
        return;
    m_facts = {};
    m_failure.clear();
    m_fileTime = QFileInfo(absolutePath(m_file)).lastModified();
    m_comparison->end();
    m_comparison->setLocale(m_locale);
    m_panel->clear();
    m_head->showName(shownFileName(m_file));
    m_actions->setLanguages(m_facts, m_locale);
    statusBar()->showMessage(tr("Reading the package…"));
    m_reading->open(m_file, m_locale);
    requestIcon();
    updateActions();
}

void PackageWindow::requestIcon()
{
    const int size = qMin(qRound(HeadView::IconSize * devicePixelRatioF()), MostIconPixels);
    m_reading->request({{QStringLiteral("want"), QStringLiteral("icon")},
                        {QStringLiteral("size"), size},
                        {QStringLiteral("shape"), m_shape}});
}

void PackageWindow::take(const QString &topic, const QJsonObject &content)
{
    if (topic == QLatin1String("icon")) {
        // The reader also draws one unasked, in no shape.
        if (content.value(QLatin1String("shape")).toString() == m_shape) {
            m_head->showIcon(QByteArray::fromBase64(content.value(QLatin1String("png")).toString().toLatin1()),
                             content.value(QLatin1String("error")).toString());
        }
        return;
    }
    m_facts.take(topic, content);
    m_panel->take(topic, content);
    if (topic == QLatin1String("languages"))
        m_actions->setLanguages(m_facts, m_locale);
    if (topic == QLatin1String("head") && !m_waitingComparison.isEmpty()) {
        m_comparison->setPackage(m_file, m_facts);
        m_comparison->compareWith(std::exchange(m_waitingComparison, {}));
    }
    showFacts();
}

void PackageWindow::fail(const QString &reason)
{
    m_failure = reason;
    statusBar()->clearMessage();
    showFacts();
}

void PackageWindow::showFacts()
{
    const QString name = shownFileName(m_file);
    m_head->showFacts(m_facts, name);
    const bool isBroken = !m_failure.isEmpty() || !m_facts.error.isEmpty();
    if (isBroken) {
        m_panel->brokenPage()->showFacts(m_facts, name, m_failure);
        if (!m_panel->isBrokenPageShown())
            m_panel->showBrokenPage();
    }
    m_comparison->setPackage(m_file, m_facts);
    updateActions();
}

QString PackageWindow::installFault() const
{
    if (m_file.isEmpty())
        return {};
    if (!m_command.fault().isEmpty())
        return m_command.fault();
    if (!m_failure.isEmpty() || !m_facts.error.isEmpty())
        return tr("The package could not be read.");
    if (!m_facts.isHeadKnown || m_facts.signature.kind() == SignatureState::Unknown || !m_facts.arePermissionsKnown)
        return tr("The package is being read.");
    return {};
}

void PackageWindow::updateActions()
{
    const bool hasFile = !m_file.isEmpty();
    const QString fault = installFault();
    m_actions->install->setEnabled(hasFile && fault.isEmpty());
    m_actions->install->setStatusTip(fault);
    m_head->showInstallFault(fault);
    m_actions->reload->setEnabled(hasFile);
    m_actions->compare->setEnabled(hasFile);
    m_actions->signature->setEnabled(m_facts.signature.kind() != SignatureState::Unknown);
}

void PackageWindow::setInstallCommand(const QString &command)
{
    m_command = InstallCommand(command);
    m_hasOwnCommand = true;
}

void PackageWindow::editCommand()
{
    auto *const dialog = new CommandDialog(m_command.text(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog] {
        m_command = InstallCommand(dialog->command());
        m_hasOwnCommand = false;
        ViewerSettings::setInstallCommand(m_command.text());
        updateActions();
    });
    dialog->open();
}

void PackageWindow::showSignature()
{
    const auto kind = m_facts.signature.kind();
    QStringList lines{m_facts.signature.text()};
    lines.append(m_facts.signature.details());
    if (kind == SignatureState::Verified)
        lines.append(tr("The signer chose these names. Nobody checked them."));
    makeMessage(this, kind == SignatureState::Verified ? QMessageBox::Information : QMessageBox::Warning,
                tr("Signature"), lines.join(QStringLiteral("\n\n")))
        ->open();
}

void PackageWindow::askToInstall()
{
    QString fault;
    const QStringList command = m_command.arguments(absolutePath(m_file), &fault);
    if (!fault.isEmpty()) {
        makeMessage(this, QMessageBox::Warning, tr("Install"), fault)->open();
        return;
    }
    auto *const question = new InstallQuestion(m_facts, command, this);
    question->setObjectName(QStringLiteral("installQuestion"));
    question->setAttribute(Qt::WA_DeleteOnClose);
    connect(question, &QDialog::accepted, this, [this, command] { install(command); });
    question->open();
}

void PackageWindow::install(const QStringList &command)
{
    // The answer was about the file as it was read.
    if (QFileInfo(absolutePath(m_file)).lastModified() != m_fileTime) {
        makeMessage(this, QMessageBox::Warning, tr("Install"),
                    tr("The file changed since it was read, so it was not installed. It is read again."))
            ->open();
        startReading();
        return;
    }
    auto *const run = new InstallRun(command, this);
    run->setObjectName(QStringLiteral("installRun"));
    run->setAttribute(Qt::WA_DeleteOnClose);
    run->open();
}

QString PackageWindow::chosenFile(const QString &title)
{
    const QString folder = m_file.isEmpty() ? QString() : QFileInfo(absolutePath(m_file)).absolutePath();
    const QString file =
        QFileDialog::getOpenFileName(this, title, folder,
                                     tr("Android packages (%1)").arg(QStringLiteral("*.apk *.apks *.xapk *.apkm"))
                                         + QStringLiteral(";;") + tr("All files (%1)").arg(QStringLiteral("*")));
    return file.isEmpty() ? QString() : argumentText(QFile::encodeName(file));
}

void PackageWindow::closeEvent(QCloseEvent *event)
{
    if (m_actions != nullptr)
        ViewerSettings::setGeometry(saveGeometry());
    QMainWindow::closeEvent(event);
}

void PackageWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!droppedFile(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void PackageWindow::dropEvent(QDropEvent *event)
{
    const QString path = droppedFile(event->mimeData());
    if (path.isEmpty())
        return;
    event->acceptProposedAction();
    const QString file = argumentText(QFile::encodeName(path));
    if (m_file.isEmpty() || m_actions == nullptr)
        openFile(file);
    else
        m_comparison->askAbout(file);
}

} // namespace Viewer
