#include <KelStd/positions/ComponentReader.h>

#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/OrderDoubts.h>
#include <KelStd/positions/UnitDoubts.h>
#include <KelStd/text/DoubtfulZeros.h>
#include <KelStd/text/TypedAngle.h>

#include <algorithm>
#include <cmath>
#include <string_view>

namespace KelStd::positions {

namespace {

/// Whether whole degrees stand before a column that is not read: with care it is asked what is in
/// it.
bool mayHaveMinutes(const PlainLine &line, const FieldOrder &order, int field)
{
    const auto &components = order.components;
    const int next = field + 1;
    return next < order.fields && next != order.name
           && line.field(field).find('.') == std::string_view::npos
           && std::find(components.begin(), components.end(), next) == components.end();
}

} // namespace

ComponentReader::ComponentReader(const InputForm &form) : m_form(form)
{
    for (int i = 0; i < componentsPerFrame; ++i)
        m_metresPerUnit[static_cast<std::size_t>(i)] = form.metresPerUnit(i);
}

bool ComponentReader::readPlain(const PlainLine &line, const FieldOrder &order,
                                Components &components) const
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const Column &column = columnOf(m_form.frame, i);
        double &value = components[index];
        value = line.component(i);
        if (!isAngle(column))
            value *= m_metresPerUnit[index];
        else if (hasDoubtfulZeros(line.field(order.components[index]))
                 || mayHaveMinutes(line, order, order.components[index]))
            return false;
        if (!(std::abs(value) <= column.limit))
            return false;
    }
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
    for (int i = 0; i < componentsPerFrame; ++i) {
        const auto index = static_cast<std::size_t>(i);
        const QString &field = line.fields.at(order.components[index]);
        const QString reason = readComponent(i, field, *mark, components[index]);
        if (!reason.isEmpty()) {
            return QString::fromLatin1(columnOf(m_form.frame, i).label) + QLatin1Char(' ') + reason;
        }
    }
    if (!mayBeHeight(components.back(), m_form.frame, order))
        return heightDoubt(line.fields.at(order.components.back()), m_form);
    return {};
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
                                       double &value) const
{
    const Column &column = columnOf(m_form.frame, component);
    const AngleSense sense =
        column.valueType == ValueType_Longitude ? AngleSense::Longitude : AngleSense::Latitude;
    QString reason;
    const auto number = isAngle(column) ? readTypedAngle(field, sense, mark, reason)
                                        : readNumber(field, mark, reason);
    if (!number)
        return reason;
    const double inMetresOrDegrees =
        isAngle(column) ? *number : *number * m_metresPerUnit[static_cast<std::size_t>(component)];
    if (!(std::abs(inMetresOrDegrees) <= column.limit))
        return QStringLiteral("%1 is not between -%2 and %2").arg(field).arg(column.limit);
    value = inMetresOrDegrees;
    return {};
}

} // namespace KelStd::positions
