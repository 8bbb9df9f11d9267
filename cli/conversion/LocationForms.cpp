#include <cli/conversion/LocationForms.h>

#include <cli/values/TableWriter.h>

#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/JsonWriter.h>
#include <KelStd/positions/LocationPrinter.h>
#include <KelStd/positions/SpreadsheetWriter.h>

#include <QtCore/QLocale>

namespace KelStd::cli {

namespace {

positions::LocationPrinter plainPrinter(const LocationOutput &output)
{
    return {output.display, positions::ValuePrinter::Output::Csv, output.planeUnit};
}

std::unique_ptr<positions::PositionWriter> makeTable(const LocationOutput &output)
{
    const positions::LocationPrinter printer(output.display, positions::ValuePrinter::Output::Table,
                                             output.planeUnit);
    const bool fits =
        output.width == 0
        || output.width >= TableWriter::wideWidth(printer, output.geoidModel, output.columns);
    return std::make_unique<TableWriter>(
        printer, fits ? TableWriter::Layout::Wide : TableWriter::Layout::Narrow, output.geoidModel,
        output.columns);
}

std::unique_ptr<positions::PositionWriter> makeCsv(const LocationOutput &output)
{
    return std::make_unique<positions::CsvWriter>(plainPrinter(output), output.hasHeader,
                                                  output.columns);
}

std::unique_ptr<positions::PositionWriter> makeJson(const LocationOutput &output)
{
    return std::make_unique<positions::JsonWriter>(plainPrinter(output), output.columns);
}

std::unique_ptr<positions::PositionWriter> makeGeoJson(const LocationOutput &output)
{
    return std::make_unique<positions::GeoJsonWriter>(plainPrinter(output), output.columns);
}

std::unique_ptr<positions::PositionWriter> makeSpreadsheet(const LocationOutput &output)
{
    return std::make_unique<positions::SpreadsheetWriter>(
        plainPrinter(output), positions::SpreadsheetDialect(QLocale::system()), output.hasHeader,
        output.columns);
}

} // namespace

const std::vector<LocationForm> &locationForms()
{
    static const std::vector<LocationForm> rows = {
        {{"table", "Print an aligned table, the default on a terminal."}, false, true, makeTable},
        {{"csv", "Print comma-separated values, the default\nelsewhere."}, true, false, makeCsv},
        {{"json", "Print a JSON object a line."}, false, false, makeJson},
        {{"geojson", "Print a GeoJSON FeatureCollection, a feature a\nline."},
         false,
         false,
         makeGeoJson},
        {{"excel",
          "Print comma-separated values as a spreadsheet of\nthe locale opens them by a double "
          "click."},
         true,
         false,
         makeSpreadsheet},
    };
    return rows;
}

OutputForms locationOutputForms()
{
    OutputForms forms;
    for (const LocationForm &row : locationForms())
        forms.push_back(row.form);
    return forms;
}

} // namespace KelStd::cli
