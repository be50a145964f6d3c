// ZemFig2Chart.h: ChartBase, Chart and GenericChart, the elements that show curves.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2AreaBase.h"
#include "ZemFig2Axis.h"
#include "ZemFig2ChartData.h"
#include "ZemFig2ChartInterface.h"
#include "ZemFig2Grid.h"

#include <ZemTokenInfo.h>
#include <ZemValue.h>

#include <QtCore/QHash>

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace Zem::Fig2 {

struct ChartProjection;

/// What all charts share: two axes, a grid, a frame around the plot, and the ChartData that the token interface lends
/// under the chart's token. Each update takes ranges and units from the data and lays the chart out; a chart without
/// data shows a message in place of its plot.
///
/// Chart coordinates are in the base units of the data, figure coordinates page millimetres before the rotation of the
/// element. Labels that are connected to a chart find its values through getValue.
class ChartBase : public AreaBase, public ChartMarkerFrame
{
public:
    static constexpr QLatin1StringView PARAM_SHOW_CURRENT_STAGE{"show_current_stage"};
    static constexpr QLatin1StringView PARAM_SHOW_POINT_MARKERS{"show_point_markers"};
    static constexpr QLatin1StringView PARAM_LEFT_MARGIN{"left_margin"};
    static constexpr QLatin1StringView PARAM_RIGHT_MARGIN{"right_margin"};
    static constexpr QLatin1StringView PARAM_AXIS_X{"axis_x"};
    static constexpr QLatin1StringView PARAM_AXIS_Y{"axis_y"};
    static constexpr QLatin1StringView PARAM_GRID{"grid"};
    static constexpr QLatin1StringView PARAM_INNER_BORDER{"inner_border"};
    static constexpr QLatin1StringView PARAM_CURRENT_STAGE_STYLE{"current_stage_style"};
    static constexpr QLatin1StringView PARAM_POINT_MARKER_SYMBOL{"point_marker_symbol"};
    /// Read, never written: type and size of the point markers in older releases.
    static constexpr QLatin1StringView PARAM_CURRENT_STAGE_MARKER_SYMBOL{"current_stage_marker_symbol"};
    static constexpr QLatin1StringView PARAM_CURRENT_STAGE_MARKER_SIZE{"current_stage_marker_size"};

    // The tokens that getValue knows. Those that end with "_" are followed by the id of a dataset.
    static constexpr QLatin1StringView TOKEN_UNIT_AXIS_X{"X_UNIT"};
    static constexpr QLatin1StringView TOKEN_UNIT_AXIS_Y{"Y_UNIT"};
    static constexpr QLatin1StringView TOKEN_NAME{"NAME_"};
    static constexpr QLatin1StringView TOKEN_MIN_X{"MIN_X_"};
    static constexpr QLatin1StringView TOKEN_MIN_Y{"MIN_Y_"};
    static constexpr QLatin1StringView TOKEN_MAX_X{"MAX_X_"};
    static constexpr QLatin1StringView TOKEN_MAX_Y{"MAX_Y_"};
    static constexpr QLatin1StringView TOKEN_AVERAGE{"AVERAGE_"};
    static constexpr QLatin1StringView TOKEN_VARIANCE{"VARIANCE_"};
    static constexpr QLatin1StringView TOKEN_DEVIATION{"STD_DEVIATION_"};

    /// The chart token: under this name the token interface lends the data. Empty for a chart that shows nothing.
    QString const &getToken() const { return token_; }

    /// What the user chose, and the layout of the last update.
    Axis const &getAxisX() const { return axisX_; }
    void setAxisX(Axis const &axis);
    Axis const &getAxisY() const { return axisY_; }
    void setAxisY(Axis const &axis);
    Grid const &getGrid() const { return grid_; }
    void setGrid(Grid const &grid);
    /// The frame of the plot rectangle.
    LineStyle const &getInnerBorder() const { return innerBorder_; }
    void setInnerBorder(LineStyle const &style);
    /// The least room between the sides of the chart and the plot, so that the plots of several charts line up.
    double getLeftMargin() const { return leftMargin_; }
    void setLeftMargin(double margin);
    double getRightMargin() const { return rightMargin_; }
    void setRightMargin(double margin);
    bool getShowCurrentStage() const override { return showCurrentStage_; }
    void setShowCurrentStage(bool show);
    bool getShowPointMarkers() const override { return showPointMarkers_; }
    void setShowPointMarkers(bool show);
    LineStyle const &getCurrentStageStyle() const override { return currentStageStyle_; }
    void setCurrentStageStyle(LineStyle const &style);
    Symbol const &getPointMarkerSymbol() const override { return pointMarkerSymbol_; }
    void setPointMarkerSymbol(Symbol const &symbol);

    /// The distances of the plot rectangle from the drawing rectangle. No pointer is null, here and below.
    void getMargins(double *left, double *right, double *top, double *bottom) const;
    /// The plot rectangle: its size and its top left corner.
    void getSizeAndOffset(BaVec2d<double> *size, BaVec2d<double> *offset) const;
    /// The figure coordinates of the value (0, 0) in the units of the axes, and millimetres per such unit.
    void getDataOriginAndScale(BaVec2d<double> *origin, BaVec2d<double> *scale) const;
    /// Where a point lies as of the last update; one further than a plot width or height outside is moved up to there.
    BaVec2d<double> getFigureCoordinates(BaVec2d<double> const &point) const override;
    /// The values at a place of the page, in the units of the axes.
    BaVec2d<double> getChartCoordinates(BaVec2d<double> const &point) const;
    Rotation getRotation() const override { return Rotation(this); }

    /// Appends what getValue knows for the data, which may be null.
    virtual void getTokens(ChartData const *data, std::vector<TokenInfo> *tokens) const;
    /// A unit, a token of the data, or a statistic of a shown dataset; numbers are in base units and carry no unit. The
    /// empty value when the token is unknown or has no value. Answers are kept until the next update. `data` may be
    /// null.
    virtual Value getValue(StageIdentifier const &stage, ChartData const *data, QString const &token) const;
    /// How this chart draws the dataset; null when it has no say in it, and the dataset's own parameters hold.
    virtual ChartParameters const *getChartParameters(ChartDataset const *dataset) const;
    virtual bool isDatasetUsed(QString const &id) const = 0;
    /// The dataset's text for the user.
    virtual QString getDatasetDescription(ChartDataset const *dataset) const;

    unsigned int getEstimatedObjectSize() const override;
    bool isTokenUsed(QString const &token) const override { return token == token_; }
    bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const override;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    /// There is no text form of charts: both throw ProgError.
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    /// As the other end of the connector answers.
    bool computeConnectorPoints(Connector const *connector, FigureTokenInterface const *tokens, BaVec2d<double> *from,
                                BaVec2d<double> *to) const override;
    /// Long data take several steps, unless the painter's mode is 0. Throws ProgError when the axes stand on no sides
    /// that belong together.
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    bool hasMaximize() const override { return true; }
    bool hasFont() const override { return true; }
    bool hasLegendData() const override { return true; }
    bool getLegendData(FigureTokenInterface const *tokens, Legend2::Legend *legend, Legend2::Data *data,
                       bool *showTolerances, Legend2::ToleranceParams *tolerance, Legend2::HistogramData *histogram,
                       bool *canDrawColors) const override;
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;

protected:
    explicit ChartBase(Type_t type);
    /// As copies of elements are, and without the answers that were kept.
    ChartBase(ChartBase const &other);
    ChartBase &operator=(ChartBase const &) = delete;

    void setTokenName(QString const &token) { token_ = token; }
    /// Reads the text form that older releases wrote; `token` receives the chart token. Throws IO::StreamException for
    /// a newer one.
    std::istream &loadOldText(std::istream &stream, QString *token);

private:
    class DatasetPainter;
    /// The drawing steps from `firstStep` on belong to the dataset.
    struct StepPlan
    {
        QString dataset;
        std::size_t firstStep = 0;
    };
    using ShownDatasets = std::vector<ChartData::Datasets::const_iterator>;

    void updateRanges(StageIdentifier const &stage, ChartData const *data);
    void updateScale(ChartData const *data);
    bool takeScaleOfLegends(bool *conflict);
    void resetScale();
    void updateLayout();
    BaVec2d<double> computeAxisLengths() const;
    void updateAxes(int digits);
    void updateProjection();
    void updateCoveredPolygon();
    double limitedMargin(double margin) const;
    ChartProjection getProjection() const;
    BaVec2d<double> computeScale() const;

    Value findValue(StageIdentifier const &stage, ChartData const *data, QString const &token) const;
    ChartDataset const *findDatasetForToken(ChartData const *data, QString const &token,
                                            QLatin1StringView prefix) const;

    ChartParameters const &parametersOf(ChartDataset const *dataset) const;
    bool hasMultistepCapability(ChartDataset const *dataset) const;
    ShownDatasets collectDatasets(ChartData const *data, std::size_t *numberOfPoints) const;
    void drawEmpty(Painter *painter) const;
    void drawFrame(Painter *painter) const;
    void drawInnerBorder(Painter *painter) const;
    void drawAll(Painter *painter, ChartData const *data, ShownDatasets const &datasets) const;
    bool drawContents(Painter *painter, ChartData const *data, int step) const;
    bool drawStep(Painter *painter, ChartData const *data, std::size_t step) const;
    void planSteps(ShownDatasets const &datasets) const;
    void drawDataset(ChartDataset const &dataset, Painter *painter, unsigned int first, unsigned int count) const;
    void drawOverlay(Painter *painter, ChartData const *data) const;
    void drawSymbol(Painter *painter, BaVec2d<double> const &position, double value, Symbol const &symbol,
                    LineStyle const &line, FillStyle const &fill, Rotation const &rotation) const;

    template <class Archive, class Self>
    static void blockFields(Archive &archive, Self &self);
    template <class Archive, class Self>
    static void parameterItems(Archive &archive, Self &self);
    void readOldPointMarker(QString &parameters);

    QString token_;
    Axis axisX_{Axis::HORIZONTAL_BOTTOM};
    Axis axisY_{Axis::VERTICAL_LEFT};
    Grid grid_;
    LineStyle innerBorder_{0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)};
    double leftMargin_ = 0.0;
    double rightMargin_ = 0.0;
    bool showCurrentStage_ = false;
    bool showPointMarkers_ = false;
    LineStyle currentStageStyle_{0.1, LineStyle::STYLE_DOTTED, Color(0, 0, 0)};
    Symbol pointMarkerSymbol_{Symbol::TYPE_MARKER, 5.0, false};

    // Derived.
    Legend2::Legend legend_{uLength};
    Legend2::Data legendData_;
    unsigned int tokenModifiedCounter_ = 4294967295U;
    double clipMinX_ = 0.0;
    double clipMaxX_ = 0.0;
    double clipMinY_ = 0.0;
    double clipMaxY_ = 0.0;
    BaVec2d<double> plotOffset_{0.0, 0.0};
    BaVec2d<double> plotSize_{0.0, 0.0};
    BaVec2d<double> dataOrigin_{0.0, 0.0};
    BaVec2d<double> dataScale_{0.0, 0.0};
    mutable std::map<QString, Value> valueCache_;
    mutable std::vector<StepPlan> steps_;   ///< of the drawing that has begun last
    mutable std::size_t numberOfSteps_ = 0; ///< without the one of the overlay
};

class GenericChart;

/// Shows the data of one chart token, all datasets as they are.
class Chart : public ChartBase
{
public:
    static constexpr QLatin1StringView PARAM_TOKEN{"token"};

    Chart();
    /// What the other chart shows as a plain chart. Its looks go to the datasets in `data`, which may be null.
    Chart(GenericChart const &other, ChartData *data);
    Chart(Chart const &) = default;

    void setToken(QString const &token);

    Chart *copy() const override { return new Chart(*this); }
    unsigned int getEstimatedObjectSize() const override;
    bool isDatasetUsed(QString const &) const override { return true; }
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    /// Reads the text form that older releases wrote. A newer version throws IO::StreamException.
    std::istream &loadFromStream(std::istream &stream) override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
};

/// Composes its data: one x token and any number of y tokens of the figure's ChartInterface, each with its own look.
/// The chart token that results is registered with the interface as long as the chart is in the figure.
class GenericChart : public ChartBase
{
public:
    /// A y token and the look of its curve.
    using Entry = std::pair<ChartInterface::DataToken, ChartParameters>;
    using DataTokens = std::set<ChartInterface::DataToken>;

    static constexpr QLatin1StringView PARAM_TOKEN_X{"token_x"};
    /// %1 is the number of the entry, from 0 on.
    static constexpr QLatin1StringView PARAM_TOKENS_Y{"chart_dataset_%1"};
    static constexpr QLatin1StringView TOKEN_VALUE_AXIS_X{"X_VALUE"};

    GenericChart();
    GenericChart(GenericChart const &other);
    ~GenericChart() override;

    std::vector<Entry> const &getData() const { return data_; }
    void setData(std::vector<Entry> const &data);
    QString const &getTokenX() const { return tokenX_; }
    void setTokenX(QString const &token);

    /// Tells the figure's chart interface that the chart token is in use, once; nothing without interface or token.
    void registerToken();
    /// Takes that back.
    void unregisterToken();
    /// Drops what is no more among the data tokens on offer; an x token that is gone gives its place to the first.
    void tokenDeleted(DataTokens const &tokensX, DataTokens const &tokensY);

    GenericChart *copy() const override { return new GenericChart(*this); }
    unsigned int getEstimatedObjectSize() const override;
    bool isDatasetUsed(QString const &id) const override { return findEntry(id) != nullptr; }
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    QString getParameterString() const override;
    void createFromParameterString(QString &parameters) override;
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;
    void getTokens(ChartData const *data, std::vector<TokenInfo> *tokens) const override;
    Value getValue(StageIdentifier const &stage, ChartData const *data, QString const &token) const override;
    ChartParameters const *getChartParameters(ChartDataset const *dataset) const override;
    QString getDatasetDescription(ChartDataset const *dataset) const override;

protected:
    void leavingFigure() override;

private:
    template <class Change>
    void changeData(Change const &change);
    void updateToken();
    Entry const *findEntry(QString const &name) const;
    template <class Archive, class Text>
    static void blockFields(Archive &archive, Text &tokenX, unsigned int &count);
    void loadAll(IO::InStream *stream, int a, int b);

    std::vector<Entry> data_;
    QString tokenX_;
    bool tokenRegistered_ = false;
    QHash<QString, std::size_t> entryByName_; ///< the first entry of each name
};

} // namespace Zem::Fig2
