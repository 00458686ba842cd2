// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONOPTIONS_H
#define ICONOPTIONS_H

#include <SorrelKit/IconMask.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>

/// The options `--size` and `--shape` of what draws icons; the second alone, of what draws them in sizes of its own.
class IconOptions
{
public:
    /// The largest picture that the library draws, in pixels a side.
    static constexpr int MaxSize = 1024;

    /// Icons have @p defaultSize pixels a side when nothing else is asked for.
    explicit IconOptions(int defaultSize);

    void addTo(QCommandLineParser &parser) const { parser.addOptions({m_size, m_shape}); }
    void addShapeTo(QCommandLineParser &parser) const { parser.addOption(m_shape); }
    /// Takes both from @p parser; false, and errorText() tells why, when one makes no sense.
    bool read(const QCommandLineParser &parser) { return readSize(parser) && readShape(parser); }
    /// The same for `--shape` alone.
    bool readShape(const QCommandLineParser &parser);

    /// Pixels a side, at least 1; what is above MaxSize as it was asked for.
    int size() const { return m_pixels; }
    SorrelKit::IconMask mask() const { return m_mask; }
    QString errorText() const { return m_error; }

private:
    bool readSize(const QCommandLineParser &parser);

    const QCommandLineOption m_size;
    const QCommandLineOption m_shape;
    int m_pixels = 0;
    SorrelKit::IconMask m_mask = SorrelKit::IconMask::None;
    QString m_error;
};

#endif
