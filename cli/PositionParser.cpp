#include <cli/PositionParser.h>

#include <cli/LineBlocks.h>
#include <cli/LineDoubts.h>
#include <cli/TypedAngle.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTextCodec>

#include <algorithm>
#include <cmath>

namespace KelStd::cli {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

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

QString fieldCount(int count)
{
    return count == 1 ? QStringLiteral("1 field") : QStringLiteral("%1 fields").arg(count);
}

} // namespace

PositionParser::Result PositionParser::bad(const QString &reason)
{
    m_reason = reason;
    return Result::BadLine;
}

PositionParser::Result PositionParser::badHeader(const QString &reason)
{
    m_reason = reason;
    return Result::BadHeader;
}

PositionParser::Result PositionParser::parse(std::string_view line, qint64 lineNumber)
{
    return m_order && readPlain(line) ? Result::Position : parseWithCare(line, lineNumber);
}

PositionParser::Result PositionParser::parseWithCare(std::string_view bytes, qint64 lineNumber)
{
    m_lineNumber = lineNumber;
    m_reason.clear();
    if (bytes.size() > mostBytesOfLine)
        return bad(QStringLiteral("the line is longer than %1 bytes").arg(mostBytesOfLine));
    if (lineNumber == 1 && bytes.substr(0, byteOrderMark.size()) == byteOrderMark)
        bytes.remove_prefix(byteOrderMark.size());

    const DecodedLine line =
        decoded(QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())));
    if (!line.isText)
        return bad(QStringLiteral("the line holds control characters: it is not text"));
    const QString content = line.text.trimmed();
    if (content.isEmpty() || content.startsWith(QLatin1Char('#')))
        return Result::Nothing;

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
    return takeHeader(split, bytes) ? Result::Nothing : Result::BadHeader;
}

/// Of the first line. A line of headings that the frame knows is a header whatever else it holds,
/// and so is the first one where columns are picked by their headings.
bool PositionParser::isHeader(const SplitLine &line, const QString &text) const
{
    if (m_choice && m_choice->hasHeadings())
        return true;
    if (holdsNumber(line, text))
        return false;
    FieldOrder order;
    QString mistake;
    return !holdsTypedValue(line)
           || (!m_choice && readHeader(headingsOf(line), m_frame, order, mistake));
}

bool PositionParser::takeHeader(const SplitLine &line, std::string_view bytes)
{
    const QStringList headings = headingsOf(line);
    FieldOrder order;
    const bool isUnderstood =
        m_choice ? m_choice->apply(headings, headings.size(), m_frame, order, m_reason)
                 : readHeader(headings, m_frame, order, m_reason, m_height);
    if (!isUnderstood)
        return false;
    m_order = order;
    m_orderLine = m_lineNumber;
    m_headerLine = QByteArray(bytes.data(), static_cast<int>(bytes.size()));
    return true;
}

/// The order of the fields of a first line that is no header; false with the reason.
bool PositionParser::takeFirst(int fields, const SplitLine &line)
{
    FieldOrder order;
    if (m_choice) {
        if (!m_choice->apply({}, fields, m_frame, order, m_reason))
            return false;
    } else {
        if (fields != componentsPerFrame && fields != componentsPerFrame + 1) {
            m_reason = QStringLiteral("%1 found; expected are %2, after a point name if there is "
                                      "one")
                           .arg(fieldCount(fields), labelsOf(m_frame))
                       + hintOnPieces(line);
            return false;
        }
        order = plainOrder(fields);
    }
    m_order = order;
    m_orderLine = m_lineNumber;
    return true;
}

PositionParser::Result PositionParser::readFields(const SplitLine &line)
{
    const int count = line.fields.size();
    if (!m_order && !takeFirst(count, line))
        return Result::BadLine;
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
    keepTexts(line);
    m_position = rowOf(m_frame).position(components[0], components[1], components[2]);
    return Result::Position;
}

/// The name and the carried fields of a line that was read with care.
void PositionParser::keepTexts(const SplitLine &line)
{
    m_texts.clear();
    m_texts.push_back(m_order->name >= 0 ? line.fields.at(m_order->name).toUtf8() : QByteArray());
    for (const int field : m_order->carried)
        m_texts.push_back(line.fields.at(field).toUtf8());
    const auto view = [this](std::size_t i) {
        return std::string_view(m_texts[i].constData(),
                                static_cast<std::size_t>(m_texts[i].size()));
    };
    m_name = view(0);
    m_carried.clear();
    for (std::size_t i = 1; i < m_texts.size(); ++i)
        m_carried.push_back(view(i));
}

/// Reads what nearly every line is; false, with nothing changed, for a line that needs more care.
bool PositionParser::readPlain(std::string_view line)
{
    if (line.size() > mostBytesOfLine || !m_plain.read(line, *m_order))
        return false;
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (!(std::abs(m_plain.component(i)) <= columnOf(m_frame, i).quantity->limit))
            return false;
    }
    m_name = m_order->name >= 0 ? m_plain.field(m_order->name) : std::string_view();
    m_carried.clear();
    for (const int field : m_order->carried)
        m_carried.push_back(m_plain.field(field));
    m_position =
        rowOf(m_frame).position(m_plain.component(0), m_plain.component(1), m_plain.component(2));
    return true;
}

/// Empty, or why the field is no value of the component.
QString PositionParser::readComponent(int component, const QString &field, DecimalMark mark,
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
