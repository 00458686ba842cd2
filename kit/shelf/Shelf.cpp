// SPDX-License-Identifier: LGPL-2.1-or-later
#include <SorrelKit/Shelf.h>

namespace SorrelKit {

class ShelfPrivate
{
};

Shelf::Shelf(QObject *parent) : QObject(parent), d(new ShelfPrivate) {}
Shelf::~Shelf() = default;
QString Shelf::defaultFileName()
{
    return QString();
}
bool Shelf::open(const QString &, Access)
{
    return false;
}
void Shelf::close() {}
bool Shelf::isOpen() const
{
    return false;
}
QString Shelf::fileName() const
{
    return QString();
}
ShelfError Shelf::error() const
{
    return ShelfError();
}
QStringList Shelf::folders() const
{
    return {};
}
bool Shelf::setFolders(const QStringList &)
{
    return false;
}
QList<ShelfIcon> Shelf::icons() const
{
    return {};
}
void Shelf::setIcons(const QList<ShelfIcon> &) {}
bool Shelf::isVerifying() const
{
    return false;
}
void Shelf::setVerifying(bool) {}
int Shelf::jobs() const
{
    return 1;
}
void Shelf::setJobs(int) {}
QString Shelf::workerProgram() const
{
    return QString();
}
void Shelf::setWorkerProgram(const QString &) {}
QList<ShelfItem> Shelf::items() const
{
    return {};
}
QList<ShelfItem> Shelf::itemsWithIcons(const ShelfIcon &) const
{
    return {};
}
ShelfItem Shelf::item(qint64) const
{
    return ShelfItem();
}
QList<ShelfItem> Shelf::find(const QString &) const
{
    return {};
}
QByteArray Shelf::icon(qint64, const ShelfIcon &, ShelfIcon::State *) const
{
    return QByteArray();
}
void Shelf::drawIcons(const QList<qint64> &, const ShelfIcon &) {}
void Shelf::refresh() {}
bool Shelf::isRefreshing() const
{
    return false;
}
bool Shelf::isWatching() const
{
    return false;
}
void Shelf::setWatching(bool) {}

} // namespace SorrelKit
