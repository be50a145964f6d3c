// A page document gives a figure or problems; a figure without problems comes back equal.
#include <page_document.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    using namespace Zem::Zemfig;
    QByteArray const text(reinterpret_cast<char const *>(data), static_cast<qsizetype>(size));
    PageDocument const document = parsePageDocument(text, QStringLiteral("page"));
    if (!document.figure || !document.problems.empty())
        return 0;
    QString const written = writePageDocument(*document.figure);
    PageDocument const again = parsePageDocument(written.toUtf8(), QStringLiteral("again"));
    if (!again.figure || !again.problems.empty() || writePageDocument(*again.figure) != written)
        std::abort();
    return 0;
}
