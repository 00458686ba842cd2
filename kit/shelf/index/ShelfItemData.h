// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELFITEMDATA_H
#define SORRELKIT_SHELFITEMDATA_H

#include <SorrelKit/ShelfItem.h>

#include <QByteArray>
#include <QSharedData>
#include <QString>

namespace SorrelKit {

class LabelPicker;

/// The columns of an item and of its package, as the index has them.
class ShelfItemData : public QSharedData
{
public:
    /// ShelfItem::label() for the locale of @p picker.
    QString label(LabelPicker &picker) const;

    qint64 id = 0;
    QByteArray path;
    ShelfItem::State state = ShelfItem::State::Waiting;
    int errorCode = 0;
    QString errorText;
    QString packageName;
    QString entryName;
    QString labels; ///< see ShelfTexts.h
    QString versionName;
    qint64 versionCode = 0;
    int minSdkVersion = 0;
    int targetSdkVersion = 0;
    QString permissions; ///< each ends with a line feed
    QString signer;
    qint64 fileSize = 0;
    qint64 modified = 0; ///< nanoseconds since 1970
    QByteArray icon;
};

/// Makes items for the classes of the index.
class ShelfItemAccess
{
public:
    /// Takes @p data.
    static ShelfItem item(ShelfItemData *data) { return ShelfItem(data); }
};

} // namespace SorrelKit

#endif
