// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_PACKAGEFACTS_H
#define SORRELKIT_PACKAGEFACTS_H

#include <SorrelKit/ShelfItem.h>

#include <QByteArray>
#include <QString>
#include <QVector>

namespace SorrelKit {

/// The rows of the index for a package, from the report of a worker (docs/report.schema.json). Each text has a ceiling,
/// so a hostile package costs a row of bounded size.
struct PackageFacts {
    /// The most items of a package. Launchers behind them are left out.
    static constexpr int MaxItems = 256;
    /// The most units of UTF-16 of the labels of an item, and of the permissions; texts behind them are left out.
    static constexpr int MaxListUnits = 64 << 10;
    /// The most units of any other text, which is cut there.
    static constexpr int MaxTextUnits = 4 << 10;
    /// The most units of all texts to search. Texts behind them are not found.
    static constexpr int MaxWordUnits = 256 << 10;
    /// The most bytes of a report that is stored.
    static constexpr int MaxReportBytes = 1 << 20;

    struct Icon {
        qint64 kind = 0; ///< see IconKind.h
        QByteArray png;  ///< empty when there is none
    };
    struct Item {
        QString entry;
        QString labels; ///< see ShelfTexts.h
        QVector<Icon> icons;
    };

    /// The facts of the report @p json. @p code is that of the worker; without a report, as for a worker that died,
    /// only the error is known.
    static PackageFacts fromReport(const QByteArray &json, int code);

    ShelfItem::State state = ShelfItem::State::Broken;
    int errorCode = 0;
    QString errorText;
    QString packageName;
    QString versionName;
    qint64 versionCode = 0;
    int minSdkVersion = 0;
    int targetSdkVersion = 0;
    QString permissions;
    bool isVerified = false; ///< whether the report has signatures
    QString signer;
    QString words;       ///< folded, in lines
    QVector<Item> items; ///< at least one
    QByteArray report;   ///< without the icons of launchers
};

} // namespace SorrelKit

#endif
