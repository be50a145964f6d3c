// ZemFig2LabelBase.h: LabelBase, a box of rich text with live values in it.
// Layer: labels. Used from the thread that owns the figure; only the counter of text cache ids is shared and locked.
#pragma once

#include "ZemFig2AreaBase.h"
#include "ZemFig2ColorBar.h"

#include <ZemMutex.h>
#include <ZemValue.h>

#include <map>
#include <utility>
#include <vector>

namespace Zem::Fig2 {

class ChartBase;
class ImageBase;

/// Tokens stand in the text between two '$', format first, as in $+10.2[mm]part.length$. At each update they are
/// replaced by their values at the stage; the box sizes itself to the result while auto size is on, and connector lines
/// tie it to what it annotates. A token that no source knows prints "???" and is tried again at every update.
///
/// While it sizes itself the box grows about its alignment point, by default its top left corner: setAlignmentOrigin
/// places it. setOrigin does the same as long as the box has no size; from the first update on it means the centre.
class LabelBase : public AreaBase
{
public:
    static constexpr QLatin1StringView PARAM_TEXT{"text"};
    static constexpr QLatin1StringView PARAM_COLOR_BAR_VISIBLE{"color_bar_visible"};
    static constexpr QLatin1StringView PARAM_ALIGN_X{"align_x"};
    static constexpr QLatin1StringView PARAM_ALIGN_Y{"align_y"};
    static constexpr QLatin1StringView PARAM_EXPAND_WIDTH{"expand_width"};
    static constexpr QLatin1StringView PARAM_CONNECTOR_POINT{"connector_point"};
    static constexpr QLatin1StringView PARAM_COLOR_BAR{"color_bar"};
    static constexpr QLatin1StringView PARAM_CONNECTOR_STYLE{"connector_style"};
    static constexpr QLatin1StringView PARAM_TEMPLATE_NAME{"template_name"};

    /// The radius of the circle around a connector point.
    static constexpr double CONNECTOR_POINT_RADIUS = 1.0;
    /// No connector point. One coordinate of -1.0 is enough to make a point invalid.
    static constexpr BaVec2d<double> INVALID_POINT{-1.0, -1.0};

    /// Rich text with unresolved tokens: HTML with the tags that Calculator and Painter know, "&lt;" for a '<' and "$$"
    /// for a '$'. Values need no such care.
    QString const &getText() const { return text_; }
    void setText(QString const &text);
    ColorBar const &getColorBar() const { return colorBar_; }
    void setColorBar(ColorBar const &colorBar);
    bool getColorBarVisible() const { return colorBarVisible_; }
    void setColorBarVisible(bool visible);
    /// Where the text lies in a box larger than it.
    Alignment_t getTextAlignmentX() const { return textAlignmentX_; }
    void setTextAlignmentX(Alignment_t alignment);
    Alignment_t getTextAlignmentY() const { return textAlignmentY_; }
    void setTextAlignmentY(Alignment_t alignment);
    /// Whether the text is wrapped at the width of the box.
    bool getExpandWidth() const { return expandWidth_; }
    void setExpandWidth(bool expand);
    LineStyle const &getConnectorStyle() const { return connectorStyle_; }
    void setConnectorStyle(LineStyle const &style);
    /// The fixed point of the page that a line leads to; INVALID_POINT for none.
    BaVec2d<double> const &getConnectorPoint() const { return connectorPoint_; }
    void setConnectorPoint(BaVec2d<double> const &point);
    bool hasConnectorPoint() const { return connectorPoint_.x != -1.0 && connectorPoint_.y != -1.0; }
    QString const &getTemplateName() const { return templateName_; }
    void setTemplateName(QString const &name);

    /// The text as it is drawn, and its place and size in the box as measured at the last update.
    QString const &getResolvedText() const { return resolvedText_; }
    BaVec2d<double> const &getResolvedTextOffset() const { return resolvedTextOffset_; }
    BaVec2d<double> const &getResolvedTextSize() const { return resolvedTextSize_; }
    /// Changes whenever the text must be laid out anew.
    int getTextCacheId() const { return textCacheId_; }

    /// The line to the fixed point and the circle around it.
    void drawConnectorLine(Painter *painter) const;
    /// Whether one of the connectors leads to a place inside its target.
    bool isConnectorVisible(FigureTokenInterface const *tokens) const;
    /// Whether the label is drawn when none of its connectors is visible; true here.
    virtual bool getDrawUnconnected() const { return true; }

    static QString getRTFStyleAttribute(Font const &font, Color const &color);

    unsigned int getEstimatedObjectSize() const override;
    bool isTokenUsed(QString const &token) const override;
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    /// A move switches auto size off.
    bool dragPointMove(int index, BaVec2d<double> const &position) override;
    bool canConnectTo(Element const *target, QString const &point) const override;
    bool computeConnectorPoints(Connector const *connector, FigureTokenInterface const *tokens, BaVec2d<double> *from,
                                BaVec2d<double> *to) const override;
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    bool hasMinimumSize() const override { return getAutoSize(); }
    bool hasAutoSize() const override { return true; }
    bool hasFont() const override { return true; }
    /// False: the rich text carries its colours.
    bool hasFontColor() const override { return false; }
    bool hasMargin() const override { return true; }
    bool hasSpacing() const override { return true; }
    bool getSpacingUsed() const override { return hasSpacing() && colorBarVisible_; }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;

    /// The counter whose change makes the text stale.
    virtual unsigned int getTokenModifiedCounter(FigureTokenInterface const *tokens, QString const &token) const;
    /// Looks for the value of a token, in `tokens` and then in the connector targets. Remembers where it came from.
    virtual bool resolveToken(StageIdentifier const &stage, FigureTokenInterface const *tokens, QString const &name,
                              Value *value);

protected:
    explicit LabelBase(Type_t type);
    LabelBase(LabelBase const &other);
    LabelBase &operator=(LabelBase const &) = default;

    /// Remembers that a value was found under its own name, and the counter that it had there.
    void noteToken(QString const &name, unsigned int counter) { tokenCounters_[name] = {name, counter}; }
    QString resolveTokensInText(StageIdentifier const &stage, FigureTokenInterface const *tokens, QString const &text);

    /// Widens the update polygon by the lines to connected elements and to the connector point.
    void addConnectorLines(FigureTokenInterface const *tokens);

private:
    /// A token that was looked for: where it was found and the counter seen there.
    using TokenCounters = std::map<QString, std::pair<QString, unsigned int>>;

    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);
    static int takeTextCacheId();
    void convertLoadedText(unsigned int version);
    std::vector<QString> const &getTokenNames() const;
    bool resolveInTarget(StageIdentifier const &stage, FigureTokenInterface const *tokens, Connector const &connector,
                         QString const &name, Value *value);
    bool resolveInChart(StageIdentifier const &stage, FigureTokenInterface const *tokens, ChartBase const &chart,
                        QString const &name, Value *value);
    bool resolveInImage(StageIdentifier const &stage, FigureTokenInterface const *tokens, ImageBase const &image,
                        QString const &object, QString const &name, Value *value);
    QString resolveTokenText(StageIdentifier const &stage, FigureTokenInterface const *tokens, QString const &inner);
    void measureText();
    void renewTextCacheId();
    void computeAvailableBox(BaVec2d<double> *offset, BaVec2d<double> *size) const;
    void computeTextOffsetAndSize(BaVec2d<double> *offset, BaVec2d<double> *size) const;
    BaVec2d<double> computeMinimumSize();
    void addColorBarSize(BaVec2d<double> *size) const;
    void addLineToUpdatePolygon(BaVec2d<double> const &a, BaVec2d<double> const &b, LineStyle const &style);
    void drawConnectors(FigureTokenInterface const *tokens, Painter *painter) const;
    void drawContents(Painter *painter) const;
    void drawColorBar(Painter *painter) const;

    static int _text_cache_id_counter;
    static Mutex _text_cache_id_counter_mutex;

    TokenCounters tokenCounters_;
    QString text_;
    bool colorBarVisible_ = false;
    ColorBar colorBar_;
    Alignment_t textAlignmentX_ = ALIGN_BEGIN;
    Alignment_t textAlignmentY_ = ALIGN_BEGIN;
    bool expandWidth_ = false;
    BaVec2d<double> connectorPoint_ = INVALID_POINT;
    LineStyle connectorStyle_{0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)};
    QString templateName_;
    QString resolvedText_;
    BaVec2d<double> resolvedTextOffset_{0.0, 0.0};
    BaVec2d<double> resolvedTextSize_{0.0, 0.0};
    QString lastText_;
    Font lastFont_;
    double lastWidth_ = 0.0;
    double measuredWidth_ = -1.0; ///< the wrapping width of the last measurement, -1.0 for none
    BaVec2d<double> colorBarSize_{0.0, 0.0};
    int textCacheId_;
    mutable bool tokensParsed_ = false;
    mutable std::vector<QString> tokenNames_;
};

} // namespace Zem::Fig2
