// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_DRAWABLESTORE_H
#define VIEWER_DRAWABLESTORE_H

#include <QCache>
#include <QImage>
#include <QJsonObject>
#include <QObject>
#include <QSet>

namespace Viewer {

/**
 * Pictures of drawables, which are read one by one when they are looked at. At most MaxPending requests wait for their
 * answers, and the pictures that were looked at last are kept, up to MaxBytes.
 */
class DrawableStore : public QObject
{
    Q_OBJECT

public:
    /// A picture, or the reason why there is none.
    struct Drawable {
        QImage picture;
        QString error; ///< plain text on one line
    };

    static constexpr int MaxPending = 16;
    static constexpr int MaxBytes = 32 << 20;
    static constexpr int MaxSide = 512;
    static constexpr int MaxNameLength = 8192; ///< UTF-16 units of a name that is asked for

    explicit DrawableStore(QObject *parent = nullptr);

    /// The drawable @p name; null when it was not read yet. Asks for it then, unless MaxPending requests wait: the view
    /// looks again when one is answered. The result is valid until the next call.
    const Drawable *look(const QString &name);
    /// The same without asking.
    const Drawable *peek(const QString &name) const { return m_drawables.object(name); }
    /// Pixels of the pictures that are asked for from now on, at most MaxSide.
    void setSide(int pixels);
    /// Takes the answer @p content to a request.
    void take(const QJsonObject &content);
    /// Forgets all pictures and requests.
    void clear();

Q_SIGNALS:
    void wants(const QJsonObject &request);
    /// A drawable was read.
    void changed();

private:
    QCache<QString, Drawable> m_drawables;
    QSet<QString> m_pending;
    int m_side = 96;
};

} // namespace Viewer

#endif
