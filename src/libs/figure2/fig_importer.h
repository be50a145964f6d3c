// fig_importer.h: Importer, which reads the elements of one older figure.
// Layer: document. Internal to the library.
#pragma once

#include "ZemFig2DataInterface.h"
#include "ZemFig2Element.h"
#include "ZemFig2ImportReport.h"

#include <ZemStream.h>

#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Zem::Fig2 {

class AreaBase;
class Axis;
class Chart;
class FigureTemplate;
class Image;
class LabelBase;
class Legend;

/// Reads elements and joins what belongs together once all are there. Everything that reads throws
/// IO::StreamException.
class Importer
{
public:
    /// `report` may be null; `tokens` may not, and receives what the file carries. `place` stands in front of all
    /// places in the report.
    Importer(ImportReport *report, DataInterface *tokens, QString const &place);

    /// A whole figure with its tokens, into an empty figure.
    void importFigure(IO::InStream *stream, Figure *figure);
    /// The same, with the type hints of the charts.
    std::unique_ptr<FigureTemplate> importFigureTemplate(IO::InStream *stream);
    std::unique_ptr<Element> importElement(IO::InStream *stream);

private:
    /// The id of an element that another one refers to.
    struct Link
    {
        Element *source;
        QString place;
        int target;
        QString name;
    };

    /// What another element shows or annotates, by the token of that one.
    template <class Source>
    struct Reference
    {
        Source *source;
        QString place;
        QString token;
    };

    /// Charts by their token, in each group and anywhere.
    class ChartIndex;

    std::unique_ptr<Element> importOfType(IO::InStream *stream, unsigned int type);
    std::unique_ptr<Element> importGroup(IO::InStream *stream);
    std::unique_ptr<Element> importLine(IO::InStream *stream);
    std::unique_ptr<Element> importRectangle(IO::InStream *stream);
    std::unique_ptr<Element> importCircle(IO::InStream *stream);
    std::unique_ptr<Element> importPolygon(IO::InStream *stream);
    std::unique_ptr<Element> importText(IO::InStream *stream);
    std::unique_ptr<Element> importChart(IO::InStream *stream);
    std::unique_ptr<Element> importLegend(IO::InStream *stream);
    std::unique_ptr<Element> importImage(IO::InStream *stream);

    void importPage(IO::InStream *stream, Figure *figure);
    void importTokens(IO::InStream *stream, unsigned int fileVersion);
    void importRegistry(IO::InStream *stream);
    Axis importAxis(IO::InStream *stream, bool horizontal);
    QString importSnapshot(IO::InStream *stream);

    void connectAll(Figure *figure);
    void connectLinks();
    void connectLabels(Figure *figure);
    void connectLegends(Figure *figure);
    void adaptChartLabelTokens(LabelBase *label, QString const &place, ChartIndex const &charts);

    QString place() const;
    void report(char const *record, QString const &place, ImportEntry::Outcome outcome, char const *text) const;
    void kept(char const *record) const;
    void approximated(char const *record, char const *text) const;
    void dropped(char const *record, char const *text) const;

    ImportReport *report_;
    DataInterface *tokens_;
    QString placePrefix_;
    std::vector<unsigned int> path_; ///< numbers of the elements on the way to the present one
    std::unordered_map<int, Element *> elements_;
    std::vector<Link> links_;
    std::vector<std::pair<LabelBase *, QString>> labels_; ///< those that name no element, with their places
    std::vector<Reference<Legend>> legends_;
    unsigned int snapshots_ = 0;
    std::size_t elementCount_ = 0;
};

} // namespace Zem::Fig2
