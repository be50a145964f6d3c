#include <BlockCrafter.h>
#include <ZemFig2ImageConversion.h>
#include <ZemFig2Rectangle.h>
#include <ZemFig2Rotation.h>
#include <ZemFig2Symbol.h>

#include <ZemParse.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

Payload fontPayload(std::string const &family, double size, unsigned int style)
{
    return Payload().s(family).d(size).u(style);
}

Symbol loadSymbol(unsigned int version, Payload const &payload)
{
    std::string const bytes =
        BlockCrafter().block(version, payload).block(1, fontPayload("Liberation Sans", 12, 0)).bytes();
    Symbol symbol;
    Support::readFrom(bytes, [&symbol](IO::InStream &stream) { symbol.load(&stream); });
    return symbol;
}

TEST(SymbolDefaults, areACircleOfSize0)
{
    Symbol const symbol;
    EXPECT_EQ(symbol.getType(), Symbol::TYPE_CIRCLE);
    EXPECT_EQ(symbol.getSize(), 0.0);
    EXPECT_EQ(symbol.getColor(), Color(0, 0, 0));
    EXPECT_FALSE(symbol.getShowValue());
    EXPECT_EQ(symbol.getDigits(), 2U);
    EXPECT_EQ(symbol.getFont(), Font("Liberation Sans", 12.0, 0));
    EXPECT_EQ(symbol.getSpacing(), 0U);
    EXPECT_EQ(Symbol::null, Symbol(Symbol::TYPE_NONE, 0.0, false));
}

TEST(SymbolNames, areTheWordsOfTheEnumeration)
{
    char const *const words[] = {"circle", "box",    "pyramid", "cheque",  "star", "hexagon", "triangle",
                                 "cross",  "border", "house",   "corners", "none", "marker",  "spot"};
    for (int i = 0; i < 14; ++i) {
        EXPECT_EQ(Symbol::getTypeId(Symbol::Type(i)), words[i]);
        EXPECT_EQ(Symbol::getSymbolName(Symbol::Type(i)), words[i]);
        EXPECT_EQ(Symbol::getTypeFromId(words[i]), Symbol::Type(i));
    }
    EXPECT_EQ(Symbol::getTypeId(Symbol::Type(14)), "");
}

TEST(SymbolNames, refuseAnUnknownWord)
{
    try {
        Symbol::getTypeFromId("blob");
        FAIL();
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getText(), "unknown symbol type: blob");
        EXPECT_EQ(error.getPosition(), -1);
    }
}

TEST(SymbolList, beginsWithNone)
{
    std::vector<int> numbers;
    for (Symbol::Type type : Symbol::getAllSymbols())
        numbers.push_back(type);
    EXPECT_EQ(numbers, (std::vector<int>{11, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13}));
}

TEST(SymbolBlock, hasVersion4With25BytesAndAFontBehind)
{
    Symbol symbol(Symbol::TYPE_STAR, 1.5, true);
    symbol.setColor(Color(1, 2, 3, 4));
    symbol.setDigits(3);
    symbol.setSpacing(7);
    symbol.setFont(Font("Serif", 8.0, 2));

    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { symbol.save(&stream); });

    EXPECT_EQ(bytes, BlockCrafter()
                         .block(4, Payload().u(4).d(1.5).c(1, 2, 3, 4).b(true).u(3).u(7))
                         .block(1, fontPayload("Serif", 8.0, 2))
                         .bytes());
    Symbol read;
    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream); });
    EXPECT_EQ(read, symbol);
}

TEST(SymbolBlock, ofVersion3CountsTypesDifferently)
{
    auto const typeOf = [](unsigned int version, unsigned int stored) {
        return loadSymbol(version, Payload().u(stored).d(1).c(0, 0, 0, 255).b(false).u(2).u(0)).getType();
    };
    EXPECT_EQ(typeOf(3, 0), Symbol::TYPE_NONE);
    EXPECT_EQ(typeOf(3, 5), Symbol::TYPE_STAR);
    EXPECT_EQ(typeOf(4, 5), Symbol::TYPE_HEXAGON);
    EXPECT_EQ(typeOf(2, 5), Symbol::TYPE_HEXAGON);
    EXPECT_EQ(typeOf(3, 14), Symbol::TYPE_SPOT);
    EXPECT_THROW(typeOf(3, 15), IO::StreamException);
    EXPECT_THROW(typeOf(4, 14), IO::StreamException);
    EXPECT_THROW(typeOf(5, 1), IO::StreamException);
}

TEST(SymbolBlock, ofVersion1HasNoSpacing)
{
    Symbol const symbol = loadSymbol(1, Payload().u(1).d(2).c(0, 0, 0, 255).b(true).u(4));
    EXPECT_EQ(symbol.getType(), Symbol::TYPE_BOX);
    EXPECT_EQ(symbol.getDigits(), 4U);
    EXPECT_EQ(symbol.getSpacing(), 0U);
}

TEST(SymbolText, leavesTheFontOut)
{
    Symbol symbol(Symbol::TYPE_CROSS, 2.5, true);
    symbol.setSpacing(3);
    std::ostringstream output;
    output << symbol;
    EXPECT_EQ(output.str(), "1 7 2.5 #000000ff 1 2 3 ");
    Symbol read;
    read.setFont(Font("Mono", 5.0, 1));
    std::istringstream(output.str()) >> read;
    EXPECT_EQ(read.getType(), Symbol::TYPE_CROSS);
    EXPECT_EQ(read.getFont(), Font("Mono", 5.0, 1));
}

TEST(SymbolParameters, areWrittenInOrder)
{
    EXPECT_EQ(Symbol(Symbol::TYPE_BOX, 2, true).getParameterString("s").toStdString(),
              "s_type = \"box\"\ns_size = 2\ns_color = #000000ff\ns_show_value = true\ns_digits = 2\n"
              "s_font = \"Liberation Sans,12,0\"\ns_spacing = 0\n");
}

TEST(SymbolParameters, changeOnlyWhatTheyName)
{
    Symbol symbol(Symbol::TYPE_BOX, 2, true);
    QString parameters = QStringLiteral("s_size = 5\n");
    symbol.createFromParameterString(parameters, "s");
    EXPECT_EQ(symbol, Symbol(Symbol::TYPE_BOX, 5, true));
}

TEST(SymbolParameters, refuseNegativeSizesUnknownTypesAndBadFonts)
{
    for (char const *entry : {"s_size = -1\n", "s_type = \"blob\"\n", "s_digits = -1\n", "s_spacing = 4294967296\n",
                              "s_font = \"no font\"\n"}) {
        Symbol symbol;
        QString parameters = QString::fromLatin1(entry);
        EXPECT_THROW(symbol.createFromParameterString(parameters, "s"), ParamError) << entry;
    }
}

TEST(SymbolParameters, areReadBack)
{
    Symbol symbol(Symbol::TYPE_SPOT, 2.5, true);
    symbol.setColor(Color(1, 2, 3, 4));
    symbol.setDigits(4294967295U);
    symbol.setFont(Font("Mono", 9, 3));
    symbol.setSpacing(5);
    QString parameters = symbol.getParameterString("s");
    Symbol read;
    read.createFromParameterString(parameters, "s");
    EXPECT_EQ(read, symbol);
    EXPECT_EQ(parameters, "");
}

TEST(SymbolText, thatIsNewerOrDamagedLeavesTheObjectAlone)
{
    for (char const *text : {"2 7 2.5 #000000ff 1 2 3", "1 14 2.5 #000000ff 1 2 3", "1 7 2.5", ""}) {
        Symbol symbol(Symbol::TYPE_BOX, 2, true);
        std::istringstream input(text);
        input >> symbol;
        EXPECT_EQ(symbol, Symbol(Symbol::TYPE_BOX, 2, true)) << text;
    }
}

TEST(SymbolEquality, looksAtAllSevenMembers)
{
    std::vector<Symbol> symbols(8);
    symbols[1].setType(Symbol::TYPE_BOX);
    symbols[2].setSize(1);
    symbols[3].setColor(Color(1, 0, 0));
    symbols[4].setShowValue(true);
    symbols[5].setDigits(3);
    symbols[6].setFont(Font("Mono", 12, 0));
    symbols[7].setSpacing(1);
    for (std::size_t i = 0; i < symbols.size(); ++i)
        for (std::size_t j = 0; j < symbols.size(); ++j)
            EXPECT_EQ(symbols[i] == symbols[j], i == j) << i << " " << j;
}

TEST(SymbolBlock, ofVersion0IsRefusedAndChangesNothing)
{
    for (unsigned int version : {0U, 5U}) {
        std::string const bytes = BlockCrafter()
                                      .block(version, Payload().u(1).d(1).c(0, 0, 0, 255).b(false).u(2).u(0))
                                      .block(1, fontPayload("A", 12, 0))
                                      .bytes();
        Symbol symbol(Symbol::TYPE_BOX, 2, true);
        EXPECT_THROW(Support::readFrom(bytes, [&](IO::InStream &stream) { symbol.load(&stream); }),
                     IO::StreamException);
        EXPECT_EQ(symbol, Symbol(Symbol::TYPE_BOX, 2, true));
    }
}

TEST(ImageConversionBlock, thatIsNewerOrDamagedIsRefusedAndChangesNothing)
{
    for (std::string const &bytes :
         {BlockCrafter().block(2, Payload().u(1).i(0).i(1)).bytes(), BlockCrafter().block(0, Payload().u(1).i(0).i(1)).bytes(),
          BlockCrafter().block(1, Payload().u(6).i(0).i(1)).bytes(), BlockCrafter().block(1, Payload().u(1).i(0)).bytes()}) {
        ImageConversion conversion;
        EXPECT_THROW(Support::readFrom(bytes, [&](IO::InStream &stream) { conversion.load(&stream); }),
                     IO::StreamException);
        EXPECT_EQ(conversion, ImageConversion::null);
    }
}

TEST(ImageConversionNames, areTheSixWords)
{
    char const *const words[] = {"normal", "lighten", "overexposed", "range", "equalize", "pseudo"};
    for (int i = 0; i < 6; ++i) {
        ImageConversion conversion;
        conversion.setType(ImageConversion::Type(i));
        std::ostringstream output;
        output << conversion;
        EXPECT_EQ(output.str(), std::string("1 ") + words[i] + " 0 255 ");
        QString parameters = QStringLiteral("c_type = \"%1\"\n").arg(QLatin1StringView(words[i]));
        ImageConversion read;
        read.createFromParameterString(parameters, "c");
        EXPECT_EQ(read, conversion);
    }
    ImageConversion conversion;
    QString parameters = QStringLiteral("c_type = \"sepia\"\n");
    EXPECT_THROW(conversion.createFromParameterString(parameters, "c"), ParamError);
}

TEST(ImageConversionForms, areOneBlockFourWordsAndThreeKeys)
{
    ImageConversion conversion;
    EXPECT_EQ(conversion, ImageConversion::null);
    EXPECT_EQ(conversion.getMax(), 255);
    conversion.setType(ImageConversion::TYPE_RANGE);
    conversion.setMin(-5);
    conversion.setMax(99);

    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { conversion.save(&stream); });
    EXPECT_EQ(bytes, BlockCrafter().block(1, Payload().u(3).i(-5).i(99)).bytes());
    std::ostringstream output;
    output << conversion;
    EXPECT_EQ(output.str(), "1 range -5 99 ");
    EXPECT_EQ(conversion.getParameterString("c").toStdString(), "c_type = \"range\"\nc_min = -5\nc_max = 99\n");

    ImageConversion fromBlock;
    Support::readFrom(bytes, [&](IO::InStream &stream) { fromBlock.load(&stream); });
    ImageConversion fromText;
    std::istringstream(output.str()) >> fromText;
    ImageConversion fromParameters;
    QString parameters = conversion.getParameterString("c");
    fromParameters.createFromParameterString(parameters, "c");
    for (ImageConversion const &read : {fromBlock, fromText, fromParameters})
        EXPECT_EQ(read, conversion);
}

TEST(ImageConversionText, ofAnUnknownTypeIsNormal)
{
    ImageConversion conversion;
    conversion.setType(ImageConversion::TYPE_PSEUDO);
    std::istringstream("1 sepia 3 4") >> conversion;
    EXPECT_EQ(conversion.getType(), ImageConversion::TYPE_NORMAL);
    EXPECT_EQ(conversion.getMin(), 3);
}

TEST(ImageConversionOrder, isByTypeThenMinimumThenMaximum)
{
    ImageConversion a;
    ImageConversion b;
    b.setMax(300);
    EXPECT_LT(a, b);
    a.setMin(1);
    EXPECT_LT(b, a);
    b.setType(ImageConversion::TYPE_LIGHTEN);
    EXPECT_LT(a, b);
}

TEST(Rotation, turnsAPointAboutItsBase)
{
    Rotation const quarter({1, 1}, 1.5707963267948966);
    BaVec2d<double> const turned = quarter.applyTo({3, 1});
    EXPECT_NEAR(turned.x, 1.0, 1e-12);
    EXPECT_NEAR(turned.y, -1.0, 1e-12);
    BaVec2d<double> const back = quarter.removeFrom(turned);
    EXPECT_NEAR(back.x, 3.0, 1e-12);
    EXPECT_NEAR(back.y, 1.0, 1e-12);
}

TEST(Rotation, byNextToNothingLeavesThePointAlone)
{
    BaVec2d<double> const point(1e60, 1.0 / 3.0);
    EXPECT_EQ(Rotation({5, 5}, 1e-51).applyTo(point), point);
    EXPECT_EQ(Rotation::null.applyTo(point), point);
    EXPECT_EQ(Rotation(), Rotation::null);
}

TEST(Rotation, ofAnElementIsAboutItsOrigin)
{
    Rectangle rectangle;
    rectangle.setOrigin({3, 4});
    rectangle.setAngle(0.5);
    EXPECT_EQ(Rotation(&rectangle), Rotation({3, 4}, 0.5));
}

TEST(RotationBlock, ofAnotherVersionIsRefusedAndChangesNothing)
{
    for (unsigned int version : {0U, 2U}) {
        std::string const bytes = BlockCrafter().block(version, Payload().v(1, 2).d(3)).bytes();
        Rotation rotation({7, 8}, 9);
        EXPECT_THROW(Support::readFrom(bytes, [&](IO::InStream &stream) { rotation.load(&stream); }),
                     IO::StreamException);
        EXPECT_EQ(rotation, Rotation({7, 8}, 9));
    }
}

TEST(RotationBlock, has24Bytes)
{
    Rotation const rotation({1, 2}, 0.25);
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { rotation.save(&stream); });
    EXPECT_EQ(bytes, BlockCrafter().block(1, Payload().v(1, 2).d(0.25)).bytes());
    Rotation read;
    Support::readFrom(bytes, [&](IO::InStream &stream) { read.load(&stream); });
    EXPECT_EQ(read, rotation);
}

} // namespace
} // namespace Zem::Fig2
