#include <cli/PositionReader.h>

#include <cli/LineDoubts.h>
#include <cli/TypedAngle.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTextCodec>

#include <algorithm>
#include <cmath>

namespace KelStd::cli {

namespace {

constexpr const char *byteOrderMark = "\xEF\xBB\xBF";

bool isNumber(const QString &field)
{
    bool ok = false;
    field.toDouble(&ok);
    return ok;
}

/// A control character other than the tabulator; `last` is the highest of those that count.
bool holdsControl(const QString &text, char16_t last)
{
    return std::any_of(text.cbegin(), text.cend(), [last](QChar c) {
        return c.category() == QChar::Other_Control && c != QLatin1Char('\t') && c <= QChar(last);
    });
}

struct DecodedLine
{
    QString text; ///< of a line that is not UTF-8 what can be made out of it
    bool isUtf8;
    bool isText; ///< no control characters, which only data of another kind and mischief have
};

DecodedLine decoded(const QByteArray &bytes)
{
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0)
        return {text, true, !holdsControl(text, u'\u009F')};
    // Characters of the Windows code pages have the numbers of the upper control characters.
    const QString latin = QString::fromLatin1(bytes);
    return {latin, false, !holdsControl(latin, u'\u007F')};
}

bool holdsNumber(const SplitLine &line, const QString &text)
{
    // A broken quotation hides the separators that follow it.
    static const QRegularExpression anySeparator(QStringLiteral("[\\s,;\"]+"));
    const QStringList fields = line.mistake.isEmpty() ? line.fields : text.split(anySeparator);
    return std::any_of(fields.cbegin(), fields.cend(), isNumber);
}

/// True when a field begins with a digit or its sign and is a number with a decimal comma or an
/// angle with its signs. Letters alone make no angle of a heading: "3D" is none.
bool holdsTypedValue(const SplitLine &line)
{
    static const QRegularExpression beginsAsNumber(QStringLiteral("\\A[-+]?[0-9]"));
    return std::any_of(line.fields.cbegin(), line.fields.cend(), [](const QString &field) {
        return beginsAsNumber.match(field).hasMatch()
               && (hasAngleSigns(field) || isNumber(withDecimalPoint(field, DecimalMark::Comma)));
    });
}

QStringList headingsOf(const SplitLine &line)
{
    return line.byBlanks ? joinUnits(line.fields) : line.fields;
}

QString expectedFields(Frame frame)
{
    QStringList labels;
    for (int i = 0; i < componentsPerFrame; ++i)
        labels += QString::fromLatin1(columnOf(frame, i).label);
    return labels.join(QLatin1String(", "));
}

QString fieldCount(int count)
{
    return count == 1 ? QStringLiteral("1 field") : QStringLiteral("%1 fields").arg(count);
}

} // namespace

PositionReader::Result PositionReader::bad(const QString &reason)
{
    m_reason = reason;
    return Result::BadLine;
}

PositionReader::Result PositionReader::badHeader(const QString &reason)
{
    m_reason = reason;
    return Result::BadHeader;
}

PositionReader::Result PositionReader::next()
{
    QByteArray bytes;
    for (;;) {
        m_reason.clear();
        switch (m_lines.next(bytes)) {
        case LineReader::Result::End: return Result::End;
        case LineReader::Result::Error: m_reason = m_lines.errorText(); return Result::ReadError;
        case LineReader::Result::TooLong:
            return bad(
                QStringLiteral("the line is longer than %1 bytes").arg(LineReader::mostBytes));
        case LineReader::Result::Line: break;
        }
        if (lineNumber() == 1 && bytes.startsWith(byteOrderMark))
            bytes.remove(0, static_cast<int>(qstrlen(byteOrderMark)));

        const DecodedLine line = decoded(bytes);
        if (!line.isText)
            return bad(QStringLiteral("the line holds control characters: it is not text"));
        const QString content = line.text.trimmed();
        if (content.isEmpty() || content.startsWith(QLatin1Char('#')))
            continue;

        const SplitLine split = splitLine(line.text);
        const QString mistake =
            line.isUtf8 ? split.mistake : QStringLiteral("the line is not UTF-8 text");
        const bool isFirst = !m_sawContent;
        m_sawContent = true;
        if (!isFirst || !isHeader(split, line.text))
            return mistake.isEmpty() ? readFields(split) : bad(mistake);

        // Without its header the lines that follow could be read in a wrong order.
        if (!mistake.isEmpty())
            return badHeader(QStringLiteral("the header cannot be read: %1").arg(mistake));
        FieldOrder order;
        if (!readHeader(headingsOf(split), m_frame, order, m_reason, m_height))
            return Result::BadHeader;
        m_order = order;
        m_orderLine = lineNumber();
    }
}

/// Of the first line. A line of headings that the frame knows is a header whatever else it holds.
bool PositionReader::isHeader(const SplitLine &line, const QString &text) const
{
    if (holdsNumber(line, text))
        return false;
    FieldOrder order;
    QString mistake;
    return !holdsTypedValue(line) || readHeader(headingsOf(line), m_frame, order, mistake);
}

PositionReader::Result PositionReader::readFields(const SplitLine &line)
{
    const int count = line.fields.size();
    if (!m_order) {
        if (count != componentsPerFrame && count != componentsPerFrame + 1) {
            return bad(QStringLiteral("%1 found; expected are %2, after a point name if there is "
                                      "one")
                           .arg(fieldCount(count), expectedFields(m_frame))
                       + hintOnPieces(line));
        }
        m_order = plainOrder(count);
        m_orderLine = lineNumber();
    }
    if (count != m_order->fields) {
        return bad(QStringLiteral("%1 found; line %2 has %3")
                       .arg(fieldCount(count))
                       .arg(m_orderLine)
                       .arg(m_order->fields)
                   + hintOnPieces(line));
    }

    QString mistake = tornAngle(line, *m_order, m_frame);
    if (!mistake.isEmpty())
        return bad(mistake);
    const auto mark = decimalMarkOf(line, *m_order, m_frame, mistake);
    if (!mark)
        return bad(mistake);

    std::array<double, componentsPerFrame> components{};
    for (int i = 0; i < componentsPerFrame; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const QString &field = line.fields.at(m_order->components[index]);
        const QString reason = readComponent(i, field, *mark, components[index]);
        if (!reason.isEmpty()) {
            return bad(QString::fromLatin1(columnOf(m_frame, i).label) + QLatin1Char(' ') + reason);
        }
    }
    m_name = m_order->name >= 0 ? line.fields.at(m_order->name) : QString();
    m_position = rowOf(m_frame).position(components[0], components[1], components[2]);
    return Result::Position;
}

/// Empty, or why the field is no value of the component.
QString PositionReader::readComponent(int component, const QString &field, DecimalMark mark,
                                      double &value) const
{
    const Column &column = columnOf(m_frame, component);
    QString reason;
    const auto number = isAngle(column) ? readTypedAngle(field,
                                                         valueTypeOf(column) == ValueType_Longitude
                                                             ? AngleSense::Longitude
                                                             : AngleSense::Latitude,
                                                         mark, reason)
                                        : readNumber(field, mark, reason);
    if (!number)
        return reason;
    const double limit = column.quantity->limit;
    if (!(std::abs(*number) <= limit))
        return QStringLiteral("%1 is not between -%2 and %2").arg(field).arg(limit);
    value = *number;
    return {};
}

} // namespace KelStd::cli
