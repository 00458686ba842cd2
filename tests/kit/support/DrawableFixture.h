// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef DRAWABLEFIXTURE_H
#define DRAWABLEFIXTURE_H

#include "drawable/DrawableInflater.h"
#include "drawable/paint/Canvas.h"

#include <SorrelKit/IconError.h>

#include <QHash>
#include <QImage>

/// Elements of drawables made in code, and a studio that draws them.
namespace fixture {

constexpr QRgb Red = 0xffff0000;
constexpr QRgb Green = 0xff00ff00;
constexpr QRgb Blue = 0xff0000ff;
constexpr QRgb White = 0xffffffff;
constexpr QRgb Black = 0xff000000;
constexpr QRgb Nothing = 0;

/// The share of @p image that is covered, from 0 to 1.
qreal coverage(const QImage &image);
/// The area of @p color when it is a rectangle; else an empty rectangle.
QRect areaOf(const QImage &image, QRgb color);
/// Whether no channel of @p a and @p b differs by more than @p tolerance.
bool isNear(QRgb a, QRgb b, int tolerance);

using Attributes = QVector<XmlAttribute>;
using Elements = QVector<XmlElement>;

XmlElement element(const QString &name, const Attributes &attributes = {}, const Elements &children = {});

XmlAttribute integer(quint32 id, int value);
XmlAttribute number(quint32 id, float value);
XmlAttribute boolean(quint32 id, bool value);
XmlAttribute color(quint32 id, QRgb value);
/// A dimension of @p value pixels, up to 23 bits of them.
XmlAttribute pixels(quint32 id, int value);
XmlAttribute percent(quint32 id, qreal value);
XmlAttribute text(quint32 id, const QString &value);

/// A colour that fills its bounds: as an element, and as an attribute of an item.
XmlElement filled(QRgb value);
XmlAttribute drawable(QRgb value);

/// The code and the text of @p error, as in "Damaged: vector without a path"; empty without an error.
QString described(const SorrelKit::IconError &error);
QString described(const SorrelKit::DrawableError &error);

/// Files in memory.
class Files : public FileSource
{
public:
    QByteArray file(const QString &path, qint64 maxBytes, Budget *budget) override;
    void add(const QString &path, const QByteArray &bytes) { m_files.insert(path, bytes); }
    void add(const QString &path, const QImage &picture);
    /// The number of calls of file().
    int reads() const { return m_reads; }
    /// The number of calls of file() for @p path.
    int timesRead(const QString &path) const { return m_timesRead.value(path); }

private:
    int m_reads = 0;
    QHash<QString, QByteArray> m_files;
    QHash<QString, int> m_timesRead;
};

/// The budget of an icon.
Budget iconBudget();

/// Loads drawables from elements, at one pixel for a dp, and draws them.
class Studio
{
public:
    explicit Studio(const Budget &limits = iconBudget());

    Files files;
    Budget budget;
    SorrelKit::DrawableInflater loader;

    QString error() const { return described(loader.error()); }
    SorrelKit::DrawablePointer load(const XmlElement &root) { return loader.fromElement(root); }
    /// Draws @p root into a picture of @p size.
    QImage draw(const XmlElement &root, QSize size, SorrelKit::IconMask mask = SorrelKit::IconMask::None);
};

/// The PNG of @p picture with the marks of a nine-patch: the borders of the columns and rows that stretch, and the
/// padding in the order left, right, top, bottom.
QByteArray ninePatchPng(const QImage &picture, const QVector<qint32> &columns, const QVector<qint32> &rows,
                        const QVector<qint32> &padding = {0, 0, 0, 0});

} // namespace fixture

#endif
