#include <KelStd/text/AngleSigns.h>

namespace KelStd {

QString angleSigns(AngleSign sign)
{
    QString characters;
    for (const AngleSignRow &row : angleSignRows) {
        if (row.sign == sign)
            characters += QChar(row.character);
    }
    return characters;
}

QString angleSigns()
{
    QString characters;
    for (const AngleSignRow &row : angleSignRows)
        characters += QChar(row.character);
    return characters;
}

} // namespace KelStd
