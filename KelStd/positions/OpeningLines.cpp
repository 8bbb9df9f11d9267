#include <KelStd/positions/LineShape.h>
#include <KelStd/positions/OrderDoubts.h>
#include <KelStd/positions/PickedColumns.h>
#include <KelStd/positions/PositionReading.h>
#include <KelStd/text/TypedAngle.h>

#include <QtCore/QRegularExpression>

#include <algorithm>

/// The lines in front of the first position, and that position itself: what decides the order.
namespace KelStd::positions {

namespace {

bool holdsNumber(const SplitLine &line)
{
    return std::any_of(line.fields.cbegin(), line.fields.cend(), [](const QString &field) {
        bool ok = false;
        field.toDouble(&ok);
        return ok;
    });
}

bool beginsAsNumber(const QString &field)
{
    static const QRegularExpression signAndDigit(QStringLiteral("\\A[-+]?[0-9]"));
    return signAndDigit.match(field).hasMatch();
}

/// How many fields are numbers or angles, or were meant to be.
std::ptrdiff_t countValues(const SplitLine &line)
{
    return std::count_if(line.fields.cbegin(), line.fields.cend(), isValue);
}

/// True when a field begins with a digit or its sign and is a number with a decimal comma or an
/// angle with its signs. Letters alone do not make an angle of a heading such as "3D".
bool holdsTypedValue(const SplitLine &line)
{
    return std::any_of(line.fields.cbegin(), line.fields.cend(), [](const QString &field) {
        bool isNumber = false;
        withDecimalPoint(field, DecimalMark::Comma).toDouble(&isNumber);
        return beginsAsNumber(field) && (hasAngleSigns(field) || isNumber);
    });
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

/// Why a first line that holds numbers is no position that can be read.
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
    if (isSplitByBars(text))
        return otherSeparator();
    const auto &fields = line.fields;
    if (std::count_if(fields.cbegin(), fields.cend(), beginsAsNumber) < 2)
        return {};
    const auto first = std::find_if(fields.cbegin(), fields.cend(), beginsAsNumber);
    return QStringLiteral("%1 is not a number").arg(quoted(*first));
}

/// Whether two fields are numbers with decimals, or angles with signs, as no title has them.
bool holdsCoordinates(const SplitLine &line)
{
    return std::count_if(line.fields.cbegin(), line.fields.cend(),
                         [](const QString &field) {
                             const QString number = withDecimalPoint(field, DecimalMark::Comma);
                             const bool hasDegrees = beginsAsNumber(field) && hasAngleSigns(field)
                                                     && !field.contains(QLatin1Char(':'));
                             return isOtherNumber(number) || hasDegrees;
                         })
           > 1;
}

QByteArray copyOf(std::string_view bytes)
{
    return {bytes.data(), static_cast<int>(bytes.size())};
}

} // namespace

/// A line in front of all positions.
PositionParser::Result PositionParser::Reading::takeOpening(const TextLine &line)
{
    const HeadingsFound found = m_search.headingsIn(line.split, false);
    if (found.kind == HeadingsFound::Kind::Mistake)
        return badHeader({m_lineNumber, found.mistake});
    if (found.kind == HeadingsFound::Kind::Order)
        return takeSureHeadings(found.order, line.bytes);
    if (m_search.keepUnits(QString(), line, m_lineNumber))
        return Result::Nothing;
    const bool holdsTwoAngles = m_form.mayLackHeight() && countValues(line.split) > 1;
    return holdsNumber(line.split) || holdsTypedValue(line.split) || holdsTwoAngles
               ? takeOpeningValues(line, found.mistake)
               : takeOpeningWords(line, found.mistake);
}

/// Words that are no known headings: those of columns that are picked by their numbers, or a title.
PositionParser::Result PositionParser::Reading::takeOpeningWords(const TextLine &line,
                                                                 QString reason)
{
    if (m_choice && !m_choice->hasHeadings()) {
        const QStringList headings = headingFields(line.split);
        FieldOrder order;
        LineMistake mistake;
        if (orderPicked(*m_choice, headings, static_cast<int>(headings.size()), m_form, order,
                        reason)) {
            order.separator = line.split.separator;
            m_search.keepHeadings({order, m_lineNumber, copyOf(line.bytes), false}, mistake);
            return Result::Nothing;
        }
    } else if (!m_choice) {
        const QString wrong = noFields(line.text, line.split);
        if (!wrong.isEmpty())
            reason = noPosition(wrong);
    }
    return takeOther(line, reason);
}

/// A line with numbers: the first position, or one that cannot be read, or a title.
PositionParser::Result PositionParser::Reading::takeOpeningValues(const TextLine &line,
                                                                  QString reason)
{
    const auto order = m_search.orderFor(line.split, reason);
    if (order) {
        const Result result = takeFirstPosition(line.split, *order);
        if (result != Result::Nothing)
            return result;
        if (m_search.headings())
            return bad(m_reason);
        reason = m_reason;
    } else if (m_search.headings() && m_search.headings()->isSure) {
        return badHeader({m_lineNumber, reason});
    } else if (isPositionOfAnotherLength(line.split, m_choice)) {
        const LineMistake mistake = m_search.otherLines();
        return mistake.isThere() ? badHeader(mistake) : bad(reason);
    }
    if (isSplitByBars(line.text))
        reason = noPosition(otherSeparator());
    else if (!m_choice || !m_choice->hasHeadings())
        reason = noPosition(reason);
    return takeOther(line, reason);
}

/// A remark in front of all positions; headings behind its sign count.
PositionParser::Result PositionParser::Reading::takeOpeningRemark(const TextLine &line,
                                                                  const HeadingsFound &found)
{
    if (found.kind == HeadingsFound::Kind::Order) {
        LineMistake mistake;
        if (!m_search.keepHeadings({found.order, m_lineNumber, copyOf(line.bytes), true}, mistake))
            return badHeader(mistake);
        return Result::Nothing;
    }
    if (m_search.keepUnits(line.text, line, m_lineNumber))
        return Result::Nothing;
    if (found.isRemarkWithoutHeight)
        m_search.keepWithoutHeight({found.order, m_lineNumber, copyOf(line.bytes), true});
    m_search.keepRemark(line.text, line.split, m_lineNumber);
    // What may give the order has not failed.
    return line.flaw.isEmpty() || found.isRemarkWithoutHeight ? Result::Nothing : bad(line.flaw);
}

/// A line in front of all positions that is no text, or has broken quotation marks. It may be a
/// header all the same.
PositionParser::Result PositionParser::Reading::takeDamagedOpening(const TextLine &line)
{
    const HeadingsFound found = m_search.headingsIn(line.split, false);
    const bool isHeadings = found.kind != HeadingsFound::Kind::None;
    if (line.isSplit && !isHeadings && m_search.keepUnits(QString(), line, m_lineNumber))
        return Result::Nothing;
    // Columns that are carried through keep their headings, which are damaged.
    if (line.isSplit && found.kind == HeadingsFound::Kind::Order && found.order.carried.empty())
        return takeSureHeadings(found.order, line.bytes);
    const QString reason = isHeadings || !holdsNumber(line.split)
                               ? QStringLiteral("the header cannot be read: %1").arg(line.flaw)
                               : noPosition(line.flaw);
    return isHeadings ? badHeader({m_lineNumber, reason}) : takeOther(line, reason);
}

/// A line that is longer than any that is read.
PositionParser::Result PositionParser::Reading::takeTooLongOpening(const QString &mistake)
{
    return takeOther(noPosition(mistake));
}

/// A line in front of all positions that is neither headings nor a position: a title, perhaps.
PositionParser::Result PositionParser::Reading::takeOther(const QString &reason, bool holdsData)
{
    m_reason.clear();
    return m_search.keepOther({m_lineNumber, reason}, holdsData) ? Result::Nothing
                                                                 : badHeader(m_search.otherLines());
}

/// The same of a line that may say in which units the positions are.
PositionParser::Result PositionParser::Reading::takeOther(const TextLine &line,
                                                          const QString &reason)
{
    m_search.keepUnits(line.text, line, m_lineNumber);
    return takeOther(reason, holdsCoordinates(line.split));
}

/// The first position, in an order that is not yet decided; Nothing, with the reason, when the line
/// is none.
PositionParser::Result PositionParser::Reading::takeFirstPosition(const SplitLine &line,
                                                                  const FieldOrder &found)
{
    FieldOrder order = found;
    const LineMistake mistake = m_search.settle(order);
    Result result = readFields(line, order);
    if (result == Result::BadLine && !isAttempt(line, order))
        return Result::Nothing;
    if (mistake.isThere())
        return badHeader(mistake);
    const HeadingsLine *headings = m_search.headingsOf(order);
    // Numbers of points are whole ones.
    if (result == Result::Position && !order.doubtfulFirst.isEmpty()
        && isOtherNumber(line.fields.first())) {
        return badHeader(
            {m_lineNumber,
             QStringLiteral("%1 stands where line %2 has %3, which may be a word of the remark and "
                            "head no column; say the order with a line of headings")
                 .arg(quoted(line.fields.first()))
                 .arg(headings->line)
                 .arg(quoted(order.doubtfulFirst))});
    }
    const QString height = heightBehind(line, order, m_form);
    if (!height.isEmpty())
        return badHeader({m_lineNumber, height});
    if (result == Result::Position && order.isPlain) {
        const QString doubt = doubtOnOrder(line, order);
        if (!doubt.isEmpty())
            result = bad(doubt);
    }
    if (result == Result::BadLine) {
        m_search.keepFailed(line, m_lineNumber);
        return result;
    }
    order.separator = line.separator;
    keepMark();
    decide(order, headings != nullptr ? headings->line : m_lineNumber,
           headings != nullptr ? headings->bytes : QByteArray());
    m_unitLines = m_search.linesOfUnits();
    watchBehind(line);
    const ComponentFields components = m_order->componentFields();
    m_isUnlikeWholeNumbers =
        m_order->isPlain && m_order->name >= 0 && !isWhole(m_name)
        && std::any_of(components.begin(), components.end(), [&line](int field) {
               return !isWhole(line.fields.at(field).toStdString());
           });
    return result;
}

/// Empty, or why the line that would decide the order for all others may be in another one.
QString PositionParser::Reading::doubtOnOrder(const SplitLine &line, const FieldOrder &order) const
{
    const auto lost = [&order](qint64 failed, int fields) {
        return QStringLiteral("%1 found; line %2, which cannot be read, has %3")
            .arg(fieldCount(order.fields))
            .arg(failed)
            .arg(fields);
    };
    if (const qint64 failed = m_search.numberedFailure(); failed > 0 && order.name < 0)
        return lost(failed, order.fields + 1);
    int fields = 0;
    if (const qint64 failed = m_search.failureOfMore(order, fields);
        failed > 0 && !order.hasHeight())
        return lost(failed, fields);
    return orderDoubt(line, order, m_form);
}

PositionParser::Result PositionParser::Reading::takeSureHeadings(const FieldOrder &found,
                                                                 std::string_view bytes)
{
    FieldOrder order = found;
    LineMistake mistake;
    if (!m_search.keepHeadings({order, m_lineNumber, copyOf(bytes), true}, mistake))
        return badHeader(mistake);
    mistake = m_search.settleUnits(order);
    if (mistake.isThere())
        return badHeader(mistake);
    decide(order, m_lineNumber, copyOf(bytes));
    m_unitLines = m_search.linesOfUnits();
    m_waitsForPosition = true;
    m_mayTakeUnits = true;
    return Result::Nothing;
}

} // namespace KelStd::positions
