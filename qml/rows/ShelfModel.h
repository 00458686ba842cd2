// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELQML_SHELFMODEL_H
#define SORRELQML_SHELFMODEL_H

#include "icons/SourceNumber.h"
#include "rows/RowReader.h"

#include <SorrelKit/Shelf.h>

#include <QAbstractListModel>
#include <QQmlParserStatus>
#include <QTimer>
#include <QVariantMap>

#include <memory>

namespace SorrelQml {

/**
 * The QML type ShelfModel: the launchers of packages below folders, as an index that stays has them (SorrelKit::Shelf).
 *
 *     GridView {
 *         model: ShelfModel { folders: ["/srv/packages"]; iconSize: 96; search: field.text }
 *         delegate: Column {
 *             Image { source: model.icon }
 *             Text { text: model.label; textFormat: Text.PlainText; elide: Text.ElideRight }
 *         }
 *     }
 *
 * The rows of the index are there when the component is complete. Afterwards the model refreshes the index behind, and
 * inserts, moves, changes and removes single rows; it is reset only when another file is opened. Queries for `search`
 * and for changes run in a thread of the model. docs/qml.md describes every role and property.
 *
 * A package that cannot be read has a row with the status Broken, whose errorString describes the fault. All texts are
 * those of strangers, up to 1,024 UTF-16 units of each: show them with Text.PlainText.
 */
class ShelfModel : public QAbstractListModel, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(QString fileName READ fileName WRITE setFileName NOTIFY fileNameChanged)
    Q_PROPERTY(QStringList folders READ folders WRITE setFolders NOTIFY foldersChanged)
    Q_PROPERTY(QString locale READ locale WRITE setLocale NOTIFY localeChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    Q_PROPERTY(bool launchersOnly READ isLaunchersOnly WRITE setLaunchersOnly NOTIFY launchersOnlyChanged)
    Q_PROPERTY(int iconSize READ iconSize WRITE setIconSize NOTIFY iconsChanged)
    Q_PROPERTY(IconShape iconShape READ iconShape WRITE setIconShape NOTIFY iconsChanged)
    Q_PROPERTY(qreal devicePixelRatio READ devicePixelRatio WRITE setDevicePixelRatio NOTIFY iconsChanged)
    Q_PROPERTY(bool night READ isNight WRITE setNight NOTIFY iconsChanged)
    Q_PROPERTY(bool monochrome READ isMonochrome WRITE setMonochrome NOTIFY iconsChanged)
    Q_PROPERTY(bool watching READ isWatching WRITE setWatching NOTIFY watchingChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(bool searching READ isSearching NOTIFY searchingChanged)
    Q_PROPERTY(bool refreshing READ isRefreshing NOTIFY refreshingChanged)
    Q_PROPERTY(qreal progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString errorString READ errorString NOTIFY errorStringChanged)

public:
    /// The state of the package of a row in the index.
    enum Status {
        Waiting, ///< the package was found, and not read yet: there is only its path
        Ready,   ///< the package was read
        Broken,  ///< the package, or a part of it, cannot be read
    };
    Q_ENUM(Status)

    /// The outline that adaptive icons are cut to.
    enum IconShape {
        NoShape,       ///< all of the visible square
        Circle,        ///< a circle that touches the sides
        RoundedSquare, ///< a square with rounded corners
        Squircle,      ///< a superellipse, between the two
    };
    Q_ENUM(IconShape)

    enum Role {
        LabelRole = Qt::DisplayRole,
        IconRole = Qt::UserRole,
        PackageNameRole,
        EntryNameRole,
        VersionRole,
        PathRole,
        StatusRole,
        ErrorStringRole,
        ItemIdRole,
    };

    explicit ShelfModel(QObject *parent = nullptr);
    ~ShelfModel() override;

    void classBegin() override {}
    void componentComplete() override;

    QHash<int, QByteArray> roleNames() const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    QString fileName() const { return m_fileName; }
    void setFileName(const QString &fileName);
    QStringList folders() const { return m_folders; }
    void setFolders(const QStringList &folders);
    QString locale() const { return m_request.locale; }
    void setLocale(const QString &locale);
    QString search() const { return m_request.search; }
    void setSearch(const QString &search);
    bool isLaunchersOnly() const { return m_request.launchersOnly; }
    void setLaunchersOnly(bool launchersOnly);
    int iconSize() const { return m_iconSize; }
    void setIconSize(int size);
    IconShape iconShape() const { return m_iconShape; }
    void setIconShape(IconShape shape);
    qreal devicePixelRatio() const { return m_ratio; }
    void setDevicePixelRatio(qreal ratio);
    bool isNight() const { return m_isNight; }
    void setNight(bool night);
    bool isMonochrome() const { return m_isMonochrome; }
    void setMonochrome(bool monochrome);
    bool isWatching() const { return m_shelf.isWatching(); }
    void setWatching(bool watching) { m_shelf.setWatching(watching); }
    int count() const { return int(m_rows.size()); }
    bool isSearching() const { return m_asked != m_answered; }
    bool isRefreshing() const { return m_shelf.isRefreshing(); }
    qreal progress() const { return m_progress; }
    QString errorString() const { return m_shelf.error().text(); }

    /// The values of all roles of row @p row by their names; an empty object when there is no such row.
    Q_INVOKABLE QVariantMap get(int row) const;
    /// Compares the folders with the index again.
    Q_INVOKABLE void refresh() { m_shelf.refresh(); }

Q_SIGNALS:
    void fileNameChanged();
    void foldersChanged();
    void localeChanged();
    void searchChanged();
    void launchersOnlyChanged();
    void iconsChanged();
    void watchingChanged();
    void countChanged();
    void searchingChanged();
    void refreshingChanged();
    void progressChanged();
    void errorStringChanged();

private:
    void open();
    void addFolders();
    /// Asks the thread for the rows.
    void ask();
    /// Takes the steps of @p patch, which a reader with the number @p reader made.
    void apply(const RowPatch &patch, int reader);
    void take(const RowStep &step);
    void changeIcons();
    void setProgress(qreal progress);
    QVariant value(const ShelfRow &row, int role) const;
    QString iconUrl(const ShelfRow &row) const;

    SorrelKit::Shelf m_shelf;
    std::unique_ptr<RowReader> m_reader;
    SourceNumber m_source;
    ShelfRows m_rows;
    RowRequest m_request;
    QString m_fileName;
    QStringList m_folders;
    QTimer m_changes; ///< runs after a change of the index, so that many changes make one request
    IconShape m_iconShape = NoShape;
    qreal m_ratio = 1;
    qreal m_progress = 1;
    int m_iconSize = 96;
    int m_readers = 0;
    int m_asked = 0;
    int m_answered = 0;
    bool m_isComplete = false;
    bool m_hasEarlyRows = false; ///< the rows were read before the index was opened
    bool m_isNight = false;
    bool m_isMonochrome = false;
};

} // namespace SorrelQml

#endif
