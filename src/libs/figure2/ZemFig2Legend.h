// ZemFig2Legend.h: Legend, the element that shows a colour scale.
// Layer: element. Used from the thread that owns the figure, which is also the one that sets the global scale.
#pragma once

#include "ZemFig2AreaBase.h"

#include <ZemHistogramData.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemToleranceParams.h>

#include <vector>

namespace Zem::Fig2 {

class RangeCalculator;

/// A bar of colours or discrete blocks with tick labels, a title, boxes for the colours beyond the extremes and a
/// histogram; or, in tolerance display, a list of coloured boxes with their texts. The scale itself is a
/// Legend2::Legend with its Legend2::Data: that of a connected element, the application's global one, or a local one.
///
/// Everything that layout yields is fresh after update. Rectangles are page millimetres before the rotation, relative
/// to getDrawingOrigin(); values are in the base unit of the scale.
class Legend : public AreaBase
{
public:
    /// Where the shown scale comes from. Stored in files: never renumber. 3 and 4 are read and mean the same as 2.
    enum LegendDataMode : unsigned int {
        LEGEND_DATA_MODE_ELEMENT = 0, ///< the connected elements
        LEGEND_DATA_MODE_3D = 1,      ///< the application's global scale
        LEGEND_DATA_MODE_MANUAL = 2   ///< the local values
    };

    static constexpr QLatin1StringView PARAM_LEGEND_DATA_MODE{"legend_data_mode"};
    static constexpr QLatin1StringView PARAM_USE_DATA_FROM_ELEMENT{"use_data_from_element"};
    static constexpr QLatin1StringView PARAM_EQUAL_SIZED_BLOCKS{"equal_sized_blocks"};
    static constexpr QLatin1StringView PARAM_BAR_WIDTH{"bar_width"};
    static constexpr QLatin1StringView PARAM_TICK_BOX{"tick_box"};
    static constexpr QLatin1StringView PARAM_TICK_LINE{"tick_line"};
    static constexpr QLatin1StringView PARAM_SHOW_TOLERANCES{"show_tolerances"};
    static constexpr QLatin1StringView PARAM_SHOW_HISTOGRAM{"show_histogram"};

    Legend();
    Legend(Legend const &) = default;

    LegendDataMode getLegendDataMode() const { return legendDataMode_; }
    void setLegendDataMode(LegendDataMode mode);
    /// The outline of the bar and of the boxes.
    LineStyle const &getTickBoxStyle() const { return tickBoxStyle_; }
    void setTickBoxStyle(LineStyle const &style);
    /// The tick lines and the bars of the histogram.
    LineStyle const &getTickStyle() const { return tickStyle_; }
    void setTickStyle(LineStyle const &style);
    /// The thickness of the bar.
    double getBarWidth() const { return barWidth_; }
    void setBarWidth(double width);
    /// Whether the blocks of a discrete scale are of one size, whatever values they stand for.
    bool hasEqualSizedBlocks() const { return equalSizedBlocks_; }
    void setEqualSizedBlocks(bool equal);
    bool getShowHistogram() const { return showHistogram_; }
    void setShowHistogram(bool show);

    /// What the user fixed. The results belong to the legend, or to what a derived class keeps them in, and live until
    /// the next change; no pointer is null.
    virtual void getLocalLegendData(Legend2::Legend const **legend, Legend2::Data const **data) const;
    virtual void setLocalLegendData(Legend2::Legend const &legend, Legend2::Data const &data);
    virtual void getLocalToleranceParams(bool *show, Legend2::ToleranceParams const **tolerance) const;
    virtual void setLocalToleranceParams(bool show, Legend2::ToleranceParams const &tolerance);
    virtual Legend2::HistogramData const *getLocalHistogramData() const { return &localHistogram_; }
    void setLocalHistogramData(Legend2::HistogramData const &histogram);
    void clearLocalHistogramData();
    /// Makes the scale that is shown now the local one.
    void convertToSnapshotMode();

    /// The scale in use since the last update; the defaults unless isScaleValid().
    Legend2::Legend const &getShownLegend() const { return legend_; }
    Legend2::Data const &getShownData() const { return legendData_; }
    bool getShownToleranceMode() const { return showTolerances_; }
    Legend2::HistogramData const &getShownHistogram() const { return histogram_; }
    bool isScaleValid() const { return dataValid_; }

    /// 0 for a bar along x, 1 for one along y: the shape of the element decides, and a square stands upright.
    int getOrientation() const;
    QString const &getTitle() const { return unitTitle_; }
    unsigned int getNumberOfTickLabels() const { return labelCount_; }
    std::vector<double> const &getTickPositions() const { return tickPositions_; }
    std::vector<double> const &getTickValues() const { return tickValues_; }
    std::vector<QString> const &getTickTexts() const { return texts_; }
    std::vector<bool> const &getDrawTexts() const { return drawTexts_; }
    double getColorLength() const { return colorLength_; }
    /// The class of a discrete scale that begins at the tick, or the line of a tolerance display; -1 for none.
    int getLUTIndexForLabelIndex(unsigned int index) const;
    /// Where an editor finds the parts. Each is false, and the rectangle left alone, when the part is not shown.
    bool getColorBoxRect(unsigned int index, Rect *rect) const;
    bool getMinColorRect(Rect *rect) const;
    bool getMaxColorRect(Rect *rect) const;
    bool getMinLabelRect(Rect *rect) const;
    bool getMaxLabelRect(Rect *rect) const;
    bool getValueLabelRect(unsigned int index, Rect *rect) const;
    bool getEditTitleRect(Rect *rect) const;
    /// The label's rectangle, along the scale relative to the start of the bar, across it to the label column. Throws
    /// ProgError without a scale or for an index that no label has.
    void computeLabelRect(unsigned int index, Rect *rect) const;

    Legend *copy() const override { return new Legend(*this); }
    unsigned int getEstimatedObjectSize() const override;
    bool isTokenUsed(QString const &) const override { return false; }
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    /// With all local data but the histogram.
    QString getParameterString() const override { return getParameterString(true); }
    QString getParameterString(bool withData) const;
    void createFromParameterString(QString &parameters) override;
    /// The same for parameter strings of an older release.
    void createFromV541ParameterString(QString &parameters);
    bool canConnectTo(Element const *target, QString const &point) const override;
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    bool hasFont() const override { return true; }
    bool hasFontColor() const override { return true; }
    bool hasMargin() const override { return true; }
    bool hasSpacing() const override { return true; }
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;

private:
    struct Partner;
    /// What the virtual operations hand out.
    struct LocalScale
    {
        Legend2::Legend const *legend = nullptr;
        Legend2::Data const *data = nullptr;
        bool showTolerances = false;
        Legend2::ToleranceParams const *tolerance = nullptr;
        Legend2::HistogramData const *histogram = nullptr;
    };

    void resetScale();
    void computeDynamicDataElement(FigureTokenInterface const *tokens);
    void computeDynamicData3d(FigureTokenInterface const *tokens);
    void computeDynamicDataGlobal(FigureTokenInterface const *tokens);
    std::vector<Partner> askPartners(FigureTokenInterface const *tokens) const;
    static bool findCommonScale(std::vector<Partner> const &partners, Partner const **first);
    bool takeCommonHistogram(std::vector<Partner> const &partners);

    bool isDrawBlocksActive() const;
    bool hasExtremaBoxes() const;
    bool hasHistogramColumn() const;
    bool hasTicks() const;
    void layOut();
    void computeTicks(bool withUnit);
    void computeToleranceTicks();
    void computeScaleTicks();
    void clearTicks();
    void takeOver(RangeCalculator const &range);
    void setTitle(QString const &title);
    QString getScaleTitle(bool withUnit) const;
    BaVec2d<double> computeExtremaTextSize() const;
    double computeColorLength(double titleExtent, double extremaExtent) const;
    double getFrameWidth() const;
    double getTickLength() const;
    void computePositionsHorizontal();
    void computePositionsVertical();
    void computeLabelVisibility();
    void applySizeRule();
    void applyLegacyResize(double surplus);
    void addLabelsToUpdatePolygon();
    bool getPlacedLabelRect(unsigned int index, Rect *rect) const;

    void drawTitle(Painter *painter) const;
    void drawExtrema(Painter *painter) const;
    void drawExtremum(Painter *painter, Rect const &box, Color const &color, bool valid) const;
    void drawColors(Painter *painter) const;
    void drawToleranceBoxes(Painter *painter) const;
    void drawStrip(Painter *painter) const;
    void drawBlocks(Painter *painter) const;
    void drawTicks(Painter *painter) const;
    void drawLabels(Painter *painter) const;
    void drawHistogram(Painter *painter) const;
    void drawHistogramBars(Painter *painter) const;
    void drawBox(Painter *painter, Rect const &box, LineStyle const &line, FillStyle const &fill) const;
    void drawOutline(Painter *painter, Rect const &box) const;
    Rect blockRect(std::size_t index) const;

    LocalScale getLocalScale() const;
    void updateInternalFromLocal();
    void updateLocalFromInternal();
    template <class Archive, class Self, class Flag>
    static void blockFields(Archive &archive, Self &self, Flag &showTolerances);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Reader>
    void readOwnParameters(Reader &reader);
    void loadLocalScale(IO::InStream *stream, unsigned int version);

    LineStyle tickBoxStyle_;
    double barWidth_ = 5.0;
    bool showHistogram_ = false;
    LineStyle tickStyle_;
    LegendDataMode legendDataMode_ = LEGEND_DATA_MODE_ELEMENT;
    Legend2::Legend localLegend_;
    Legend2::Data localData_;
    bool localShowTolerances_ = false;
    Legend2::ToleranceParams localTolerance_;
    Legend2::HistogramData localHistogram_;

    Rect titleRect_;
    Rect maxColorRect_;
    Rect minColorRect_;
    Rect colorsRect_;
    Rect labelsRect_;
    QString unitTitle_;
    std::vector<double> tickPositions_;
    std::vector<double> tickValues_;
    std::vector<int> tickIndices_;
    std::vector<QString> texts_;
    std::vector<BaVec2d<double>> textSizes_;
    std::vector<bool> drawTexts_;
    unsigned int labelCount_ = 0;
    double colorLength_ = 1.0;
    double labelWidth_ = 0.0;
    double titleHeight_ = 0.0;
    double titleWidth_ = 0.0;
    BaVec2d<double> extremaTextSize_{0.0, 0.0};
    Rect histogramRect_;
    bool dataValid_ = false;
    Legend2::Legend legend_;
    Legend2::Data legendData_;
    bool showTolerances_ = false;
    Legend2::ToleranceParams tolerance_;
    Legend2::HistogramData histogram_;
    bool usesGlobalHistogram_ = false;
    bool equalSizedBlocks_ = false;
    bool legacyResize_ = false;
};

} // namespace Zem::Fig2
