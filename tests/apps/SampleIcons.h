// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SAMPLEICONS_H
#define SAMPLEICONS_H

#include "AaptDump.h"
#include "ExpectedApps.h"
#include "IconSources.h"

#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QSet>
#include <QString>
#include <QStringList>

/// Finds the source pictures of a package's icons, and the order in which the library must return them.
namespace SampleIcons {

inline bool isNearColour(QRgb pixel, QRgb wanted)
{
    constexpr int lossyDifference = 8;
    if (qAlpha(wanted) == 0)
        return qAlpha(pixel) == 0;
    return qAbs(qRed(pixel) - qRed(wanted)) <= lossyDifference
           && qAbs(qGreen(pixel) - qGreen(wanted)) <= lossyDifference
           && qAbs(qBlue(pixel) - qBlue(wanted)) <= lossyDifference && qAlpha(pixel) == qAlpha(wanted);
}

/// The source file of the application that @p image shows, found by size and colours, or else a description of the
/// image.
inline QString identified(const QImage &image, const QString &app)
{
    const QRgb area = image.pixel(image.width() / 2, image.height() / 2);
    const QRgb frame = image.pixel(0, 0);
    QStringList files;
    for (const IconSource &icon : iconSources) {
        if (app == QLatin1String(icon.app) && image.size() == QSize(icon.width, icon.height)
            && isNearColour(area, icon.area) && isNearColour(frame, icon.frame)
            && isNearColour(image.pixel(image.width() - 1, image.height() - 1), icon.frame)) {
            files.append(QLatin1String(icon.file));
        }
    }
    if (files.size() == 1)
        return files.first();
    return QStringLiteral("%1 pictures fit: %2 x %3, #%4 in #%5")
        .arg(QString::number(files.size()), QString::number(image.width()), QString::number(image.height()),
             QString::number(area, 16), QString::number(frame, 16));
}

inline QStringList identified(const QList<QImage> &images, const QString &app)
{
    QStringList names;
    for (const QImage &image : images)
        names.append(identified(image, app));
    return names;
}

/// The source files of the pictures that the drawable @p name ("drawable/notes") leads to.
inline QStringList filesOf(const QString &app, const QString &name)
{
    const QMap<QString, QStringList> indirect = ExpectedApps::indirectIcons();
    const QStringList names = indirect.contains(name) ? indirect.value(name) : QStringList(name);
    QStringList files;
    for (const IconSource &icon : iconSources) {
        const QString file = QLatin1String(icon.file);
        const QString kind = file.section(QRegularExpression(QStringLiteral("[-/]")), 0, 0);
        if (app == QLatin1String(icon.app) && names.contains(kind + QLatin1Char('/') + QFileInfo(file).baseName()))
            files.append(file);
    }
    return files;
}

/// The source file of the archive member @p path. Compilers add the platform version that a qualifier requires.
inline QString sourceOf(const QString &path, const QString &app)
{
    static const QRegularExpression version(QStringLiteral("-v[0-9]+/"));
    const QString file = path.mid(int(qstrlen("res/")));
    QString result;
    for (const IconSource &icon : iconSources) {
        if (app != QLatin1String(icon.app))
            continue;
        if (file == QLatin1String(icon.file))
            return file;
        if (QString(file).replace(version, QStringLiteral("/")) == QLatin1String(icon.file))
            result = QLatin1String(icon.file);
    }
    return result;
}

/// Adds the pictures that @p value leads to, in the library's order.
inline void expand(const QString &value, const AaptDump::Table &table, const QString &app, QSet<QString> *visited,
                   QStringList *files)
{
    if (visited->contains(value))
        return;
    visited->insert(value);
    if (!value.startsWith(QLatin1Char('@'))) {
        const QString file = sourceOf(value, app);
        if (!file.isEmpty())
            files->append(file);
        return;
    }
    for (auto it = table.resources.cbegin(); it != table.resources.cend(); ++it) {
        if (table.reference(it.key()) != value)
            continue;
        // The library visits the values of a reference from the last to the first.
        for (int i = int(it->values.size()) - 1; i >= 0; --i)
            expand(table.text(it->values.at(i)), table, app, visited, files);
    }
}

/// The source files of the pictures of the drawable @p name, in the order of the table's values.
inline QStringList inOrder(const QString &name, const AaptDump::Table &table, const QString &app)
{
    QStringList files;
    QSet<QString> visited;
    const QList<AaptDump::Value> values = table.resources.value(table.id(name)).values;
    for (const AaptDump::Value &value : values)
        expand(table.text(value), table, app, &visited, &files);
    return files;
}

} // namespace SampleIcons

#endif
