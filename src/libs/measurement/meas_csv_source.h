// meas_csv_source.h: the bytes of a data file, with their encoding and the places in them.
#pragma once

#include <ZemMeasCsv.h>

#include <string_view>

namespace Zem::Measurement {

/// One line of the text; views into the source.
struct CsvLine
{
    std::string_view text; ///< without its terminator
    std::string_view raw;  ///< with it: LF, CR or CRLF
    std::size_t offset = 0;
};

/// Checks the encoding when it is made; throws ImportError. Refers to `content`, which must outlive it.
class CsvSource
{
public:
    CsvSource(QByteArray const &content, QString const &fileName, std::optional<CsvEncoding_t> encoding);

    /// Everything behind the byte order mark.
    std::string_view text() const { return text_; }
    CsvEncoding_t encoding() const { return encoding_; }
    QString const &fileName() const { return fileName_; }

    QString decode(std::string_view bytes) const;
    /// False at the end of the text; otherwise `offset` moves to the next line.
    bool nextLine(std::size_t &offset, CsvLine &line) const;

    [[noreturn]] void fail(QString const &reason) const;
    /// Names line and column of the byte at `offset`.
    [[noreturn]] void failAt(std::size_t offset, QString const &reason) const;

private:
    void requireText() const;
    void checkUtf8(bool forced);
    void checkLatin1() const;

    QString fileName_;
    std::string_view text_;
    CsvEncoding_t encoding_ = CsvEncoding_t::UTF8;
};

} // namespace Zem::Measurement
