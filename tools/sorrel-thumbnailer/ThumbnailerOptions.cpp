// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ThumbnailerOptions.h"

#include <algorithm>

ThumbnailerOptions::ThumbnailerOptions()
    : m_sizeOption(
        {QStringLiteral("s"), QStringLiteral("size")},
        QStringLiteral("Largest width and height in pixels; by default 256. A number above 1024 counts as 1024."),
        QStringLiteral("N")),
      m_helpOption({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help and exit.")),
      m_versionOption({QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Show the version and exit."))
{
    m_parser.setApplicationDescription(
        QStringLiteral("Write the icon of an Android package, or of a set of packages, to a PNG file.\n\n"
                       "Exit status: 0 when the icon was written, 1 when there is no icon or a file could not be\n"
                       "read or written, 2 for wrong usage."));
    m_parser.addOption(m_sizeOption);
    m_iconOptions.addShapeTo(m_parser);
    m_parser.addOptions({m_helpOption, m_versionOption});
    m_parser.addPositionalArgument(
        QStringLiteral("INPUT"),
        QStringLiteral("The path or the file URI of a package (.apk) or of a set (.apks, .xapk, .apkm)."));
    m_parser.addPositionalArgument(QStringLiteral("OUTPUT"), QStringLiteral("The PNG file; '-' is standard output."));
}

bool ThumbnailerOptions::parse(const QStringList &arguments)
{
    if (!m_parser.parse(arguments))
        return fail(m_parser.errorText());
    if (isHelp() || isVersion())
        return true;
    if (m_parser.isSet(m_sizeOption) && !setSize(m_parser.value(m_sizeOption)))
        return fail(QStringLiteral("'%1' is no size.").arg(m_parser.value(m_sizeOption)));
    if (!m_iconOptions.readShape(m_parser))
        return fail(m_iconOptions.errorText());
    const QStringList names = m_parser.positionalArguments();
    if (names.size() < 2)
        return fail(names.isEmpty() ? QStringLiteral("INPUT and OUTPUT are missing.")
                                    : QStringLiteral("OUTPUT is missing."));
    if (names.size() > 2)
        return fail(QStringLiteral("More than INPUT and OUTPUT: '%1'.").arg(names.at(2)));
    m_input = FileName(names.at(0));
    m_output = FileName(names.at(1));
    return true;
}

bool ThumbnailerOptions::setSize(const QString &text)
{
    const auto isDigit = [](QChar character) { return character >= QLatin1Char('0') && character <= QLatin1Char('9'); };
    if (text.isEmpty() || !std::all_of(text.cbegin(), text.cend(), isDigit))
        return false;
    bool fits = false;
    const int number = text.toInt(&fits);
    m_size = fits ? qMin(number, MaxSize) : MaxSize;
    return m_size > 0;
}

bool ThumbnailerOptions::fail(const QString &text)
{
    m_error = text;
    return false;
}
