#pragma once

#include <KelStd/Export.h>
#include <KelStd/library/LibraryRecord.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::library {

/// Finds records of the registry by words: of their names and, of systems, of the codes, areas and
/// countries of their origins.
///
///     RecordFilter filter({"utm", "31N"});
///     const bool isMet = filter.matches(RecordKind::Standard, "WGS 84 / UTM zone 31N"); // true
///
/// Case, accents and the order of the words do not matter, and a word may be the beginning of one.
/// Signs between letters and digits separate words: "EPSG:28992" is two.
class KELSTD_EXPORT RecordFilter
{
public:
    /// Of these words; without any every record matches.
    explicit RecordFilter(const QStringList &words);

    /// Whether each of the words begins one of the record's. Belongs to the thread that uses the
    /// registry.
    bool matches(RecordKind kind, const QString &name) const;

private:
    QStringList m_words; ///< as they are compared
};

} // namespace KelStd::library
