// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>

#include <cstdio>

// replay DIRECTORY...: runs the harness on every file below the directories, which must exist.
int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    int count = 0;
    for (const QString &directory : QCoreApplication::arguments().mid(1)) {
        if (!QFileInfo(directory).isDir()) {
            std::fprintf(stderr, "%s is no directory\n", qPrintable(directory));
            return 1;
        }
        QDirIterator files(directory, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            if (!file.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "%s: %s\n", qPrintable(file.fileName()), qPrintable(file.errorString()));
                return 1;
            }
            // Printed before the run, so that a crash shows the file's name.
            std::printf("%s\n", qPrintable(file.fileName()));
            std::fflush(stdout);
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size()));
            ++count;
        }
    }
    std::printf("%d files\n", count);
    return count > 0 ? 0 : 1;
}
