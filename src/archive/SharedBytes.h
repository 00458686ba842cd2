// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SHAREDBYTES_H
#define SHAREDBYTES_H

#include "format/ByteView.h"

#include <QByteArray>

#include <memory>
#include <utility>

/**
 * Bytes of a file, with the memory that they are in: an array of their own, or a part of a mapped file, which stays
 * mapped while a copy of this object lives. Copies are cheap, share the memory, and may be used in other threads.
 */
class SharedBytes
{
public:
    /// No bytes.
    SharedBytes() = default;
    explicit SharedBytes(QByteArray bytes) : m_bytes(std::move(bytes)), m_view(m_bytes) {}
    /// The bytes of @p view, which are valid as long as @p owner lives.
    SharedBytes(ByteView view, std::shared_ptr<const void> owner) : m_view(view), m_owner(std::move(owner)) {}

    qint64 size() const { return m_view.size(); }
    bool isEmpty() const { return m_view.isEmpty(); }
    /// Valid as long as a copy of this object lives.
    ByteView view() const { return m_view; }
    /// An object that keeps the bytes of view().
    std::shared_ptr<const void> owner() const
    {
        return m_owner != nullptr ? m_owner : std::make_shared<QByteArray>(m_bytes);
    }
    /// The bytes as an array, copied unless they are in one. Precondition: size() is below 2 GiB.
    QByteArray toByteArray() const { return m_owner == nullptr ? m_bytes : m_view.toByteArray(); }

private:
    QByteArray m_bytes; ///< the bytes, when they have no owner
    ByteView m_view;
    std::shared_ptr<const void> m_owner;
};

#endif
