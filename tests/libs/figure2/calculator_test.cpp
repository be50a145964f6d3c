#include <FakeCalculator.h>
#include <ZemFig2InitLibrary.h>
#include <ZemFig2Label.h>
#include <ZemFig2TranslationInterface.h>

#include <ZemError.h>

#include <gtest/gtest.h>

#include <memory>

namespace Zem::Fig2 {
namespace {

using Support::FakeCalculator;

TEST(CalculatorDummy, measuresEveryTextAsOneByOne)
{
    Calculator const *calculator = Calculator::getInstance();
    ASSERT_NE(calculator, nullptr);
    BaVec2d<double> offset(7, 7);

    EXPECT_EQ(calculator->computeTextSize(Font(), "a long text"), BaVec2d<double>(1, 1));
    EXPECT_EQ(calculator->computeRichTextSize("<b>x</b>", Font(), 5.0, &offset), BaVec2d<double>(1, 1));
    EXPECT_EQ(offset, BaVec2d<double>(0, 0));
    EXPECT_EQ(calculator->computeRichTextSize("", Font(), -1.0, nullptr), BaVec2d<double>(1, 1));
    EXPECT_EQ(calculator->getFontHeight(Font()), 1.0);
    EXPECT_EQ(calculator->getFontAscent(Font()), 0.0);
    EXPECT_EQ(calculator->getFontDescent(Font()), 0.0);
    EXPECT_EQ(calculator->getScreenPixelSizeMM(), 25.4);
}

TEST(CalculatorDummy, letsALabelLayItselfOut)
{
    Label label;
    label.setText("text");
    label.computeDynamicData(StageIdentifier(1), nullptr);
    // 0.1 border, 1 text, 2 margin
    EXPECT_DOUBLE_EQ(label.getSize().x, 3.1);
    EXPECT_DOUBLE_EQ(label.getSize().y, 3.1);
}

TEST(Calculator, ofTheApplicationStandsInUntilItIsDestroyed)
{
    Calculator const *dummy = Calculator::getInstance();
    for (int round = 0; round < 2; ++round) {
        auto const calculator = std::make_unique<FakeCalculator>();
        EXPECT_EQ(Calculator::getInstance(), calculator.get());
        EXPECT_DOUBLE_EQ(Calculator::getInstance()->getScreenPixelSizeMM(), 25.4 / 96.0);
        EXPECT_EQ(Calculator::getInstance()->getFontHeight(Font()), 5.0);
    }
    EXPECT_EQ(Calculator::getInstance(), dummy);
}

TEST(Calculator, isAllowedOnce)
{
    FakeCalculator const calculator;
    try {
        FakeCalculator const second;
        FAIL();
    } catch (ProgError const &error) {
        EXPECT_TRUE(error.getText().endsWith("Multiple instances not allowed")) << error.what();
        EXPECT_TRUE(error.getText().contains("fig_calculator")) << error.what();
    }
    EXPECT_EQ(Calculator::getInstance(), &calculator);
}

class Translations : public TranslationInterface
{
public:
    QString getTokenDisplayName(QString const &token) const override { return token.toUpper(); }
};

TEST(TranslationInterface, isAllowedOnceAndGoneWhenDestroyed)
{
    EXPECT_EQ(TranslationInterface::getInterface(), nullptr);
    {
        Translations const translations;
        EXPECT_EQ(TranslationInterface::getInterface(), &translations);
        EXPECT_EQ(TranslationInterface::getInterface()->getTokenDisplayName("a"), "A");
        try {
            Translations const second;
            FAIL();
        } catch (ProgError const &error) {
            EXPECT_TRUE(error.getText().endsWith("Only one instance is allowed")) << error.what();
            EXPECT_TRUE(error.getText().contains("fig_translation_interface")) << error.what();
        }
        EXPECT_EQ(TranslationInterface::getInterface(), &translations);
    }
    EXPECT_EQ(TranslationInterface::getInterface(), nullptr);
}

TEST(InitLibrary, mayBeCalledAgain)
{
    EXPECT_NO_THROW(InitLibrary());
    EXPECT_NO_THROW(InitLibrary());
}

} // namespace
} // namespace Zem::Fig2
