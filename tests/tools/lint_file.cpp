// SPDX-License-Identifier: LGPL-2.1-or-later
//
// lint_file FILE: prints the findings about FILE as JSON. It links only the checks, for the test lint_alone.
#include "PackageLint.h"

#include <QJsonDocument>

#include <cstdio>

int main(int argc, char *argv[])
{
    if (argc != 2)
        return 2;
    const QByteArray json = QJsonDocument(PackageLint(FileName(QByteArray(argv[1]))).toJson()).toJson();
    return std::fwrite(json.constData(), 1, size_t(json.size()), stdout) == size_t(json.size()) ? 0 : 1;
}
