#include <KelStd/positions/PositionReading.h>

#include <KelStd/positions/DecodedLine.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/OrderDoubts.h>
#include <KelStd/positions/OtherHeadings.h>
#include <KelStd/positions/PickedColumns.h>
#include <KelStd/positions/PlainNumbers.h>
#include <KelStd/positions/UnitDoubts.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/text/TypedAngle.h>

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>

namespace KelStd::positions {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool holdsNumber(const SplitLine &line)
{
    return std::any_of(line.fields.cbegin(), line.fields.cend(), [](const QString &field) {
        bool ok = false;
        field.toDouble(&ok);
        return ok;
    });
}

/// True when a field begins with a digit or its sign and is a number with a decimal comma or an
/// angle with its signs. Letters alone make no angle of a heading: "3D" is none.
bool holdsTypedValue(const SplitLine &line)
{
    static const QRegularExpression beginsAsNumber(QStringLiteral("\\A[-+]?[0-9]"));
    return std::any_of(line.fields.cbegin(), line.fields.cend(), [](const QString &field) {
        bool isNumber = false;
        withDecimalPoint(field, DecimalMark::Comma).toDouble(&isNumber);
        return beginsAsNumber.match(field).hasMatch() && (hasAngleSigns(field) || isNumber);
    });
}

/// Whether the line has values where the order has components, so that it is a position, if one
/// that cannot be read.
bool isAttempt(const SplitLine &line, const FieldOrder &order)
{
    return std::all_of(order.components.begin(), order.components.end(),
                       [&line](int field) { return isValue(line.fields.at(field)); });
}

QString fieldCount(int count)
{
    return count == 1 ? QStringLiteral("1 field") : QStringLiteral("%1 fields").arg(count);
}

/// Whether the line holds nothing but numbers and angles, though not as many as a position has, or
/// enough of them where columns are picked by their numbers. One number alone may be anything.
bool isPositionOfAnotherLength(const SplitLine &line, const std::optional<ColumnChoice> &choice)
{
    static const QRegularExpression letter(QStringLiteral("\\A[-+NSEWnsew]\\z"));
    const auto values =
        std::count_if(line.fields.cbegin(), line.fields.cend(), [](const QString &field) {
            return isValue(field) || letter.match(field).hasMatch();
        });
    if (choice)
        return !choice->hasHeadings() && values >= componentsPerFrame;
    return values > 1 && values == line.fields.size();
}

/// Why a first line that holds numbers is none of those that are read.
QString noPosition(const QString &reason)
{
    return QStringLiteral("the line is neither headings nor a position: %1").arg(reason);
}

bool isSplitByBars(const QString &text)
{
    return text.count(QLatin1Char('|')) + 1 >= componentsPerFrame;
}

QString otherSeparator()
{
    return QStringLiteral(
        "fields are separated by commas, semicolons, tabulators or blanks, not by "
        "|");
}

/// Why a line without numbers is no line of headings: its fields are separated by another sign, or
/// were meant to be numbers. Empty when it may be headings or a title.
QString noFields(const QString &text, const SplitLine &line)
{
    static const QRegularExpression beginsAsNumber(QStringLiteral("\\A[-+]?[0-9]"));
    if (isSplitByBars(text))
        return otherSeparator();
    const QStringList numbers = line.fields.filter(beginsAsNumber);
    return numbers.size() > 1 ? QStringLiteral("%1 is not a number").arg(quoted(numbers.first()))
                              : QString();
}

QByteArray copyOf(std::string_view bytes)
{
    return {bytes.data(), static_cast<int>(bytes.size())};
}

} // namespace

PositionParser::Reading::Reading(const InputForm &form, std::optional<ColumnChoice> choice)
    : m_form(form),
      m_metresPerUnit(CoordStringHelper::ConvertUnit_Length(1.0, form.lengthUnit, Unit_Meter)),
      m_choice(std::move(choice)), m_search(m_form, m_choice)
{}

PositionParser::Result PositionParser::Reading::bad(const QString &reason)
{
    m_reason = reason;
    return Result::BadLine;
}

PositionParser::Result PositionParser::Reading::badHeader(const LineMistake &mistake)
{
    m_reason = mistake.reason;
    m_reasonLine = mistake.line;
    return Result::BadHeader;
}

PositionParser::Result PositionParser::Reading::parseWithCare(std::string_view bytes,
                                                              qint64 lineNumber)
{
    m_lineNumber = lineNumber;
    m_reasonLine = lineNumber;
    m_reason.clear();
    if (lineNumber <= m_skippedLines)
        return Result::Nothing;
    if (bytes.size() > maxLineBytes) {
        const QString mistake =
            QStringLiteral("the line is longer than %1 bytes").arg(maxLineBytes);
        return m_order ? bad(mistake) : takeOther(noPosition(mistake));
    }
    if (lineNumber == 1 && bytes.substr(0, byteOrderMark.size()) == byteOrderMark)
        bytes.remove_prefix(byteOrderMark.size());

    if (!m_order && isUtf16(bytes, lineNumber == 1))
        return badHeader({lineNumber, QStringLiteral("the input is UTF-16 text; convert it to "
                                                     "UTF-8")});
    const DecodedLine line =
        decoded(QByteArray::fromRawData(bytes.data(), static_cast<int>(bytes.size())));
    const QString content = line.text.trimmed();
    if (content.isEmpty() && line.flaw.isEmpty())
        return Result::Nothing;
    if (content.startsWith(QLatin1Char('#')))
        return takeComment(content, line.isText ? QString() : line.flaw, bytes);

    m_text = line.text;
    const SplitLine split = splitLine(line.text);
    const QString &mistake = line.flaw.isEmpty() ? split.mistake : line.flaw;
    if (mistake.isEmpty() && isEmptyRow(split))
        return Result::Nothing;
    if (!mistake.isEmpty())
        return takeUnreadable(split.mistake.isEmpty() ? split : splitAnywhere(line.text), mistake,
                              split.mistake.isEmpty(), bytes);
    if (!m_order)
        return takeOpening(split, bytes);
    const Result result = readFields(split, *m_order);
    if (result == Result::Position)
        return result;
    const HeadingsFound found = m_search.headingsIn(split, false);
    if (found.kind == HeadingsFound::Kind::None) {
        if (const auto units = takeUnits(split, QString()))
            return *units;
    }
    if (found.kind == HeadingsFound::Kind::None && mayBeOtherHeadings(split)
        && bytes
               != std::string_view(m_headerLine.constData(),
                                   static_cast<std::size_t>(m_headerLine.size())))
        return takeOtherHeadings();
    return takeHeadings(found, result);
}

/// Whether a later line may be headings in words that are not known.
bool PositionParser::Reading::mayBeOtherHeadings(const SplitLine &line) const
{
    if (!m_order)
        return false;
    return standInPlaceOfComponents(line, *m_order)
           || (line.fields.size() != m_order->fields && areHeadingsOfAnyLanguage(line));
}

/// The same of a remark, which may say again what stood in front of the positions.
bool PositionParser::Reading::isRemarkOfOtherOrder(const QString &remark,
                                                   const SplitLine &line) const
{
    if (!isRemarkOfOtherHeadings(remark, line, *m_order) || m_search.hasWords(line.fields)
        || lookLikeHeadings(headingFields(line), m_form))
        return false;
    const DecodedLine headings = decoded(m_headerLine);
    return splitLine(remarkOf(headings.text.trimmed())).fields != line.fields;
}

PositionParser::Result PositionParser::Reading::takeOtherHeadings()
{
    return badHeader(
        {m_lineNumber,
         QStringLiteral("words stand in place of %1: these may be headings that give "
                        "another order than line %2; put the files through one by one, "
                        "or take out a line that is none")
             .arg(labelsOf(m_form.frame))
             .arg(m_orderLine)});
}

/// A line of units is passed over when they are those that are read, and so is a remark `text`.
/// Nothing where the line is none of units and no remark that contradicts.
std::optional<PositionParser::Result> PositionParser::Reading::takeUnits(const SplitLine &line,
                                                                         const QString &text)
{
    if (!m_order)
        return m_search.keepUnits(text, line, m_lineNumber) ? std::optional(Result::Nothing)
                                                            : std::nullopt;
    bool isUnits = false;
    const QString mistake = m_search.unitsAgainst(text, line, *m_order, isUnits);
    if (mistake.isEmpty() && !isUnits)
        return std::nullopt;
    if (!mistake.isEmpty())
        return badHeader({m_lineNumber, mistake});
    m_reason.clear();
    return Result::Nothing;
}

/// A later line that is no position: headings that agree are passed over.
PositionParser::Result PositionParser::Reading::takeHeadings(const HeadingsFound &found,
                                                             Result otherwise)
{
    switch (found.kind) {
    case HeadingsFound::Kind::None: return otherwise;
    case HeadingsFound::Kind::Mistake: return badHeader({m_lineNumber, found.mistake});
    case HeadingsFound::Kind::Order: break;
    }
    if (agree(*m_order, found.order)) {
        m_reason.clear();
        return Result::Nothing;
    }
    return badHeader(
        {m_lineNumber, QStringLiteral("these headings give another order than line %1: %2 stand "
                                      "elsewhere, or other columns beside them")
                           .arg(m_orderLine)
                           .arg(labelsOf(m_form.frame))});
}

/// A remark is passed over, unless it is a line of headings.
PositionParser::Result PositionParser::Reading::takeComment(const QString &content,
                                                            const QString &flaw,
                                                            std::string_view bytes)
{
    const QString remark = remarkOf(content);
    SplitLine split = splitLine(remark);
    if (!split.mistake.isEmpty())
        split = splitAnywhere(remark);
    const HeadingsFound found = m_search.headingsIn(split, true);
    if (found.kind == HeadingsFound::Kind::Mistake)
        return badHeader({m_lineNumber, found.mistake});
    if (found.kind == HeadingsFound::Kind::None) {
        if (const auto units = takeUnits(split, remark))
            return *units;
    }
    if (m_order) {
        if (found.kind == HeadingsFound::Kind::Order)
            return takeHeadings(found, Result::Nothing);
        if (m_search.contradictsAsHeadings(remark, split, *m_order)) {
            return badHeader(
                {m_lineNumber, QStringLiteral("these headings do not give the order of line %1")
                                   .arg(m_orderLine)});
        }
        if (found.kind == HeadingsFound::Kind::None && isRemarkOfOtherOrder(remark, split))
            return takeOtherHeadings();
    } else if (found.kind == HeadingsFound::Kind::Order) {
        LineMistake mistake;
        if (!m_search.keepHeadings({found.order, m_lineNumber, copyOf(bytes), true}, mistake))
            return badHeader(mistake);
        return Result::Nothing;
    } else {
        m_search.keepRemark(remark, split, m_lineNumber);
    }
    return flaw.isEmpty() ? Result::Nothing : bad(flaw);
}

/// A line that is no text, or has broken quotation marks. It may be a header all the same.
PositionParser::Result PositionParser::Reading::takeUnreadable(const SplitLine &line,
                                                               const QString &mistake, bool isSplit,
                                                               std::string_view bytes)
{
    const HeadingsFound found = m_search.headingsIn(line, false);
    const bool isHeadings = found.kind != HeadingsFound::Kind::None;
    if (isSplit && !isHeadings) {
        if (const auto units = takeUnits(line, QString()))
            return *units;
    }
    // Columns that are carried through keep their headings, which are damaged.
    if (isSplit && !m_choice && found.kind == HeadingsFound::Kind::Order)
        return m_order ? takeHeadings(found, Result::Nothing)
                       : takeSureHeadings(found.order, bytes);
    if (m_order && !isHeadings)
        return isSplit && mayBeOtherHeadings(line) ? takeOtherHeadings() : bad(mistake);
    const QString reason = isHeadings || !holdsNumber(line)
                               ? QStringLiteral("the header cannot be read: %1").arg(mistake)
                               : noPosition(mistake);
    return isHeadings ? badHeader({m_lineNumber, reason}) : takeOther(line, reason);
}

/// A line in front of all positions that is neither headings nor one of them: a title, perhaps.
PositionParser::Result PositionParser::Reading::takeOther(const QString &reason)
{
    m_reason.clear();
    return m_search.keepOther({m_lineNumber, reason}) ? Result::Nothing
                                                      : badHeader(m_search.otherLines());
}

/// The same of a line that may say in which units the positions are.
PositionParser::Result PositionParser::Reading::takeOther(const SplitLine &line,
                                                          const QString &reason)
{
    m_search.keepUnits(m_text, line, m_lineNumber);
    return takeOther(reason);
}

/// A line in front of all positions.
PositionParser::Result PositionParser::Reading::takeOpening(const SplitLine &line,
                                                            std::string_view bytes)
{
    const HeadingsFound found = m_search.headingsIn(line, false);
    if (found.kind == HeadingsFound::Kind::Mistake)
        return badHeader({m_lineNumber, found.mistake});
    if (found.kind == HeadingsFound::Kind::Order)
        return takeSureHeadings(found.order, bytes);
    if (const auto units = takeUnits(line, QString()))
        return *units;

    const bool isWords = !holdsNumber(line) && !holdsTypedValue(line);
    QString reason = found.mistake;
    if (isWords && m_choice && !m_choice->hasHeadings()) {
        const QStringList headings = headingFields(line);
        FieldOrder order;
        LineMistake mistake;
        if (orderPicked(*m_choice, headings, headings.size(), m_form, order, reason)) {
            m_search.keepHeadings({order, m_lineNumber, copyOf(bytes), false}, mistake);
            return Result::Nothing;
        }
    } else if (isWords && !m_choice) {
        const QString wrong = noFields(m_text, line);
        if (!wrong.isEmpty())
            reason = noPosition(wrong);
    } else if (!isWords) {
        const auto order = m_search.orderFor(line, reason);
        if (order) {
            const Result result = takeFirstPosition(line, *order);
            if (result != Result::Nothing)
                return result;
            if (m_search.headings())
                return bad(m_reason);
            reason = m_reason;
        } else if (m_search.headings() && m_search.headings()->isSure) {
            return badHeader({m_lineNumber, reason});
        } else if (isPositionOfAnotherLength(line, m_choice)) {
            const LineMistake mistake = m_search.otherLines();
            return mistake.isThere() ? badHeader(mistake) : bad(reason);
        }
        if (isSplitByBars(m_text))
            reason = noPosition(otherSeparator());
        else if (!m_choice || !m_choice->hasHeadings())
            reason = noPosition(reason);
    }
    return takeOther(line, reason);
}

/// The first position, in an order that is not yet decided; Nothing, with the reason, when the line
/// is none.
PositionParser::Result PositionParser::Reading::takeFirstPosition(const SplitLine &line,
                                                                  const FieldOrder &order)
{
    Result result = readFields(line, order);
    if (result == Result::BadLine && !isAttempt(line, order))
        return Result::Nothing;
    const LineMistake mistake = m_search.mistakeOf(order);
    if (mistake.isThere())
        return badHeader(mistake);
    // Numbers of points are whole ones.
    if (result == Result::Position && !order.doubtfulFirst.isEmpty()
        && isOtherNumber(line.fields.first())) {
        return badHeader(
            {m_lineNumber,
             QStringLiteral("%1 stands where line %2 has %3, which may be a word of the remark and "
                            "head no column; say the order with a line of headings")
                 .arg(quoted(line.fields.first()))
                 .arg(m_search.headings()->line)
                 .arg(quoted(order.doubtfulFirst))});
    }
    if (result == Result::Position && order.isPlain) {
        const QString doubt = orderDoubt(line, order, m_form);
        if (!doubt.isEmpty())
            result = bad(doubt);
        const qint64 failed = m_search.numberedFailure();
        if (failed > 0 && order.name < 0)
            result = bad(QStringLiteral("%1 found; line %2, which cannot be read, has %3")
                             .arg(fieldCount(order.fields))
                             .arg(failed)
                             .arg(order.fields + 1));
    }
    if (result == Result::BadLine) {
        m_search.keepFailed(line, m_lineNumber);
        return result;
    }
    const auto &headings = m_search.headings();
    if (headings)
        decide(headings->order, headings->line, headings->bytes);
    else
        decide(order, m_lineNumber, {});
    const auto &components = m_order->components;
    m_isUnlikeWholeNumbers =
        m_order->isPlain && m_order->name >= 0 && !isWhole(m_name)
        && std::any_of(components.begin(), components.end(), [&line](int field) {
               return !isWhole(line.fields.at(field).toStdString());
           });
    return result;
}

PositionParser::Result PositionParser::Reading::takeSureHeadings(const FieldOrder &order,
                                                                 std::string_view bytes)
{
    LineMistake mistake;
    if (!m_search.keepHeadings({order, m_lineNumber, copyOf(bytes), true}, mistake))
        return badHeader(mistake);
    mistake = m_search.unitsMistakeOf(order);
    if (mistake.isThere())
        return badHeader(mistake);
    decide(order, m_lineNumber, copyOf(bytes));
    return Result::Nothing;
}

void PositionParser::Reading::decide(const FieldOrder &order, qint64 line,
                                     const QByteArray &headerLine)
{
    m_order = order;
    m_orderLine = line;
    m_headerLine = headerLine;
}

/// Whether the name is a whole number and that of the line that decided the order is not: then it
/// may be the first number of a pair.
bool PositionParser::Reading::mayBePair(std::string_view name) const
{
    return m_isUnlikeWholeNumbers && isWhole(name);
}

QString PositionParser::Reading::noteOnColumns() const
{
    constexpr int maxShown = 8;
    if (!m_order || m_order->notTaken.isEmpty())
        return {};
    QStringList columns;
    for (const QString &heading : m_order->notTaken.mid(0, maxShown))
        columns += quoted(heading);
    if (m_order->notTaken.size() > maxShown)
        columns += QStringLiteral("%1 more").arg(m_order->notTaken.size() - maxShown);
    QString note = QStringLiteral("columns that are not in the output: %1")
                       .arg(columns.join(QLatin1String(", ")));
    if (m_form.height != InputHeight::OfFrame)
        return note; // a command without --columns
    QStringList numbers;
    if (m_order->name >= 0)
        numbers += QString::number(m_order->name + 1);
    for (const int field : m_order->components)
        numbers += QString::number(field + 1);
    return note
           + QStringLiteral("; --columns %1 carries them through")
                 .arg(numbers.join(QLatin1Char(',')));
}

bool PositionParser::Reading::finish()
{
    if (m_order)
        return true;
    const LineMistake mistake = m_search.otherLines();
    if (mistake.isThere()) {
        badHeader(mistake);
        return false;
    }
    if (const auto &headings = m_search.headings())
        decide(headings->order, headings->line, headings->bytes);
    return true;
}

PositionParser::Result PositionParser::Reading::readFields(const SplitLine &line,
                                                           const FieldOrder &order)
{
    const int count = line.fields.size();
    if (count == order.fields + 1 && endsEmpty(line)
        && mayEndEmpty(line.fields.first().toStdString(), order)) {
        SplitLine shorter = line;
        shorter.fields.removeLast();
        shorter.isQuoted.removeLast();
        return readFields(shorter, order);
    }
    if (count != order.fields) {
        return bad(QStringLiteral("%1 found; line %2 has %3")
                       .arg(fieldCount(count))
                       .arg(m_orderLine)
                       .arg(order.fields)
                   + hintOnPieces(line));
    }

    if (order.endsEmpty && !endsEmpty(line)) {
        return bad(QStringLiteral("%1 stands where line %2 has an empty field")
                       .arg(quoted(line.fields.last()))
                       .arg(m_orderLine));
    }

    QString mistake = tornAngle(line, order, m_form.frame);
    if (mistake.isEmpty())
        mistake = latitudeFirst(line, order, m_form);
    if (mistake.isEmpty())
        mistake = loneHemisphere(line, order, m_form.frame);
    if (mistake.isEmpty())
        mistake = unitFieldMistake(line, order, m_form);
    if (!mistake.isEmpty())
        return bad(mistake);
    const auto mark = decimalMarkOf(line, order, m_form.frame, mistake);
    if (!mark)
        return bad(mistake);

    std::array<double, componentsPerFrame> components{};
    for (int i = 0; i < componentsPerFrame; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const QString &field = line.fields.at(order.components[index]);
        const QString reason = readComponent(i, field, *mark, components[index]);
        if (!reason.isEmpty()) {
            return bad(QString::fromLatin1(columnOf(m_form.frame, i).label) + QLatin1Char(' ')
                       + reason);
        }
    }
    if (!mayBeHeight(components.back(), m_form.frame, order))
        return bad(heightDoubt(line.fields.at(order.components.back())));
    if (m_order && order.isPlain && order.name == 0 && !line.isQuoted.at(0)) {
        const QString name = line.separator == QLatin1Char(',')
                                 ? line.fields.at(0)
                                 : withDecimalPoint(line.fields.at(0), DecimalMark::Comma);
        if (mayBeDecimalNumber(name.toStdString()) && isOtherNumber(name))
            return bad(nameDoubt(name, m_form));
        if (mayBePair(line.fields.at(0).toStdString())) {
            const QString doubt = laterPairsDoubt(line, m_form);
            if (!doubt.isEmpty())
                return bad(doubt);
        }
    }
    keepTexts(line, order);
    m_position = rowOf(m_form.frame).position(components[0], components[1], components[2]);
    return Result::Position;
}

/// The name and the carried fields of a line that was read with care.
void PositionParser::Reading::keepTexts(const SplitLine &line, const FieldOrder &order)
{
    m_texts.clear();
    m_texts.push_back(order.name >= 0 ? line.fields.at(order.name).toUtf8() : QByteArray());
    for (const int field : order.carried)
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
bool PositionParser::Reading::readPlain(std::string_view line)
{
    if (line.size() > maxLineBytes || !m_plain.read(line, *m_order))
        return false;
    std::array<double, componentsPerFrame> components{};
    for (int i = 0; i < componentsPerFrame; ++i) {
        const Column &column = columnOf(m_form.frame, i);
        double &value = components[static_cast<std::size_t>(i)];
        value = m_plain.component(i);
        if (!isAngle(column))
            value *= m_metresPerUnit;
        else if (hasDoubtfulZeros(m_plain.field(m_order->components[static_cast<std::size_t>(i)])))
            return false;
        if (!(std::abs(value) <= column.limit))
            return false;
    }
    if (!mayBeHeight(components.back(), m_form.frame, *m_order))
        return false;
    m_name = m_order->name >= 0 ? m_plain.field(m_order->name) : std::string_view();
    // Of two pairs the second one begins in a whole number, too.
    if (m_order->isPlain
        && (mayBeDecimalNumber(m_name)
            || (mayBePair(m_name) && isWhole(m_plain.field(m_order->components[1])))))
        return false;
    for (const int field : m_order->units) {
        if (m_plain.field(field) != "m" || m_form.lengthUnit != Unit_Meter)
            return false;
    }
    m_carried.clear();
    for (const int field : m_order->carried)
        m_carried.push_back(m_plain.field(field));
    m_position = rowOf(m_form.frame).position(components[0], components[1], components[2]);
    return true;
}

/// Empty, or why the field is no value of the component.
QString PositionParser::Reading::readComponent(int component, const QString &field,
                                               DecimalMark mark, double &value) const
{
    const Column &column = columnOf(m_form.frame, component);
    QString reason;
    const auto number = isAngle(column) ? readTypedAngle(field,
                                                         column.valueType == ValueType_Longitude
                                                             ? AngleSense::Longitude
                                                             : AngleSense::Latitude,
                                                         mark, reason)
                                        : readNumber(field, mark, reason);
    if (!number)
        return reason;
    const double limit = column.limit;
    const double inMetresOrDegrees = isAngle(column) ? *number : *number * m_metresPerUnit;
    if (!(std::abs(inMetresOrDegrees) <= limit))
        return QStringLiteral("%1 is not between -%2 and %2").arg(field).arg(limit);
    value = inMetresOrDegrees;
    return {};
}

} // namespace KelStd::positions
