#include <KelStd/catalogue/SourceText.h>

#include <KelStd/catalogue/Catalogue.h>
#include <KelStd/catalogue/ProjSteps.h>
#include <KelStd/io/ProjNames.h>
#include <KelStd/text/TextDecoder.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>

namespace KelStd::catalogue {

namespace {

constexpr int maxNameLength = 200;
constexpr int maxProjString = 4096; ///< bytes; those of the database have some two hundred

QString notText()
{
    return QStringLiteral("the source is no text in UTF-8 or UTF-16");
}

/// The text without its byte-order mark, in UTF-8; nothing where it is no text.
std::optional<QByteArray> decoded(const QByteArray &source)
{
    const bool isUtf16 = source.startsWith("\xff\xfe") || source.startsWith("\xfe\xff");
    TextDecoder decoder(isUtf16 ? "UTF-16" : "UTF-8",
                        isUtf16 ? TextDecoder::Mark::Dropped : TextDecoder::Mark::Kept);
    QString text = decoder.decode(source);
    const bool isDamaged = decoder.hasFoundDamage() || decoder.isInsideCharacter();
    if (isDamaged && isUtf16)
        return std::nullopt;
    if (isDamaged) {
        // .prj files of older programs have names in an 8-bit code; what matters is ASCII.
        text = QString::fromLatin1(source);
    }
    if (text.startsWith(QChar(0xfeff)))
        text.remove(0, 1);
    text = text.trimmed();
    if (text.contains(QChar(0)))
        return std::nullopt;
    return text.toUtf8();
}

/// How deep brackets nest outside of quotation marks.
int depthOf(const QByteArray &text)
{
    int depth = 0;
    int deepest = 0;
    bool isQuoted = false;
    for (const char c : text) {
        if (c == '"')
            isQuoted = !isQuoted;
        else if (isQuoted)
            continue;
        else if (c == '[' || c == '(' || c == '{')
            deepest = std::max(deepest, ++depth);
        else if (c == ']' || c == ')' || c == '}')
            --depth;
    }
    return deepest;
}

/// Why a PROJ string is not imported; empty where nothing speaks against it.
QString problemOf(const QByteArray &text)
{
    if (text.size() > maxProjString)
        return QStringLiteral("the PROJ string has more than %1 bytes").arg(maxProjString);
    const std::vector<ProjStep> steps = stepsOf(text);
    const QString words = QString::fromUtf8(text);
    if (QRegularExpression(QStringLiteral("(^|\\s)\\+?(step(\\s|$)|proj=pipeline)"))
            .match(words)
            .hasMatch())
        return QStringLiteral("a pipeline is no coordinate system; give the system itself, as "
                              "\"+proj=utm +zone=31 +datum=WGS84\"");
    if (QRegularExpression(QStringLiteral("(^|\\s)\\+?init=")).match(words).hasMatch())
        return QStringLiteral("\"+init=\" reads a file; give the code instead, as EPSG:28992");
    if (steps.size() != 1)
        return QStringLiteral("the PROJ string names no projection, as \"+proj=tmerc\"");
    const ProjStep &step = steps.front();
    static const QSet<QByteArray> files = {"nadgrids", "geoidgrids", "grids", "xy_grids",
                                           "z_grids",  "catalog",    "file",  "geoid_crs"};
    QSet<QByteArray> names;
    for (const auto &parameter : step.parameters) {
        const QByteArray &name = parameter.first;
        if (files.contains(name) && parameter.second != "@null")
            return QStringLiteral("\"+%1=\" leads to a file of the text's own choice; import the "
                                  "system by its code, which finds the grid")
                .arg(QString::fromUtf8(name));
        if (name != "type" && name != "title"
            && !io::isProjParameterOf(QString::fromUtf8(step.name), QString::fromUtf8(name)))
            return QStringLiteral("PROJ would pass over the parameter \"%1\" of \"%2\"")
                .arg(QString::fromUtf8(name.left(40)), QString::fromUtf8(step.name.left(40)));
        if (names.contains(name))
            return QStringLiteral("the parameter \"%1\" is given twice")
                .arg(QString::fromUtf8(name));
        names += name;
    }
    const QSet<QByteArray> figures = {"datum", "ellps", "a", "R"};
    if (!names.intersects(figures))
        return QStringLiteral("the PROJ string names neither a datum nor an ellipsoid, and PROJ "
                              "would take WGS 84; say which, as \"+ellps=bessel\"");
    return {};
}

/// Every system's keyword ends like this: PROJCS, COMPD_CS, BOUNDCRS.
bool isWkt(const QByteArray &text)
{
    static const QRegularExpression start(QStringLiteral("^[A-Za-z_]*(CS|CRS)\\s*[\\[(]"),
                                          QRegularExpression::CaseInsensitiveOption);
    return start.match(QString::fromUtf8(text.left(100))).hasMatch();
}

bool isCode(const QString &text)
{
    static const QRegularExpression code(
        QStringLiteral("^([A-Za-z][A-Za-z0-9_]*:[A-Za-z0-9_.-]+|[0-9]+)"
                       "(\\+([A-Za-z][A-Za-z0-9_]*:)?[A-Za-z0-9_.-]+)?$"));
    return code.match(text).hasMatch();
}

bool isProjString(const QByteArray &text)
{
    static const QRegularExpression proj(
        QStringLiteral("(^|\\s)\\+?(proj|init|step|title)(=|\\s|$)"));
    return text.startsWith('+') || proj.match(QString::fromUtf8(text.left(2000))).hasMatch();
}

} // namespace

std::optional<SourceText> sourceText(const QByteArray &source, CatalogueFailure *failure)
{
    const auto refuse = [failure](const QString &text) {
        if (failure != nullptr)
            *failure = {CatalogueFailureKind::NotUnderstood, text};
        return std::nullopt;
    };
    if (source.size() > Catalogue::maxSourceBytes)
        return refuse(QStringLiteral("the source has more than %1 bytes, and no definition of a "
                                     "coordinate system is that long")
                          .arg(Catalogue::maxSourceBytes));
    const auto text = decoded(source);
    if (!text)
        return refuse(notText());
    if (text->isEmpty())
        return refuse(QStringLiteral("the source is empty; give a code such as EPSG:28992, a name "
                                     "or a definition"));
    SourceText result;
    result.text = *text;
    const QString words = QString::fromUtf8(*text);
    result.label = words;
    if (text->startsWith('{')) {
        result.form = SourceForm::ProjJson;
        result.label = QStringLiteral("PROJJSON");
    } else if (isWkt(*text)) {
        result.form = SourceForm::Wkt;
        result.label = QStringLiteral("WKT");
    } else if (words.startsWith(QLatin1String("urn:"), Qt::CaseInsensitive)) {
        result.form = SourceForm::Urn;
    } else if (isCode(words)) {
        result.form = SourceForm::Code;
    } else if (isProjString(*text)) {
        result.form = SourceForm::ProjString;
        const QString problem = problemOf(*text);
        if (!problem.isEmpty())
            return refuse(problem);
    }
    const bool isDefinition = result.form == SourceForm::ProjJson || result.form == SourceForm::Wkt;
    if (isDefinition && depthOf(*text) > Catalogue::maxSourceDepth)
        return refuse(QStringLiteral("the definition nests deeper than %1 levels")
                          .arg(Catalogue::maxSourceDepth));
    const bool isOneLine = std::none_of(
        words.cbegin(), words.cend(), [](QChar c) { return c.category() == QChar::Other_Control; });
    if (!isDefinition && result.form != SourceForm::ProjString
        && (words.size() > maxNameLength || !isOneLine))
        return refuse(QStringLiteral("the source is neither a code nor a name, nor a definition "
                                     "that is known here (WKT, PROJJSON, PROJ string)"));
    return result;
}

} // namespace KelStd::catalogue
