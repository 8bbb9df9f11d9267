#include <KelStd/positions/ComponentReader.h>

#include <KelStd/positions/AnglesInUnits.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/OrderDoubts.h>
#include <KelStd/positions/ReadUnits.h>
#include <KelStd/positions/UnitDoubts.h>
#include <KelStd/text/DoubtfulZeros.h>
#include <KelStd/text/TypedAngle.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace KelStd::positions {

namespace {

/// Whether the field of an angle names the side of the earth, in front or behind.
bool hasHemisphere(const QString &field)
{
    const QString text = field.trimmed();
    const QString letters = QStringLiteral("NSEWnsew");
    return !text.isEmpty() && (letters.contains(text.front()) || letters.contains(text.back()));
}

/// Whether whole degrees stand before a column that is not read. It may hold their minutes, which
/// the careful way looks for.
bool mayHaveMinutes(const PlainLine &line, const FieldOrder &order, int field)
{
    const auto &components = order.components;
    const int next = field + 1;
    return next < order.fields && next != order.name
           && line.field(field).find('.') == std::string_view::npos
           && std::find(components.begin(), components.end(), next) == components.end();
}

} // namespace

void ComponentReader::follow(const FieldOrder &order)
{
    m_hasOtherAngles = false;
    m_isInMetres = true;
    for (int i = 0; i < componentsPerFrame; ++i) {
        const auto index = static_cast<std::size_t>(i);
        m_measures[index] = measureOf(m_form, order, i);
        m_isInMetres = m_isInMetres
                       && (isAngle(columnOf(m_form.frame, i))
                           || isReadIn(m_form, order, i, *unitNamed(QStringLiteral("m"))));
        m_hasOtherAngles =
            m_hasOtherAngles || (isAngle(columnOf(m_form.frame, i)) && order.otherUnits[index]);
    }
}

bool ComponentReader::readPlain(const PlainLine &line, const FieldOrder &order,
                                Components &components) const
{
    if (m_hasOtherAngles)
        return false;
    for (int i = 0; i < order.countComponents(); ++i) {
        const auto index = static_cast<std::size_t>(i);
        const Column &column = columnOf(m_form.frame, i);
        double &value = components[index];
        value = line.component(i);
        if (!isAngle(column))
            value *= m_measures[index];
        else if (hasDoubtfulZeros(line.field(order.components[index]))
                 || mayHaveMinutes(line, order, order.components[index]))
            return false;
        if (!(std::abs(value) <= column.limit))
            return false;
    }
    if (!order.hasHeight())
        components.back() = m_form.missingHeight->metres;
    return mayBeHeight(components.back(), m_form.frame, order);
}

QString ComponentReader::read(const SplitLine &line, const FieldOrder &order,
                              Components &components) const
{
    QString mistake = doubtOf(line, order);
    if (!mistake.isEmpty())
        return mistake;
    const auto mark = decimalMarkOf(line, order, m_form.frame, mistake);
    if (!mark)
        return mistake;
    for (int i = 0; i < order.countComponents(); ++i) {
        const auto index = static_cast<std::size_t>(i);
        const QString &field = line.fields.at(order.components[index]);
        if (isMissingHeight(i, field)) {
            if (!m_form.lacksHeight() && m_form.words.height.isEmpty()) {
                return QStringLiteral("height is missing; correct the line, or take it out of the "
                                      "list");
            }
            if (!m_form.lacksHeight()) {
                return QStringLiteral("height is missing; %1 says that of positions without one")
                    .arg(m_form.words.height);
            }
            components[index] = m_form.missingHeight->metres;
            continue;
        }
        const QString reason = readComponent(i, field, *mark, order, components[index]);
        if (!reason.isEmpty()) {
            return QString::fromLatin1(columnOf(m_form.frame, i).label) + QLatin1Char(' ') + reason;
        }
    }
    if (!order.hasHeight())
        components.back() = m_form.missingHeight->metres;
    else if (!mayBeHeight(components.back(), m_form.frame, order))
        return heightDoubt(line.fields.at(order.components.back()), m_form);
    return {};
}

bool ComponentReader::isMissingHeight(int component, const QString &field) const
{
    return component == componentsPerFrame - 1 && field.isEmpty() && m_form.mayLackHeight();
}

/// Empty, or what the fields may mean besides what they seem to say.
QString ComponentReader::doubtOf(const SplitLine &line, const FieldOrder &order) const
{
    QString doubt = tornAngle(line, order, m_form.frame);
    if (doubt.isEmpty())
        doubt = latitudeFirst(line, order, m_form);
    if (doubt.isEmpty())
        doubt = loneHemisphere(line, order, m_form.frame);
    if (doubt.isEmpty())
        doubt = unreadMinutes(line, order, m_form.frame);
    if (doubt.isEmpty())
        doubt = unitFieldMistake(line, order, m_form);
    return doubt;
}

/// Empty, or why the field is no value of the component.
QString ComponentReader::readComponent(int component, const QString &field, DecimalMark mark,
                                       const FieldOrder &order, double &value) const
{
    const Column &column = columnOf(m_form.frame, component);
    const AngleSense sense =
        column.valueType == ValueType_Longitude ? AngleSense::Longitude : AngleSense::Latitude;
    const NamedUnit *unit = order.otherUnits[static_cast<std::size_t>(component)];
    TypedValueFailure failure;
    const auto number = !isAngle(column)  ? readNumber(field, mark, failure)
                        : unit != nullptr ? readAngleInUnit(field, sense, mark, *unit, failure)
                                          : readTypedAngle(field, sense, mark, failure);
    if (!number)
        return failure.text;
    const double read = isAngle(column) && unit == nullptr
                            ? *number
                            : *number * measureOf(m_form, order, component);
    const bool isBackwards =
        isAngle(column) && countsBackwards(column, m_form.localAxes) && hasHemisphere(field);
    const double inMetresOrDegrees = isBackwards ? -read : read;
    if (!(std::abs(inMetresOrDegrees) <= column.limit)) {
        const bool isInDegrees = isAngle(column) && unit == nullptr;
        const double measure = isInDegrees ? 1.0 : measureOf(m_form, order, component);
        const QString limit = QString::number(column.limit / measure, 'g', 8);
        return QStringLiteral("%1 is not between -%2 and %2%3")
            .arg(field, limit,
                 isInDegrees ? QString() : QLatin1Char(' ') + unitTextOf(m_form, order, component));
    }
    value = inMetresOrDegrees;
    return {};
}

} // namespace KelStd::positions
