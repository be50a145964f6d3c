// ZemFig2SnapshotData.h: SnapshotData, a figure frozen at one stage.
// Layer: document. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Figure.h"
#include "ZemFig2ImageConversion.h"
#include "ZemFig2SnapshotFilter.h"

#include <ZemHistogramData.h>
#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemToleranceParams.h>

#include <memory>

namespace Zem {
class Image;
class TokenContainer;
} // namespace Zem

namespace Zem::Fig2 {

class FigureTokenContainer;
class SnapshotChartInterface;
class SnapshotTokenInterface;

/// A figure of its own, with all the data that it shows: values, images and charts, the descriptions of what charts
/// show, and the colour scale that it was frozen with. It needs neither the figure that it was made of nor the
/// application's data.
class SnapshotData
{
public:
    /// Chosen and understood by the application; the number is stored.
    enum DrawingMode : unsigned int {};

    /// The name under which a snapshot of one bare picture holds it.
    static constexpr QLatin1StringView TOKEN_SNAPSHOT_IMAGE{"Zem_SnapData_SnapshotImageToken"};

    /// Without a figure, without data and without a colour scale.
    SnapshotData();
    /// Takes ownership of both; the figure takes its values from the container.
    SnapshotData(StageIdentifier const &stage, Figure *figure, FigureTokenContainer *tokens);
    /// The elements of `source`, which is updated for the stage, that pass the filter, on a page like its own.
    SnapshotData(StageIdentifier const &stage, Figure const *source, SnapshotElementFilter const &filter);
    /// One bare picture, which is copied, on a white page of its size in Calculator's resolution.
    SnapshotData(StageIdentifier const &stage, Zem::Image const *image, ImageConversion const &conversion);
    /// Both copy everything deeply.
    SnapshotData(SnapshotData const &other);
    SnapshotData &operator=(SnapshotData const &other);
    virtual ~SnapshotData();

    /// Null for none; owned here. Brought up to date for the stage once before it is handed out for the first time.
    Figure const *getFigure() const;
    Figure *getFigure();
    /// Takes ownership and deletes the one before. May be null.
    void setFigure(Figure *figure);

    StageIdentifier const &getStage() const { return stage_; }
    /// Null for none; owned here.
    FigureTokenContainer const *getTokenContainer() const { return tokenContainer_.get(); }
    FigureTokenContainer *getTokenContainer() { return tokenContainer_.get(); }
    TokenContainer const *getProjectTokenContainer() const { return projectTokenContainer_.get(); }
    /// Values that the figure takes where its own container has none. Takes ownership and deletes the one before.
    void setProjectTokenContainer(TokenContainer *tokens);
    DrawingMode getDrawingMode() const { return drawingMode_; }
    void setDrawingMode(DrawingMode mode) { drawingMode_ = mode; }

    /// Adds the elements of `source` that pass the filter, moved by `offset` (page millimetres), with the data that
    /// they show at the stage. The source is updated for that stage before.
    void merge(StageIdentifier const &stage, Figure const *source, BaVec2d<double> const &offset,
               SnapshotElementFilter const &filter);
    /// Cuts the page to the rectangle, as far as it lies on it, and moves the elements along.
    void crop(Rect const &rect);

    /// The colour scale; without the tolerances and the histogram these are reset.
    void setLegendData(Legend2::Legend const &legend, Legend2::Data const &data);
    void setLegendData(Legend2::Legend const &legend, Legend2::Data const &data, bool showTolerances,
                       Legend2::ToleranceParams const &tolerance, Legend2::HistogramData const &histogram);
    /// All of it, also that there is none.
    void copyLegendData(SnapshotData const &other);
    /// Copies the colour scale out. False, and nothing is copied, when there is none. No argument is null.
    bool getLegendData(Legend2::Legend *legend, Legend2::Data *data) const;
    /// Whether there is a colour scale, shown as that of tolerances.
    bool showTolerances() const { return scale_.hasLegendData && scale_.showTolerances; }
    Legend2::ToleranceParams const &getToleranceParams() const { return scale_.tolerance; }
    Legend2::HistogramData const &getHistogramData() const { return scale_.histogram; }

    /// Several blocks. load replaces everything; it throws IO::StreamException, and what was read so far stays.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

protected:
    /// As it is now, whether it is up to date or not.
    Figure const *getPresentFigure() const { return figure_.get(); }

private:
    struct Scale
    {
        bool hasLegendData = false;
        Legend2::Legend legend{uLength};
        Legend2::Data data;
        bool showTolerances = false;
        Legend2::ToleranceParams tolerance;
        Legend2::HistogramData histogram;
    };

    struct Header;

    void swap(SnapshotData &other) noexcept;
    void renewTokenInterface();
    void connectFigure();
    void freezeCharts(Figure const *source);
    void adoptElement(std::unique_ptr<Element> child, StageIdentifier const &stage, Figure const *source,
                      BaVec2d<double> const &offset);
    void takeTokens(StageIdentifier const &stage, FigureTokenInterface const *source,
                    std::vector<Element *> const &elements);
    static void switchSystemFontOff(Figure *figure);
    void updateFigure() const;

    // The persistent form.
    template <class Archive, class Self>
    static void headerFields(Archive &archive, Self &header);
    void clear();
    void loadTokens(IO::InStream *stream, Header const &header);
    void loadParts(IO::InStream *stream, Header const &header);
    void loadScale(IO::InStream *stream, Header const &header);

    // The figure unregisters from the chart interface, so that one goes last.
    std::unique_ptr<FigureTokenContainer> tokenContainer_;
    std::unique_ptr<TokenContainer> projectTokenContainer_;
    StageIdentifier stage_;
    std::unique_ptr<SnapshotTokenInterface> tokenInterface_;
    std::unique_ptr<SnapshotChartInterface> chartInterface_;
    std::unique_ptr<Figure> figure_;
    Scale scale_;
    DrawingMode drawingMode_{};
    mutable bool figureUpdated_ = false;
};

} // namespace Zem::Fig2
