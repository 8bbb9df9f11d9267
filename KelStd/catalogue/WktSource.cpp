#include <KelStd/catalogue/WktSource.h>

#include <KelStd/catalogue/SourceUnits.h>
#include <KelStd/catalogue/WktExtension.h>
#include <KelStd/catalogue/WktTree.h>

namespace KelStd::catalogue {

namespace {

using proj::ProjObject;

/// What proj_create_from_wkt finds wrong, in one line.
class Complaints
{
public:
    explicit Complaints(const ProjSession &session) : m_functions(session.functions()) {}
    Complaints(const Complaints &) = delete;
    Complaints &operator=(const Complaints &) = delete;
    ~Complaints()
    {
        for (PROJ_STRING_LIST list : {warnings, errors}) {
            if (list != nullptr)
                m_functions.proj_string_list_destroy(list);
        }
    }

    QString text() const
    {
        if (errors == nullptr || *errors == nullptr)
            return {};
        constexpr int maxLength = 200;
        return QStringLiteral(": ") + QString::fromUtf8(*errors).simplified().left(maxLength);
    }

    PROJ_STRING_LIST warnings = nullptr;
    PROJ_STRING_LIST errors = nullptr;

private:
    const proj::ProjFunctions &m_functions;
};

} // namespace

ProjObject readWkt(const ProjSession &session, const QByteArray &text, CatalogueFailure *failure)
{
    const auto refuse = [failure](const QString &reason) {
        if (failure != nullptr)
            *failure = {CatalogueFailureKind::NotUnderstood, reason};
        return ProjObject();
    };
    const QByteArray wkt = withWholeAngles(text);
    const auto root = wktTree(wkt);
    Complaints complaints(session);
    const auto create = [&](const QByteArray &given) {
        return ProjObject(
            session.functions().proj_create_from_wkt(session.context(), given.constData(), nullptr,
                                                     &complaints.warnings, &complaints.errors));
    };
    // PROJ says best what is wrong with the text.
    ProjObject object =
        create(root && !isWebMercatorByExtension(*root) ? withoutExtensions(wkt, *root) : wkt);
    if (object == nullptr)
        return refuse(QStringLiteral("the WKT cannot be read%1").arg(complaints.text()));
    if (!root)
        return refuse(QStringLiteral("the WKT cannot be read: a bracket or a quotation mark does "
                                     "not close"));
    const QByteArray rest = wkt.mid(root->end).trimmed();
    if (!rest.isEmpty())
        return refuse(QStringLiteral("there is something behind the end of the definition: \"%1\"")
                          .arg(QString::fromUtf8(rest.left(40)).simplified()));
    const QString doubt = doubtOnExtensions(session, wkt, *root);
    return doubt.isEmpty() ? std::move(object) : refuse(doubt);
}

QByteArray wktOf(const ProjSession &session, const PJ *object)
{
    return session.functions().proj_as_wkt(session.context(), object, PJ_WKT2_2019, nullptr);
}

} // namespace KelStd::catalogue
