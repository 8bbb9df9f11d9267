#include <KelStd/positions/ReadComponents.h>

namespace KelStd::positions {

Column inputColumn(const InputForm &form, int component)
{
    if (form.isAtSite)
        return siteColumns()[static_cast<std::size_t>(component)];
    Column column = columnOf(form.frame, component);
    if (form.height == InputHeight::AboveGeoid && component == componentsPerFrame - 1) {
        column.csvName = "height_above_geoid";
        column.headerWords = "height h orthometric_height";
    }
    return column;
}

QString waysToSayOrder(const InputForm &form)
{
    return form.height == InputHeight::OfFrame
               ? QLatin1String("a line of headings or ") + form.words.columns
               : QStringLiteral("a line of headings");
}

} // namespace KelStd::positions
