// SPDX-License-Identifier: LGPL-2.1-or-later
#include "pages/Pages.h"

#include "pages/ContentsPage.h"
#include "pages/ManifestPage.h"
#include "pages/PermissionsPage.h"

namespace Viewer {

QList<Page *> makePages(QWidget *parent)
{
    return {new PermissionsPage(parent), new ContentsPage(parent), new ManifestPage(parent)};
}

} // namespace Viewer
