#include "generated_values.h"
#include "label_fixture.h"

#include <BlockCrafter.h>
#include <ZemFig2ImageConversion.h>
#include <ZemFig2RichText.h>
#include <ZemFig2Tools.h>

#include <QtCore/QRegularExpression>

#include <rapidcheck/gtest.h>

#include <cmath>
#include <sstream>

namespace Zem::Fig2 {
namespace {

using namespace Generated;

/// A text made of what the readers of labels look for.
rc::Gen<QString> anyMarkup()
{
    auto const piece = rc::gen::elementOf(std::vector<std::string>{
        "<", ">", "$", "$$", " ", "a", "[", "]", "+", "-", ".", "5", "\n", "<color ", "</color>", "<td", "</td>",
        "<table ", " width=1", " cellpadding=-1", "<html>", "</html>", "<body", "style=\"", "\"", ";", ":", "</",
        "\xc3\xa4", "&"});
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece), [](std::vector<std::string> const &pieces) {
        QString text;
        for (std::string const &part : pieces)
            text += QString::fromStdString(part);
        return text;
    });
}

Symbol makeSymbol()
{
    Symbol symbol(*anyOf<Symbol::Type>(14), *anyLength(), *rc::gen::arbitrary<bool>());
    symbol.setColor(*anyColor());
    symbol.setDigits(*rc::gen::arbitrary<unsigned int>());
    symbol.setSpacing(*rc::gen::arbitrary<unsigned int>());
    return symbol;
}

ColorBar makeColorBar()
{
    ColorBar bar;
    bar.setRange(*anyPoint());
    bar.setValue(*anyDouble(), *rc::gen::arbitrary<bool>());
    bar.setColor(*anyColor());
    bar.setWidth(*anyDouble());
    bar.setUseVariableLength(*rc::gen::arbitrary<bool>());
    bar.setMinimumLength(*anyDouble());
    bar.setSide(*anyOf<ColorBar::Side_t>(4));
    bar.setBorder(*anyLineStyle());
    bar.setBackground(*anyFillStyle());
    return bar;
}

RC_GTEST_PROP(StylesInAllForms, keepALineStyle, ())
{
    LineStyle const style = *anyLineStyle();
    RC_ASSERT(throughBlock(style) == style);
    RC_ASSERT(throughText(style) == style);
    RC_ASSERT(throughParameters(style) == style);
}

RC_GTEST_PROP(StylesInAllForms, keepAFillStyle, ())
{
    FillStyle const style = *anyFillStyle();
    RC_ASSERT(throughBlock(style) == style);
    RC_ASSERT(throughText(style) == style);
    RC_ASSERT(throughParameters(style) == style);
}

RC_GTEST_PROP(StylesInAllForms, keepASymbol, ())
{
    Symbol symbol = makeSymbol();
    RC_ASSERT(throughText(symbol) == symbol);
    QString const family = QString::fromStdString(*rc::gen::nonEmpty(rc::gen::container<std::string>(rc::gen::inRange('a', 'z'))));
    symbol.setFont(Font(family, *rc::gen::inRange(1, 1000) * 0.1, *rc::gen::inRange(0U, 128U)));
    RC_ASSERT(throughBlock(symbol) == symbol);
    RC_ASSERT(throughParameters(symbol) == symbol);
}

RC_GTEST_PROP(StylesInAllForms, keepAnImageConversion, ())
{
    ImageConversion conversion;
    conversion.setType(*anyOf<ImageConversion::Type>(6));
    conversion.setMin(*rc::gen::arbitrary<int>());
    conversion.setMax(*rc::gen::arbitrary<int>());
    RC_ASSERT(throughBlock(conversion) == conversion);
    RC_ASSERT(throughText(conversion) == conversion);
    RC_ASSERT(throughParameters(conversion) == conversion);
}

RC_GTEST_PROP(StylesInAllForms, keepARotation, ())
{
    Rotation const rotation(*anyPoint(), *anyDouble());
    RC_ASSERT(throughBlock(rotation) == rotation);
}

RC_GTEST_PROP(RotationOfAnyPoint, isUndone, ())
{
    auto const coordinate = [] { return *rc::gen::inRange(-10000, 10000) * 0.1; };
    Rotation const rotation({coordinate(), coordinate()}, coordinate());
    BaVec2d<double> const point(coordinate(), coordinate());
    BaVec2d<double> const back = rotation.removeFrom(rotation.applyTo(point));
    RC_ASSERT((back - point).length() < 1e-9);
}

RC_GTEST_PROP(ColorBarInAllForms, isKept, ())
{
    ColorBar const bar = makeColorBar();
    QString const parameters = bar.getParameterString("bar");
    RC_ASSERT(throughBlock(bar).getParameterString("bar") == parameters);
    RC_ASSERT(throughText(bar).getParameterString("bar") == parameters);
    RC_ASSERT(throughParameters(bar).getParameterString("bar") == parameters);
}

RC_GTEST_PROP(ColorBarOfAnyNumbers, isDrawn, ())
{
    Support::RecordingPainter painter;
    makeColorBar().draw(&painter, *anyPoint(), *anyPoint(), Rotation::null);
    RC_ASSERT(painter.calls().size() <= 5U);
}

RC_GTEST_PROP(TokenInAllForms, isKept, ())
{
    Token_t const token(*anyText(), *anyOf<Variable_t>(11));
    RC_ASSERT(throughBlock(token) == token);
    RC_PRE(token.getType() != VARIABLE_SNAPSHOT);
    QString parameters = token.getParameterString("key");
    Token_t read;
    read.createFromParameterString(parameters, "key");
    RC_ASSERT(read == token);
    RC_ASSERT(parameters.isEmpty());
}

RC_GTEST_PROP(TokenOrder, agreesWithEquality, ())
{
    auto const token = [] {
        return Token_t(*rc::gen::element(QString(), QStringLiteral("a"), QStringLiteral("b")), *anyOf<Variable_t>(3));
    };
    Token_t const a = token();
    Token_t const b = token();
    RC_ASSERT(!(a < b && b < a));
    RC_ASSERT((a == b) == !(a != b));
    if (!a.isEmpty() || !b.isEmpty())
        RC_ASSERT((a == b) == (!(a < b) && !(b < a)));
}

void fill(Label *label)
{
    label->setText(*anyText());
    label->setTemplateName(*anyText());
    label->setColorBarVisible(*rc::gen::arbitrary<bool>());
    label->setColorBar(makeColorBar());
    label->setTextAlignmentX(*anyOf<Alignment_t>(3));
    label->setTextAlignmentY(*anyOf<Alignment_t>(3));
    label->setExpandWidth(*rc::gen::arbitrary<bool>());
    label->setConnectorPoint(*anyPoint());
    label->setConnectorStyle(*anyLineStyle());
    label->setOrigin(*anyPoint());
    label->setSize(*anyPoint());
}

RC_GTEST_PROP(LabelInAllForms, isKept, ())
{
    Label label;
    fill(&label);
    QString const expected = label.getParameterString();

    Label fromBlock;
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { label.save(&stream, 0, 0); });
    Support::readFrom(bytes, [&](IO::InStream &stream) { fromBlock.load(&stream, 0, 0); });
    RC_ASSERT(fromBlock.getParameterString() == expected);

    Label fromText;
    std::stringstream stream;
    label.saveToStream(stream);
    fromText.loadFromStream(stream);
    RC_ASSERT(fromText.getParameterString() == expected);

    Label fromParameters;
    QString parameters = expected;
    fromParameters.createFromParameterString(parameters);
    RC_ASSERT(fromParameters.getParameterString() == expected);
    RC_ASSERT(parameters.isEmpty());
}

RC_GTEST_PROP(RichTextOfAnyMarkup, isTheSumOfItsElements, ())
{
    QString const text = *rc::gen::oneOf(anyMarkup(), anyText());
    QString joined;
    bool lastWasPlain = false;
    for (RTFIterator it(text); it.hasElement(); it.next()) {
        RC_ASSERT(!it.getElement().isEmpty());
        RC_ASSERT(it.getType() != it.getElement().startsWith('<'));
        RC_ASSERT(!(lastWasPlain && it.getType()));
        lastWasPlain = it.getType();
        joined += it.getElement();
    }
    RC_ASSERT(joined == text);
    RC_ASSERT(RTFDocument(text).toString() == text);
}

RC_GTEST_PROP(RichTextOfAnyMarkup, isConverted, ())
{
    QString const text = *rc::gen::oneOf(anyMarkup(), anyText());
    QString const converted = RTFTools::convertText(text);
    if (!text.contains("<color"))
        RC_ASSERT(converted.count('<') == converted.count("</span>") + converted.count("<br>\n"));
    RC_ASSERT(RTFTools::stripTags(text, "html").size() <= text.size());
    RC_ASSERT(RTFTools::convertToQt4(text).count("<p>") >= text.count("<p>"));
    RTFTools::parseStyleAttribute(text);
    RC_ASSERT(!Tools::stripRTFTags(text).contains('<'));
}

RC_GTEST_PROP(TokensInAnyMarkup, areSplit, ())
{
    QString const text = *rc::gen::oneOf(anyMarkup(), anyText());
    QString name;
    QString format;
    RC_ASSERT(Tools::parseToken(text, &name, &format) == !text.isEmpty());
    RC_ASSERT(format + name == text);

    std::vector<QString> names;
    std::vector<QString> formats;
    Tools::parseTokens(text, '$', &names, &formats);
    RC_ASSERT(names.size() == formats.size());
    RC_ASSERT(static_cast<qsizetype>(2 * names.size()) <= text.count('$'));
    for (std::size_t i = 0; i < names.size(); ++i)
        RC_ASSERT(text.contains('$' + formats[i] + names[i] + '$'));
}

RC_GTEST_PROP(TokensInAnyMarkup, areResolved, ())
{
    QString const text = *rc::gen::oneOf(anyMarkup(), anyText());
    Support::TestTokens tokens;
    tokens.set("a", Value(1));
    TestLabel label;
    label.setText(text);
    label.computeDynamicData(StageIdentifier(1), &tokens);
    RC_ASSERT(label.getResolvedText() == label.resolveTokensInText(StageIdentifier(1), &tokens, text));
    RC_ASSERT(label.getResolvedText().count('<') == text.count('<'));
    RC_ASSERT(std::isfinite(label.getSize().x));
}

/// The five replacements as patterns.
QString convertedByPatterns(QString text)
{
    std::pair<char const *, char const *> const patterns[] = {{"(<table\\s[^>]*)\\swidth=1", "\\1"},
                                                              {"(<table\\s[^>]*)\\scellpadding=-1", "\\1"},
                                                              {"(<td\\s[^>]*)\\swidth=1", "\\1"},
                                                              {"<td([^>]*)>", "<td\\1><p>"},
                                                              {"</td>", "</p></td>"}};
    for (auto const &[pattern, replacement] : patterns)
        text.replace(QRegularExpression(QString::fromLatin1(pattern)), QString::fromLatin1(replacement));
    return text;
}

RC_GTEST_PROP(OldRichText, isRepairedAsByThePatterns, ())
{
    auto const pieces = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
        "<table", "<td", "</td>", " ", "\n", "\t", "width=1", "cellpadding=-1", ">", "x", "<", "1", "<table width=1"));
    QString text;
    for (std::string const &piece : pieces)
        text += QString::fromStdString(piece);

    RC_ASSERT(RTFTools::convertToQt4(text) == convertedByPatterns(text));
}

} // namespace
} // namespace Zem::Fig2
