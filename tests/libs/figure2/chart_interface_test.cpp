// How charts and figures register with the application's offer of data.
#include "tree_builders.h"

#include <ElementForms.h>
#include <ZemFig2ChartInterface.h>
#include <ZemFig2ChartParameters.h>
#include <ZemFig2Figure.h>

#include <gtest/gtest.h>

#include <memory>

namespace Zem::Fig2 {
namespace {

using Support::progError;

/// Writes down what it is told.
class Offer : public ChartInterface
{
public:
    explicit Offer(std::vector<std::string> *calls = nullptr) : calls_(calls) {}

    void addChartToken(QString const &token) override { tell("add " + token.toStdString()); }
    void removeChartToken(QString const &token) override { tell("remove " + token.toStdString()); }
    std::vector<DataToken> getTokensX() override { return {}; }
    std::vector<DataToken> getTokensY() override { return {}; }
    QString getTokenName(DataToken const &token) override { return token.getName(); }
    QString getTokenDescription(DataToken const &token) override { return QStringLiteral("the ") + token.getName(); }
    UnitData getTokenUnit(DataToken const &) override { return UnitData(); }

private:
    void tell(std::string const &call)
    {
        if (calls_)
            calls_->push_back(call);
    }

    std::vector<std::string> *calls_;
};

using Calls = std::vector<std::string>;

QString parsedX(QString const &token, std::vector<QString> *tokensY)
{
    QString tokenX = QStringLiteral("left over");
    EXPECT_TRUE(ChartInterface::parseToken(token, &tokenX, tokensY));
    return tokenX;
}

TEST(ChartToken, isComposedOfQuotedNames)
{
    EXPECT_EQ(ChartInterface::createToken("time", {"force", "way"}), "GENERIC_CHART/time/force/way");
    EXPECT_EQ(ChartInterface::createToken("time", {}), "GENERIC_CHART/time");
    EXPECT_EQ(ChartInterface::createToken("a/b", {"c\\d", "%1"}), "GENERIC_CHART/a\\/b/c\\\\d/%1");
}

TEST(ChartToken, givesItsNamesBack)
{
    std::vector<QString> const namesY{"c\\", "/", "\\/", "%1%2", "d"};
    std::vector<QString> tokensY{"left over"};

    EXPECT_EQ(parsedX(ChartInterface::createToken("a/b", namesY), &tokensY), "a/b");

    EXPECT_EQ(tokensY, namesY);
}

TEST(ChartToken, isToldByItsBeginning)
{
    EXPECT_TRUE(ChartInterface::isGenericChartToken("GENERIC_CHART"));
    EXPECT_TRUE(ChartInterface::isGenericChartToken("GENERIC_CHARTS"));
    EXPECT_FALSE(ChartInterface::isGenericChartToken("GENERIC_CHAR"));
    EXPECT_FALSE(ChartInterface::isGenericChartToken(" GENERIC_CHART/"));
    EXPECT_FALSE(ChartInterface::isGenericChartToken(""));
}

TEST(ChartToken, ofAnotherFormIsRefused)
{
    for (char const *text : {"", "time", "GENERIC_CHART", "GENERIC_CHARTS/time", "generic_chart/time"}) {
        QString tokenX = "left over";
        std::vector<QString> tokensY{"left over"};

        EXPECT_FALSE(ChartInterface::parseToken(text, &tokenX, &tokensY)) << text;

        EXPECT_EQ(tokenX, "");
        EXPECT_TRUE(tokensY.empty());
    }
}

TEST(ChartToken, mayHoldNoNames)
{
    std::vector<QString> tokensY;

    EXPECT_EQ(parsedX("GENERIC_CHART/", &tokensY), "");

    EXPECT_TRUE(tokensY.empty());
}

TEST(ChartToken, withoutANameForXTakesTheNext)
{
    std::vector<QString> tokensY;

    EXPECT_EQ(parsedX("GENERIC_CHART//a//b/", &tokensY), "a");

    EXPECT_EQ(tokensY, (std::vector<QString>{"", "b"}));
}

TEST(ChartToken, mayEndInAnEscape)
{
    std::vector<QString> tokensY;

    EXPECT_EQ(parsedX("GENERIC_CHART/a\\", &tokensY), "a");
    EXPECT_EQ(parsedX("GENERIC_CHART/\\a", &tokensY), "a");
}

class ChartInterfaceTest : public testing::Test
{
protected:
    Calls calls;
    Offer offer{&calls};
};

TEST_F(ChartInterfaceTest, isToldOfTheFirstUseAndTheLast)
{
    offer.registerChartToken("b");
    offer.registerChartToken("b");
    offer.registerChartToken("a");
    EXPECT_EQ(calls, (Calls{"add b", "add a"}));
    EXPECT_EQ(offer.getChartTokens(), (std::vector<QString>{"a", "b"}));

    offer.unregisterChartToken("b");
    EXPECT_EQ(calls.size(), 2U);
    offer.unregisterChartToken("b");

    EXPECT_EQ(calls, (Calls{"add b", "add a", "remove b"}));
    EXPECT_EQ(offer.getChartTokens(), std::vector<QString>{"a"});
}

TEST_F(ChartInterfaceTest, knowsATokenWhileItIsToldOfIt)
{
    struct Asking : Offer
    {
        void addChartToken(QString const &) override { added = getChartTokens().size(); }
        void removeChartToken(QString const &) override { removed = getChartTokens().size(); }
        std::size_t added = 9;
        std::size_t removed = 9;
    } asking;

    asking.registerChartToken("a");
    asking.unregisterChartToken("a");

    EXPECT_EQ(asking.added, 1U);
    EXPECT_EQ(asking.removed, 0U);
}

TEST_F(ChartInterfaceTest, refusesToForgetAnUnknownToken)
{
    offer.registerChartToken("a");

    EXPECT_EQ(progError([this] { offer.unregisterChartToken("b"); }),
              "fig_chart_interface: Chart token not registered: b");

    EXPECT_EQ(calls, Calls{"add a"});
    EXPECT_EQ(offer.getChartTokens(), std::vector<QString>{"a"});
}

TEST_F(ChartInterfaceTest, describesATokenForTheLegendAsElsewhere)
{
    EXPECT_EQ(offer.getLegendDescription(ChartInterface::DataToken("force"), ChartParameters()), "the force");
}

TEST_F(ChartInterfaceTest, proposesNoLook)
{
    ChartParameters parameters;

    EXPECT_FALSE(offer.getDefaultParameters(ChartInterface::DataToken("force"), &parameters));
}

TEST_F(ChartInterfaceTest, registersAFigureOnce)
{
    Figure figure;
    figure.setChartInterface(&offer);
    EXPECT_EQ(figure.getChartInterface(), &offer);

    EXPECT_EQ(progError([&] { offer.registerFigureForUpdate(&figure); }),
              "fig_chart_interface: Figure already registered");
    figure.setChartInterface(&offer);
    EXPECT_EQ(figure.getChartInterface(), &offer);
}

TEST_F(ChartInterfaceTest, refusesToForgetAnUnknownFigure)
{
    Figure figure;
    figure.setChartInterface(&offer);
    figure.setChartInterface(nullptr);

    EXPECT_EQ(figure.getChartInterface(), nullptr);
    EXPECT_EQ(progError([&] { offer.unregisterFigureForUpdate(&figure); }),
              "fig_chart_interface: Figure not registered");
}

TEST_F(ChartInterfaceTest, handsFiguresOverToAnother)
{
    Offer other;
    Figure figure;
    figure.setChartInterface(&offer);

    figure.setChartInterface(&other);

    EXPECT_EQ(figure.getChartInterface(), &other);
    EXPECT_THROW(other.registerFigureForUpdate(&figure), ProgError);
    EXPECT_THROW(offer.unregisterFigureForUpdate(&figure), ProgError);
}

TEST_F(ChartInterfaceTest, knowsTheCopyOfAFigure)
{
    Figure figure;
    figure.setChartInterface(&offer);
    Figure copy(figure);

    EXPECT_EQ(copy.getChartInterface(), &offer);
    EXPECT_THROW(offer.registerFigureForUpdate(&copy), ProgError);
}

TEST_F(ChartInterfaceTest, forgetsAFigureThatGoes)
{
    auto figure = std::make_unique<Figure>();
    Figure *const gone = figure.get();
    figure->setChartInterface(&offer);

    figure.reset();

    EXPECT_THROW(offer.unregisterFigureForUpdate(gone), ProgError);
}

TEST_F(ChartInterfaceTest, letsGoOfItsFiguresWhenItGoes)
{
    Figure first;
    Figure second;
    Figure third;
    Figure moved;
    {
        Offer passing(&calls);
        first.setChartInterface(&passing);
        second.setChartInterface(&passing);
        third.setChartInterface(&passing);
        moved.setChartInterface(&passing);
        moved.setChartInterface(&offer);
        passing.registerChartToken("a");
    }
    EXPECT_EQ(first.getChartInterface(), nullptr);
    EXPECT_EQ(second.getChartInterface(), nullptr);
    EXPECT_EQ(third.getChartInterface(), nullptr);
    EXPECT_EQ(moved.getChartInterface(), &offer);
    EXPECT_EQ(calls, Calls{"add a"});
}

TEST_F(ChartInterfaceTest, leavesAFigureAloneThatHasAnother)
{
    Figure figure;
    figure.setChartInterface(&offer);
    {
        Offer listening;
        listening.registerFigureForUpdate(&figure);
    }
    EXPECT_EQ(figure.getChartInterface(), &offer);
}

TEST_F(ChartInterfaceTest, mayHoldAFigureThatGoesAsItDoes)
{
    struct Host : Offer
    {
        ~Host() override { figure.reset(); }
        std::unique_ptr<Figure> figure = std::make_unique<Figure>();
    };
    auto host = std::make_unique<Host>();
    Figure other;
    other.setChartInterface(host.get());
    host->figure->setChartInterface(host.get());

    host.reset();

    EXPECT_EQ(other.getChartInterface(), nullptr);
}

TEST_F(ChartInterfaceTest, isFoundFromAnElementOfTheFigure)
{
    Figure figure;
    Element *element = add(figure.getRoot());
    ProbeRectangle loose;
    EXPECT_EQ(ChartInterface::getInterface(element), nullptr);

    figure.setChartInterface(&offer);

    EXPECT_EQ(ChartInterface::getInterface(element), &offer);
    EXPECT_EQ(ChartInterface::getInterface(&loose), nullptr);
}

} // namespace
} // namespace Zem::Fig2
