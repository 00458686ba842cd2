// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef ICONOPTIONS_H
#define ICONOPTIONS_H

#include <SorrelKit/IconMask.h>

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QString>

/// The options `--size` and `--shape` of commands that draw icons. Commands with fixed sizes use only `--shape`.
class IconOptions
{
public:
    /// The largest width and height that the library draws, in pixels.
    static constexpr int MaxSize = 1024;

    /// @p defaultSize is the width and height without the option `--size`.
    explicit IconOptions(int defaultSize);

    void addTo(QCommandLineParser &parser) const { parser.addOptions({m_size, m_shape}); }
    void addShapeTo(QCommandLineParser &parser) const { parser.addOption(m_shape); }
    /// Reads both from @p parser. Returns false and sets errorText() when one is invalid.
    bool read(const QCommandLineParser &parser) { return readSize(parser) && readShape(parser); }
    /// The same for only `--shape`.
    bool readShape(const QCommandLineParser &parser);

    /// Width and height in pixels, at least 1. May be above MaxSize.
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
