// figqt_pdf_file.h: the objects of a PDF file and where they stand.
#pragma once

#include <ZemOutputFile.h>

#include <QtCore/QString>

#include <string>
#include <string_view>
#include <vector>

namespace Zem::Fig2Qt {

/// Writes numbered objects in any order. Throws OutputError, and std::bad_alloc when there is no memory to pack them.
class PdfFile
{
public:
    explicit PdfFile(QString const &fileName);

    /// A number for an object that is written later.
    int reserve();
    void writeObject(int number, std::string_view body);
    /// `dictionary` holds the entries besides filter and length. The bytes are compressed.
    void writeStream(int number, std::string_view dictionary, std::string_view bytes);
    /// The same for bytes that zlib has compressed already.
    void writePackedStream(int number, std::string_view dictionary, std::string_view packed);
    /// Completes the file. Numbers of 0 are left out.
    void finish(int catalog, int info);

    QString const &getName() const { return output_.getName(); }

private:
    void begin(int number);

    OutputFile output_;
    std::vector<std::size_t> places_; // by number; 0 while not written
};

/// "12 0 R"
std::string reference(int number);
/// A text in an object: hexadecimal UTF-16.
std::string pdfText(QString const &text);

} // namespace Zem::Fig2Qt
