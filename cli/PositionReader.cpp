#include <cli/PositionReader.h>

#include <cli/LineSplitter.h>

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

QString quoted(const QString &field)
{
    constexpr int mostCharacters = 40;
    return QLatin1Char('"')
           + (field.size() > mostCharacters ? field.left(mostCharacters) + QLatin1String("...")
                                            : field)
           + QLatin1Char('"');
}

std::optional<double> readNumber(const QString &field, QString &reason)
{
    if (field.isEmpty()) {
        reason = QStringLiteral("is missing");
        return std::nullopt;
    }
    bool ok = false;
    const double value = field.toDouble(&ok);
    if (ok && std::isfinite(value))
        return value;
    if (ok || std::isinf(value)) { // a number too large for a double reads as an infinity
        reason = QStringLiteral("%1 is not a finite number").arg(quoted(field));
        return std::nullopt;
    }
    const QString withPoint = QString(field).replace(QLatin1Char(','), QLatin1Char('.'));
    reason = QStringLiteral("%1 is not a number%2")
                 .arg(quoted(field), isNumber(withPoint)
                                         ? QStringLiteral(" (write a decimal point, not a comma)")
                                         : QString());
    return std::nullopt;
}

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
        const bool isHeader = !m_sawContent && !holdsNumber(split, line.text);
        m_sawContent = true;
        if (!isHeader)
            return mistake.isEmpty() ? readFields(split.fields) : bad(mistake);

        // Without its header the lines that follow could be read in a wrong order.
        if (!mistake.isEmpty())
            return badHeader(QStringLiteral("the header cannot be read: %1").arg(mistake));
        FieldOrder order;
        if (!readHeader(split.byBlanks ? joinUnits(split.fields) : split.fields, m_frame, order,
                        m_reason, m_height))
            return Result::BadHeader;
        m_order = order;
        m_orderLine = lineNumber();
    }
}

PositionReader::Result PositionReader::readFields(const QStringList &fields)
{
    const int count = fields.size();
    if (!m_order) {
        if (count != componentsPerFrame && count != componentsPerFrame + 1) {
            return bad(QStringLiteral("%1 found; expected are %2, after a point name if there is "
                                      "one")
                           .arg(fieldCount(count), expectedFields(m_frame)));
        }
        m_order = plainOrder(count);
        m_orderLine = lineNumber();
    }
    if (count != m_order->fields) {
        return bad(QStringLiteral("%1 found; line %2 has %3")
                       .arg(fieldCount(count))
                       .arg(m_orderLine)
                       .arg(m_order->fields));
    }

    std::array<double, componentsPerFrame> components{};
    for (int i = 0; i < componentsPerFrame; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const Column &column = columnOf(m_frame, i);
        const QString &field = fields.at(m_order->components[index]);
        QString reason;
        const auto number = readNumber(field, reason);
        const double limit = column.quantity->limit;
        if (number && std::abs(*number) > limit)
            reason = QStringLiteral("%1 is not between -%2 and %2").arg(field).arg(limit);
        if (!reason.isEmpty())
            return bad(QString::fromLatin1(column.label) + QLatin1Char(' ') + reason);
        components[index] = *number;
    }
    m_name = m_order->name >= 0 ? fields.at(m_order->name) : QString();
    m_position = rowOf(m_frame).position(components[0], components[1], components[2]);
    return Result::Position;
}

} // namespace KelStd::cli
