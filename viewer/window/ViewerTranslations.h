// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_VIEWERTRANSLATIONS_H
#define VIEWER_VIEWERTRANSLATIONS_H

class QApplication;

namespace Viewer {

namespace ViewerTranslations {

/// Installs the viewer's texts in the user's language, and Qt's own for its dialogs, and sets the direction of layouts.
/// Without texts in that language, everything stays English and from left to right.
void install(QApplication *application);

} // namespace ViewerTranslations

} // namespace Viewer

#endif
