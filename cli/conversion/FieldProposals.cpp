#include <cli/conversion/FieldProposals.h>

#include <cli/conversion/EpochSource.h>
#include <cli/run/HeadingProposals.h>

#include <KelStd/positions/Columns.h>
#include <KelStd/positions/FactorColumns.h>

namespace KelStd::cli {

namespace {

Proposal proposalOf(const positions::Column &column)
{
    return {QString::fromLatin1(column.csvName), QString::fromLatin1(column.label)};
}

} // namespace

QList<Proposal> fieldProposals(const TypedLine &line)
{
    QList<Proposal> fields = {{QStringLiteral("point"), QStringLiteral("the point's name")}};
    for (const positions::Column &column : positions::columns())
        fields += proposalOf(column);
    fields.append({QString::fromLatin1(positions::heightReferenceName),
                   QStringLiteral("what the projected height is above")});
    for (const positions::Column &column : positions::siteColumns())
        fields.append({QString::fromLatin1(column.csvName), QStringLiteral("at the site")});
    for (const positions::FactorColumn &factor : positions::factorColumns())
        fields.append({QString::fromLatin1(factor.csvName), QString::fromLatin1(factor.label)});
    if (line.options.contains(QStringLiteral("nmea"))) {
        for (const QString &name : EpochSource::columnNames())
            fields.append({name, QStringLiteral("of the receiver")});
        return fields;
    }
    return fields + headingProposals(line);
}

} // namespace KelStd::cli
