// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef AAPTDUMP_H
#define AAPTDUMP_H

#include <QList>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <cstring>

/**
 * Parses the output of `aapt dump`: the resource table, the tree of a document, and the summary. Converts the numbers
 * that aapt prints to the texts that the library gives.
 */
namespace AaptDump {

/// Runs aapt. Returns false and sets @p error when aapt cannot be run or prints errors.
inline bool run(const QStringList &arguments, QStringList *lines, QString *error)
{
    QProcess aapt;
    aapt.start(QStringLiteral(SORREL_AAPT), arguments);
    if (!aapt.waitForFinished() || aapt.exitStatus() != QProcess::NormalExit || aapt.exitCode() != 0) {
        *error = QStringLiteral("%1 %2: %3 %4")
                     .arg(QStringLiteral(SORREL_AAPT), arguments.join(QLatin1Char(' ')), aapt.errorString(),
                          QString::fromLocal8Bit(aapt.readAllStandardError()));
        return false;
    }
    *lines = QString::fromUtf8(aapt.readAllStandardOutput()).split(QLatin1Char('\n'));
    return true;
}

/// Removes the escapes of a quoted text.
inline QString unescaped(const QString &text)
{
    QString result;
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) != QLatin1Char('\\') || i + 1 == text.size()) {
            result += text.at(i);
            continue;
        }
        ++i;
        result += text.at(i) == QLatin1Char('n') ? QLatin1Char('\n') : text.at(i);
    }
    return result;
}

/// One value of a resource, in one configuration.
struct Value {
    QString config; ///< as aapt writes it, empty for the default
    int type;
    quint32 data;
    QString string; ///< for the type string
};

/// One resource and its simple values, in the order of the table.
struct Resource {
    QString name; ///< "string/app_name"
    QList<Value> values;
};

inline QString hexDigits(quint32 number, int width)
{
    return QStringLiteral("%1").arg(number, width, 16, QLatin1Char('0'));
}

inline QString qualifierBytes(const QString &letters, char16_t base)
{
    if (letters.size() != 3)
        return letters;
    const auto digit = [&](int i) { return ushort(letters.at(i).unicode() - base); };
    const auto first = ushort(0x80 | (digit(2) << 2) | (digit(1) >> 3));
    const auto second = ushort(((digit(1) << 5) | digit(0)) & 0xff);
    return QString(QChar(first)) + QChar(second);
}

/**
 * The library's texts for a configuration that aapt calls @p config: its qualifiers and its locale. The library has no
 * names for some densities and for scripts. It shows a language of three letters, or a region of three digits, as the
 * two bytes that store it.
 */
struct ConfigNames {
    explicit ConfigNames(const QString &config)
    {
        static const QRegularExpression language(QStringLiteral("^(?:b\\+)?([a-z]{2,3})(?:\\+[A-Za-z]{4})?$"));
        static const QRegularExpression region(QStringLiteral("^r([A-Z]{2}|[0-9]{3})$"));
        static const QStringList wordless{QStringLiteral("nodpi"), QStringLiteral("anydpi"), QStringLiteral("xxxhdpi")};
        static const QStringList otherWords{QStringLiteral("car")};

        QStringList kept;
        const QStringList words = config.split(QLatin1Char('-'), Qt::SkipEmptyParts);
        for (const QString &word : words) {
            if (wordless.contains(word))
                continue;
            if (const auto code = language.match(word); code.hasMatch() && !otherWords.contains(word)) {
                locale = qualifierBytes(code.captured(1), u'a');
                kept.append(locale);
            } else if (const auto country = region.match(word); country.hasMatch()) {
                const QString bytes = qualifierBytes(country.captured(1), u'0');
                locale += QLatin1Char('-') + bytes;
                kept.append(QLatin1Char('r') + bytes);
            } else {
                kept.append(word);
            }
        }
        qualifiers = kept.join(QLatin1Char('-'));
    }

    QString qualifiers;
    QString locale;
};

/// `aapt dump --values resources`
struct Table {
    QMap<quint32, Resource> resources;
    QStringList encodings; ///< "string8" or "string16", each once

    /// The reference text of an id: type and number for the package's own resources, hexadecimal digits for the
    /// platform's.
    QString reference(quint32 id) const
    {
        if (id >> 24 != 0x7f)
            return QStringLiteral("@?") + hexDigits(id, 8);
        const QString type = resources.value(id).name.section(QLatin1Char('/'), 0, 0);
        return QStringLiteral("@%1/%2").arg(type, QString::number(id & 0xffff));
    }

    /// The id of the resource "type/name", or 0.
    quint32 id(const QString &name) const
    {
        for (auto it = resources.cbegin(); it != resources.cend(); ++it) {
            if (it->name == name)
                return it.key();
        }
        return 0;
    }

    /// The library's text for a typed value.
    QString text(int type, quint32 data, const QString &string) const
    {
        // aapt extends the sign of a 32-bit number before it prints the hexadecimal digits.
        const QString sign = data & 0x80000000U ? QStringLiteral("ffffffff") : QString();
        const QString digits = hexDigits(data, 8);
        float single = 0;
        switch (type) {
        case 0x01:
        case 0x02:
            return reference(data);
        case 0x03:
            return string;
        case 0x04:
            std::memcpy(&single, &data, sizeof single);
            return QString::number(double(single));
        case 0x05: // aapt prints a dimension or a fraction as its raw number
        case 0x06:
        case 0x10:
            return QString::number(qint32(data));
        case 0x11:
            return QStringLiteral("0x") + (sign.isEmpty() ? QString::number(data, 16) : sign + digits);
        case 0x12:
            return data == 0 ? QStringLiteral("false") : QStringLiteral("true");
        case 0x1c:
            return QLatin1Char('#') + sign + digits;
        case 0x1d:
            return QLatin1Char('#') + digits.mid(2);
        case 0x1e:
            return QStringLiteral("#%1%2%3%4").arg(digits.at(1), digits.at(3), digits.at(5), digits.at(7));
        case 0x1f:
            return QStringLiteral("#%1%2%3").arg(digits.at(3), digits.at(5), digits.at(7));
        default:
            return QStringLiteral("a type that no sample has");
        }
    }

    QString text(const Value &value) const { return text(value.type, value.data, value.string); }

    bool load(const QString &package, QString *error)
    {
        static const QRegularExpression nameLine(
            QStringLiteral("^      spec resource 0x([0-9a-f]{8}) [^:]+:([^ ]+): "));
        static const QRegularExpression configLine(QStringLiteral("^      config (.*):$"));
        static const QRegularExpression valueLine(
            QStringLiteral("^        resource 0x([0-9a-f]{8}) [^ ]+ t=0x([0-9a-f]{2}) d=0x([0-9a-f]{8}) "));
        static const QRegularExpression stringLine(QStringLiteral("^          \\((string8|string16)\\) \"(.*)\"$"));

        QStringList lines;
        if (!run({QStringLiteral("dump"), QStringLiteral("--values"), QStringLiteral("resources"), package}, &lines,
                 error)) {
            return false;
        }
        QString config;
        quint32 id = 0;
        for (const QString &line : lines) {
            if (const auto name = nameLine.match(line); name.hasMatch()) {
                resources[name.captured(1).toUInt(nullptr, 16)].name = name.captured(2);
            } else if (const auto heading = configLine.match(line); heading.hasMatch()) {
                config = heading.captured(1);
                if (config == QLatin1String("(default)"))
                    config.clear();
            } else if (const auto value = valueLine.match(line); value.hasMatch()) {
                id = value.captured(1).toUInt(nullptr, 16);
                resources[id].values.append(
                    {config, value.captured(2).toInt(nullptr, 16), value.captured(3).toUInt(nullptr, 16), QString()});
            } else if (const auto string = stringLine.match(line); string.hasMatch()) {
                resources[id].values.last().string = unescaped(string.captured(2));
                if (!encodings.contains(string.captured(1)))
                    encodings.append(string.captured(1));
            }
        }
        return true;
    }
};

/**
 * The output of `aapt dump xmltree`: one line for each element and attribute, indented by depth. An element is "tag".
 * Its attributes follow in alphabetical order as "{namespace} prefix:name=text".
 */
inline bool loadTree(const QString &package, const Table &table, QStringList *tree, QString *error)
{
    static const QRegularExpression namespaceLine(QStringLiteral("^ *N: ([^=]+)=(.*)$"));
    static const QRegularExpression elementLine(QStringLiteral("^( *)E: ([^ ]+) \\(line=[0-9]+\\)$"));
    static const QRegularExpression attributeLine(QStringLiteral("^ *A: ([^=(]+)(?:\\(0x[0-9a-f]{8}\\))?=(.*)$"));
    static const QRegularExpression rawValue(QStringLiteral("\\(Raw: \"(.*)\"\\)$"));
    static const QRegularExpression reference(QStringLiteral("^[@?]0x([0-9a-f]{8})$"));
    static const QRegularExpression typedValue(QStringLiteral("^\\(type 0x([0-9a-f]+)\\)0x([0-9a-f]+)$"));

    QStringList lines;
    if (!run({QStringLiteral("dump"), QStringLiteral("xmltree"), package, QStringLiteral("AndroidManifest.xml")},
             &lines, error)) {
        return false;
    }
    QMap<QString, QString> namespaces;
    QList<int> openElements; // their indents
    QStringList attributes;
    const auto flushAttributes = [&] {
        attributes.sort();
        tree->append(attributes);
        attributes.clear();
    };
    for (const QString &line : lines) {
        if (const auto binding = namespaceLine.match(line); binding.hasMatch()) {
            namespaces.insert(binding.captured(1), binding.captured(2));
        } else if (const auto element = elementLine.match(line); element.hasMatch()) {
            flushAttributes();
            const auto indent = int(element.capturedLength(1));
            while (!openElements.isEmpty() && openElements.last() >= indent)
                openElements.removeLast();
            tree->append(QString(2 * openElements.size(), QLatin1Char(' ')) + element.captured(2));
            openElements.append(indent);
        } else if (const auto attribute = attributeLine.match(line); attribute.hasMatch()) {
            const QString name = attribute.captured(1);
            const QString value = attribute.captured(2);
            QString text = QStringLiteral("a value in a form that no sample has: ") + value;
            if (const auto raw = rawValue.match(value); raw.hasMatch())
                text = unescaped(raw.captured(1));
            else if (const auto id = reference.match(value); id.hasMatch())
                text = table.reference(id.captured(1).toUInt(nullptr, 16));
            else if (const auto typed = typedValue.match(value); typed.hasMatch())
                text = table.text(typed.captured(1).toInt(nullptr, 16), typed.captured(2).toUInt(nullptr, 16), {});
            const QString uri =
                name.contains(QLatin1Char(':')) ? namespaces.value(name.section(QLatin1Char(':'), 0, 0)) : QString();
            attributes.append(QString(2 * openElements.size(), QLatin1Char(' '))
                              + QStringLiteral("{%1} %2=%3").arg(uri, name, text));
        } else if (!line.isEmpty()) {
            *error = QStringLiteral("a line that no sample has: ") + line;
            return false;
        }
    }
    flushAttributes();
    return true;
}

/// An activity that is a launcher for aapt, with its own label (for en-US) and icon. Both are empty when missing.
struct LaunchableActivity {
    QString name;
    QString label;
    QString icon;
};

/// `aapt dump badging`
struct Badging {
    QString package;
    QString sdkVersion;
    QMap<QString, QString> applicationLabels; ///< by locale
    QList<LaunchableActivity> launchableActivities;

    bool load(const QString &fileName, QString *error)
    {
        static const QRegularExpression packageLine(QStringLiteral("^package: name='([^']*)'"));
        static const QRegularExpression sdkLine(QStringLiteral("^sdkVersion:'(.*)'$"));
        static const QRegularExpression labelLine(QStringLiteral("^application-label(?:-([^:]+))?:'(.*)'$"));
        static const QRegularExpression activityLine(
            QStringLiteral("^launchable-activity: name='(.*)'  label='(.*)' icon='(.*)'$"));

        QStringList lines;
        if (!run({QStringLiteral("dump"), QStringLiteral("badging"), fileName}, &lines, error))
            return false;
        for (const QString &line : lines) {
            if (const auto name = packageLine.match(line); name.hasMatch())
                package = name.captured(1);
            else if (const auto sdk = sdkLine.match(line); sdk.hasMatch())
                sdkVersion = sdk.captured(1);
            else if (const auto label = labelLine.match(line); label.hasMatch())
                applicationLabels.insert(label.captured(1), unescaped(label.captured(2)));
            else if (const auto activity = activityLine.match(line); activity.hasMatch())
                launchableActivities.append(
                    {activity.captured(1), unescaped(activity.captured(2)), activity.captured(3)});
        }
        return true;
    }
};

} // namespace AaptDump

#endif
