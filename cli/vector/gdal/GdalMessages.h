#pragma once

#include <cpl_error.h>

#include <string>

namespace KelStd::cli::vector {

/// While this lives, what GDAL says on this thread is kept instead of printed. Warnings of what
/// was written are losses, so they count.
class GdalMessages
{
public:
    GdalMessages() { CPLPushErrorHandlerEx(&GdalMessages::keep, this); }
    ~GdalMessages() { CPLPopErrorHandler(); }
    GdalMessages(const GdalMessages &) = delete;
    GdalMessages &operator=(const GdalMessages &) = delete;

    bool hasError() const { return m_hasError; }
    bool hasWarning() const { return m_hasWarning; }

    /// The first message, an error before a warning, or `otherwise` where there was none.
    std::string text(const char *otherwise) const
    {
        return !m_text.empty() ? m_text : std::string(otherwise);
    }

    void clear()
    {
        m_text.clear();
        m_hasError = false;
        m_hasWarning = false;
    }

private:
    static void keep(CPLErr kind, CPLErrorNum, const char *text)
    {
        auto *const self = static_cast<GdalMessages *>(CPLGetErrorHandlerUserData());
        const bool isError = kind == CE_Failure || kind == CE_Fatal;
        if (!isError && kind != CE_Warning)
            return;
        if (self->m_text.empty() || (isError && !self->m_hasError))
            self->m_text = text;
        self->m_hasError = self->m_hasError || isError;
        self->m_hasWarning = true;
    }

    std::string m_text;
    bool m_hasError = false;
    bool m_hasWarning = false;
};

} // namespace KelStd::cli::vector
