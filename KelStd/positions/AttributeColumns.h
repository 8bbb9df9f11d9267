#pragma once

#include <KelStd/Export.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PrintedColumns.h>

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

#include <string_view>
#include <vector>

namespace KelStd::positions {

/// The names with a number behind those that differ from one before by no more than case.
KELSTD_EXPORT QStringList numberedNames(const QStringList &names);

/// The printed columns as attributes of features that have a name of their own: all of them but the
/// name.
class KELSTD_EXPORT AttributeColumns
{
public:
    /// Takes all of `columns` but the name.
    void take(const PrintedColumns &columns);

    /// In the order in which they are printed.
    const std::vector<PrintedColumn> &all() const { return m_columns; }

    /// The names of the attributes, in the same order.
    QStringList names() const;

    /// The value of one as a UTF-8 text: empty where there is none. Valid until `buffer` changes.
    static std::string_view text(const LocationPrinter &printer, const PrintedColumn &column,
                                 const PrintedPosition &position, QByteArray &buffer);

private:
    std::vector<PrintedColumn> m_columns;
};

} // namespace KelStd::positions
