#include <KelStd/positions/PositionReading.h>
#include <KelStd/positions/ReadUnits.h>

/// What is said once of an input whose order is known.
namespace KelStd::positions {

QStringList PositionParser::Reading::notes() const
{
    QStringList notes;
    if (!isSettled())
        return notes;
    for (const QString &note : {noteOnColumns(), noteOnComputedColumns(),
                                noteOnUnits(m_form, *m_order), noteOnHeight(), noteOnGeoid()}) {
        if (!note.isEmpty())
            notes += note;
    }
    return notes;
}

/// What height the positions have whose lines have none.
QString PositionParser::Reading::noteOnHeight() const
{
    if (m_order->hasHeight() && !fillsHeights())
        return {};
    const MissingHeight &height = *m_form.missingHeight;
    const QString above =
        height.above.isEmpty() ? QString() : QStringLiteral(", above ") + height.above;
    if (!height.isGiven)
        return QStringLiteral("no height given: 0 is taken%1; %2 says another")
            .arg(above, m_form.words.height);
    return height.above.isEmpty() ? QString()
                                  : QStringLiteral("the height of %1 is taken as it is%2")
                                        .arg(m_form.words.height, above);
}

QString PositionParser::Reading::noteOnGeoid() const
{
    const bool isEllipsoidal = m_form.frame == Frame::LocalProjected
                                   ? m_form.isPlaneHeightEllipsoidal && !m_form.isAtSite
                                   : m_form.height == InputHeight::OfFrame;
    if (m_order->geoidHeight.isEmpty() || !isEllipsoidal)
        return {};
    return QStringLiteral("%1 is read as a height above the ellipsoid, and its heading speaks of "
                          "another")
        .arg(quoted(m_order->geoidHeight));
}

namespace {

/// `text` with the columns' headings; nothing for none.
QString namingColumns(const QString &text, const QStringList &headings)
{
    return headings.isEmpty() ? QString() : text.arg(listedHeadings(headings));
}

} // namespace

QString PositionParser::Reading::noteOnColumns() const
{
    return namingColumns(QStringLiteral("columns that are not in the output: %1"),
                         m_order->notTaken);
}

/// A list that the program printed before has them, but so may one of another surveyor's.
QString PositionParser::Reading::noteOnComputedColumns() const
{
    return namingColumns(
        QStringLiteral("not carried through, since they are named as what is computed: %1"),
        m_order->computedAnew);
}

} // namespace KelStd::positions
