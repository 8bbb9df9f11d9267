#include <KelStd/text/CoordStringHelper.h>

#include <KelStd/text/EnumerationTables.h>

#include <QtCore/QHash>

#include <algorithm>

namespace KelStd {

namespace {

/// The words of an enumeration in both directions.
template <typename Enumeration>
struct Words
{
    QMap<Enumeration, QString> byEnumerator;
    QHash<QString, Enumeration> byWord; ///< the lowest where several rows should have the same
};

template <typename Enumeration, typename Row, std::size_t count>
Words<Enumeration> makeWords(const Row (&rows)[count])
{
    Words<Enumeration> words;
    for (const Row &row : rows) {
        if (row.fileWord == nullptr)
            continue;
        const QString word = QString::fromLatin1(row.fileWord);
        words.byEnumerator.insert(row.value, word);
        words.byWord.insert(word, std::min(row.value, words.byWord.value(word, row.value)));
    }
    return words;
}

/// Made at the first use and never destroyed: a host's static objects may look words up in their
/// destructors, when the static objects of this library are gone.
template <typename Enumeration, const auto &rows>
const Words<Enumeration> &wordsOf()
{
    static const Words<Enumeration> &words = *new Words<Enumeration>(makeWords<Enumeration>(rows));
    return words;
}

} // namespace

// One line for each enumeration: its table and the two directions. The first argument is the
// enumeration, then the name piece of its operations, of its table and of the maker, its rows.
#define KELSTD_FILE_WORDS(Enumeration, toWord, fromWordName, table, make, rows)                    \
    QMap<Enumeration, QString> CoordStringHelper::make()                                           \
    {                                                                                              \
        return wordsOf<Enumeration, rows>().byEnumerator;                                          \
    }                                                                                              \
    const QMap<Enumeration, QString> CoordStringHelper::table = CoordStringHelper::make();         \
    QString CoordStringHelper::toWord(Enumeration value)                                           \
    {                                                                                              \
        return wordsOf<Enumeration, rows>().byEnumerator.value(value);                             \
    }                                                                                              \
    Enumeration CoordStringHelper::fromWordName(const QString &word)                               \
    {                                                                                              \
        return wordsOf<Enumeration, rows>().byWord.value(word, static_cast<Enumeration>(0));       \
    }

KELSTD_FILE_WORDS(EValueType, ForCoordIO_ValueType_to_AsciiString,
                  ForCoordIO_ValueType_from_AsciiString, s_forCoordIO_valTypeAsciiStrings,
                  _Make_ForCoordIO_ValType_AsciiStrings, valueTypeRows)
KELSTD_FILE_WORDS(EUnit, ForCoordIO_Unit_to_DescriptionAsciiString,
                  ForCoordIO_Unit_from_DescriptionAsciiString,
                  s_forCoordIO_unitDescriptionAsciiStrings,
                  _Make_ForCoordIO_UnitDescription_AsciiStrings, unitRows)
KELSTD_FILE_WORDS(EFormat, ForCoordIO_Format_to_AsciiString, ForCoordIO_Format_from_AsciiString,
                  s_forCoordIO_formatAsciiStrings, _Make_ForCoordIO_Format_AsciiStrings, formatRows)

#define KELSTD_FILE_WORDS_OF(Enumeration, rows)                                                    \
    KELSTD_FILE_WORDS(Enumeration, ForCoordIO_##Enumeration##_to_AsciiString,                      \
                      ForCoordIO_##Enumeration##_from_AsciiString,                                 \
                      s_forCoordIO_##Enumeration##_asciiStrings,                                   \
                      _Make_ForCoordIO_##Enumeration##_AsciiStrings, rows)

KELSTD_FILE_WORDS_OF(ELocationType, locationTypeRows)
KELSTD_FILE_WORDS_OF(ELocationZeroType, locationZeroTypeRows)
KELSTD_FILE_WORDS_OF(EWhichHalfEarth, whichHalfEarthRows)
KELSTD_FILE_WORDS_OF(EEllipsoidDirection, ellipsoidDirectionRows)
KELSTD_FILE_WORDS_OF(EEllipsoinTransformFunction, ellipsoinTransformFunctionRows)
KELSTD_FILE_WORDS_OF(EEllipsoinTransition, ellipsoinTransitionRows)
KELSTD_FILE_WORDS_OF(EPlaneTransformFunction, planeTransformFunctionRows)
KELSTD_FILE_WORDS_OF(EElevationFittingFunction, elevationFittingFunctionRows)

#undef KELSTD_FILE_WORDS_OF
#undef KELSTD_FILE_WORDS

QString CoordStringHelper::ForCoordIO_Boolean_to_AsciiString(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

bool CoordStringHelper::ForCoordIO_Boolean_from_AsciiString(const QString &word)
{
    return word.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

} // namespace KelStd
