#pragma once

#include "support/ProjTest.h"

#include <KelStd/catalogue/Catalogue.h>

#include <memory>

namespace KelStd::test {

/// A test that asks the catalogue; PROJ is loaded before it.
class CatalogueTest : public ProjTest
{
protected:
    /// An import that has to succeed.
    catalogue::ImportedSystem import(const QByteArray &source,
                                     const catalogue::ImportOptions &options = {})
    {
        catalogue::ImportedSystem result = m_catalogue.importSystem(source, options);
        EXPECT_TRUE(result.system.has_value())
            << source.left(80).toStdString() << ": " << result.refusal.text.toStdString();
        return result;
    }

    /// The word of a refusal, or "imported".
    QString refusal(const QByteArray &source, const catalogue::ImportOptions &options = {})
    {
        const catalogue::ImportedSystem result = m_catalogue.importSystem(source, options);
        if (result.system)
            return QStringLiteral("imported");
        EXPECT_FALSE(result.refusal.text.isEmpty()) << source.left(80).toStdString();
        return catalogue::refusalWord(result.refusal.kind);
    }

    catalogue::Catalogue &catalogue() { return m_catalogue; }

private:
    catalogue::Catalogue m_catalogue;
};

} // namespace KelStd::test
