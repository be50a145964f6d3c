// The three forms of a colour legend, and the blocks of older releases.
#include "crafted_element.h"
#include "legend_fixture.h"

#include <ElementForms.h>

#include <ZemParse.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::blockForm;
using Support::loadBlocks;
using Support::loadParameters;
using Support::loadText;
using Support::parameterForm;
using Support::Payload;
using Support::textForm;
using Support::thrownText;

LineStyle const TICK_STYLE(0.3, LineStyle::STYLE_DASHED, Color(1, 1, 1));
LineStyle const BOX_STYLE(0.4, LineStyle::STYLE_DOTTED, Color(2, 2, 2));

class LegendForms : public LegendTest
{
protected:
    LegendForms()
    {
        filled.setLegendDataMode(Legend::LEGEND_DATA_MODE_3D);
        filled.setEqualSizedBlocks(true);
        filled.setBarWidth(7.5);
        filled.setShowHistogram(true);
        filled.setTickStyle(TICK_STYLE);
        filled.setTickBoxStyle(BOX_STYLE);
        Legend2::Data data;
        data.setDynamicMaximum(12.0);
        filled.setLocalLegendData(scale(), data);
        filled.setLocalToleranceParams(true, tolerance());
        filled.setLocalHistogramData(histogramOf({{0.5, 3}, {1.5, 4}}));
        filled.setSize({40, 120});
    }

    static void expectLocal(Legend const &legend, Legend2::Legend const &scale, double maximum, bool show)
    {
        Legend2::Legend const *localScale = nullptr;
        Legend2::Data const *data = nullptr;
        legend.getLocalLegendData(&localScale, &data);
        EXPECT_EQ(*localScale, scale);
        EXPECT_EQ(data->getDynamicMaximum(), maximum);
        bool shown = !show;
        Legend2::ToleranceParams const *params = nullptr;
        legend.getLocalToleranceParams(&shown, &params);
        EXPECT_EQ(shown, show);
        EXPECT_EQ(*params, show ? tolerance() : Legend2::ToleranceParams());
    }

    void expectAll(Legend const &read, bool withHistogram)
    {
        EXPECT_EQ(read.getLegendDataMode(), Legend::LEGEND_DATA_MODE_3D);
        EXPECT_TRUE(read.hasEqualSizedBlocks());
        EXPECT_EQ(read.getBarWidth(), 7.5);
        EXPECT_TRUE(read.getShowHistogram());
        EXPECT_EQ(read.getTickStyle(), TICK_STYLE);
        EXPECT_EQ(read.getTickBoxStyle(), BOX_STYLE);
        EXPECT_EQ(read.getSize(), BaVec2d<double>(40, 120));
        expectLocal(read, scale(), 12.0, true);
        EXPECT_EQ(read.getLocalHistogramData()->isValid(), withHistogram);
        if (withHistogram) {
            EXPECT_EQ(*read.getLocalHistogramData(), *filled.getLocalHistogramData());
        }
    }

    /// The blocks of a legend as a version wrote them, from its own block on.
    BlockCrafter crafted(unsigned int version) const
    {
        Payload fields;
        if (version >= 5)
            fields.u(1);
        else
            fields.b(olderFlag);
        if (version == 1)
            fields.s("an old title");
        if (version >= 4)
            fields.b(true);
        fields.d(6.5);
        if (version >= 7)
            fields.b(true).b(true);
        BlockCrafter crafter;
        crafter.block(version, fields);
        crafter = element.addTo(crafter, 10);
        if (version == 1)
            addAxis(&crafter);
        return crafter.add([version](IO::OutStream &stream) {
            TICK_STYLE.save(&stream);
            if (version >= 3)
                BOX_STYLE.save(&stream);
            Legend2::Data data;
            data.setDynamicMaximum(12.0);
            if (version >= 2) {
                scale().save(&stream);
                data.save(&stream);
            }
            if (version >= 7) {
                tolerance().save(&stream);
                histogramOf({{2.0, 2}}).save(&stream);
            }
        });
    }

    /// An axis with line style, font and, from block version 2 on, unit behind it.
    void addAxis(BlockCrafter *crafter) const
    {
        Payload fields;
        fields.u(0).d(1);
        if (axisVersion >= 5)
            fields.u(1).u(1);
        else
            fields.b(true).b(true);
        if (axisVersion == 4)
            fields.b(false).b(false);
        fields.b(true).v(0, 1).d(1).i(5).i(2);
        if (axisVersion >= 8)
            fields.u(0);
        if (axisVersion == 6)
            fields.i(0);
        if (axisVersion >= 3)
            fields.c(0, 0, 0, 255);
        crafter->block(axisVersion, fields);
        crafter->add([this](IO::OutStream &stream) {
            LineStyle().save(&stream);
            Tools::save(&stream, Font());
            if (axisVersion >= 2)
                UnitData(uLength).save(&stream);
        });
    }

    CraftedElement element;
    unsigned int axisVersion = 3;
    bool olderFlag = true;
    Legend filled;
};

TEST_F(LegendForms, ofBlocksComeBack)
{
    Legend read;

    loadBlocks(read, blockForm(filled));

    expectAll(read, true);
}

TEST_F(LegendForms, ofBlocksBeginWithTheLegendsOwn)
{
    // Version 7 with 15 bytes, then that of the element.
    EXPECT_EQ(Support::blocksOf(blockForm(filled)).substr(0, 10), "7:15 10:89");
}

TEST_F(LegendForms, ofTextComeBack)
{
    Legend read;

    ASSERT_TRUE(loadText(read, textForm(filled)));

    expectAll(read, true);
}

TEST_F(LegendForms, ofTextBeginWithVersionAndFields)
{
    EXPECT_EQ(textForm(filled).substr(0, 14), "1 1 1 7.5 1 1 ");
}

TEST_F(LegendForms, ofNewerTextAreRefused)
{
    EXPECT_EQ(thrownText<IO::StreamException>([this] {
                  std::string newer = textForm(filled);
                  newer[0] = '2';
                  loadText(legend, newer);
              }),
              "wrong block version");
}

TEST_F(LegendForms, ofTextWithABadScaleFail)
{
    std::string form = textForm(filled);
    std::size_t const place = form.find("legend_digits");
    ASSERT_NE(place, std::string::npos);
    form[form.find('1', place)] = 'x';

    EXPECT_FALSE(loadText(legend, form));
}

TEST_F(LegendForms, ofTextWithMoreHistogramThanThereIsAreRefused)
{
    std::ostringstream area;
    Legend().AreaBase::saveToStream(area);
    std::string form = textForm(Legend());
    form.erase(form.size() - area.str().size());
    ASSERT_TRUE(form.ends_with(" 0 "));
    form.replace(form.size() - 2, 1, "4294967295");

    EXPECT_FALSE(loadText(legend, form));
}

TEST_F(LegendForms, ofParametersComeBackButForTheHistogram)
{
    Legend read;

    EXPECT_EQ(loadParameters(read, parameterForm(filled)), "");

    expectAll(read, false);
}

TEST_F(LegendForms, ofParametersComeInOrder)
{
    Legend2::Data const data;
    QString const base = filled.AreaBase::getParameterString();
    QString const own = QStringLiteral("legend_data_mode = \"3d\"\nequal_sized_blocks = true\nbar_width = 7.5\n") +
                        BOX_STYLE.getParameterString("tick_box") + TICK_STYLE.getParameterString("tick_line") +
                        scale().getParameterString();
    QString const end =
        tolerance().getParameterString() + QStringLiteral("show_tolerances = true\nshow_histogram = true\n");
    Legend2::Data shown;
    shown.setDynamicMaximum(12.0);

    EXPECT_EQ(filled.getParameterString(true), base + own + shown.getParameterString() + end);
    EXPECT_EQ(filled.getParameterString(), filled.getParameterString(true));
    EXPECT_EQ(filled.getParameterString(false), base + own + end);
}

TEST_F(LegendForms, ofParametersNameTheModeByAWord)
{
    auto const mode = [this](char const *parameters) {
        loadParameters(legend, parameters);
        return legend.getLegendDataMode();
    };

    EXPECT_EQ(mode("legend_data_mode = \"element\"\n"), Legend::LEGEND_DATA_MODE_ELEMENT);
    EXPECT_EQ(mode("legend_data_mode = \"3d\"\n"), Legend::LEGEND_DATA_MODE_3D);
    EXPECT_EQ(mode("legend_data_mode = \"manual\"\n"), Legend::LEGEND_DATA_MODE_MANUAL);
    EXPECT_NE(thrownText<ParamError>([&] { mode("legend_data_mode = \"Manual\"\n"); }), "nothing thrown");
    // Modes that have no word of their own are manual ones.
    legend.setLegendDataMode(static_cast<Legend::LegendDataMode>(4));
    EXPECT_TRUE(legend.getParameterString().contains("legend_data_mode = \"manual\"\n"));
}

TEST_F(LegendForms, ofParametersReadTheOlderModeLast)
{
    loadParameters(legend, "legend_data_mode = \"3d\"\nuse_data_from_element = true\n");
    EXPECT_EQ(legend.getLegendDataMode(), Legend::LEGEND_DATA_MODE_ELEMENT);
    loadParameters(legend, "use_data_from_element = false\nlegend_data_mode = \"3d\"\n");
    EXPECT_EQ(legend.getLegendDataMode(), Legend::LEGEND_DATA_MODE_MANUAL);
    EXPECT_FALSE(legend.getParameterString().contains("use_data_from_element"));
}

TEST_F(LegendForms, ofOlderParametersAreRead)
{
    QString parameters = QStringLiteral("use_data_from_element=true;bar_width=8;equal_sized_blocks=true;"
                                        "tick_line_width=0.7;tick_box_width=0.8;margin=3;"
                                        "legend_digits=4;legend_data_maximum=9;");

    legend.createFromV541ParameterString(parameters);

    EXPECT_EQ(parameters.trimmed(), QString());
    EXPECT_EQ(legend.getLegendDataMode(), Legend::LEGEND_DATA_MODE_ELEMENT);
    EXPECT_EQ(legend.getBarWidth(), 8.0);
    EXPECT_TRUE(legend.hasEqualSizedBlocks());
    EXPECT_EQ(legend.getTickStyle().getWidth(), 0.7);
    EXPECT_EQ(legend.getTickBoxStyle().getWidth(), 0.8);
    EXPECT_EQ(legend.getMargin(), 3.0);
    Legend2::Legend changed = scale();
    changed.setDigits(4);
    expectLocal(legend, changed, 9.0, false);
}

TEST_F(LegendForms, ofEveryBlockVersionAreRead)
{
    LineStyle const unchanged = Legend().getTickBoxStyle();
    for (unsigned int version = 1; version <= 7; ++version) {
        Legend read;
        read.setEqualSizedBlocks(true);
        read.setLocalToleranceParams(true, tolerance());
        read.setLocalHistogramData(histogramOf({{9.0, 9}}));
        loadBlocks(read, crafted(version).bytes());

        EXPECT_EQ(read.getLegendDataMode(),
                  version >= 5 ? Legend::LEGEND_DATA_MODE_3D : Legend::LEGEND_DATA_MODE_ELEMENT)
            << version;
        EXPECT_EQ(read.hasEqualSizedBlocks(), version >= 4) << version;
        EXPECT_EQ(read.getBarWidth(), 6.5) << version;
        EXPECT_EQ(read.getShowHistogram(), version >= 7) << version;
        EXPECT_EQ(read.getTickStyle(), TICK_STYLE) << version;
        EXPECT_EQ(read.getTickBoxStyle(), version >= 3 ? BOX_STYLE : unchanged) << version;
        EXPECT_EQ(read.getSize(), BaVec2d<double>(30, 40)) << version;
        expectLocal(read, version >= 2 ? scale() : Legend2::Legend(), version >= 2 ? 12.0 : 1.0, version >= 7);
        EXPECT_EQ(read.getLocalHistogramData()->isValid(), version >= 7) << version;
    }
}

TEST_F(LegendForms, ofTheFirstBlockVersionDropAnAxisOfAnyVersion)
{
    for (axisVersion = 1; axisVersion <= 8; ++axisVersion) {
        Legend read;
        loadBlocks(read, crafted(1).bytes());
        EXPECT_EQ(read.getTickStyle(), TICK_STYLE) << axisVersion;
    }
}

TEST_F(LegendForms, ofBlocksBelowFiveKnowTwoModes)
{
    olderFlag = false;

    loadBlocks(legend, crafted(4).bytes());

    EXPECT_EQ(legend.getLegendDataMode(), Legend::LEGEND_DATA_MODE_MANUAL);
}

TEST_F(LegendForms, ofBlocksBelowSixShrinkOnceAgainstTheirRightEdge)
{
    element.size = {40, 120};
    element.border = LineStyle(0.1, LineStyle::STYLE_NONE, Color(0, 0, 0));
    for (unsigned int version = 5; version <= 6; ++version) {
        Legend read;
        loadBlocks(read, crafted(version).bytes());
        read.setAutoSize(false);
        read.setLegendDataMode(Legend::LEGEND_DATA_MODE_MANUAL);
        read.setTickBoxStyle(LineStyle(0.1, LineStyle::STYLE_FULL, Color(0, 0, 0)));
        read.setFont(Font());
        read.setUseSystemFont(false);
        read.setLocalToleranceParams(false, Legend2::ToleranceParams());
        read.setShowHistogram(false);
        read.setEqualSizedBlocks(false);
        read.update(StageIdentifier(), nullptr, nullptr);

        // 7 (margins of 3.5) + 0.2 + 6.5 (bar) + 1 (tick) + 4.5 (spacing) + 8 (labels).
        expectVec(read.getSize(), version < 6 ? 27.2 : 40, 120);
        expectVec(read.getOrigin(), version < 6 ? 10 + 6.4 : 10, 20);

        read.setSize({40, 120});
        read.update(StageIdentifier(), nullptr, nullptr);
        expectVec(read.getSize(), 40, 120);
    }
}

TEST_F(LegendForms, ofNewerBlocksAndUnknownModesAreRefused)
{
    EXPECT_EQ(thrownText<IO::StreamException>([this] {
                  loadBlocks(legend, BlockCrafter().block(8, Payload().u(0).b(false).d(5).b(false).b(false)).bytes());
              }),
              "cannot load figure legend: wrong block version");
    EXPECT_EQ(thrownText<IO::StreamException>([this] {
                  loadBlocks(legend, BlockCrafter().block(7, Payload().u(5).b(false).d(5).b(false).b(false)).bytes());
              }),
              "cannot load figure legend: illegal value 5 in block");
}

/// Keeps its local scale outside of the legend.
class RemoteLegend : public Legend
{
public:
    void getLocalLegendData(Legend2::Legend const **outScale, Legend2::Data const **outData) const override
    {
        *outScale = &scale;
        *outData = &data;
    }
    void setLocalLegendData(Legend2::Legend const &newScale, Legend2::Data const &newData) override
    {
        scale = newScale;
        data = newData;
    }
    void getLocalToleranceParams(bool *outShow, Legend2::ToleranceParams const **outTolerance) const override
    {
        *outShow = show;
        *outTolerance = &tolerance;
    }
    void setLocalToleranceParams(bool newShow, Legend2::ToleranceParams const &newTolerance) override
    {
        show = newShow;
        tolerance = newTolerance;
    }

    bool show = false;
    Legend2::ToleranceParams tolerance;
    Legend2::Legend scale{uForce};
    Legend2::Data data;
};

TEST_F(LegendForms, goThroughTheVirtualLocals)
{
    RemoteLegend remote;
    remote.scale.setDigits(5);
    Legend plain;

    loadBlocks(plain, blockForm(remote));
    expectLocal(plain, remote.scale, 1.0, false);
    loadBlocks(remote, blockForm(filled));
    EXPECT_EQ(remote.scale, scale());
    EXPECT_EQ(remote.data.getDynamicMaximum(), 12.0);
    EXPECT_TRUE(remote.show);
    EXPECT_EQ(remote.tolerance, tolerance());
    // What a parameter string does not name stays as the derived class has it.
    remote.scale.setDigits(5);
    remote.tolerance.setTitle(QStringLiteral("remote"));
    loadParameters(remote, "bar_width = 9\n");
    EXPECT_EQ(remote.scale.getDigits(), 5);
    EXPECT_TRUE(remote.show);
    EXPECT_EQ(remote.tolerance.getTitle(), QStringLiteral("remote"));
}

TEST_F(LegendForms, survivesACopy)
{
    std::unique_ptr<Legend> const copy(filled.copy());

    expectAll(*copy, true);
    EXPECT_GT(copy->getEstimatedObjectSize(), filled.AreaBase::getEstimatedObjectSize());
}

} // namespace
} // namespace Zem::Fig2
