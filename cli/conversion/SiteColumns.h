#pragma once

#include <KelStd/coord/Location.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QByteArray>

#include <string_view>
#include <vector>

namespace KelStd::cli {

/// The columns of the coordinates at a system's site, in front of the other extra columns: they
/// stand behind the frames.
class SiteColumns
{
public:
    /// `printer`: that of the frames, whose units and decimals the columns have, too.
    explicit SiteColumns(const positions::LocationPrinter &printer) : m_printer(printer) {}

    /// The columns of an input and, in front of its extra ones, those of the site.
    positions::InputColumns with(positions::InputColumns columns) const;

    /// The same of the texts of a position; valid until the next call.
    const std::vector<std::string_view> &with(const Pos &atSite,
                                              const std::vector<std::string_view> &extras);

private:
    positions::LocationPrinter m_printer;
    QByteArray m_texts;
    std::vector<std::string_view> m_fields;
};

} // namespace KelStd::cli
