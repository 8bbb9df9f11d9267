#include <KelStd/positions/ColumnSelection.h>

#include <KelStd/positions/FactorColumns.h>
#include <KelStd/text/NearNames.h>

#include <algorithm>

namespace KelStd::positions {

namespace {

/// "there are wgs84-llh, ...", behind those that the name is near to.
QString framesBeside(const QString &given)
{
    QStringList names;
    for (const FrameRow &row : frames())
        names += QString::fromLatin1(row.option);
    names += QString::fromLatin1(siteFrameName);
    const QString hint = hintAt(nearNames(given, names));
    const QString there =
        hint.isEmpty() ? QStringLiteral("there are ") : hint + QStringLiteral(" There are ");
    return there + names.join(QLatin1String(", "));
}

/// The words of a list, each of them once.
bool readWords(const QString &list, QStringList &words, QString &mistake)
{
    for (const QString &each : list.split(QLatin1Char(','))) {
        const QString word = each.trimmed();
        if (word.isEmpty()) {
            mistake = QStringLiteral("a name is missing in '%1'").arg(list);
            return false;
        }
        if (words.contains(word)) {
            mistake = QStringLiteral("'%1' is named twice").arg(word);
            return false;
        }
        words += word;
    }
    return true;
}

} // namespace

std::vector<const FactorColumn *> ColumnSelection::factors() const
{
    std::vector<const FactorColumn *> found;
    for (const FactorColumn &factor : factorColumns()) {
        const bool isNamed =
            fields.contains(nameOf(factor)) || fields.contains(QLatin1String(factor.csvName));
        if (fields.isEmpty() ? hasFactors : isNamed)
            found.push_back(&factor);
    }
    return found;
}

bool ColumnSelection::namesSite() const
{
    return std::find(frames.begin(), frames.end(), FrameOrSite()) != frames.end();
}

bool readFrames(const QString &list, std::vector<FrameOrSite> &frames, QString &mistake)
{
    QStringList words;
    if (!readWords(list, words, mistake))
        return false;
    std::vector<FrameOrSite> found;
    for (const QString &word : words) {
        const FrameRow *row = findFrame(word);
        const bool isSite = word == QLatin1String(siteFrameName);
        if (row == nullptr && !isSite) {
            mistake = QStringLiteral("'%1' is no frame; %2").arg(word, framesBeside(word));
            return false;
        }
        found.push_back(isSite ? FrameOrSite() : row->frame);
    }
    frames = found;
    return true;
}

bool readFields(const QString &list, QStringList &fields, QString &mistake)
{
    QStringList words;
    if (!readWords(list, words, mistake))
        return false;
    fields = words;
    return true;
}

} // namespace KelStd::positions
