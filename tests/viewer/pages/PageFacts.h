// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PAGEFACTS_H
#define PAGEFACTS_H

#include <QAbstractItemModel>
#include <QColor>
#include <QImage>
#include <QJsonObject>
#include <QStringList>

#include <functional>

namespace Viewer {
class Page;
}

/// Facts for the pages of the viewer, as its reader writes them, and what all pages are tested for.
namespace PageFacts {

/// Texts that leave their place where nothing stops them: markup, overrides of direction, line feeds, NUL, a megabyte.
QStringList hostileTexts();

/// Whether @p shown, which a view shows, stays on its line and keeps the texts around it in their places.
bool isSafe(const QString &shown);

/// The texts of all cells of @p model that a view shows, as its tooltips and to screen readers, depth first.
QStringList shownTexts(const QAbstractItemModel &model);

/// The tooltips of all cells of @p model.
QStringList toolTips(const QAbstractItemModel &model);

/// Calls @p take with each way to spoil @p content: each key is left out, and each value is replaced by one of every
/// type, also below lists and objects. Returns the number of calls.
int forEachWrongType(const QJsonObject &content, const std::function<void(const QJsonObject &)> &take);

/// The object {"items": [@p items...]}.
QJsonObject listOf(const QList<QJsonObject> &items);

/// A picture of @p side pixels as a PNG file in Base64.
QString png(int side, const QColor &color = Qt::red);
/// The same of a picture.
QString pngOf(const QImage &picture);

/// Each page shows that it reads until facts came, and their error as plain text.
void checkStates(Viewer::Page *page, const QString &topic, const QJsonObject &content);

} // namespace PageFacts

#endif
