#include <KelStd/library/RecordLoss.h>

#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/RecordParamNames.h>

#include <QtCore/QObject>
#include <QtCore/QPair>

namespace KelStd::library {

namespace {

QString inQuotes(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

constexpr io::NamedParam<Ellipsoid> ellipsoidParams[] = {
    {"biggerHalfAxle", &Ellipsoid::biggerHalfAxle},
};

using Params = QList<QPair<QString, Param *>>;

template <typename Part, std::size_t count>
void append(Params &params, Part &part, const io::NamedParam<Part> (&rows)[count])
{
    for (const auto &row : rows)
        params.append({QString::fromLatin1(row.name), &(part.*row.member)});
}

/// Every parameter of a system.
Params paramsOf(Coord &coord)
{
    Params params;
    auto &own = coord.projection.param;
    for (auto param = own.begin(); param != own.end(); ++param)
        params.append({param.key(), &*param});
    append(params, coord.ellipsoid, ellipsoidParams);
    append(params, coord.ellipsoidTransform, io::ellipsoidTransformParams);
    append(params, coord.planeTransform, io::planeTransformParams);
    append(params, coord.elevationFitting, io::elevationFittingParams);
    return params;
}

/// A system with the record as a part of it: the parts are written alike wherever they stand.
struct AsSystem
{
    Coord operator()(const Coord &coord) const { return coord; }
    Coord operator()(const Ellipsoid &ellipsoid) const
    {
        Coord coord;
        coord.ellipsoid = ellipsoid;
        return coord;
    }
    Coord operator()(const Projection &projection) const
    {
        Coord coord;
        coord.projection = projection;
        return coord;
    }
};

bool isKept(const QVariant &value, const QVariant &read)
{
    constexpr int digits = 15; // of a number in a document
    if (value == read)
        return true;
    const bool areNumbers =
        value.userType() == QMetaType::Double && read.userType() == QMetaType::Double;
    return areNumbers
           && QString::number(value.toDouble(), 'g', digits)
                  == QString::number(read.toDouble(), 'g', digits);
}

QString notKept(const QString &what)
{
    return QObject::tr("%1, which a document that the library writes does not keep; copy the "
                       "file into the library's directory instead")
        .arg(what);
}

QString describedValue(const Param &param, const QVariant &value)
{
    return param.valType == ValueType_String               ? QObject::tr("a text")
           : param.valType == ValueType_EllipsoidDirection ? QObject::tr("a direction of axes")
                                                           : inQuotes(value.toString());
}

/// What the document lost of a parameter; empty for nothing.
QString lossOf(const QString &name, const Param &param, const Param &read)
{
    const QString title = QObject::tr("its parameter %1").arg(inQuotes(name));
    if (!isKept(param.value, read.value)) {
        return notKept(QObject::tr("the value of %1 is %2")
                           .arg(title, param.isDictionary ? QObject::tr("one beside a dictionary")
                                                          : describedValue(param, param.value)));
    }
    const auto &entries = param.dictionaryValues;
    for (auto entry = entries.constBegin(); entry != entries.constEnd(); ++entry) {
        const auto found = read.dictionaryValues.constFind(entry.key());
        if (found == read.dictionaryValues.constEnd() || !isKept(*entry, *found)) {
            return notKept(QObject::tr("the entry %1 of %2 is %3")
                               .arg(inQuotes(entry.key()), title, describedValue(param, *entry)));
        }
    }
    Param rest = read;
    rest.value = param.value;
    rest.dictionaryValues = entries;
    return rest == param ? QString() : notKept(title + QObject::tr(" has a kind or a unit"));
}

bool haveSameNames(const Coord &one, const Coord &other)
{
    return one.coord_name == other.coord_name
           && one.ellipsoid.ellipsoid_name == other.ellipsoid.ellipsoid_name
           && one.projection.projection_name == other.projection.projection_name;
}

QString lossBetween(Coord given, Coord read)
{
    const Params params = paramsOf(given);
    const Params readParams = paramsOf(read);
    for (int i = 0; i < params.size(); ++i) {
        const QString &name = params.at(i).first;
        if (i >= readParams.size() || readParams.at(i).first != name)
            return notKept(QObject::tr("its parameter has the name %1").arg(inQuotes(name)));
        QString loss = lossOf(name, *params.at(i).second, *readParams.at(i).second);
        if (!loss.isEmpty())
            return loss;
        *readParams.at(i).second = *params.at(i).second; // the last digits of numbers are no loss
    }
    return given == read && haveSameNames(given, read)
               ? QString()
               : notKept(QObject::tr("it has a name or a word"));
}

} // namespace

LossCheck checkLoss(const LibraryRecord &record)
{
    const Coord given = std::visit(AsSystem{}, record);
    Coord read;
    QString reason;
    if (!io::readBackFromMemory(given, read, &reason)) {
        return {{},
                reason.isEmpty() ? QObject::tr("the document that the library would write of it "
                                               "could not be read back")
                                 : reason};
    }
    return {lossBetween(given, read), {}};
}

} // namespace KelStd::library
