// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_SHELFICON_H
#define SORRELKIT_SHELFICON_H

#include <SorrelKit/ShelfExport.h>

#include <QMetaType>
#include <QObject>

namespace SorrelKit {

/**
 * A kind of icon that a Shelf stores: its size, its outline and the mode of the device. A plain value of a few bytes:
 * nothing is allocated, and no operation fails.
 *
 *     ShelfIcon kind(96);
 *     kind.setShape(ShelfIcon::Shape::Circle);
 *
 * @since 0.5.1
 */
class SORRELSHELF_EXPORT ShelfIcon
{
    Q_GADGET
    Q_PROPERTY(int size READ size WRITE setSize)
    Q_PROPERTY(Shape shape READ shape WRITE setShape)
    Q_PROPERTY(bool night READ isNight WRITE setNight)
    Q_PROPERTY(bool monochrome READ isMonochrome WRITE setMonochrome)

public:
    /// The outline that adaptive icons are cut to, with the values of IconMask. @since 0.5.1
    enum class Shape {
        None,          ///< all of the visible square
        Circle,        ///< a circle that touches the sides
        RoundedSquare, ///< a square with rounded corners
        Squircle,      ///< a superellipse, between the two
    };
    Q_ENUM(Shape)

    /// The state of one icon in a Shelf. @since 0.5.1
    enum class State {
        NotStored, ///< it was not asked for yet: Shelf::drawIcons() draws it
        Ready,     ///< the picture is stored
        Missing,   ///< the package has no icon, or it cannot be drawn
    };
    Q_ENUM(State)

    /// The largest width and height in pixels. @since 0.5.1
    static constexpr int MaxSize = 1024;

    /// A square with sides of @p size pixels, without an outline, for the day. @since 0.5.1
    explicit ShelfIcon(int size = 96) : m_size(size) {}

    /// Width and height in pixels, 1 to MaxSize. Others are never stored. @since 0.5.1
    int size() const { return m_size; }
    /// Sets size(). @since 0.5.1
    void setSize(int size) { m_size = size; }
    /// The outline; Shape::None by default. @since 0.5.1
    Shape shape() const { return m_shape; }
    /// Sets shape(). @since 0.5.1
    void setShape(Shape shape) { m_shape = shape; }
    /// Whether resources for the night are preferred; false by default. @since 0.5.1
    bool isNight() const { return m_isNight; }
    /// Sets isNight(). @since 0.5.1
    void setNight(bool night) { m_isNight = night; }
    /// Whether only the monochrome layer is drawn, where there is one; false by default. @since 0.5.1
    bool isMonochrome() const { return m_isMonochrome; }
    /// Sets isMonochrome(). @since 0.5.1
    void setMonochrome(bool monochrome) { m_isMonochrome = monochrome; }

    /// Whether two values are equal. @since 0.5.1
    friend bool operator==(const ShelfIcon &a, const ShelfIcon &b)
    {
        return a.m_size == b.m_size && a.m_shape == b.m_shape && a.m_isNight == b.m_isNight
               && a.m_isMonochrome == b.m_isMonochrome;
    }
    /// Whether two values are different. @since 0.5.1
    friend bool operator!=(const ShelfIcon &a, const ShelfIcon &b) { return !(a == b); }

private:
    int m_size;
    Shape m_shape = Shape::None;
    bool m_isNight = false;
    bool m_isMonochrome = false;
};

} // namespace SorrelKit

Q_DECLARE_TYPEINFO(SorrelKit::ShelfIcon, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(SorrelKit::ShelfIcon)

#endif
