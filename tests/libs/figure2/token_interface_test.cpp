#include <ElementForms.h>
#include <TestTokens.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Label.h>
#include <ZemFig2Rectangle.h>
#include <ZemFig2TokenInterface.h>
#include <ZemFig2Variable.h>

#include <ZemError.h>
#include <ZemScriptObject.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {
namespace {

using Support::progError;

TEST(EmptyFigureTokenInterface, knowsNothing)
{
    EmptyFigureTokenInterface const tokens;
    std::vector<TokenInfo> list(3);
    tokens.getTokens(&list);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(tokens.getValue("a", IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE), Value::UNKNOWN);
    EXPECT_EQ(tokens.getValue("", IndexIdentifier(4), StageIdentifier(2)), Value::UNKNOWN);
    EXPECT_EQ(tokens.getImage("a"), nullptr);
    EXPECT_EQ(tokens.getChart("a"), nullptr);
    EXPECT_EQ(tokens.getSnapshot("a"), nullptr);
    EXPECT_EQ(tokens.getModifiedCounter("a"), 0U);
}

TEST(EmptyFigureTokenInterface, takesEveryReleaseForAMistake)
{
    EmptyFigureTokenInterface const tokens;
    EXPECT_EQ(progError([&] { tokens.releaseImage("a"); }), "fig_token_interface: Image token not locked");
    EXPECT_EQ(progError([&] { tokens.releaseChart("a"); }), "fig_token_interface: Chart token not locked");
    EXPECT_EQ(progError([&] { tokens.releaseSnapshot("a"); }), "fig_token_interface: Snapshot token not locked");
}

TEST(FigureTokenInterface, offersNoGroupsByItself)
{
    EmptyFigureTokenInterface const tokens;
    EXPECT_TRUE(tokens.getTokenGrouping("a").empty());
    EXPECT_EQ(tokens.getTokenGroupIconId("a"), "");
    EXPECT_EQ(progError([&] { tokens.getTokenGroupName("a"); }), "fig_token_interface: Group names not supported");
}

TEST(ElementTokenInterface, appendsItsOnlyToken)
{
    Rectangle const rectangle;
    ElementTokenInterface const tokens(&rectangle);
    std::vector<TokenInfo> list(1);
    tokens.getTokens(&list);
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[1].getName(), TokenInfo::getSelectedInfo().getName());
    EXPECT_EQ(list[1].getName(), TokenInfo::TOKEN_SELECTED);
}

TEST(ElementTokenInterface, tellsWhetherTheElementIsSelectedAtAnyStage)
{
    Rectangle rectangle;
    ElementTokenInterface const tokens(&rectangle);
    auto const selected = [&](StageIdentifier const &stage) {
        return tokens.getValue(TokenInfo::TOKEN_SELECTED, IndexIdentifier::NO_INDEX, stage);
    };
    EXPECT_EQ(selected(StageIdentifier::NO_STAGE), TokenInfo::getSelectedValue(false));
    rectangle.setSelected(true);
    EXPECT_EQ(selected(StageIdentifier(7)), TokenInfo::getSelectedValue(true));
}

TEST(ElementTokenInterface, tellsUnknownNamesFromIllegalIndexes)
{
    Rectangle const rectangle;
    ElementTokenInterface const tokens(&rectangle);
    StageIdentifier const stage(1);
    EXPECT_EQ(tokens.getValue("other", IndexIdentifier::NO_INDEX, stage), Value::UNKNOWN);
    EXPECT_EQ(tokens.getValue("other", IndexIdentifier(0), stage), Value::UNKNOWN);
    EXPECT_EQ(tokens.getValue(TokenInfo::TOKEN_SELECTED, IndexIdentifier(0), stage), Value::INVALID);
    EXPECT_EQ(tokens.getModifiedCounter(TokenInfo::TOKEN_SELECTED), 0U);
    EXPECT_TRUE(tokens.getTokenChangeLog().empty());
}

TEST(UsedTokenFilter, passesWhatTheFigureUses)
{
    Figure figure;
    auto *label = new Label;
    label->setText("$5.1force$ $temperature$");
    figure.getRoot()->addChild(label);
    UsedTokenFilter const filter(&figure);
    auto const skipped = [&](char const *name) {
        return filter.isFilteredOut(TokenInfo(TokenInfo::TYPE_DOUBLE, name, "text"));
    };
    EXPECT_FALSE(skipped("force"));
    EXPECT_FALSE(skipped("temperature"));
    EXPECT_FALSE(skipped("force[3]"));
    EXPECT_TRUE(skipped("5.1force"));
    EXPECT_TRUE(skipped("pressure"));
    EXPECT_TRUE(skipped(""));
    EXPECT_TRUE(skipped("no token"));
}

class Provider : public DataReferenceInterface
{
public:
    using DataReferenceInterface::DataReferenceInterface;
    using DataReferenceInterface::getDataInterface;
};

TEST(DataReferenceInterface, servesNothingByItself)
{
    DataReferenceInterface const provider(nullptr);
    Zem::Image const *image = nullptr;
    Zem::ImageColor const *overlay = nullptr;
    ImageData const *imageData = nullptr;
    ChartData const *chart = nullptr;
    SnapshotData const *snapshot = nullptr;
    EXPECT_FALSE(provider.getImageReference("a", &image, &imageData));
    EXPECT_FALSE(provider.getImageReference("a", &image, &overlay, &imageData));
    EXPECT_FALSE(provider.getChartReference("a", &chart));
    EXPECT_FALSE(provider.getSnapshotReference("a", &snapshot));
    EXPECT_NO_THROW(provider.releaseReferenceData(Token_t("a", VARIABLE_IMAGE_REFERENCE)));
    EXPECT_NO_THROW(provider.tokenNoMoreUsed(Token_t("a", VARIABLE_IMAGE_REFERENCE)));
}

TEST(DataReferenceInterface, copiesThePointerItWasGiven)
{
    int place = 0;
    auto *const dataInterface = reinterpret_cast<DataInterface *>(&place);
    Provider const provider(dataInterface);
    EXPECT_EQ(provider.getDataInterface(), dataInterface);
    Provider copy(provider);
    EXPECT_EQ(copy.getDataInterface(), dataInterface);
    Provider other(nullptr);
    EXPECT_EQ(other.getDataInterface(), nullptr);
    other = provider;
    EXPECT_EQ(other.getDataInterface(), dataInterface);
}

} // namespace
} // namespace Zem::Fig2
