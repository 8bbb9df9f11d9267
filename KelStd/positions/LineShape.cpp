#include <KelStd/positions/LineShape.h>

#include <KelStd/positions/Headings.h>
#include <KelStd/positions/LineDoubts.h>
#include <KelStd/positions/OrderDoubts.h>
#include <KelStd/positions/OtherColumns.h>
#include <KelStd/positions/OtherHeadings.h>
#include <KelStd/positions/PositionHeader.h>
#include <KelStd/positions/ReadComponents.h>
#include <KelStd/text/AngleSigns.h>
#include <KelStd/text/TypedAngle.h>

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// A sign with which other programs begin remarks. A "-" may head a column.
bool isSignOfRemark(const QString &field)
{
    static const QRegularExpression sign(QStringLiteral("\\A([%!*@$;]+|//+|--+)\\z"));
    return sign.match(field).hasMatch();
}

/// Whether the first field announces headings without being one: "%", "--", "order:" or "fields".
bool announcesHeadings(const SplitLine &line)
{
    static const QStringList words = {
        QStringLiteral("order"),   QStringLiteral("format"),   QStringLiteral("column"),
        QStringLiteral("columns"), QStringLiteral("field"),    QStringLiteral("fields"),
        QStringLiteral("header"),  QStringLiteral("headings"), QStringLiteral("heading")};
    const bool isApart = line.byBlanks || line.separator == QLatin1Char('\t');
    if (line.fields.isEmpty() || (!isApart && !isSignOfRemark(line.fields.first()))
        || line.fields.size() <= componentsPerFrame || line.isQuoted.value(0))
        return false;
    const QString &first = line.fields.first();
    const QString word = normalisedHeading(first);
    if (word.isEmpty()) // but "No" in one sign heads the numbers of points
        return !first.isEmpty() && !first.contains(QChar(0x2116));
    const auto colons = std::count_if(line.fields.cbegin(), line.fields.cend(),
                                      [](const auto &f) { return f.endsWith(QLatin1Char(':')); });
    const bool endsInColon = colons == 1 && first.endsWith(QLatin1Char(':'));
    return words.contains(word) || (endsInColon && !isNameWord(word) && !isKnown(headingOf(first)));
}

} // namespace

bool isValue(const QString &field)
{
    static const QRegularExpression value(
        QStringLiteral("\\A[-+NSEWnsew]?\\s*[0-9.][0-9.,\\s%1]*([eE][-+]?[0-9]+)?[NSEWnsew]?\\z")
            .arg(angleSigns()));
    return value.match(field).hasMatch();
}

bool isAttempt(const SplitLine &line, const FieldOrder &order)
{
    const ComponentFields fields = order.componentFields();
    return std::all_of(fields.begin(), fields.end(),
                       [&line](int field) { return isValue(line.fields.at(field)); });
}

bool isSentence(const SplitLine &line)
{
    static const QStringList particles = {
        QStringLiteral("and"), QStringLiteral("or"),  QStringLiteral("in"),
        QStringLiteral("of"),  QStringLiteral("the"), QStringLiteral("is"),
        QStringLiteral("are"), QStringLiteral("by"),  QStringLiteral("with")};
    return line.byBlanks
           && std::any_of(line.fields.cbegin(), line.fields.cend(),
                          [](const QString &field) { return particles.contains(field.toLower()); });
}

bool isSentenceOfRemark(const SplitLine &line)
{
    const QStringList fields = headingFields(line);
    return isSentence(line) || (line.byBlanks && 2 * countKnown(fields) <= fields.size());
}

QStringList headingFields(const SplitLine &line)
{
    QStringList fields = line.fields;
    if (announcesHeadings(line))
        fields.removeFirst();
    return line.byBlanks ? joinUnits(fields) : fields;
}

bool beginsAsPosition(const SplitLine &line)
{
    const QString first = line.separator == QLatin1Char(',')
                              ? line.fields.first()
                              : withDecimalPoint(line.fields.first(), DecimalMark::Comma);
    return !line.isQuoted.first()
           && (isOtherNumber(first) || (isValue(first) && hasAngleSigns(first)));
}

QString hintOnColumns(const SplitLine &line, const InputForm &form)
{
    const auto &fields = line.fields;
    const bool hasOthers = !std::all_of(fields.cbegin(), fields.cend(), isValue);
    if (form.height != InputHeight::OfFrame || !hasOthers)
        return {};
    for (int i = 0; i + componentsPerFrame <= fields.size(); ++i) {
        const QStringList three = fields.mid(i, componentsPerFrame);
        if (!std::all_of(three.cbegin(), three.cend(), isValue)
            || std::count_if(three.cbegin(), three.cend(), isOtherNumber) < 2)
            continue;
        // A whole number in front of three others is a point's.
        const QStringList next = fields.mid(i + 1, componentsPerFrame);
        if (isWhole(three.first().toStdString()) && next.size() == componentsPerFrame
            && std::all_of(next.cbegin(), next.cend(), isValue)
            && std::count_if(next.cbegin(), next.cend(), isOtherNumber) > 1)
            continue;
        QString columns = i > 0 ? QStringLiteral("%1,").arg(i) : QString();
        columns += QStringLiteral("%1,%2,%3").arg(i + 1).arg(i + 2).arg(i + 3);
        return QStringLiteral("; where %1, %2 and %3 are these, %4 %5 picks them")
            .arg(three.at(0), three.at(1), three.at(2), form.words.columns, columns);
    }
    return {};
}

} // namespace KelStd::positions
