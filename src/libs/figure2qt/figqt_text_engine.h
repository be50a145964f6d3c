// figqt_text_engine.h: lays out the texts of labels and keeps the results.
#pragma once

#include "figqt_fonts.h"
#include "figqt_generation_cache.h"
#include "figqt_markup.h"
#include "figqt_text_layout.h"
#include "figqt_text_recorder.h"

#include <ZemFont.h>

#include <memory>
#include <optional>

namespace Zem::Fig2Qt {

/// One per thread, shared by the calculator and all painters of the thread, so that a label measured is laid out for
/// painting as well. Layouts are kept by their content and so can never be those of another text.
class TextEngine
{
public:
    static TextEngine &forThisThread();

    TextEngine();
    TextEngine(TextEngine const &) = delete;
    TextEngine &operator=(TextEngine const &) = delete;

    /// Formatted text wrapped at `width` page millimetres, unwrapped for a negative or not finite width.
    std::shared_ptr<TextLayout const> layOutRich(QString const &text, Font const &font, double width);
    /// One line as it stands. Line feeds and tabulators count as blanks.
    std::shared_ptr<TextLayout const> layOutPlain(QString const &text, Font const &font, Color const &color);
    FontFace &getFace(Font const &font);
    /// Forgets all layouts and fonts.
    void clear();

    /// The two ways to lay out a formatted text; they agree where the first one has a result.
    std::shared_ptr<TextLayout const> layOutLines(QString const &text, QFont const &font, double widthUnits);
    std::shared_ptr<TextLayout const> layOutDocument(QString const &text, QFont const &font, double widthUnits);

private:
    struct Key
    {
        QString text;
        Font font;
        double width;
        bool operator==(Key const &) const = default;
    };
    struct KeyHash
    {
        std::size_t operator()(Key const &key) const
        {
            return qHashMulti(0, key.text, key.font.getFamily(), key.font.getSize(), key.font.getStyle(), key.width);
        }
    };

    void addLine(MarkupLine const &line, TextLayout *layout);
    QFont const &toCachedQFont(Font const &font);

    Fonts fonts_;
    TextRecorder recorder_;
    TextDevice device_;
    std::optional<Font> lastFont_;
    QFont lastQFont_;
    GenerationCache<Key, std::shared_ptr<TextLayout const>, KeyHash> layouts_;
};

} // namespace Zem::Fig2Qt
