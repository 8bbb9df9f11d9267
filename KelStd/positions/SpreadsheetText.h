#pragma once

#include <KelStd/Export.h>

#include <QtCore/QLocale>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// How spreadsheets take the fields of a file of comma-separated values that is opened without
/// questions. They make numbers, dates, truth values and formulas of whatever looks like one:
/// "00123" loses its zeros, "3/4" becomes a day, "=..." is computed.
namespace KelStd::positions {

/// What a spreadsheet expects in a locale. Everything here may be called on any thread.
class KELSTD_EXPORT SpreadsheetDialect
{
public:
    /// What spreadsheets that are set to `locale` expect.
    explicit SpreadsheetDialect(const QLocale &locale);

    /// Between fields: ';' where decimals stand behind a comma, and in Switzerland and
    /// Liechtenstein; ',' elsewhere.
    char separator() const { return m_separator; }

    /// In front of decimals: ',' or '.'.
    char decimalPoint() const { return m_decimalPoint; }

    /// Whether a text stays as it is. To be on the safe side, only those do that begin with a
    /// letter, are no truth value and have no digits behind the name of a month.
    bool keeps(const QString &text) const;

    /// The same for the name of a point: a whole number without a sign, without zeros in front and
    /// of at most 11 digits stays, too, as a number.
    bool keepsName(const QString &text) const;

private:
    bool isMonth(const QString &word) const;

    char m_separator;
    char m_decimalPoint;
    bool m_hasEras; ///< "H30.1.1" is a day
    QStringList m_months;
};

/// The text as a spreadsheet keeps it: as the value of a formula, ="text". A text that is longer
/// than formulas may be, 8,000 characters, has an apostrophe in front instead.
KELSTD_EXPORT QString asSpreadsheetText(const QString &text);

/// The text of such a formula; any other field as it stands.
KELSTD_EXPORT QString fromSpreadsheetText(const QString &field);

} // namespace KelStd::positions
