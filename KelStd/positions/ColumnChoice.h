#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/InputForm.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace KelStd::positions {

/// Which columns of an input are read: those of the three components of the frame in its order,
/// after that of the point name when there are four. Two are those of positions without heights;
/// so are three, after that of the name, where the form says that there are no heights. Each is a
/// heading of the input or the number of a column, from 1. The other columns are carried through. A
/// choice may be read on several threads at the same time.
class KELSTD_EXPORT ColumnChoice
{
public:
    /// "2,3,4", "id,easting,northing,7": columns between commas, blanks around them passed over. A
    /// heading with a comma stands in quotation marks, in which a mark is doubled, as in CSV:
    /// "\"Name, field\",2,3".
    /// May be called on any thread.
    ///
    /// \param mistake without a choice, why; untouched where there is one
    /// \param words what the mistake calls the choice
    /// \return nothing for a text that is no such list
    static std::optional<ColumnChoice> from(const QString &list, QString &mistake,
                                            const InputWords &words = {});

    /// The picked columns as they were written.
    const QStringList &columns() const { return m_columns; }

    /// Whether a column is picked by its heading, so that headings must stand in front of the
    /// positions; titles and remarks may stand in front of them.
    bool hasHeadings() const;

private:
    QStringList m_columns;
};

} // namespace KelStd::positions
