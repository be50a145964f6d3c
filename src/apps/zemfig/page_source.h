// page_source.h: the data that a page shows.
#pragma once

#include "page_file.h"

#include <ZemMeasChartInterface.h>
#include <ZemMeasCsv.h>
#include <ZemMeasImageInterface.h>
#include <ZemMeasProject.h>
#include <ZemMeasTokenInterface.h>

#include <QtCore/QTemporaryDir>

#include <memory>

namespace Zem::Zemfig {

/// A file whose columns charts can show.
struct SeriesChoice
{
    QString csv;
    Measurement::CsvOptions csvOptions;
    Measurement::SeriesOptions options;
};

/// A picture file of a view.
struct PictureChoice
{
    QString file;
    Measurement::PictureOptions options;
};

/// A file of points that are shown on a view.
struct PointsChoice
{
    QString csv;
    Measurement::CsvOptions csvOptions;
    Measurement::PointOptions options;
};

/// A file whose frozen page is shown under a name.
struct SnippetChoice
{
    QString file;
    QString name;
};

/// How a view is looked at.
struct CameraChoice
{
    QString view;
    Measurement::CameraModel camera;
};

/// Where the values of a page come from; all empty for a page without data.
struct DataChoice
{
    QString project; ///< file or URL
    QString csv;
    Measurement::CsvOptions csvOptions;
    Measurement::ImportOptions importOptions;
    std::vector<SeriesChoice> series; ///< beside the CSV file; a project has its own, and so with the next three
    std::vector<PictureChoice> pictures;
    std::vector<PointsChoice> points;
    std::vector<CameraChoice> cameras;
    std::vector<SnippetChoice> snippets;              ///< these also beside a project
    std::vector<Measurement::NamedPoint> namedPoints; ///< of charts
    /// In place of that of the project.
    std::optional<Measurement::ColorScale> scale;
};

/// The data that a page document names itself, by a path that must stay inside the folder of the document. Throws
/// InputError for a path that leaves it and for an option that does not exist.
DataChoice dataOfDocument(PageDocument const &document, QString const &fileName);

/// What a page document asks of whatever data it is shown with: its colour scale and its named points.
void askOfData(PageDocument const &document, DataChoice *choice);

/// Adds what its [[series]], [[picture]], [[points]] and [[camera]] tables name, by the same rules.
void addSourcesOfDocument(PageDocument const &document, QString const &fileName, DataChoice *choice);

/// An option of a table of points ("set", "view", "stage", "x", "value", "moved", ...). False for an unknown name;
/// throws InputError for a value that does not fit.
bool setPointOption(Measurement::PointOptions *options, QString const &name, QString const &value);

/// An open project over one of the choices, or nothing at all. Its colour scale is that of the process from here on.
class PageData
{
public:
    /// Throws ImportError, ProjectError, InputError.
    explicit PageData(DataChoice const &choice);
    ~PageData();

    /// Never null: without data an interface that holds nothing.
    Fig2::FigureTokenInterface const *tokens() const { return tokens_.get(); }
    /// Null without data.
    Fig2::ChartInterface *charts() const { return charts_.get(); }
    /// Null without data.
    Measurement::Project const *project() const { return project_.get(); }
    /// Hands tokens, charts and images to the figure, which must not be updated after this has gone.
    void showOn(Fig2::Figure *figure) const;
    /// Charts mark the stage, and images show it, from here on.
    void setStage(StageIdentifier const &stage);
    bool hasData() const { return project_ != nullptr; }
    /// Ascending.
    std::vector<unsigned int> stages() const;
    QString name() const { return name_; }

private:
    void openData(DataChoice const &choice);
    void importFiles(DataChoice const &choice);
    void showScale(std::optional<Measurement::ColorScale> const &scale) const;

    QString name_;
    std::unique_ptr<QTemporaryDir> folder_; ///< holds the project made of files
    std::unique_ptr<Measurement::Project> project_;
    std::unique_ptr<Fig2::FigureTokenInterface> tokens_;
    std::unique_ptr<Measurement::ProjectChartInterface> charts_; ///< null without data, like the images
    std::unique_ptr<Measurement::ProjectImageInterface> images_;
};

/// The stages that "12", "3..40", "3..40,50" or "all" names among those that exist; empty text means the last one.
/// Throws UsageError for what cannot be read, InputError for a stage that does not exist.
std::vector<unsigned int> selectStages(QString const &text, std::vector<unsigned int> const &existing,
                                       QString const &source);

/// Reads an option of a CSV file by its name ("delimiter", "decimal_comma", ...) as documents and the command have it.
/// False for an unknown name; throws InputError for a value that does not fit.
bool setCsvOption(DataChoice *choice, QString const &name, QString const &value);
std::vector<QString> csvOptionNames();

} // namespace Zem::Zemfig
