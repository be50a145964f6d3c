#include "figqt_text_engine.h"

#include "ZemFig2QtApplication.h"

#include <algorithm>
#include <cmath>

namespace Zem::Fig2Qt {

namespace {

// Some 6,000 labels of 40 characters in each generation.
constexpr std::size_t LAYOUT_CACHE_WEIGHT = 1'000'000;
constexpr std::size_t WEIGHT_OF_A_LAYOUT = 120;
constexpr double NO_WRAPPING = -1.0;
constexpr double WIDEST = 1e7;

/// Fonts must be gone before the application object is: Qt's own memory of fonts goes with it.
void clearAtExit()
{
    TextEngine::forThisThread().clear();
}

double toUnits(double width)
{
    return std::isfinite(width) && width >= 0.0 ? std::min(width / MM_PER_UNIT, WIDEST) : NO_WRAPPING;
}

QFont scriptFont(MarkupStyle const &style)
{
    QFont font = style.font;
    if (style.script != Script::NORMAL)
        font.setPixelSize(std::max(1, font.pixelSize() * 2 / 3));
    return font;
}

/// How far below the base line a script of this font stands: half, and a sixth of its height; the sixth in the 64ths
/// that Qt's layout counts in.
double scriptShift(Script script, FontFace const &face)
{
    double const height = face.getAscent() + face.getDescent();
    if (script == Script::SUPER)
        return std::trunc(height * -32.0) / 64.0;
    return script == Script::SUB ? std::trunc(height * 10.0) / 64.0 : 0.0;
}

TextShape horizontalLine(double x, double width, double y, double lineWidth, Color const &color)
{
    TextShape shape;
    shape.path.moveTo(x, y);
    shape.path.lineTo(x + width, y);
    shape.stroke = color;
    shape.strokeWidth = lineWidth;
    return shape;
}

void addDecoration(TextRun const &run, QFont const &font, FontFace const &face, TextLayout *layout)
{
    auto const add = [&](double below) {
        layout->shapes.push_back(
            horizontalLine(run.position.x(), run.width, run.position.y() + below, face.getLineWidth(), run.color));
    };
    if (font.underline())
        add(face.getUnderlinePosition());
    if (font.strikeOut())
        add(face.getStrikeOutPosition());
}

struct LineHeight
{
    double ascent = 0.0;
    double descent = 0.0;
    double leading = 0.0;

    /// The leading of a line reaches as high as the highest of its fonts with its own.
    void include(FontFace const &face)
    {
        double const top = std::max(ascent, face.getAscent());
        leading = std::max(leading + ascent, face.getLeading() + face.getAscent()) - top;
        ascent = top;
        descent = std::max(descent, face.getDescent());
    }
    double total() const { return std::ceil(ascent + descent + std::max(0.0, leading)); }
};

} // namespace

TextEngine &TextEngine::forThisThread()
{
    thread_local TextEngine engine;
    return engine;
}

TextEngine::TextEngine() : recorder_(&fonts_), device_(&recorder_), layouts_(LAYOUT_CACHE_WEIGHT)
{
    requireGuiApplication();
    [[maybe_unused]] static bool const registered = (qAddPostRoutine(clearAtExit), true);
}

void TextEngine::clear()
{
    layouts_.clear();
    fonts_.clear();
    lastQFont_ = QFont();
    lastFont_.reset();
}

QFont const &TextEngine::toCachedQFont(Font const &font)
{
    if (font != lastFont_) {
        lastQFont_ = toQFont(font);
        lastFont_ = font;
    }
    return lastQFont_;
}

FontFace &TextEngine::getFace(Font const &font)
{
    return fonts_.getFace(toCachedQFont(font));
}

std::shared_ptr<TextLayout const> TextEngine::layOutRich(QString const &text, Font const &font, double width)
{
    Key key{text, font, toUnits(width)};
    if (auto const *known = layouts_.find(key))
        return *known;
    QFont const qFont = toCachedQFont(font);
    std::shared_ptr<TextLayout const> layout = layOutLines(text, qFont, key.width);
    if (!layout)
        layout = layOutDocument(text, qFont, key.width);
    return layouts_.insert(std::move(key), std::move(layout),
                           static_cast<std::size_t>(text.size()) + WEIGHT_OF_A_LAYOUT);
}

std::shared_ptr<TextLayout const> TextEngine::layOutPlain(QString const &text, Font const &font, Color const &color)
{
    QString line = text;
    for (QChar &character : line) {
        if (character.isSpace() && character.unicode() < 0x20)
            character = QLatin1Char(' ');
    }
    auto layout = std::make_shared<TextLayout>();
    addLine({{line, {toCachedQFont(font), color, Script::NORMAL}}}, layout.get());
    return layout;
}

/// Adds a line below what is there.
void TextEngine::addLine(MarkupLine const &line, TextLayout *layout)
{
    LineHeight height;
    for (MarkupPiece const &piece : line)
        height.include(fonts_.getFace(scriptFont(piece.style)));
    double const baseLine = layout->height + height.ascent;
    double x = 0.0;
    for (MarkupPiece const &piece : line) {
        FontFace &face = fonts_.getFace(scriptFont(piece.style));
        TextRun run;
        run.text = piece.text;
        run.font = face.getFont();
        run.color = piece.style.color;
        run.position = QPointF(x, baseLine + scriptShift(piece.style.script, face));
        run.shape = face.shape(piece.text);
        run.width = run.shape->width;
        addDecoration(run, piece.style.font, face, layout);
        x += run.width;
        layout->runs.push_back(std::move(run));
    }
    TextRun const &last = layout->runs.back();
    x += fonts_.getFace(last.font).getOverhang(*last.shape);
    layout->width = std::max(layout->width, x);
    layout->height += height.total();
}

/// Null when the text is not of the simple kind, must be wrapped, or needs a substitute for a font, whose height would
/// count as well.
std::shared_ptr<TextLayout const> TextEngine::layOutLines(QString const &text, QFont const &font, double widthUnits)
{
    auto const lines = readSimpleMarkup(text, {font, Color(0, 0, 0), Script::NORMAL});
    if (!lines)
        return nullptr;
    auto layout = std::make_shared<TextLayout>();
    for (MarkupLine const &line : *lines)
        addLine(line, layout.get());
    if (widthUnits >= 0.0 && layout->width > widthUnits)
        return nullptr;
    bool const complete = std::all_of(layout->runs.begin(), layout->runs.end(), [this](TextRun const &run) {
        return fonts_.getFace(run.font).isComplete(*run.shape);
    });
    return complete ? layout : nullptr;
}

} // namespace Zem::Fig2Qt
