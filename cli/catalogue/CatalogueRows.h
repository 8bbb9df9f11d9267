#pragma once

#include <cli/catalogue/CatalogueText.h>
#include <cli/terminal/Console.h>

#include <KelStd/catalogue/CatalogueJson.h>

#include <vector>

namespace KelStd::cli {

/// Prints systems or datum shifts, as an object a line or as a table.
template <typename Row>
void printRows(const std::vector<Row> &rows, bool isJson, Console &console)
{
    if (isJson) {
        for (const Row &row : rows)
            console.write(jsonLine(row));
    } else {
        for (const QString &text : tableOf(rows))
            console.print(text);
    }
}

} // namespace KelStd::cli
