// SPDX-License-Identifier: LGPL-2.1-or-later
// launcher-grid [FOLDER]: shows the launchers of the packages in a folder as a grid.
#include <QtWidgets>
#include <SorrelKit/DrawableRenderer.h>

struct Item : QListWidgetItem {
    using QListWidgetItem::QListWidgetItem;
    bool operator<(const QListWidgetItem &other) const override { return text().localeAwareCompare(other.text()) < 0; }
};

static void addLaunchers(const SorrelKit::Package &package, QListWidget *grid)
{
    SorrelKit::IconRequest request(grid->iconSize().width());
    request.setDevicePixelRatio(grid->devicePixelRatioF());
    request.setMask(SorrelKit::IconMask::Squircle);
    for (const SorrelKit::Entry &launcher : package.launchers()) {
        if (!launcher.isShown())
            continue;
        const QPixmap icon = QPixmap::fromImage(SorrelKit::DrawableRenderer(package).icon(launcher, request));
        auto *item = new Item(icon.isNull() ? grid->windowIcon() : icon, launcher.label());
        item->setToolTip("<p>" + (launcher.packageName() + "/" + launcher.name()).toHtmlEscaped() + "</p>");
        item->setTextAlignment(Qt::AlignHCenter | Qt::AlignTop);
        item->setSizeHint(grid->iconSize() + QSize(40, 3 * grid->fontMetrics().lineSpacing()));
        grid->addItem(item);
    }
}

int main(int argc, char *argv[])
{
#if QT_VERSION_MAJOR < 6
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    application.setWindowIcon(application.style()->standardIcon(QStyle::SP_FileIcon));

    QMainWindow window;
    auto *grid = new QListWidget(&window);
    grid->setViewMode(QListView::IconMode);
    grid->setMovement(QListView::Static);
    grid->setResizeMode(QListView::Adjust);
    grid->setIconSize({72, 72});
    grid->setSpacing(12);
    grid->setWordWrap(true);
    grid->setSortingEnabled(true);
    auto *note = new QLabel(grid);
    (new QVBoxLayout(grid))->addWidget(note, 0, Qt::AlignCenter);

    QDirIterator files(application.arguments().value(1, "."), {"*.apk", "*.apks", "*.xapk", "*.apkm"}, QDir::Files);
    window.setWindowTitle("Launchers in " + QDir(files.path()).absolutePath());
    window.setCentralWidget(grid);
    window.resize(780, 580);
    window.show();

    int unreadable = 0;
    QTimer reader;
    QObject::connect(&reader, &QTimer::timeout, &window, [&] {
        window.statusBar()->showMessage(QString("Launchers: %1, unreadable: %2").arg(grid->count()).arg(unreadable));
        note->setText(grid->count() > 0 ? "" : files.hasNext() ? "Reading…" : "No launchers in this folder");
        if (!files.hasNext())
            return reader.stop();
        const SorrelKit::Package package(files.next());
        unreadable += package.isValid() ? 0 : 1;
        addLaunchers(package, grid);
    });
    reader.start();
    return application.exec();
}
