#include <cli/conversion/SiteColumns.h>

#include <KelStd/positions/Columns.h>

#include <array>

namespace KelStd::cli {

positions::InputColumns SiteColumns::with(positions::InputColumns columns) const
{
    std::vector<positions::ExtraColumn> extras;
    for (const positions::Column &column : positions::siteColumns())
        extras.push_back({m_printer.csvName(column), positions::ExtraColumn::Kind::Number});
    columns.extras.insert(columns.extras.begin(), extras.begin(), extras.end());
    return columns;
}

const std::vector<std::string_view> &SiteColumns::with(const Pos &atSite,
                                                       const std::vector<std::string_view> &extras)
{
    Location there;
    there.localNEH = atSite;
    m_texts.resize(0);
    std::array<int, positions::componentsPerFrame> ends{};
    for (std::size_t i = 0; i < ends.size(); ++i) {
        m_printer.append(m_texts, positions::siteColumns()[i], there);
        ends[i] = m_texts.size();
    }
    m_fields.clear();
    int begin = 0;
    for (const int end : ends) {
        m_fields.emplace_back(m_texts.constData() + begin, static_cast<std::size_t>(end - begin));
        begin = end;
    }
    m_fields.insert(m_fields.end(), extras.begin(), extras.end());
    return m_fields;
}

} // namespace KelStd::cli
