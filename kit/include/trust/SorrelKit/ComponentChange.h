// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_COMPONENTCHANGE_H
#define SORRELKIT_COMPONENTCHANGE_H

#include <SorrelKit/Component.h>
#include <SorrelKit/TextChange.h>
#include <SorrelKit/TrustExport.h>

#include <QMetaType>
#include <QSharedDataPointer>

namespace SorrelKit {

class ComponentChangeData;

/**
 * A component of an application that differs between two packages. PackageDiff::components() returns these.
 *
 * Copies share their data and are cheap. Every operation takes constant time and cannot fail. Different objects may be
 * used in different threads.
 *
 * @since 0.5.1
 */
class SORRELTRUST_EXPORT ComponentChange
{
    Q_GADGET
    Q_PROPERTY(SorrelKit::TextChange::Kind kind READ kind CONSTANT)
    Q_PROPERTY(SorrelKit::Component before READ before CONSTANT)
    Q_PROPERTY(SorrelKit::Component after READ after CONSTANT)
    Q_PROPERTY(bool opened READ isOpened CONSTANT)

public:
    /// A change of nothing. @since 0.5.1
    ComponentChange();
    /// The change from @p before to @p after; the one that @p kind leaves out has no name. @since 0.5.1
    ComponentChange(TextChange::Kind kind, const Component &before, const Component &after);
    /// A copy of @p other. @since 0.5.1
    ComponentChange(const ComponentChange &other);
    /// Takes the value of @p other. @since 0.5.1
    ComponentChange(ComponentChange &&other) noexcept;
    /// Becomes a copy of @p other. @since 0.5.1
    ComponentChange &operator=(const ComponentChange &other);
    /// Takes the value of @p other. @since 0.5.1
    ComponentChange &operator=(ComponentChange &&other) noexcept;
    /// Copies stay valid. @since 0.5.1
    ~ComponentChange();
    /// Exchanges two values. @since 0.5.1
    void swap(ComponentChange &other) noexcept { d.swap(other.d); }

    /// Which of the packages has the component. @since 0.5.1
    TextChange::Kind kind() const;
    /// The component before the change; without a name when it was added. @since 0.5.1
    Component before() const;
    /// The component after the change; without a name when it was removed. @since 0.5.1
    Component after() const;
    /// Whether other applications can use the component now and could not before, or can use it now without a
    /// permission that they needed before. @since 0.5.1
    bool isOpened() const;

private:
    QSharedDataPointer<ComponentChangeData> d;
};

} // namespace SorrelKit

Q_DECLARE_SHARED(SorrelKit::ComponentChange)
Q_DECLARE_METATYPE(SorrelKit::ComponentChange)

#endif
