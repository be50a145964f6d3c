// A table is read or refused; read again with what was detected it is the same.
#include <ZemMeasCsv.h>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    using namespace Zem::Measurement;
    QByteArray const text(reinterpret_cast<char const *>(data), static_cast<qsizetype>(size));
    try {
        CsvTable const table = parseCsv(text, QStringLiteral("data"));
        if (parseCsv(text, QStringLiteral("data"), table.used).rowCount() != table.rowCount())
            std::abort();
    } catch (ImportError const &) {
        // Refused, with a reason.
    }
    return 0;
}
