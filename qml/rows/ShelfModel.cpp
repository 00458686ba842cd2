// SPDX-License-Identifier: LGPL-2.1-or-later
#include "rows/ShelfModel.h"

#include "icons/IconUrl.h"
#include "rows/ShortText.h"

#include <QDir>
#include <QFile>
#include <QUrl>

#include <algorithm>

namespace SorrelQml {

using SorrelKit::Shelf;
using SorrelKit::ShelfIcon;
using SorrelKit::ShelfItem;

namespace {

constexpr int ChangeMilliseconds = 100;
/// Views show the rows before the folders are compared with them.
constexpr int RefreshMilliseconds = 200;

QString localFile(const QString &name)
{
    return name.startsWith(QLatin1String("file:")) ? QUrl(name).toLocalFile() : name;
}

} // namespace

ShelfModel::ShelfModel(QObject *parent) : QAbstractListModel(parent), m_fileName(Shelf::defaultFileName())
{
    m_shelf.setWatching(true);
    m_changes.setSingleShot(true);
    m_changes.setInterval(ChangeMilliseconds);
    connect(&m_changes, &QTimer::timeout, this, &ShelfModel::ask);
    const auto wait = [this] {
        if (!m_changes.isActive())
            m_changes.start();
    };
    connect(&m_shelf, &Shelf::itemsAdded, this, wait);
    connect(&m_shelf, &Shelf::itemsChanged, this, wait);
    connect(&m_shelf, &Shelf::itemsRemoved, this, wait);
    connect(&m_shelf, &Shelf::watchingChanged, this, &ShelfModel::watchingChanged);
    connect(&m_shelf, &Shelf::refreshingChanged, this, &ShelfModel::refreshingChanged);
    connect(&m_shelf, &Shelf::errorChanged, this, &ShelfModel::errorStringChanged);
    connect(&m_shelf, &Shelf::progress, this,
            [this](int done, int total) { setProgress(qreal(done) / qMax(1, total)); });
    connect(&m_shelf, &Shelf::finished, this, [this] { setProgress(1); });
}

ShelfModel::~ShelfModel() = default;

void ShelfModel::componentComplete()
{
    m_isComplete = true;
    open();
}

QHash<int, QByteArray> ShelfModel::roleNames() const
{
    return {{LabelRole, "label"},
            {IconRole, "icon"},
            {PackageNameRole, "packageName"},
            {EntryNameRole, "entryName"},
            {VersionRole, "version"},
            {PathRole, "path"},
            {StatusRole, "status"},
            {ErrorStringRole, "errorString"},
            {ItemIdRole, "itemId"}};
}

int ShelfModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant ShelfModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    return value(m_rows.at(index.row()), role);
}

QVariant ShelfModel::value(const ShelfRow &row, int role) const
{
    switch (role) {
    case LabelRole:
        return row.label;
    case IconRole:
        return iconUrl(row);
    case PackageNameRole:
        return shortText(row.item.packageName());
    case EntryNameRole:
        return shortText(row.item.entryName());
    case VersionRole:
        return shortText(row.item.versionName());
    case PathRole:
        return row.item.path();
    case StatusRole:
        return int(row.item.state());
    case ErrorStringRole:
        return shortText(row.item.errorText());
    case ItemIdRole:
        return row.id();
    default:
        return QVariant();
    }
}

QString ShelfModel::iconUrl(const ShelfRow &row) const
{
    if (row.item.state() == ShelfItem::State::Waiting)
        return QString();
    IconUrl url;
    url.source = IconUrl::Source::Shelf;
    url.number = m_source.value();
    url.item = row.id();
    url.size = m_iconSize;
    url.ratio = m_ratio;
    url.shape = ShelfIcon::Shape(m_iconShape);
    url.isNight = m_isNight;
    url.isMonochrome = m_isMonochrome;
    url.revision = row.item.modified().toMSecsSinceEpoch();
    return url.toString();
}

QVariantMap ShelfModel::get(int row) const
{
    QVariantMap values;
    if (row < 0 || row >= count())
        return values;
    const QHash<int, QByteArray> names = roleNames();
    for (auto name = names.cbegin(); name != names.cend(); ++name)
        values.insert(QString::fromLatin1(name.value()), value(m_rows.at(row), name.key()));
    return values;
}

void ShelfModel::setFileName(const QString &fileName)
{
    const QString name = fileName.isEmpty() ? Shelf::defaultFileName() : localFile(fileName);
    if (m_fileName == name)
        return;
    m_fileName = name;
    Q_EMIT fileNameChanged();
    if (m_isComplete)
        open();
}

void ShelfModel::setFolders(const QStringList &folders)
{
    if (m_folders == folders)
        return;
    m_folders = folders;
    m_request.folders.clear();
    for (const QString &folder : folders)
        m_request.folders.append(QFile::encodeName(QDir::cleanPath(QDir(localFile(folder)).absolutePath())));
    Q_EMIT foldersChanged();
    if (!m_isComplete)
        return;
    addFolders();
    ask();
    refresh();
}

void ShelfModel::setLocale(const QString &locale)
{
    if (m_request.locale == locale)
        return;
    m_request.locale = locale;
    Q_EMIT localeChanged();
    ask();
}

void ShelfModel::setSearch(const QString &search)
{
    if (m_request.search == search)
        return;
    m_request.search = search;
    Q_EMIT searchChanged();
    ask();
}

void ShelfModel::setLaunchersOnly(bool launchersOnly)
{
    if (m_request.launchersOnly == launchersOnly)
        return;
    m_request.launchersOnly = launchersOnly;
    Q_EMIT launchersOnlyChanged();
    ask();
}

void ShelfModel::setIconSize(int size)
{
    const int bounded = qBound(1, size, ShelfIcon::MaxSize);
    if (m_iconSize == bounded)
        return;
    m_iconSize = bounded;
    changeIcons();
}

void ShelfModel::setIconShape(IconShape shape)
{
    if (m_iconShape == shape || shape < NoShape || shape > Squircle)
        return;
    m_iconShape = shape;
    changeIcons();
}

void ShelfModel::setDevicePixelRatio(qreal ratio)
{
    if (qFuzzyCompare(m_ratio, ratio) || !(ratio > 0 && ratio <= IconUrl::MaxRatio))
        return;
    m_ratio = ratio;
    changeIcons();
}

void ShelfModel::setNight(bool night)
{
    if (m_isNight == night)
        return;
    m_isNight = night;
    changeIcons();
}

void ShelfModel::setMonochrome(bool monochrome)
{
    if (m_isMonochrome == monochrome)
        return;
    m_isMonochrome = monochrome;
    changeIcons();
}

void ShelfModel::changeIcons()
{
    ShelfIcon kind(qBound(1, qRound(m_iconSize * m_ratio), ShelfIcon::MaxSize));
    kind.setShape(ShelfIcon::Shape(m_iconShape));
    kind.setNight(m_isNight);
    kind.setMonochrome(m_isMonochrome);
    m_shelf.setIcons({kind});
    Q_EMIT iconsChanged();
    if (!m_rows.isEmpty())
        Q_EMIT dataChanged(index(0), index(count() - 1), {IconRole});
}

void ShelfModel::setProgress(qreal progress)
{
    if (qFuzzyCompare(m_progress, progress))
        return;
    m_progress = progress;
    Q_EMIT progressChanged();
}

void ShelfModel::open()
{
    m_reader.reset();
    m_changes.stop();
    const int oldCount = count();
    beginResetModel();
    m_shelf.open(m_fileName);
    m_source = SourceNumber(m_shelf.fileName());
    m_rows = m_shelf.isOpen() ? m_request.read(m_shelf) : ShelfRows();
    endResetModel();
    m_answered = m_asked;
    if (m_shelf.isOpen()) {
        const int number = ++m_readers;
        m_reader = std::make_unique<RowReader>(m_shelf.fileName(), m_rows, [this, number](const RowPatch &patch) {
            QMetaObject::invokeMethod(
                this, [this, patch, number] { apply(patch, number); }, Qt::QueuedConnection);
        });
    }
    if (count() != oldCount)
        Q_EMIT countChanged();
    if (!m_shelf.isOpen())
        return;
    changeIcons();
    addFolders();
    QTimer::singleShot(RefreshMilliseconds, this, &ShelfModel::refresh);
}

// The folders of an index are those of all programs that use it, so this model only adds to them.
void ShelfModel::addFolders()
{
    QStringList known = m_shelf.folders();
    const auto before = known.size();
    for (const QByteArray &folder : qAsConst(m_request.folders)) {
        const QString name = QFile::decodeName(folder);
        if (!known.contains(name))
            known.append(name);
    }
    if (known.size() != before)
        m_shelf.setFolders(known);
}

void ShelfModel::ask()
{
    if (m_reader == nullptr)
        return;
    const bool wasSearching = isSearching();
    m_reader->ask(m_request, ++m_asked);
    if (!wasSearching)
        Q_EMIT searchingChanged();
}

void ShelfModel::apply(const RowPatch &patch, int reader)
{
    if (reader != m_readers)
        return;
    const int oldCount = count();
    for (const RowStep &step : patch.steps)
        take(step);
    m_answered = patch.request;
    if (count() != oldCount)
        Q_EMIT countChanged();
    if (!isSearching())
        Q_EMIT searchingChanged();
}

void ShelfModel::take(const RowStep &step)
{
    const auto begin = m_rows.begin() + step.first;
    switch (step.kind) {
    case RowStep::Kind::Remove:
        beginRemoveRows(QModelIndex(), step.first, step.last);
        m_rows.erase(begin, m_rows.begin() + step.last + 1);
        endRemoveRows();
        break;
    case RowStep::Kind::Move:
        // The model counts the rows before the move.
        beginMoveRows(QModelIndex(), step.first, step.first, QModelIndex(),
                      step.last > step.first ? step.last + 1 : step.last);
        m_rows.move(step.first, step.last);
        endMoveRows();
        break;
    case RowStep::Kind::Insert:
        beginInsertRows(QModelIndex(), step.first, step.last);
        m_rows.insert(step.first, step.last - step.first + 1, ShelfRow());
        std::copy(step.rows.cbegin(), step.rows.cend(), m_rows.begin() + step.first);
        endInsertRows();
        break;
    case RowStep::Kind::Change:
        std::copy(step.rows.cbegin(), step.rows.cend(), begin);
        Q_EMIT dataChanged(index(step.first), index(step.last));
        break;
    }
}

} // namespace SorrelQml
