#pragma once

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// Vector files as plain values: the boundary between the program and the module that reads and
/// writes them. The module is built with the program, loaded when a vector file is used and never
/// unloaded. All texts are UTF-8, all paths absolute. Nothing raises an exception over the
/// boundary.
namespace KelStd::cli::vector {

/// What the program asks a module for is what it was built with.
inline constexpr int interfaceVersion = 5;

/// A coordinate reference system, in facts that can be compared.
struct Reference
{
    enum class Kind
    {
        None,
        Geographic, ///< longitude, latitude [deg]
        Geocentric, ///< X, Y, Z
        Projected,  ///< easting, northing
        Other       ///< local to an engine, of time, with axes to the south or west
    };

    Kind kind = Kind::None;
    std::string name;  ///< "Amersfoort / RD New"
    std::string code;  ///< "EPSG:28992"; empty where the definition states none
    std::string datum; ///< "Amersfoort"; "unknown" or empty where it has no name
    std::string ellipsoid;
    double semiMajor = 0.0;         ///< [m]
    double inverseFlattening = 0.0; ///< 0 for a sphere
    double primeMeridian = 0.0;     ///< east of Greenwich [deg]
    std::string unit;               ///< of the components, "metre", "degree"
    double unitFactor = 1.0;        ///< what one of them measures [m] or [rad]
    std::string vertical;           ///< the vertical system that heights belong to; empty for none
    double heightFactor = 1.0;      ///< what one unit of a height measures [m]
    bool hasHeightUnit = false;     ///< whether the system itself says so
    bool countsDown = false;        ///< whether its heights are depths
    std::string projection;      ///< as a PROJ string, without the datum; empty where there is none
    std::vector<double> toWgs84; ///< the seven parameters that the definition states; or none
    std::string otherAxes;       ///< of `Other`: what its axes are
    bool isLocal = false;        ///< of `Other`: a plane of its own, east and north, as a site has
    std::string definition;      ///< WKT 2
    /// Of a datum with another prime meridian: the one with that of Greenwich, by its name and by
    /// the WKT 2 of its longitude and latitude.
    std::string greenwichDatum;
    std::string greenwichDefinition;
};

enum class FieldType
{
    Text,
    Integer,
    Real,
    Boolean,
    Date
};

struct Field
{
    std::string name;
    FieldType type = FieldType::Text;
};

/// The value of a field; nothing where it is not set. A truth value is 0 or 1, a date the text
/// "2024-05-01".
using Value = std::variant<std::monostate, std::string, long long, double>;

struct Layer
{
    std::string name;
    std::string geometry;      ///< "Point", "3D Line String"
    bool mayHavePoints = true; ///< false for a layer of lines, polygons or without geometries
    bool mayHaveOthers = true; ///< false where every feature is a point that can be taken
    long long features = -1;   ///< -1 where that is not known
    Reference reference;
    std::string heightReference; ///< what its heights are above, as the program wrote it; or empty
    std::vector<Field> fields;
};

struct Feature
{
    long long id = 0;
    /// Why it is no point; empty when it is one. An attribute or a position that is not finite is
    /// such a reason.
    std::string failure;
    std::string geometry; ///< of one that is no point: as well-known text
    double x = 0.0;       ///< easting, longitude or X, whatever the order of the system's axes
    double y = 0.0;
    double z = 0.0;
    bool hasZ = false;
    std::vector<Value> values; ///< one for each field
};

/// The features of one layer, in their order.
class LayerReader
{
public:
    enum class Result
    {
        Feature,
        None,    ///< passed over: the label of a point
        OnPaper, ///< passed over: on a sheet of a drawing, not in the world that it shows
        End,
        Error
    };

    LayerReader() = default;
    virtual ~LayerReader() = default;
    LayerReader(const LayerReader &) = delete;
    LayerReader &operator=(const LayerReader &) = delete;

    /// The layer, of whose fields those that the format makes up are left out.
    virtual const Layer &layer() const = 0;

    virtual Result next(Feature &feature) = 0;

    /// Of the last `Error`.
    virtual std::string errorText() const = 0;

    /// The first of what there was to warn of while features were read; empty for nothing.
    virtual std::string warningText() const = 0;
};

/// A file with layers. Its readers do not outlive it.
class LayerSource
{
public:
    LayerSource() = default;
    virtual ~LayerSource() = default;
    LayerSource(const LayerSource &) = delete;
    LayerSource &operator=(const LayerSource &) = delete;

    virtual const std::string &format() const = 0; ///< "GPKG"
    virtual const std::vector<Layer> &layers() const = 0;

    /// `index`: in `layers`. Null with the `error`.
    virtual std::unique_ptr<LayerReader> read(std::size_t index, std::string &error) = 0;
};

/// What is to be written.
struct NewLayer
{
    std::string path;   ///< of a file that does not exist, with its extension
    std::string format; ///< the name of the driver
    std::string name;
    std::string reference; ///< a code or a definition; empty for none
    /// What its heights are above, for formats that hold more of a layer than its fields.
    std::string heightReference;
    std::vector<Field> fields;
};

/// Points written to a new file.
class LayerWriter
{
public:
    LayerWriter() = default;
    virtual ~LayerWriter() = default;
    LayerWriter(const LayerWriter &) = delete;
    LayerWriter &operator=(const LayerWriter &) = delete;

    /// False with the `error`; nothing can be added then.
    virtual bool add(const Feature &feature, std::string &error) = 0;

    /// Once, behind the last one. False with the `error`: the file is not complete.
    virtual bool finish(std::string &error) = 0;

    /// How many numbers have lost digits, because the format has decimals for no more.
    virtual long long roundedNumbers() const = 0;
};

/// What stands in front of what its heights are above, where a format describes its layers.
inline constexpr char heightReferenceInDescription[] = "local_height_reference: ";

class VectorFiles
{
public:
    VectorFiles() = default;
    virtual ~VectorFiles() = default;
    VectorFiles(const VectorFiles &) = delete;
    VectorFiles &operator=(const VectorFiles &) = delete;

    /// "3.6.2"
    virtual std::string release() const = 0;

    /// The names of the formats that are read, and those that are written.
    virtual std::vector<std::string> readFormats() const = 0;
    virtual std::vector<std::string> writtenFormats() const = 0;

    /// The PROJ library that the module itself uses: its file.
    virtual std::string projFile() const = 0;

    /// Null with the `error` for a file that is none of a format that is read.
    virtual std::unique_ptr<LayerSource> open(const std::string &path, std::string &error) = 0;

    /// The facts of a code or a definition. False with the `error`.
    virtual bool describe(const std::string &text, Reference &reference, std::string &error) = 0;

    /// Whether two definitions have the same datum by all the names that the database has for it.
    virtual bool haveSameDatum(const std::string &one, const std::string &other) = 0;

    /// Null with the `error`.
    virtual std::unique_ptr<LayerWriter> create(const NewLayer &layer, std::string &error) = 0;
};

/// What a module offers under the name `kelstdVectorFiles`: the one object of the process, or null
/// for another version of the interface.
using VectorFilesEntry = VectorFiles *(*)(int version);
inline constexpr char vectorFilesEntryName[] = "kelstdVectorFiles";

} // namespace KelStd::cli::vector
