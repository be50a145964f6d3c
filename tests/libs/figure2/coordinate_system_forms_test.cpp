// The stored forms of a coordinate system.
#include <BlockCrafter.h>
#include <ElementForms.h>
#include <ZemFig2CoordinateSystem.h>
#include <ZemFig2LineStyle.h>
#include <ZemFig2Tools.h>
#include <ZemParse.h>

#include <gtest/gtest.h>

#include <sstream>

namespace Zem::Fig2 {
namespace {

using Support::BlockCrafter;
using Support::Payload;

Font const FONT("Arial", 8, Font::BOLD);

CoordinateSystem fullSystem()
{
    CoordinateSystem system;
    system.setOrigin({1, 2.5, -3});
    system.setVisible(true);
    system.setTextVisible(false);
    system.setLength(7);
    system.setWidth(0.25);
    system.setFont(FONT);
    return system;
}

std::string blocks(CoordinateSystem const &system)
{
    return Support::streamOf([&](IO::OutStream &stream) { system.save(&stream); });
}

void load(CoordinateSystem &system, std::string const &bytes)
{
    Support::readFrom(bytes, [&](IO::InStream &stream) { system.load(&stream); });
}

CoordinateSystem loaded(std::string const &bytes)
{
    CoordinateSystem system;
    load(system, bytes);
    return system;
}

BlockCrafter &addFont(BlockCrafter &crafter)
{
    return crafter.add([](IO::OutStream &stream) { Tools::save(&stream, FONT); });
}

/// Line styles of the widths 1, 2 and 3, and the font.
std::string withOlderTail(BlockCrafter &crafter)
{
    for (double width : {1.0, 2.0, 3.0}) {
        crafter.add(
            [width](IO::OutStream &stream) { LineStyle(width, LineStyle::STYLE_DASHED, Color()).save(&stream); });
    }
    return addFont(crafter).bytes();
}

TEST(CoordinateSystem, isInvisibleAtFirst)
{
    CoordinateSystem const system;

    EXPECT_EQ(system.getOrigin(), BaVec3d<double>(0, 0, 0));
    EXPECT_FALSE(system.getVisible());
    EXPECT_TRUE(system.getTextVisible());
    EXPECT_EQ(system.getLength(), 20.0);
    EXPECT_EQ(system.getWidth(), 0.5);
    EXPECT_EQ(system.getFont(), Font(Font::DEFAULT_FONT_SANS, 12.0, 0));
}

TEST(CoordinateSystemBlock, hasVersion3And42Bytes)
{
    BlockCrafter crafter;
    crafter.block(3, Payload().d(1).d(2.5).d(-3).b(true).b(false).d(7).d(0.25));

    EXPECT_EQ(blocks(fullSystem()), addFont(crafter).bytes());
    EXPECT_EQ(Support::blocksOf(blocks(fullSystem())).substr(0, 5), "3:42 ");
    EXPECT_EQ(loaded(crafter.bytes()), fullSystem());
}

TEST(CoordinateSystemBlock, ofVersion2TakesTheWidthOfTheLastLineStyle)
{
    BlockCrafter crafter;
    crafter.block(2, Payload().d(1).d(2.5).d(-3).b(true).b(false).d(7));
    CoordinateSystem expected = fullSystem();
    expected.setWidth(3);

    EXPECT_EQ(loaded(withOlderTail(crafter)), expected);
}

TEST(CoordinateSystemBlock, ofVersion1HasLetters)
{
    BlockCrafter crafter;
    crafter.block(1, Payload().d(1).d(2.5).d(-3).b(true).d(7));
    CoordinateSystem expected = fullSystem();
    expected.setWidth(3);
    expected.setTextVisible(true);

    EXPECT_EQ(loaded(withOlderTail(crafter)), expected);
}

TEST(CoordinateSystemBlock, ofAnUnknownVersionIsRefused)
{
    for (unsigned int version : {0U, 4U}) {
        BlockCrafter crafter;
        crafter.block(version, Payload().d(1).d(2.5).d(-3).b(true).b(false).d(7).d(0.25));
        CoordinateSystem read = fullSystem();
        EXPECT_EQ(Support::thrownText<IO::StreamException>([&] { load(read, addFont(crafter).bytes()); }),
                  "cannot load figure coordinate system: wrong block version");
        EXPECT_EQ(read, fullSystem());
    }
}

TEST(CoordinateSystemBlock, isRefusedAfterEveryTruncationAndChangesNothing)
{
    BlockCrafter older;
    older.block(1, Payload().d(1).d(2.5).d(-3).b(true).d(7));
    for (std::string const &bytes : {blocks(CoordinateSystem()), withOlderTail(older)}) {
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            CoordinateSystem read = fullSystem();
            std::string const text =
                Support::thrownText<IO::StreamException>([&] { load(read, bytes.substr(0, length)); });
            EXPECT_EQ(text.rfind("cannot load figure coordinate system: ", 0), 0U) << length << ' ' << text;
            EXPECT_EQ(read, fullSystem());
        }
    }
}

std::string const FULL_TEXT = "1 1 2.5 -3 1 0 7 0.25 Arial 8 2 ";

TEST(CoordinateSystemText, isVersionFieldsAndFont)
{
    std::ostringstream output;
    output << fullSystem();

    EXPECT_EQ(output.str(), FULL_TEXT);
    CoordinateSystem read;
    std::istringstream(FULL_TEXT) >> read;
    EXPECT_EQ(read, fullSystem());
}

TEST(CoordinateSystemText, thatIsNewerOrDamagedLeavesTheSystemAlone)
{
    for (std::string const &text : {std::string("2 1 2 3 1 1 1 1 Arial 8 2 "), std::string("1 1 2 three"),
                                    FULL_TEXT.substr(0, 20), std::string()}) {
        CoordinateSystem read = fullSystem();
        std::istringstream(text) >> read;
        EXPECT_EQ(read, fullSystem()) << text;
    }
}

std::string const FULL_PARAMETERS = "cs_origin = (1, 2.5, -3)\ncs_visible = true\ncs_text_visible = false\n"
                                    "cs_length = 7\ncs_width = 0.25\ncs_font = \"Arial,8,2\"\n";

TEST(CoordinateSystemParameters, areWrittenInOrderAndReadBack)
{
    EXPECT_EQ(fullSystem().getParameterString("cs").toStdString(), FULL_PARAMETERS);
    QString parameters = QString::fromStdString(FULL_PARAMETERS) + QStringLiteral("other = 1\n");
    CoordinateSystem read;

    read.createFromParameterString(parameters, "cs");

    EXPECT_EQ(read, fullSystem());
    EXPECT_EQ(parameters, "other = 1\n");
}

TEST(CoordinateSystemParameters, withoutAPrefixAreTheBareKeys)
{
    QString const parameters = fullSystem().getParameterString("");
    for (char const *key : {"origin", "visible", "text_visible", "length", "width", "font"})
        EXPECT_TRUE(Parse::parameterExists(parameters, QString::fromLatin1(key))) << key;
}

TEST(CoordinateSystemParameters, leaveWhatTheyDoNotNameAlone)
{
    QString parameters = QStringLiteral("length = 9\n");
    CoordinateSystem read = fullSystem();
    CoordinateSystem expected = fullSystem();
    expected.setLength(9);

    read.createFromParameterString(parameters, "");

    EXPECT_EQ(read, expected);
}

TEST(CoordinateSystemParameters, refuseBadValues)
{
    for (char const *text : {"origin = (1, 2)\n", "visible = perhaps\n", "length = long\n", "font = \"Arial\"\n"}) {
        QString parameters = QString::fromLatin1(text);
        CoordinateSystem read;
        EXPECT_THROW(read.createFromParameterString(parameters, ""), ParamError) << text;
    }
}

} // namespace
} // namespace Zem::Fig2
