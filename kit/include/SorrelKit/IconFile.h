// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef SORRELKIT_ICONFILE_H
#define SORRELKIT_ICONFILE_H

#include <QSize>
#include <QString>

namespace SorrelKit {

/// A file that a package has for an icon. A plain value, which Launcher::iconFiles() makes.
/// @since 0.5.1
struct IconFile {
    QString path; ///< of the member in the package
    /// Of XML the name of the root ("adaptive-icon", "vector"), else the format: "png", "jpeg", "gif", "webp", "bmp" or
    /// "ico". A Windows icon that is a PNG is one.
    QString kind;
    QSize size; ///< in pixels; empty for XML, which is drawn in any size
    int density =
        0; ///< in dots per inch, as the resource table has it: 0 for none, 65534 for any, 65535 for no scaling
};

} // namespace SorrelKit

#endif
