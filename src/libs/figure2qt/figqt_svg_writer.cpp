#include "ZemFig2QtSvgWriter.h"

#include "figqt_number.h"
#include "figqt_page_check.h"
#include "figqt_svg_canvas.h"
#include "figqt_writer_painter.h"

namespace Zem::Fig2Qt {

namespace {

constexpr double LARGEST_PAGE = 1e5;

QString number(double value)
{
    std::string text;
    appendNumber(&text, value, 4);
    return QString::fromStdString(text);
}

} // namespace

struct SvgWriter::Drawing
{
    Drawing(QString const &fileName, PageOptions const &pageOptions) : file(fileName), options(pageOptions), xml(&bytes)
    {
    }

    void begin(BaVec2d<double> const &size);

    OutputFile file;
    PageOptions options;
    QByteArray bytes;
    QXmlStreamWriter xml;
    std::unique_ptr<WriterPainter> painter;
};

void SvgWriter::Drawing::begin(BaVec2d<double> const &size)
{
    xml.setAutoFormatting(false); // blanks count in texts
    xml.writeStartDocument();
    xml.writeCharacters(QStringLiteral("\n"));
    xml.writeStartElement(QStringLiteral("svg"));
    xml.writeDefaultNamespace(QStringLiteral("http://www.w3.org/2000/svg"));
    xml.writeAttribute(QStringLiteral("width"), number(size.x) + QStringLiteral("mm"));
    xml.writeAttribute(QStringLiteral("height"), number(size.y) + QStringLiteral("mm"));
    xml.writeAttribute(QStringLiteral("viewBox"), QStringLiteral("0 0 %1 %2").arg(number(size.x), number(size.y)));
    if (!options.title.isEmpty())
        xml.writeTextElement(QStringLiteral("title"), options.title);
}

SvgWriter::SvgWriter(QString const &fileName, PageOptions const &options)
{
    requireResolution(options.pictureDpi, fileName);
    drawing_ = std::make_unique<Drawing>(fileName, options);
}

SvgWriter::~SvgWriter() = default;

Fig2::Painter &SvgWriter::beginPage(BaVec2d<double> const &size)
{
    requireOpen(drawing_ != nullptr, "Zem::Fig2Qt::SvgWriter::beginPage", "figqt_svg_writer", __LINE__);
    requireFirstPage(!drawing_->painter, drawing_->file.getName());
    requirePageSize(size, LARGEST_PAGE, drawing_->file.getName());
    drawing_->begin(size);
    drawing_->painter =
        std::make_unique<WriterPainter>(std::make_unique<SvgCanvas>(&drawing_->xml, drawing_->options.pictureDpi));
    return *drawing_->painter;
}

void SvgWriter::close()
{
    if (!drawing_)
        return;
    // Whatever fails below, this writer is done, and the temporary file goes with the drawing.
    std::unique_ptr<Drawing> const drawing = std::move(drawing_);
    requirePages(drawing->painter ? 1 : 0, drawing->file.getName());
    drawing->painter->finish();
    drawing->xml.writeEndDocument();
    drawing->file.write({drawing->bytes.constData(), static_cast<std::size_t>(drawing->bytes.size())});
    drawing->file.commit();
}

} // namespace Zem::Fig2Qt
