// The stream blocks of charts, those of older releases, and charts in figures.
#include "chart_element_fixture.h"
#include "crafted_element.h"
#include "tree_builders.h"

#include <ZemFig2Figure.h>
#include <ZemFig2Legend.h>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::blockForm;
using Support::loadBlocks;
using Support::parameterForm;
using Support::Payload;
using Support::thrownText;

LineStyle const INNER(0.3, LineStyle::STYLE_DASHED, Color(1, 1, 1));
LineStyle const STAGE(0.4, LineStyle::STYLE_FULL, Color(2, 2, 2));
Symbol const MARKER(Symbol::TYPE_STAR, 7.5, true);

/// The block of ChartBase as a version wrote it.
Payload fieldsOf(unsigned int version, unsigned int symbolType = 1)
{
    Payload fields;
    fields.b(true);
    if (version >= 4)
        fields.b(true);
    if (version >= 9)
        fields.d(4.5).d(5.5);
    if (version >= 5 && version < 10)
        fields.u(symbolType);
    if (version >= 3 && version < 10)
        fields.d(2.5);
    return fields;
}

struct CraftedChart
{
    unsigned int version = 10; ///< of the block of ChartBase
    unsigned int elementVersion = 10;
    unsigned int symbolType = 1;
    std::string token = "force";

    bool hasBlock() const { return elementVersion >= 3; }

    BlockCrafter blocks() const
    {
        BlockCrafter crafter = CraftedElement().addTo(BlockCrafter(), elementVersion);
        if (hasBlock())
            crafter.block(version, fieldsOf(version, symbolType));
        return crafter.add([this](IO::OutStream &stream) {
            Axis axisX(Axis::HORIZONTAL_TOP);
            axisX.setRange({1.5, 2.5});
            axisX.save(&stream);
            Axis axisY(Axis::VERTICAL_RIGHT);
            axisY.setTicks(7);
            axisY.save(&stream);
            Grid grid;
            grid.setLineStyle(INNER);
            grid.save(&stream);
            INNER.save(&stream);
            if (hasBlock())
                STAGE.save(&stream);
            if (hasBlock() && version >= 10)
                MARKER.save(&stream);
            Tools::saveToken(&stream, QString::fromStdString(token));
        });
    }
};

void expectRecords(Chart const &chart)
{
    EXPECT_EQ(chart.getAxisX().getType(), Axis::HORIZONTAL_TOP);
    EXPECT_EQ(chart.getAxisX().getRange(), BaVec2d<double>(1.5, 2.5));
    EXPECT_EQ(chart.getAxisY().getTicks(), 7);
    EXPECT_EQ(chart.getGrid().getLineStyle(), INNER);
    EXPECT_EQ(chart.getInnerBorder(), INNER);
    EXPECT_EQ(chart.getToken(), "force");
    EXPECT_EQ(chart.getOrigin(), BaVec2d<double>(10, 20));
    EXPECT_EQ(chart.getBorder(), CraftedElement().border);
    EXPECT_FALSE(chart.isValid());
}

class ChartBlock : public testing::TestWithParam<unsigned int>
{
};

TEST_P(ChartBlock, ofEachVersionGivesWhatItHolds)
{
    unsigned int const version = GetParam();
    CraftedChart crafted;
    crafted.version = version;
    Chart chart;
    // What is not stored must not stay.
    chart.setShowPointMarkers(true);
    chart.setLeftMargin(77);
    chart.setRightMargin(77);
    chart.setPointMarkerSymbol(Symbol(Symbol::TYPE_CROSS, 77, true));

    loadBlocks(chart, crafted.blocks().bytes());

    expectRecords(chart);
    EXPECT_TRUE(chart.getShowCurrentStage());
    EXPECT_EQ(chart.getShowPointMarkers(), version >= 4);
    EXPECT_EQ(chart.getLeftMargin(), version >= 9 ? 4.5 : 0.0);
    EXPECT_EQ(chart.getRightMargin(), version >= 9 ? 5.5 : 0.0);
    EXPECT_EQ(chart.getCurrentStageStyle(), STAGE);
    Symbol older(version >= 5 ? Symbol::TYPE_BOX : Symbol::TYPE_MARKER, version >= 3 ? 2.5 : 5.0, false);
    older.setColor(Color(2, 2, 2));
    EXPECT_EQ(chart.getPointMarkerSymbol(), version >= 10 ? MARKER : older);
}

INSTANTIATE_TEST_SUITE_P(Versions, ChartBlock, testing::Range(1U, 11U));

TEST(ChartBlocks, ofTheOldestElementsHaveNoBlockOfTheChart)
{
    for (unsigned int elementVersion : {1U, 2U}) {
        CraftedChart crafted;
        crafted.elementVersion = elementVersion;
        Chart chart;
        chart.setCurrentStageStyle(STAGE);
        chart.setPointMarkerSymbol(MARKER);

        loadBlocks(chart, crafted.blocks().bytes());

        expectRecords(chart);
        EXPECT_FALSE(chart.getShowCurrentStage());
        EXPECT_FALSE(chart.getShowPointMarkers());
        EXPECT_EQ(chart.getLeftMargin(), 0.0);
        EXPECT_EQ(chart.getCurrentStageStyle(), LineStyle(0.1, LineStyle::STYLE_DOTTED, Color(0, 0, 0)));
        EXPECT_EQ(chart.getPointMarkerSymbol(), Symbol(Symbol::TYPE_MARKER, 5.0, false));
    }
}

TEST(ChartBlocks, haveABlockFromTheThirdElementVersionOn)
{
    CraftedChart crafted;
    crafted.elementVersion = 3;
    crafted.version = 1;
    Chart chart;

    loadBlocks(chart, crafted.blocks().bytes());

    expectRecords(chart);
    EXPECT_TRUE(chart.getShowCurrentStage());
    EXPECT_EQ(chart.getCurrentStageStyle(), STAGE);
}

TEST(ChartBlocks, areWrittenAsTheyAreRead)
{
    Chart chart;
    std::string const crafted = CraftedChart().blocks().bytes();

    loadBlocks(chart, crafted);

    EXPECT_EQ(blockForm(chart), crafted);
    EXPECT_NE(Support::blocksOf(blockForm(chart)).find("10:18 "), std::string::npos);
}

TEST(ChartBlocks, areReadBackToTheSameChart)
{
    Chart chart;
    loadBlocks(chart, CraftedChart().blocks().bytes());
    Chart read;

    loadBlocks(read, blockForm(chart));

    EXPECT_EQ(parameterForm(read), parameterForm(chart));
    EXPECT_EQ(blockForm(read), blockForm(chart));
}

std::string loadError(std::string const &bytes)
{
    Chart chart;
    return thrownText<IO::StreamException>([&] { loadBlocks(chart, bytes); });
}

TEST(ChartBlocks, ofANewerVersionAreRefused)
{
    CraftedChart crafted;
    crafted.version = 11;

    EXPECT_EQ(loadError(crafted.blocks().bytes()), "cannot load figure chart: wrong block version");
}

TEST(ChartBlocks, withAnUnknownSymbolAreRefused)
{
    CraftedChart crafted;
    crafted.version = 9;
    crafted.symbolType = 13;
    EXPECT_EQ(loadError(crafted.blocks().bytes()), "nothing thrown");

    crafted.symbolType = 14;
    EXPECT_EQ(loadError(crafted.blocks().bytes()).find("cannot load figure chart: "), 0U);
}

TEST(ChartBlocks, thatEndTooEarlyAreRefused)
{
    std::string const bytes = CraftedChart().blocks().bytes();
    std::size_t const header = Support::streamOf([](IO::OutStream &) {}).size();

    for (std::size_t size = header; size < bytes.size(); size += 7)
        EXPECT_EQ(loadError(bytes.substr(0, size)).find("cannot load figure chart: "), 0U) << size;
}

TEST(ChartBlocks, tellOfAFaultInTheElementToo)
{
    std::string const bytes = CraftedElement().blocks(11).bytes();

    EXPECT_EQ(loadError(bytes), "cannot load figure chart: cannot load figure element: wrong block version");
}

/// A chart with a label and a colour scale.
class ChartInFigure : public ChartTest
{
protected:
    ChartInFigure() : figure(&tokens)
    {
        shown = chart.copy();
        auto *label = new Label;
        label->setText("$NAME_a$");
        label->setOrigin({150, 50});
        auto *legend = new Legend;
        legend->setSize({20, 80});
        for (Element *element : std::initializer_list<Element *>{shown, label, legend})
            figure.getRoot()->addChild(element);
        label->connect(shown, "line");
        legend->connect(shown, QString());
        figure.update(stage, false);
    }

    static Chart *chartOf(Figure &figure) { return dynamic_cast<Chart *>(*figure.getElementBegin()); }
    void expectSame(Figure &other)
    {
        Chart *read = chartOf(other);
        ASSERT_NE(read, nullptr);
        EXPECT_EQ(read->getToken(), "force");
        EXPECT_EQ(other.toString(), figure.toString());
        ASSERT_EQ(read->getConnectorEnd() - read->getConnectorBegin(), 2);
        Connector const *toLabel = *read->getConnectorBegin();
        EXPECT_EQ(toLabel->getTarget(), read);
        EXPECT_EQ(toLabel->getTargetName(), "line");
        EXPECT_EQ(toLabel->getSource()->getType(), Element::LABEL);
        EXPECT_EQ(toLabel->getSource()->getFigure(), &other);
    }

    Figure figure;
    Chart *shown;
};

TEST_F(ChartInFigure, isReadBackWithItsConnectors)
{
    Figure read(&tokens);

    Support::readFrom(Support::streamOf([this](IO::OutStream &stream) { figure.save(&stream, -1, -1); }),
                      [&read](IO::InStream &stream) { read.load(&stream, -1, -1); });

    expectSame(read);
    EXPECT_TRUE(read.update(stage, false));
    expectAt(chartOf(read)->getFigureCoordinates({2, 2}), 119.1, 22.5);
}

TEST_F(ChartInFigure, isCopiedWithItsConnectors)
{
    Figure copy(figure);

    expectSame(copy);
}

TEST_F(ChartInFigure, isDrawn)
{
    Support::RecordingPainter painter;

    figure.draw(&painter);

    EXPECT_NE(painter.transcript().find("'2.0'"), std::string::npos);
    // The label tells the name of the curve.
    EXPECT_NE(painter.transcript().find("richtext"), std::string::npos);
}

TEST_F(ChartInFigure, isFoundByItsToken)
{
    EXPECT_TRUE(figure.isTokenUsed("force"));
    EXPECT_FALSE(figure.isTokenUsed("other"));
}

TEST_F(ChartInFigure, fillsThePageWhenMaximized)
{
    figure.setSize({112.1, 60.6});
    shown->setMaximize(true);

    figure.update(stage, false);

    EXPECT_EQ(shown->getSize(), BaVec2d<double>(112.1, 60.6));
    expectAt(shown->getFigureCoordinates({0, 0}), 9.1, 52.5);
}

} // namespace
} // namespace Zem::Fig2
