// SPDX-License-Identifier: LGPL-2.1-or-later
#include "Harness.h"

#include "DrawableFixture.h"
#include "LogCapture.h"
#include "format/AndroidAttributes.h"

#include <array>
#include <cstring>

using namespace SorrelKit;
using namespace fixture;

namespace {

/// Takes numbers off the front of the input. Returns zeros after the end.
class Numbers
{
public:
    Numbers(const uint8_t *data, size_t size) : m_data(data), m_size(size) {}

    bool isEmpty() const { return m_size == 0; }
    int byte()
    {
        if (m_size == 0)
            return 0;
        --m_size;
        return *m_data++;
    }
    /// Any value of a float including infinity, or a small number, which shows in a picture.
    float number()
    {
        const int kind = byte();
        if (kind % 4 != 0)
            return float(qint8(byte())) / float(1 << kind % 8);
        quint32 bits = 0;
        for (int i = 0; i < 4; ++i)
            bits = bits << 8 | quint32(byte());
        float number = 0;
        std::memcpy(&number, &bits, sizeof number);
        return number;
    }
    /// The number in the syntax of path data. An infinite number becomes one above the limit for numbers.
    QString text()
    {
        const float value = number();
        if (qIsNaN(value) || qIsInf(value))
            return QStringLiteral("%11e39").arg(value < 0 ? QStringLiteral("-") : QString());
        return QString::number(double(value), 'g', 9);
    }

private:
    const uint8_t *m_data;
    size_t m_size;
};

struct Command {
    char letter;
    int numbers;
};
constexpr std::array<Command, 10> commands = {
    {{'A', 7}, {'A', 7}, {'A', 7}, {'C', 6}, {'L', 2}, {'M', 2}, {'Q', 4}, {'S', 4}, {'T', 2}, {'Z', 0}}};

QString pathData(Numbers &numbers)
{
    constexpr int MaxCommands = 64;
    constexpr int LargeFlag = 3;
    constexpr int SweepFlag = 4;
    QString data = QStringLiteral("M1,1");
    for (int i = 0; i < MaxCommands && !numbers.isEmpty(); ++i) {
        const int choice = numbers.byte();
        const Command command = commands[size_t(choice) % commands.size()];
        const QChar letter = QLatin1Char(command.letter);
        data += choice >= 128 ? letter.toLower() : letter;
        for (int number = 0; number < command.numbers; ++number) {
            const bool isFlag = command.letter == 'A' && (number == LargeFlag || number == SweepFlag);
            data += QLatin1Char(' ') + (isFlag ? QString::number(numbers.byte() % 2) : numbers.text());
        }
    }
    return data;
}

} // namespace

// The input chooses how a path is painted, then its commands. The path is always well-formed, so the parser accepts it.
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    constexpr QSize Size(48, 48);
    const LogCapture log;
    Numbers numbers(data, size);
    const int kind = numbers.byte();
    Attributes attributes{number(Attr::StrokeWidth, numbers.number()), number(Attr::TrimPathStart, numbers.number()),
                          number(Attr::TrimPathEnd, numbers.number()), integer(Attr::StrokeLineCap, kind % 3),
                          integer(Attr::StrokeLineJoin, kind / 3 % 3), integer(Attr::FillType, kind / 9 % 2)};
    if (kind % 4 != 0)
        attributes.append(color(Attr::FillColor, 0x80ff0000));
    if (kind % 4 != 1)
        attributes.append(color(Attr::StrokeColor, 0x800000ff));
    const Attributes group{number(Attr::Rotation, numbers.number()), number(Attr::ScaleX, numbers.number()),
                           number(Attr::ScaleY, numbers.number()), number(Attr::PivotX, numbers.number())};
    const XmlAttribute path = text(Attr::PathData, pathData(numbers));
    Elements inner{element(QStringLiteral("path"), Attributes{path} + attributes)};
    if (kind >= 128)
        inner.prepend(element(QStringLiteral("clip-path"), {path}));
    const XmlElement vector =
        element(QStringLiteral("vector"), {number(Attr::ViewportWidth, 24), number(Attr::ViewportHeight, 24)},
                {element(QStringLiteral("group"), kind % 2 == 0 ? Attributes() : group, inner)});
    Studio studio;
    const QImage image = studio.draw(vector, Size);
    if (image.isNull() && studio.loader.error())
        return 0;
    if (image.size() != Size || image.format() != QImage::Format_ARGB32_Premultiplied)
        failed("the picture has another size or format");
    return 0;
}
