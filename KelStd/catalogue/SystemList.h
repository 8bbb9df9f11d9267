#pragma once

#include <KelStd/catalogue/FoundSystem.h>
#include <KelStd/catalogue/ProjSession.h>

#include <QtCore/QStringList>

#include <vector>

namespace KelStd::catalogue {

/// The systems of PROJ's database, read once.
class SystemList
{
public:
    struct Entry
    {
        FoundSystem system;
        QStringList words; ///< of name, code and area's description, as they are compared
        QString plainName; ///< the name as words, with blanks between
    };

    /// Reads the list unless it was read before.
    void read(const ProjSession &session);

    std::vector<FoundSystem> search(const SystemQuery &query) const;

    /// The systems of exactly this name, best first.
    std::vector<FoundSystem> named(const QString &name) const;

private:
    std::vector<Entry> m_entries;
};

/// The words of a text as they are compared: small letters without accents, digits apart from
/// letters.
QStringList comparedWords(const QString &text);

} // namespace KelStd::catalogue
