// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Sandbox.h"

#include "FileRules.h"
#include "SystemCalls.h"

#include <QBuffer>
#include <QImageReader>

#include <openssl/crypto.h>
#include <sys/prctl.h>

namespace {

// Qt loads the plugin for a format when it first meets it. Packages have pictures in these, and in formats without a
// plugin.
void loadPicturePlugins()
{
    for (const char *const format : {"gif", "ico", "jpeg", "webp"}) {
        QBuffer nothing;
        nothing.open(QIODevice::ReadOnly);
        QImageReader reader(&nothing, format);
        reader.setAutoDetectImageFormat(false);
        reader.canRead();
    }
}

} // namespace

QStringList Viewer::Sandbox::enter(const QList<QByteArray> &files)
{
    loadPicturePlugins();
    OPENSSL_init_crypto(OPENSSL_INIT_LOAD_CONFIG, nullptr);
    // Neither is accepted from a process that could start a program with more rights.
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    QStringList names;
    if (FileRules::apply(files))
        names.append(QStringLiteral("landlock"));
    if (SystemCalls::limit())
        names.append(QStringLiteral("seccomp"));
    return names;
}
