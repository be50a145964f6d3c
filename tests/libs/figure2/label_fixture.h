// label_fixture.h: what the tests of labels share.
#pragma once

#include <FakeCalculator.h>
#include <RecordingPainter.h>
#include <TestTokens.h>
#include <ZemFig2Connector.h>
#include <ZemFig2Label.h>

#include <gtest/gtest.h>

namespace Zem::Fig2 {

/// A label that lets tests resolve texts by themselves.
class TestLabel : public Label
{
public:
    using Label::resolveTokensInText;
};

/// An area of any type, standing in for a chart or an image.
class TestArea : public AreaBase
{
public:
    explicit TestArea(Type_t type = CHART) : AreaBase(type) {}

    Element *copy() const override { return new TestArea(*this); }
    bool isTokenUsed(QString const &) const override { return false; }
};

/// Also keeps the cache ids of the texts.
class TextPainter : public Support::RecordingPainter
{
public:
    void drawRichText(BaVec2d<double> const &position, QString const &text, Font const &font, double width,
                      Rotation const &rotation, int cacheId) override
    {
        cacheIds.push_back(cacheId);
        RecordingPainter::drawRichText(position, text, font, width, rotation, cacheId);
    }
    std::vector<int> cacheIds;
};

class LabelTest : public testing::Test
{
protected:
    StageIdentifier const stage{1};
    Support::FakeCalculator calculator;
    Support::TestTokens tokens;
    TestLabel label;

    void update() { label.computeDynamicData(stage, &tokens); }
    std::string resolved(char const *text)
    {
        return label.resolveTokensInText(stage, &tokens, QString::fromUtf8(text)).toStdString();
    }
    std::string drawn(int step = 0)
    {
        TextPainter painter;
        EXPECT_TRUE(label.draw(&tokens, &painter, step));
        return painter.transcript();
    }
    /// The call that draws the text.
    std::string drawnText()
    {
        std::string const transcript = drawn();
        std::size_t const begin = transcript.find("richtext");
        return transcript.substr(begin, transcript.find('\n', begin) - begin);
    }
    /// The corners of the box, top left and bottom right.
    std::string box() const
    {
        return Support::text(label.getOrigin() - label.getSize() * 0.5) + " " +
               Support::text(label.getOrigin() + label.getSize() * 0.5);
    }
};

} // namespace Zem::Fig2
