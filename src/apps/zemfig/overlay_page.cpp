#include "overlay_page.h"

#include "page_builder.h"

#include <ZemFig2Image.h>
#include <ZemFig2Legend.h>
#include <ZemFig2Line.h>
#include <ZemFig2Transformation.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace Zem::Zemfig {

using namespace Fig2;
using namespace Measurement;

namespace {

/// The largest of 1, 2, 5, 10, ... that is not above the number.
double roundDown(double number)
{
    double const power = std::pow(10.0, std::floor(std::log10(number)));
    for (double const digit : {5.0, 2.0}) {
        if (digit * power <= number * (1.0 + 1e-12))
            return digit * power;
    }
    return power;
}

double lengthOf(BaVec3d<double> const &v)
{
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

/// The points in the picture, and how long their vectors are there.
struct Extent
{
    double greatestLength = 0.0;       ///< of the vectors, in the unit of the measurement
    double greatestPixels = 0.0;       ///< of the vectors, in the picture
    double distanceOfNeighbours = 0.0; ///< pixels, as if the points were evenly spread
};

Extent measure(PointField const &field, Fig2::Transformation const &transformation)
{
    Extent extent;
    std::vector<BaVec2d<double>> pixels;
    for (std::size_t i = 0; i < field.points.size(); ++i) {
        BaVec2d<double> foot;
        BaVec2d<double> end;
        if (!field.valid[i] ||
            !transformation.computeImagePoints(field.points[i], field.points[i] + field.vectors[i], &foot, &end))
            continue;
        pixels.push_back(foot);
        if ((end - foot).length() > extent.greatestPixels) {
            extent.greatestPixels = (end - foot).length();
            extent.greatestLength = lengthOf(field.vectors[i]);
        }
    }
    if (pixels.size() < 2)
        return extent;
    auto const byX = [](auto const &a, auto const &b) { return a.x < b.x; };
    auto const byY = [](auto const &a, auto const &b) { return a.y < b.y; };
    auto const [left, right] = std::minmax_element(pixels.begin(), pixels.end(), byX);
    auto const [top, bottom] = std::minmax_element(pixels.begin(), pixels.end(), byY);
    double const area = (right->x - left->x) * (bottom->y - top->y);
    extent.distanceOfNeighbours = std::sqrt(area / static_cast<double>(pixels.size()));
    return extent;
}

/// Lays the page out from top to bottom.
class OverlayMaker : private PageBuilder
{
public:
    OverlayMaker(Project const &project, OverlayWish const &wish)
        : project_(project), wish_(wish), view_(find(project.views(), wish.view)),
          set_(find(project.pointSets(), wish.set)), field_(project.points(set_, wish.stage)),
          extent_(measure(field_, *view_.camera.makeTransformation()))
    {
        vectorScaling_ = wish.vectorScaling.value_or(chooseScaling());
    }

    std::unique_ptr<Figure> make()
    {
        addHeader(wish_.title, wish_.subtitle);
        addPicture();
        if (hasVectors())
            addScaleArrow();
        addStatistics();
        return takeFigure();
    }

private:
    // The page, in millimetres.
    static constexpr double TOP = 38.0;
    static constexpr double PICTURE_WIDTH = 152.0;
    static constexpr double PICTURE_BOTTOM = 228.0;
    static constexpr double LEGEND_GAP = 4.0;
    static constexpr double LEGEND_TITLE_GAP = 2.0;
    static constexpr double LEGEND_WIDTH = 24.0;
    static constexpr double LONGEST_LEGEND = 120.0;
    static constexpr double ARROW_GAP = 6.0;
    static constexpr double TABLE_GAP = 6.0;
    static constexpr double ROW_HEIGHT = 5.0;
    static constexpr double BOTTOM = 290.0;
    static constexpr double VECTOR_WIDTH = 0.25;
    static constexpr double LONGEST_ARROW = 30.0;

    static constexpr double REACH = 1.5; // of the longest vector, in distances between neighbours

    template <class Item>
    static Item find(std::vector<Item> const &items, QString const &name)
    {
        return *std::find_if(items.begin(), items.end(), [&](Item const &item) { return item.name == name; });
    }

    bool hasVectors() const { return extent_.greatestPixels > 0.0; }

    double chooseScaling() const
    {
        bool const canBeChosen = hasVectors() && extent_.distanceOfNeighbours > 0.0;
        return canBeChosen ? roundDown(REACH * extent_.distanceOfNeighbours / extent_.greatestPixels) : 1.0;
    }

    void addPicture()
    {
        double const width = view_.camera.width;
        double const height = view_.camera.height;
        pixelSize_ = std::min(PICTURE_WIDTH / width, (PICTURE_BOTTOM - TOP) / height);
        size_ = {width * pixelSize_, height * pixelSize_};
        auto *image = add<Fig2::Image>(QStringLiteral("picture"));
        image->setToken(wish_.view);
        image->setSize(size_);
        image->setOrigin({LEFT + size_.x / 2.0, TOP + size_.y / 2.0});
        ImageDataVisualisation look(false);
        look.setVectorScaling(vectorScaling_);
        look.setVectorLineWidth(VECTOR_WIDTH);
        look.setDrawHiddenPoints(false);
        image->setVisualisation(wish_.set, look);
        addLegend(image);
    }

    void addLegend(Element *image)
    {
        double const left = LEFT + size_.x + LEGEND_GAP;
        QString const quantity = set_.columns.value.isEmpty() ? QStringLiteral("length") : set_.columns.value;
        addText(QStringLiteral("title of the scale"), left, TOP + ROW_HEIGHT / 2.0, 8.0,
                QStringLiteral("<b>%1</b>").arg(escaped(titleOf(quantity))));
        auto *legend = add<Legend>(QStringLiteral("scale"));
        double const legendTop = TOP + ROW_HEIGHT + LEGEND_TITLE_GAP;
        double const legendHeight = std::min(size_.y - (legendTop - TOP), LONGEST_LEGEND);
        legend->setFont(Font(Font::DEFAULT_FONT_SANS, 8.0, 0));
        legend->setBarWidth(5.0);
        legend->setSize({LEGEND_WIDTH, legendHeight});
        legend->setOrigin({left + LEGEND_WIDTH / 2.0, legendTop + legendHeight / 2.0});
        legend->connect(image, QString());
    }

    /// As long as a vector of a round length is drawn.
    void addScaleArrow()
    {
        UnitData unit;
        QString const column = vectorColumn();
        project_.pointNumbers(set_, column, wish_.stage, &unit);
        double const perUnit = unit.hasUnit() ? unit.getUnit()->toBase(1.0, unit.getCurrentUnit()) : 1.0;
        double const millimetres =
            extent_.greatestPixels / extent_.greatestLength * vectorScaling_ * pixelSize_ * perUnit;
        double const value = roundDown(LONGEST_ARROW / millimetres);
        double const y = TOP + size_.y + ARROW_GAP;
        auto *arrow = add<Line>(QStringLiteral("scale arrow"));
        arrow->setBorder(LineStyle(VECTOR_WIDTH, LineStyle::STYLE_FULL, Color(0, 0, 0)));
        arrow->setPoint1({LEFT, y});
        arrow->setPoint2({LEFT + value * millimetres, y});
        arrow->setArrowInfo({false, true});
        QString const name = unit.hasUnit() ? unit.getUnitName() : unitTextOf(column);
        addText(QStringLiteral("length of the arrow"), LEFT + value * millimetres + 2.0, y, 9.0,
                escaped(QStringLiteral("%1 %2").arg(QString::number(value), name).trimmed()));
    }

    /// The first one that the vectors have.
    QString vectorColumn() const
    {
        PointColumns const &columns = set_.columns;
        QString const &plane = columns.dx.isEmpty() ? columns.dy : columns.dx;
        return plane.isEmpty() ? columns.dz : plane;
    }

    QString unitTextOf(QString const &column) const
    {
        ProjectSeries const *const series = seriesOf(column);
        return series ? series->unitText : QString();
    }

    ProjectSeries const *seriesOf(QString const &column) const
    {
        QString const name = set_.groups.at(wish_.stage) + QLatin1Char('.') + column;
        auto const found =
            std::find_if(series_.begin(), series_.end(), [&](ProjectSeries const &one) { return one.name == name; });
        return found == series_.end() ? nullptr : &*found;
    }

    struct Column
    {
        char const *title;
        char const *statistic;
        double x;
    };
    static constexpr std::array<Column, 5> COLUMNS{{{"points", "count", 95.0},
                                                    {"minimum", "min", 120.0},
                                                    {"maximum", "max", 145.0},
                                                    {"mean", "mean", 170.0},
                                                    {"std. deviation", "sigma", RIGHT}}};

    void addStatistics()
    {
        double y = TOP + size_.y + ARROW_GAP + TABLE_GAP + ROW_HEIGHT / 2.0;
        addText(QStringLiteral("quantity"), LEFT, y, 8.0, QStringLiteral("<b>quantity</b>"));
        for (Column const &column : COLUMNS)
            addEndingText(QLatin1StringView(column.title), column.x, y, 8.0,
                          QStringLiteral("<b>%1</b>").arg(QLatin1StringView(column.title)));
        int row = 0;
        for (QString const &quantity : quantities()) {
            y += ROW_HEIGHT;
            if (y + ROW_HEIGHT / 2.0 <= BOTTOM)
                addRow(quantity, ++row, y);
        }
    }

    /// Places are no quantities to be told of.
    QStringList quantities() const
    {
        PointColumns const &columns = set_.columns;
        QStringList const left{columns.x, columns.y, columns.z, columns.id, columns.valid};
        QStringList names;
        QString const group = set_.groups.at(wish_.stage) + QLatin1Char('.');
        for (ProjectSeries const &series : series_) {
            QString const name = series.name.mid(group.size());
            if (series.name.startsWith(group) && !left.contains(name) && series.type != ColumnType_t::DATE_TIME)
                names << name;
        }
        if (hasVectors() && !names.contains(QStringLiteral("length")))
            names << QStringLiteral("length");
        return names;
    }

    QString titleOf(QString const &quantity) const
    {
        ProjectSeries const *const series = seriesOf(quantity);
        QString const unit = unitTextOf(series ? quantity : vectorColumn());
        QString const title = series ? series->title : QStringLiteral("length");
        return unit.isEmpty() ? title : QStringLiteral("%1 [%2]").arg(title, unit);
    }

    /// The greatest number, in the unit in which it is shown.
    double sizeOf(QString const &quantity) const
    {
        ProjectSeries const *const series = seriesOf(quantity);
        if (!series)
            return extent_.greatestLength;
        double greatest = 0.0;
        for (double const number : project_.seriesNumbers(*series))
            greatest = std::max(greatest, std::isnan(number) ? 0.0 : std::abs(number));
        return greatest;
    }

    void addRow(QString const &quantity, int row, double y)
    {
        addText(QStringLiteral("quantity %1").arg(row), LEFT, y, 8.0, escaped(titleOf(quantity)));
        int const decimals = decimalsFor(sizeOf(quantity));
        for (Column const &column : COLUMNS) {
            QString const statistic = QLatin1StringView(column.statistic);
            QString const format =
                column.statistic == COLUMNS[0].statistic ? QString() : QStringLiteral(".%1").arg(decimals);
            addEndingText(QStringLiteral("%1 %2").arg(QLatin1StringView(column.title)).arg(row), column.x, y, 8.0,
                          QStringLiteral("$%1%2.%3.%4$").arg(format, wish_.set, quantity, statistic));
        }
    }

    Project const &project_;
    OverlayWish const &wish_;
    ProjectView view_;
    ProjectPointSet set_;
    PointField field_;
    Extent extent_;
    std::vector<ProjectSeries> series_ = project_.series();
    double vectorScaling_ = 1.0;
    double pixelSize_ = 1.0; ///< millimetres
    BaVec2d<double> size_;
};

} // namespace

std::unique_ptr<Figure> makeOverlayPage(Project const &project, OverlayWish const &wish)
{
    return OverlayMaker(project, wish).make();
}

} // namespace Zem::Zemfig
