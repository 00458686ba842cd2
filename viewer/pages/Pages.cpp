// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/Pages.h"

#include "pages/ContentsPage.h"
#include "pages/FindingsPage.h"
#include "pages/LanguagesPage.h"
#include "pages/LaunchersPage.h"
#include "pages/ManifestPage.h"
#include "pages/PermissionsPage.h"
#include "pages/ResourcesPage.h"

namespace Viewer {

QList<Page *> makePages(QWidget *parent)
{
    return {
        new PermissionsPage(parent), new LaunchersPage(parent), new ContentsPage(parent), new LanguagesPage(parent),
        new ManifestPage(parent),    new ResourcesPage(parent), new FindingsPage(parent),
    };
}

} // namespace Viewer
