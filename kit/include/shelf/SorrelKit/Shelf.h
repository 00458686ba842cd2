// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELF_H
#define SORRELKIT_SHELF_H

#include <SorrelKit/ShelfError.h>
#include <SorrelKit/ShelfIcon.h>
#include <SorrelKit/ShelfItem.h>

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

namespace SorrelKit {

class ShelfPrivate;

/**
 * An index of packages that stays: their facts, labels in all languages and icons, in one SQLite file. It answers at
 * once from the file, and corrects itself behind: refresh() compares the folders with the index, and worker processes
 * read the packages that are new or were changed. A package that ends or exhausts its process costs only its own row.
 *
 *     SorrelKit::Shelf shelf;
 *     shelf.setIcons({SorrelKit::ShelfIcon(96)});
 *     if (shelf.open())
 *         shelf.setFolders({QStringLiteral("/srv/packages")});
 *     show(shelf.itemsWithIcons(SorrelKit::ShelfIcon(96)));
 *     connect(&shelf, &SorrelKit::Shelf::itemsAdded, this, &View::add);
 *     shelf.setWatching(true);
 *     shelf.refresh();
 *
 * **The file.** docs/shelf.md describes its tables. An index that cannot be used, because it is damaged, of a later
 * version or of another program, is left as it is. The first of the files NAME.2 to NAME.9 that is usable takes its
 * place and is made when it is missing; fileName() returns its name, and error() the reason.
 *
 * **Crashes.** Each batch of rows is one transaction, so a process that ends at any point leaves an index with rows
 * that are right; refresh() reads what is missing.
 *
 * **Processes.** Any number of processes may use one index. One of them refreshes at a time; the others wait for it
 * behind, and find its rows. Readers wait for nobody.
 *
 * **Threads.** Use an object from the thread that it lives in, which needs an event loop for the signals. Different
 * objects may be used in different threads, also for one file. Queries read the file; the work of refresh() and
 * drawIcons() is done in a thread of the object and in worker processes, which end with it. close() and the destructor
 * kill them.
 *
 * **Errors.** No operation throws. A query without an open index returns an empty value.
 *
 * @since 0.5.1
 */
class SORRELSHELF_EXPORT Shelf : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString fileName READ fileName NOTIFY opened)
    Q_PROPERTY(bool open READ isOpen NOTIFY opened)
    Q_PROPERTY(SorrelKit::ShelfError error READ error NOTIFY errorChanged)
    Q_PROPERTY(QStringList folders READ folders WRITE setFolders NOTIFY foldersChanged)
    Q_PROPERTY(bool watching READ isWatching WRITE setWatching NOTIFY watchingChanged)
    Q_PROPERTY(bool refreshing READ isRefreshing NOTIFY refreshingChanged)

public:
    /// How open() uses a file. @since 0.5.1
    enum class Access {
        ReadWrite, ///< the file is made when it is missing, and refreshed
        ReadOnly,  ///< for queries alone: nothing is written, and a file that cannot be used is not replaced
    };
    Q_ENUM(Access)

    /// The most folders of a shelf. @since 0.5.1
    static constexpr int MaxFolders = 1024;

    /// A shelf without an index. @since 0.5.1
    explicit Shelf(QObject *parent = nullptr);
    /// Closes the index. @since 0.5.1
    ~Shelf() override;

    /// The index of this user: `sorrel/shelf.db` in the folder for caches ($XDG_CACHE_HOME, or ~/.cache), which the
    /// command `sorrel` uses, too. @since 0.5.1
    static QString defaultFileName();

    /**
     * Opens the index @p fileName, after closing another one. Returns whether there is one to query; error() is set
     * also when another file than @p fileName is used. Costs a few milliseconds; after a crash of a process that wrote,
     * the file is read once to check it.
     * @since 0.5.1
     */
    bool open(const QString &fileName = defaultFileName(), Access access = Access::ReadWrite);
    /// Ends the work behind, and closes the index. Signals that were not delivered are lost. @since 0.5.1
    void close();
    /// Whether there is an index to query. @since 0.5.1
    bool isOpen() const;
    /// The name of the file that is used; empty when no index is open. @since 0.5.1
    QString fileName() const;
    /// The last fault, of opening or of the work behind; no error when there was none since open() or refresh().
    /// @since 0.5.1
    ShelfError error() const;

    /// The folders whose packages the index has, as absolute paths: stored in the index. @since 0.5.1
    QStringList folders() const;
    /**
     * Sets folders(), up to MaxFolders. Packages of a folder that is no longer below one of these are removed from the
     * index. The folders of the index are those of all programs that use it, so a program that shares an index adds its
     * own to folders(). Returns false and sets error() when the index cannot be written. Does not refresh.
     * @since 0.5.1
     */
    bool setFolders(const QStringList &folders);

    /// The icons that refresh() stores for each package; none by default. @since 0.5.1
    QList<ShelfIcon> icons() const;
    /// Sets icons(), up to 8 of them, for the packages that are read from now on. @since 0.5.1
    void setIcons(const QList<ShelfIcon> &icons);
    /// Whether refresh() verifies the signatures of packages, which reads the whole file; false by default. @since
    /// 0.5.1
    bool isVerifying() const;
    /// Sets isVerifying(), for the packages that are read from now on. @since 0.5.1
    void setVerifying(bool verifying);
    /// The number of worker processes; that of the processors by default. @since 0.5.1
    int jobs() const;
    /// Sets jobs(), 1 to 1024. @since 0.5.1
    void setJobs(int jobs);
    /// The program of the workers: `sorrel-draw` of this library's installation, or the value of the environment
    /// variable SORREL_SHELF_WORKER. @since 0.5.1
    QString workerProgram() const;
    /// Sets workerProgram(), for a moved installation. @since 0.5.1
    void setWorkerProgram(const QString &program);

    /// All items, in the order of their paths. Reads the index on each call. @since 0.5.1
    QList<ShelfItem> items() const;
    /// The same, with the icons of @p kind that are stored. @since 0.5.1
    QList<ShelfItem> itemsWithIcons(const ShelfIcon &kind) const;
    /// The item @p id; an item of nothing when there is none. @since 0.5.1
    ShelfItem item(qint64 id) const;
    /**
     * The items whose package has each of @p words, which spaces separate, as a part of a label in any language, of the
     * name of the package, of a permission or of a signer. Case and accents are ignored. In the order of their paths;
     * empty without a word.
     * @since 0.5.1
     */
    QList<ShelfItem> find(const QString &words) const;
    /// The stored icon of @p kind for the item @p id, as a PNG file; empty when there is none. @p state is set when it
    /// is not null. @since 0.5.1
    QByteArray icon(qint64 id, const ShelfIcon &kind, ShelfIcon::State *state = nullptr) const;
    /// Draws and stores the icons of @p kind for the items @p ids, where they are not stored yet, without waiting for
    /// them: iconsAdded() follows when there were any, and iconsDrawn() at the end. Does nothing without an open index.
    /// @since 0.5.1
    void drawIcons(const QList<qint64> &ids, const ShelfIcon &kind);

    /**
     * Compares the folders with the index, and reads the packages that are new or were changed, without waiting:
     * itemsAdded(), itemsChanged(), itemsRemoved() and progress() follow while it works, and finished() at the end.
     * A package that did not change since is not read: its path, size, times and identity are compared. A file that
     * was moved is recognized by its identity, and keeps its items. While a refresh is under way, another one follows
     * it.
     * @since 0.5.1
     */
    void refresh();
    /// Whether a refresh is under way. @since 0.5.1
    bool isRefreshing() const;
    /// Whether the shelf refreshes itself when a folder or a package changes. @since 0.5.1
    bool isWatching() const;
    /// Sets isWatching(); false by default. The folders are watched from the next refresh() on, each folder below them
    /// and each package, up to 8192 of them; other changes are found by refresh() alone. @since 0.5.1
    void setWatching(bool watching);

Q_SIGNALS:
    /// An index was opened or closed. @since 0.5.1
    void opened();
    /// Items @p ids are new. @since 0.5.1
    void itemsAdded(const QList<qint64> &ids);
    /// Items @p ids have other facts, another path or other icons. @since 0.5.1
    void itemsChanged(const QList<qint64> &ids);
    /// Items @p ids are gone. @since 0.5.1
    void itemsRemoved(const QList<qint64> &ids);
    /// Icons of @p kind, which drawIcons() was called for, were stored for the items @p ids; icon() returns them.
    /// @since 0.5.1
    void iconsAdded(const QList<qint64> &ids, const SorrelKit::ShelfIcon &kind);
    /// The work of drawIcons() for the items @p ids ended, also when no icon was stored: the packages are gone, were
    /// changed meanwhile, or their icons were stored already. @since 0.5.1
    void iconsDrawn(const QList<qint64> &ids, const SorrelKit::ShelfIcon &kind);
    /// @p done of @p total packages that are new or changed were read. @since 0.5.1
    void progress(int done, int total);
    /// A refresh ended; error() has its fault. @since 0.5.1
    void finished();
    /// error() changed. @since 0.5.1
    void errorChanged();
    /// folders() changed by this object. @since 0.5.1
    void foldersChanged();
    /// isWatching() changed. @since 0.5.1
    void watchingChanged();
    /// isRefreshing() changed. @since 0.5.1
    void refreshingChanged();

private:
    friend class ShelfPrivate;
    Q_DISABLE_COPY(Shelf)

    std::unique_ptr<ShelfPrivate> d;
};

} // namespace SorrelKit

#endif
