// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef PAGESOURCE_H
#define PAGESOURCE_H

#include <QByteArray>
#include <QMap>

#include <initializer_list>

/// The parts of web pages that the program contains.
namespace PageSource {

/// The resource @p name ("catalog/page.html").
QByteArray resource(const char *name);
/// The resources @p names as the content of an element `style`. XML reads it as a CDATA section; HTML reads the marks
/// around it as comments.
QByteArray style(std::initializer_list<const char *> names);
/// The source expression of @p content in a policy: its hash.
QByteArray hash(const QByteArray &content);
/// The resource @p name with the value of each name between double braces. Precondition: @p values has every name.
QByteArray filled(const char *name, const QMap<QByteArray, QByteArray> &values);

} // namespace PageSource

#endif
