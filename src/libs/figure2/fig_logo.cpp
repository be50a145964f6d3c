#include "ZemFig2Logo.h"

#include "ZemFig2ImageConversion.h"
#include "ZemFig2Painter.h"
#include "ZemFig2Rotation.h"
#include "fig_parameters.h"
#include "fig_picture.h"
#include "fig_text_form.h"

#include <ZemError.h>

#include <QtCore/QByteArray>

#include <algorithm>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int BLOCK_VERSION = 3;
constexpr unsigned int SCALE_BLOCK_VERSION = 2; ///< the one that held the scale
constexpr unsigned int TEXT_VERSION = 1;
constexpr int FIRST_ALIGNED_VERSION = 8; ///< of the element block: since then AlignedElement stores the scale
constexpr PictureBlockRules PICTURE_RULES{3, [](unsigned int version) { return version < 3; }, 2, true};

constexpr double TEXT_INSET = 1.0;
constexpr double FRAME_WIDTH = 0.1;

constexpr unsigned int ESTIMATED_SIZE = 16;
constexpr unsigned int ESTIMATED_PICTURE_SIZE = 136;
constexpr unsigned int ESTIMATED_DEEP_PICTURE_SIZE = 144;

unsigned int estimatedPictureSize(Zem::Image::Type type)
{
    switch (type) {
    case Zem::Image::TYPE_IMAGE8:
    case Zem::Image::TYPE_COLOR:
        return ESTIMATED_PICTURE_SIZE;
    case Zem::Image::TYPE_IMAGE16:
    case Zem::Image::TYPE_IMAGE32:
        return ESTIMATED_DEEP_PICTURE_SIZE;
    }
    throw ProgError("Zem::Fig2::Logo::getEstimatedObjectSize", "fig_logo", __LINE__, "invalid image condition found");
}

unsigned int pixelBytes(Zem::Image const &image)
{
    // The product of the sides alone may be larger than an unsigned int.
    return static_cast<unsigned int>(static_cast<unsigned long long>(image.getWidth()) * image.getHeight() *
                                     image.getBpp() / 8);
}

} // namespace

constinit unsigned int Logo::_unique_id_counter = 2147483696;

Logo::Logo() : AlignedElement(LOGO), uniqueId_(_unique_id_counter++)
{
    setBorder(LineStyle::null);
}

Logo::Logo(Logo const &other)
    : AlignedElement(other), image_(other.image_ ? other.image_->copy(true) : nullptr), fileName_(other.fileName_),
      uniqueId_(_unique_id_counter++)
{
}

Logo::~Logo() = default;

void Logo::setImage(Zem::Image *image)
{
    image_.reset(image);
    uniqueId_ = _unique_id_counter++;
    invalidate();
}

void Logo::setFileName(QString const &fileName)
{
    fileName_ = fileName;
    invalidate();
}

Element *Logo::copy() const
{
    return new Logo(*this);
}

unsigned int Logo::getEstimatedObjectSize() const
{
    unsigned int const size = AlignedElement::getEstimatedObjectSize() + ESTIMATED_SIZE;
    return image_ ? size + estimatedPictureSize(image_->getType()) + pixelBytes(*image_) : size;
}

void Logo::save(IO::OutStream *stream, int a, int b) const
{
    AlignedElement::save(stream, a, b);
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) {
        archive.field(fileName_);
        archive.field(image_ != nullptr);
    });
    if (image_)
        savePicture(stream, PICTURE_RULES, *image_);
}

void Logo::load(IO::InStream *stream, int a, int b)
{
    AlignedElement::load(stream, a, b);
    bool const beforeAligned = getBlockVersion() < FIRST_ALIGNED_VERSION;
    bool hasPicture = false;
    loadBlock(stream, BLOCK_VERSION, [&](BlockReader &archive) {
        archive.field(fileName_);
        if (beforeAligned)
            archive.drop<bool>();
        archive.field(hasPicture);
        if (beforeAligned && archive.version() == SCALE_BLOCK_VERSION) {
            bool autoScale = false;
            double scaling = 0.0;
            archive.field(autoScale);
            archive.field(scaling);
            setAutoScale(autoScale);
            setScaling(scaling);
        }
    });
    setImage(hasPicture ? loadPicture(stream, PICTURE_RULES).release() : nullptr);
}

namespace {

/// The picture as text: nothing, or type, packed bytes and alpha flag.
void pictureItems(TextWriter &writer, Zem::Image const *picture)
{
    writer.item(picture != nullptr);
    if (!picture)
        return;
    PackedPicture const packed = packPicture(*picture);
    auto const bytes = QByteArray::fromRawData(reinterpret_cast<char const *>(packed.bytes.data()),
                                               static_cast<qsizetype>(packed.bytes.size()));
    writer.item(packed.type);
    writer.item(QString::fromLatin1(bytes.toBase64()));
    writer.item(packed.alphaChannel);
}

/// Null for no picture; a damaged one fails the stream.
std::unique_ptr<Zem::Image> readPicture(TextReader &reader)
{
    bool hasPicture = false;
    reader.item(hasPicture);
    if (!reader.good() || !hasPicture)
        return nullptr;
    PackedPicture packed;
    QString text;
    reader.item(packed.type);
    reader.item(text);
    reader.item(packed.alphaChannel);
    QByteArray const bytes = QByteArray::fromBase64(text.toLatin1());
    packed.bytes.assign(bytes.begin(), bytes.end());
    std::unique_ptr<Zem::Image> picture = unpackPicture(packed);
    if (!picture)
        reader.fail();
    if (auto *color = dynamic_cast<ImageColor *>(picture.get()))
        color->setHasAlphaChannel(packed.alphaChannel);
    return picture;
}

} // namespace

/// Unlike other elements behind the text of its base, as in the blocks.
std::ostream &Logo::saveToStream(std::ostream &stream) const
{
    AlignedElement::saveToStream(stream);
    return saveText(stream, TEXT_VERSION, [this](TextWriter &writer) {
        writer.item(fileName_);
        pictureItems(writer, image_.get());
    });
}

std::istream &Logo::loadFromStream(std::istream &stream)
{
    AlignedElement::loadFromStream(stream);
    loadText(stream, TEXT_VERSION, [this](TextReader &reader) {
        reader.item(fileName_);
        std::unique_ptr<Zem::Image> picture = readPicture(reader);
        if (reader.good())
            setImage(picture.release());
    });
    return stream;
}

QString Logo::getParameterString() const
{
    QString parameters = AlignedElement::getParameterString();
    ParameterWriter(parameters).item(PARAM_FILE_NAME, fileName_);
    return parameters;
}

void Logo::createFromParameterString(QString &parameters)
{
    AlignedElement::createFromParameterString(parameters);
    QString fileName = fileName_;
    bool autoScale = getAutoScale();
    double scaling = getScaling();
    ParameterReader reader(parameters);
    reader.item(PARAM_FILE_NAME, fileName);
    reader.item(PARAM_AUTO_COMPUTE, autoScale);
    reader.item(PARAM_SCALE, scaling);
    setAutoScale(autoScale);
    setScaling(scaling);
    if (fileName != fileName_)
        loadPictureFile(fileName);
}

void Logo::loadPictureFile(QString const &fileName)
{
    constexpr int NO_CHOICE = -1;
    Zem::Image::FileType type{};
    bool const isPicture = Zem::Image::getFileType(fileName, &type);
    setImage(isPicture ? Zem::Image::loadImage(fileName, nullptr, NO_CHOICE, NO_CHOICE) : nullptr);
    setFileName(fileName);
}

BaVec2d<double> Logo::getPixelSize() const
{
    return image_ ? BaVec2d<double>(image_->getWidth(), image_->getHeight()) : BaVec2d<double>(0.0, 0.0);
}

BaVec2d<double> Logo::getInnerElementSize() const
{
    return getPixelSize() * getScaling();
}

std::pair<BaVec2d<double>, BaVec2d<double>> Logo::getInnerOriginBounds()
{
    BaVec2d<double> const none(0.0, 0.0);
    if (!image_)
        return {none, none};
    BaVec2d<double> const hidden = getInnerElementSize() - getDrawingSize();
    return {none, {std::max(0.0, hidden.x), std::max(0.0, hidden.y)}};
}

void Logo::computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens)
{
    AreaBase::computeDynamicData(stage, tokens);
    BaVec2d<double> const pixels = getPixelSize();
    if (!getAutoScale() || pixels.x == 0.0 || pixels.y == 0.0)
        return;
    BaVec2d<double> const drawing = getDrawingSize();
    setScaling(std::min(drawing.x / pixels.x, drawing.y / pixels.y));
}

bool Logo::draw(FigureTokenInterface const *, Painter *painter, int step) const
{
    if (step != 0)
        return true;
    if (image_)
        drawPicture(painter);
    else
        drawMissing(painter);
    return true;
}

void Logo::drawMissing(Painter *painter) const
{
    QString text = translate("Figure_Logo_err", "no image set");
    if (!fileName_.isEmpty())
        text += QLatin1StringView(": ") + fileName_;
    BaVec2d<double> const origin = getDrawingOrigin();
    Rotation const rotation(this);
    painter->drawRect(origin, getDrawingSize(), LineStyle(FRAME_WIDTH, LineStyle::STYLE_FULL, getFontColor()),
                      FillStyle::null, rotation);
    painter->setClipping(Rect(origin, getDrawingSize()), rotation);
    painter->drawText(origin + BaVec2d<double>(TEXT_INSET, TEXT_INSET), getFont(), text, getFontColor(), rotation);
    painter->resetClipping();
}

void Logo::drawPicture(Painter *painter) const
{
    BaVec2d<double> const inner = getInnerElementSize();
    BaVec2d<double> const origin = computeInnerDrawingOrigin(inner);
    BaVec2d<double> const size = computeInnerDrawingSize(inner);
    Rotation const rotation(this);
    drawBackground(painter);
    // An element without room has no scaling to divide by.
    if (size.x > 0.0 && size.y > 0.0) {
        painter->setClipping(Rect(origin, size), rotation);
        painter->drawImage(origin, size, image_.get(), nullptr, getInnerOrigin() * (1.0 / getScaling()), getScaling(),
                           QStringLiteral("%1/%2").arg(uniqueId_).arg(fileName_), ImageConversion::null, rotation);
        painter->resetClipping();
    }
    drawBorder(painter);
}

} // namespace Zem::Fig2
