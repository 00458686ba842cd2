// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef LOCALENCODING_H
#define LOCALENCODING_H

#include <QByteArray>
#include <QtGlobal>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

namespace fixture {

/**
 * Sets the encoding of QString::toLocal8Bit() while this object exists. In Qt 6 the encoding is always UTF-8. No other
 * place in the tests checks Qt's version.
 */
class LocalEncoding
{
public:
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    explicit LocalEncoding(const QByteArray &name) : m_previous(QTextCodec::codecForLocale())
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
    }
    ~LocalEncoding()
    {
        QTextCodec::setCodecForLocale(m_previous);
    }

    static QList<QByteArray> all()
    {
        return {"UTF-8", "ISO-8859-1"};
    }
#else
    explicit LocalEncoding(const QByteArray &) {}
    ~LocalEncoding() = default;

    static QList<QByteArray> all()
    {
        return {"UTF-8"};
    }
#endif
    LocalEncoding(const LocalEncoding &) = delete;
    LocalEncoding &operator=(const LocalEncoding &) = delete;

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
private:
    QTextCodec *m_previous;
#endif
};

} // namespace fixture

#endif
