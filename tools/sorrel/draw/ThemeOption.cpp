// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ThemeOption.h"

#include <SorrelKit/Platform.h>
#include <SorrelKit/Resources.h>

using SorrelKit::IconRequest;
using SorrelKit::Package;
using SorrelKit::Resources;

namespace {

quint32 idOf(QString reference)
{
    if (reference.startsWith(QLatin1Char('@')))
        reference.remove(0, 1);
    bool isId = false;
    const quint32 id = reference.startsWith(QLatin1String("0x")) ? reference.mid(2).toUInt(&isId, 16) : 0;
    return isId ? id : 0;
}

bool isPlatforms(const QString &reference)
{
    return reference.startsWith(QLatin1String("@android:")) || reference.startsWith(QLatin1String("android:"));
}

// An id may be the platform's, whose package is not needed to pass it on.
quint32 styleOf(const QString &reference, const Package &package)
{
    if (const quint32 id = idOf(reference))
        return id;
    if (const quint32 id = Resources(package).find(reference))
        return id;
    return isPlatforms(reference) && package.platform().isValid()
               ? Resources(Package(package.platform().fileName())).find(reference)
               : 0;
}

} // namespace

bool ThemeOption::read(const QCommandLineParser &parser, const Package &package, IconRequest *request)
{
    if (!parser.isSet(m_theme))
        return true;
    const QString theme = parser.value(m_theme);
    if (theme == QLatin1String("package")) {
        request->setTheme(IconRequest::Theme::Package);
        return true;
    }
    request->setThemeStyle(styleOf(theme, package));
    if (request->themeStyle() != 0)
        return true;
    m_error = QStringLiteral("there is no style '%1'").arg(theme);
    return false;
}
