#pragma once

#include <cpl_error.h>

#include <cstring>
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

    /// Whether there was an error but those of reference systems that the database does not have.
    bool hasErrorOfFile() const { return m_hasErrorOfFile; }

    /// The first message, an error of the file before others, and those before a warning, or
    /// `otherwise` where there was none.
    std::string text(const char *otherwise) const
    {
        return !m_text.empty() ? m_text : std::string(otherwise);
    }

    void clear()
    {
        m_text.clear();
        m_hasError = false;
        m_hasErrorOfFile = false;
        m_hasWarning = false;
    }

private:
    static void keep(CPLErr kind, CPLErrorNum, const char *text)
    {
        auto *const self = static_cast<GdalMessages *>(CPLGetErrorHandlerUserData());
        const bool isError = kind == CE_Failure || kind == CE_Fatal;
        if (!isError && kind != CE_Warning)
            return;
        const bool isOfFile = isError && std::strncmp(text, "PROJ:", 5) != 0;
        if (self->m_text.empty() || (isError && !self->m_hasError)
            || (isOfFile && !self->m_hasErrorOfFile))
            self->m_text = text;
        self->m_hasErrorOfFile = self->m_hasErrorOfFile || isOfFile;
        self->m_hasError = self->m_hasError || isError;
        self->m_hasWarning = true;
    }

    std::string m_text;
    bool m_hasError = false;
    bool m_hasErrorOfFile = false;
    bool m_hasWarning = false;
};

} // namespace KelStd::cli::vector
