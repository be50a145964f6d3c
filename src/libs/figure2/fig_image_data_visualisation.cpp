#include "ZemFig2ImageDataVisualisation.h"

#include "ZemFig2ImageDataShapes.h"
#include "ZemFig2Tools.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_text_form.h"
#include "fig_words.h"

#include <tuple>

namespace Zem::Fig2 {

namespace {

// 2: arrows as a mode; 3: combined vectors; 4: hidden points; 5: mask; 6: marker size, ids and font; 7: colour of ids;
// 8: null
constexpr unsigned int BLOCK_VERSION = 8;
constexpr unsigned int FONT_SINCE = 6;
constexpr unsigned int TEXT_VERSION = 1;
constexpr char const *ERROR_CONTEXT = "Figure_ImageData_err";
constexpr char const *UNKNOWN_ARROW_MODE = "unknown arrow mode";

constexpr double POINT_MARKER_SIZE = ImageDataPointMarker::DEFAULT_POINT_MARKER_SIZE;
constexpr Color POINT_ID_COLOR{56, 180, 56};

constexpr std::array<char const *, 7> MODE_WORDS{"x", "y", "z", "xy", "yz", "xz", "xyz"};
constexpr std::array<char const *, 7> MODE_NAMES{"x", "y", "z", "x and y", "y and z", "x and z", "x, y and z"};
constexpr std::array<char const *, 4> ARROW_WORDS{"none", "first", "second", "both"};

constexpr QLatin1StringView PLAIN_KEYS[] = {ImageDataVisualisation::PARAM_IS_NULL,
                                            ImageDataVisualisation::PARAM_MODE,
                                            ImageDataVisualisation::PARAM_POINT_MARKER_SIZE,
                                            ImageDataVisualisation::PARAM_VECTOR_SCALING,
                                            ImageDataVisualisation::PARAM_VECTOR_LINE_WIDTH,
                                            ImageDataVisualisation::PARAM_DRAW_ARROWS,
                                            ImageDataVisualisation::PARAM_DRAW_COMBINED_VECTORS,
                                            ImageDataVisualisation::PARAM_DRAW_HIDDEN_POINTS,
                                            ImageDataVisualisation::PARAM_DRAW_POINT_IDS,
                                            ImageDataVisualisation::PARAM_USE_FIXED_POINT_ID_COLOR,
                                            ImageDataVisualisation::PARAM_POINT_ID_FONT,
                                            ImageDataVisualisation::PARAM_POINT_ID_COLOR,
                                            ImageDataVisualisation::PARAM_POINT_MASK};

ImageDataVisualisation::Mode_t modeOfWord(QString const &word)
{
    auto const mode = valueOf<ImageDataVisualisation::Mode_t>(MODE_WORDS, word);
    if (!mode)
        throw ParamError(translate(ERROR_CONTEXT, "unknown image data mode: %1").arg(word), -1);
    return *mode;
}

Font fontOfText(QString const &text)
{
    Font font;
    if (!font.createFromParameterString(text))
        throw ParamError(translate(ERROR_CONTEXT, "illegal point id font: %1").arg(text), -1);
    return font;
}

/// The first version knew arrows at both ends or none.
template <class Archive>
void arrowField(Archive &archive, ImageDataVisualisation::ArrowMode_t &arrows)
{
    bool both = false;
    archive.field(both);
    arrows = both ? ImageDataVisualisation::ARROW_BOTH : ImageDataVisualisation::ARROW_NONE;
}

} // namespace

ImageDataVisualisation const ImageDataVisualisation::NONE(true);

ImageDataVisualisation::ImageDataVisualisation(bool isNull) : isNull_(isNull), pointMarkerSize_(POINT_MARKER_SIZE)
{
}

void ImageDataVisualisation::setVectorScaling(double scaling)
{
    if (scaling < 0.0)
        throw ProgError("Invalid scaling value (<0)", true);
    vectorScaling_ = scaling;
}

void ImageDataVisualisation::setVectorLineWidth(double width)
{
    if (width < 0.0)
        throw ProgError("Invalid line width value (<0)", true);
    vectorLineWidth_ = width;
}

std::vector<ImageDataVisualisation::Mode_t> ImageDataVisualisation::getAllModes()
{
    return {MODE_X, MODE_Y, MODE_Z, MODE_XY, MODE_YZ, MODE_XZ, MODE_XYZ};
}

QString ImageDataVisualisation::getParameterModeName(Mode_t mode)
{
    return wordOf(MODE_WORDS, mode);
}

QString ImageDataVisualisation::getModeName(Mode_t mode)
{
    auto const index = static_cast<unsigned int>(mode);
    return index < MODE_NAMES.size() ? translate("Figure_ImageDataVisualisation", MODE_NAMES[index]) : QString();
}

QString ImageDataVisualisation::getArrowModeName(ArrowMode_t mode)
{
    return wordOf(ARROW_WORDS, mode);
}

ImageDataVisualisation::ArrowMode_t ImageDataVisualisation::getArrowModeByName(QString const &name)
{
    return requireValueOf<ArrowMode_t>(ARROW_WORDS, name, ERROR_CONTEXT, UNKNOWN_ARROW_MODE);
}

bool ImageDataVisualisation::operator==(ImageDataVisualisation const &other) const
{
    if (isNull_ && other.isNull_)
        return true;
    auto const compared = [](ImageDataVisualisation const &look) {
        return std::tie(look.isNull_, look.mode_, look.lineStyle_, look.pointMarkerSize_, look.vectorScaling_,
                        look.drawArrows_, look.drawCombinedVectors_, look.drawPointIds_, look.useFixedPointIdColor_,
                        look.pointIdFont_, look.pointIdColor_, look.pointMask_);
    };
    return compared(*this) == compared(other);
}

template <class Archive, class Self>
void ImageDataVisualisation::blockFields(Archive &archive, Self &self)
{
    archive.field(self.isNull_, Since{8}, false);
    archive.list(self.mode_, MODE_WORDS.size());
    archive.field(self.pointMarkerSize_, Since{6}, POINT_MARKER_SIZE);
    archive.field(self.vectorScaling_);
    archive.field(self.vectorLineWidth_);
    if constexpr (Archive::isReader) {
        if (archive.version() == 1)
            arrowField(archive, self.drawArrows_);
    }
    archive.keepList(self.drawArrows_, ARROW_WORDS.size(), Since{2});
    archive.field(self.drawCombinedVectors_, Since{3}, true);
    archive.field(self.drawHiddenPoints_, Since{4}, true);
    archive.field(self.drawPointIds_, Since{6}, false);
    archive.field(self.useFixedPointIdColor_, Since{7}, false);
    archive.field(self.pointIdColor_, Since{7}, POINT_ID_COLOR);
    archive.field(self.pointMask_, Since{5}, -1);
}

void ImageDataVisualisation::save(IO::OutStream *stream) const
{
    saveBlock(stream, BLOCK_VERSION, [this](auto &archive) { blockFields(archive, *this); });
    lineStyle_.save(stream);
    Tools::save(stream, pointIdFont_);
}

void ImageDataVisualisation::load(IO::InStream *stream)
{
    // The text names another thing, deliberately.
    loadWrapped(ERROR_CONTEXT, "cannot load figure data interface: %1", [&] {
        ImageDataVisualisation read = *this;
        unsigned int const version =
            loadBlock(stream, BLOCK_VERSION, [&read](auto &archive) { blockFields(archive, read); });
        read.replaceNegativeNumbers();
        read.lineStyle_.load(stream);
        read.pointIdFont_ = Font();
        if (version >= FONT_SINCE)
            Tools::load(stream, &read.pointIdFont_);
        *this = read;
    });
}

void ImageDataVisualisation::replaceNegativeNumbers()
{
    if (pointMarkerSize_ < 0.0)
        pointMarkerSize_ = POINT_MARKER_SIZE;
    if (vectorScaling_ < 0.0)
        vectorScaling_ = 1.0;
    if (vectorLineWidth_ < 0.0)
        vectorLineWidth_ = 1.0;
}

template <class Archive, class Self>
void ImageDataVisualisation::textItems(Archive &archive, Self &self)
{
    archive.item(self.isNull_);
    archive.list(self.mode_, MODE_WORDS.size());
    archive.item(self.pointMarkerSize_);
    archive.item(self.vectorScaling_);
    archive.item(self.vectorLineWidth_);
    archive.list(self.drawArrows_, ARROW_WORDS.size());
    archive.item(self.drawCombinedVectors_);
    archive.item(self.drawHiddenPoints_);
    archive.item(self.drawPointIds_);
    archive.item(self.useFixedPointIdColor_);
    archive.item(self.pointIdColor_);
    archive.item(self.pointMask_);
    archive.record(self.lineStyle_);
    archive.item(self.pointIdFont_);
}

std::ostream &operator<<(std::ostream &stream, ImageDataVisualisation const &visualisation)
{
    return saveText(stream, TEXT_VERSION,
                    [&](auto &archive) { ImageDataVisualisation::textItems(archive, visualisation); });
}

std::istream &operator>>(std::istream &stream, ImageDataVisualisation &visualisation)
{
    return loadRecord(stream, TEXT_VERSION, visualisation, [](auto &archive, ImageDataVisualisation &read) {
        ImageDataVisualisation::textItems(archive, read);
        if (!archive.good())
            return;
        read.setVectorScaling(read.vectorScaling_);
        read.setVectorLineWidth(read.vectorLineWidth_);
    });
}

template <class Archive, class Self>
void ImageDataVisualisation::parameterItems(Archive &archive, Self &self)
{
    archive.item(PARAM_POINT_MARKER_SIZE, self.pointMarkerSize_, 0.0, ANY_DOUBLE);
    archive.item(PARAM_VECTOR_SCALING, self.vectorScaling_, 0.0, ANY_DOUBLE);
    archive.item(PARAM_VECTOR_LINE_WIDTH, self.vectorLineWidth_, 0.0, ANY_DOUBLE);
    archive.word(PARAM_DRAW_ARROWS, self.drawArrows_, ARROW_WORDS, ERROR_CONTEXT, UNKNOWN_ARROW_MODE);
    archive.item(PARAM_DRAW_COMBINED_VECTORS, self.drawCombinedVectors_);
    archive.item(PARAM_DRAW_HIDDEN_POINTS, self.drawHiddenPoints_);
    archive.item(PARAM_DRAW_POINT_IDS, self.drawPointIds_);
    archive.item(PARAM_USE_FIXED_POINT_ID_COLOR, self.useFixedPointIdColor_);
    archive.item(PARAM_POINT_ID_COLOR, self.pointIdColor_);
    archive.item(PARAM_POINT_MASK, self.pointMask_);
}

QString ImageDataVisualisation::getParameterString(QString const &prefix) const
{
    QString parameters;
    ParameterWriter writer(parameters, prefix);
    writer.item(PARAM_IS_NULL, isNull_);
    writer.item(PARAM_MODE, getParameterModeName(mode_));
    writer.record(PARAM_LINE_STYLE, lineStyle_);
    parameterItems(writer, *this);
    writer.item(PARAM_POINT_ID_FONT, pointIdFont_.getParameterString());
    return parameters;
}

// The line style is deliberately read later than it is written: that decides which of several bad values is reported.
void ImageDataVisualisation::createFromParameterString(QString &parameters, QString const &prefix)
{
    ParameterReader reader(parameters, prefix);
    reader.item(PARAM_IS_NULL, isNull_);
    if (reader.exists(PARAM_MODE))
        mode_ = modeOfWord(Parse::getString(parameters, reader.key(PARAM_MODE)));
    parameterItems(reader, *this);
    reader.record(PARAM_LINE_STYLE, lineStyle_);
    if (reader.exists(PARAM_POINT_ID_FONT))
        pointIdFont_ = fontOfText(Parse::getString(parameters, reader.key(PARAM_POINT_ID_FONT)));
}

bool ImageDataVisualisation::parameterExists(QString const &parameters, QString const &prefix)
{
    auto const exists = [&](QLatin1StringView key) {
        return Parse::parameterExists(parameters, parameterKey(prefix, key));
    };
    return std::ranges::any_of(PLAIN_KEYS, exists) ||
           LineStyle::parameterExists(parameters, parameterKey(prefix, PARAM_LINE_STYLE));
}

} // namespace Zem::Fig2
