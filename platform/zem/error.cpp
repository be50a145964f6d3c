#include <ZemError.h>

namespace Zem {

Exception::Exception(QString const &text) : text_(text), utf8_(text.toUtf8())
{
}

Exception::~Exception() = default;

ProgError::ProgError(char const *function, char const *file, unsigned int line, char const *text)
    : Exception(QString::fromUtf8("%1 (%2:%3): %4")
                    .arg(QString::fromUtf8(function), QString::fromUtf8(file), QString::number(line),
                         QString::fromUtf8(text)))
{
}

ProgError::ProgError(char const *text, bool fatal) : Exception(QString::fromUtf8(text)), fatal_(fatal)
{
}

ProgError::~ProgError() = default;

} // namespace Zem
