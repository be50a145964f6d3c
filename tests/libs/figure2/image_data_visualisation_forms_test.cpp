// The look of marks on a picture in blocks, texts and parameters.
#include "generated_values.h"
#include "image_fixture.h"

#include <ElementForms.h>
#include <ZemFig2Tools.h>

#include <ZemParse.h>

#include <rapidcheck/gtest.h>

#include <map>

namespace Zem::Fig2 {
namespace {

using namespace Fixture;
using Look = ImageDataVisualisation;
using Support::BlockCrafter;
using Support::Payload;

/// The line of unusualLook().
Payload linePayload()
{
    return Payload().d(0.25).u(3).c(1, 2, 3, 255).u(0);
}

Payload fontPayload()
{
    return Payload().s("Serif").d(9.5).u(3);
}

/// The newest own block of unusualLook().
Payload newestPayload()
{
    return Payload().b(false).u(4).d(7.5).d(2.5).d(0.5).u(2).b(false).b(false).b(true).b(true).c(4, 5, 6, 255).i(6);
}

std::string newestBytes(unsigned int version, Payload const &payload)
{
    return BlockCrafter().block(version, payload).block(2, linePayload()).block(1, fontPayload()).bytes();
}

std::string olderBytes(unsigned int version, Payload const &payload)
{
    return BlockCrafter().block(version, payload).block(2, linePayload()).bytes();
}

/// Loads into a look that has neither defaults nor what the bytes hold.
Look loaded(std::string const &bytes)
{
    Look look = unusualLook();
    look.setNull(true);
    look.setPointIdFont(Font("Mono", 8.0, 1));
    look.setPointMask(12);
    look.setDrawArrows(Look::ARROW_FIRST);
    Support::readFrom(bytes, [&look](IO::InStream &stream) { look.load(&stream); });
    return look;
}

std::string loadError(std::string const &bytes)
{
    Look look = unusualLook();
    std::string const text = Support::thrownText<IO::StreamException>(
        [&] { Support::readFrom(bytes, [&look](IO::InStream &stream) { look.load(&stream); }); });
    EXPECT_EQ(contentOf(look), contentOf(unusualLook()));
    return text;
}

TEST(ImageDataVisualisationBlock, hasVersion8And45BytesThenLineAndFont)
{
    std::string const bytes = Support::streamOf([](IO::OutStream &stream) { unusualLook().save(&stream); });

    EXPECT_EQ(newestPayload().bytes().size(), 45U);
    EXPECT_EQ(bytes, newestBytes(8, newestPayload()));
    EXPECT_EQ(contentOf(loaded(bytes)), contentOf(unusualLook()));
}

TEST(ImageDataVisualisationBlock, ofVersion7IsNeverNull)
{
    Look const read = loaded(newestBytes(
        7, Payload().u(4).d(7.5).d(2.5).d(0.5).u(2).b(false).b(false).b(true).b(true).c(4, 5, 6, 255).i(6)));
    EXPECT_EQ(contentOf(read), contentOf(unusualLook()));
}

TEST(ImageDataVisualisationBlock, ofVersion6HasIdsInNoColourOfTheirOwn)
{
    Look const read = loaded(newestBytes(6, Payload().u(4).d(7.5).d(2.5).d(0.5).u(2).b(false).b(false).b(true).i(6)));

    Look expected = unusualLook();
    expected.setUseFixedPointIdColor(false);
    expected.setPointIdColor(Color(56, 180, 56));
    EXPECT_EQ(contentOf(read), contentOf(expected));
}

/// unusualLook() without what came in version 6.
Look withoutIds()
{
    Look look = unusualLook();
    look.setUseFixedPointIdColor(false);
    look.setPointIdColor(Color(56, 180, 56));
    look.setPointMarkerSize(20.0);
    look.setDrawPointIds(false);
    look.setPointIdFont(Font("Liberation Sans", 12.0, 0));
    return look;
}

TEST(ImageDataVisualisationBlock, ofVersion5HasNeitherIdsNorMarkerSizeNorFont)
{
    Look const read = loaded(olderBytes(5, Payload().u(4).d(2.5).d(0.5).u(2).b(false).b(false).i(6)));
    EXPECT_EQ(contentOf(read), contentOf(withoutIds()));
}

TEST(ImageDataVisualisationBlock, ofVersion4ShowsAllMasks)
{
    Look const read = loaded(olderBytes(4, Payload().u(4).d(2.5).d(0.5).u(2).b(false).b(false)));

    Look expected = withoutIds();
    expected.setPointMask(-1);
    EXPECT_EQ(contentOf(read), contentOf(expected));
}

TEST(ImageDataVisualisationBlock, ofVersion3ShowsHiddenPoints)
{
    Look const read = loaded(olderBytes(3, Payload().u(4).d(2.5).d(0.5).u(2).b(false)));

    Look expected = withoutIds();
    expected.setPointMask(-1);
    expected.setDrawHiddenPoints(true);
    EXPECT_EQ(contentOf(read), contentOf(expected));
}

/// What versions 1 and 2 hold, but for the arrows.
Look oldest(Look::ArrowMode_t arrows)
{
    Look look = withoutIds();
    look.setPointMask(-1);
    look.setDrawHiddenPoints(true);
    look.setDrawCombinedVectors(true);
    look.setDrawArrows(arrows);
    return look;
}

TEST(ImageDataVisualisationBlock, ofVersion2CombinesVectors)
{
    Look const read = loaded(olderBytes(2, Payload().u(4).d(2.5).d(0.5).u(2)));
    EXPECT_EQ(contentOf(read), contentOf(oldest(Look::ARROW_SECOND)));
}

TEST(ImageDataVisualisationBlock, ofVersion1HasArrowsAtBothEndsOrNone)
{
    Look const with = loaded(olderBytes(1, Payload().u(4).d(2.5).d(0.5).b(true)));
    Look const without = loaded(olderBytes(1, Payload().u(4).d(2.5).d(0.5).b(false)));
    EXPECT_EQ(contentOf(with), contentOf(oldest(Look::ARROW_BOTH)));
    EXPECT_EQ(contentOf(without), contentOf(oldest(Look::ARROW_NONE)));
}

TEST(ImageDataVisualisationBlock, belowVersion6LeavesTheBlockBehindTheLineAlone)
{
    std::string const bytes = newestBytes(5, Payload().u(4).d(2.5).d(0.5).u(2).b(false).b(false).i(6));
    Look look(false);
    Font font;

    Support::readFrom(bytes, [&](IO::InStream &stream) {
        look.load(&stream);
        Tools::load(&stream, &font);
    });

    EXPECT_EQ(look.getPointIdFont(), Font("Liberation Sans", 12.0, 0));
    EXPECT_EQ(font, Font("Serif", 9.5, 3));
}

TEST(ImageDataVisualisationBlock, replacesNegativeNumbersByTheDefaults)
{
    Payload const payload =
        Payload().b(false).u(4).d(-1).d(-0.5).d(-2).u(2).b(false).b(false).b(true).b(true).c(4, 5, 6, 255).i(6);

    Look const read = loaded(newestBytes(8, payload));

    Look expected = unusualLook();
    expected.setPointMarkerSize(20.0);
    expected.setVectorScaling(1.0);
    expected.setVectorLineWidth(1.0);
    EXPECT_EQ(contentOf(read), contentOf(expected));
}

TEST(ImageDataVisualisationBlock, keepsZeroes)
{
    Payload const payload =
        Payload().b(false).u(4).d(0).d(0).d(0).u(2).b(false).b(false).b(true).b(true).c(4, 5, 6, 255).i(6);

    Look const read = loaded(newestBytes(8, payload));

    EXPECT_EQ(read.getPointMarkerSize(), 0.0);
    EXPECT_EQ(read.getVectorScaling(), 0.0);
    EXPECT_EQ(read.getVectorLineWidth(), 0.0);
}

TEST(ImageDataVisualisationBlock, ofAnUnknownVersionIsRefused)
{
    for (unsigned int version : {0U, 9U, 4294967295U})
        EXPECT_EQ(loadError(newestBytes(version, newestPayload())),
                  "cannot load figure data interface: wrong block version");
}

TEST(ImageDataVisualisationBlock, withAnUnknownModeOrArrowModeIsRefused)
{
    auto const payload = [](unsigned int mode, unsigned int arrows) {
        return Payload()
            .b(false)
            .u(mode)
            .d(7.5)
            .d(2.5)
            .d(0.5)
            .u(arrows)
            .b(false)
            .b(false)
            .b(true)
            .b(true)
            .c(4, 5, 6, 255)
            .i(6);
    };
    EXPECT_EQ(loadError(newestBytes(8, payload(7, 2))), "cannot load figure data interface: illegal value 7 in block");
    EXPECT_EQ(loadError(newestBytes(8, payload(4, 4))), "cannot load figure data interface: illegal value 4 in block");
    EXPECT_EQ(loadError(newestBytes(8, payload(4294967295U, 2))),
              "cannot load figure data interface: illegal value 4294967295 in block");
}

TEST(ImageDataVisualisationBlock, withADamagedLineOrFontIsRefused)
{
    auto const behind = [](unsigned int lineVersion, Payload const &line, Payload const &font) {
        return BlockCrafter().block(8, newestPayload()).block(lineVersion, line).block(1, font).bytes();
    };
    EXPECT_EQ(loadError(behind(3, linePayload(), fontPayload())),
              "cannot load figure data interface: wrong block version");
    EXPECT_EQ(loadError(behind(2, Payload().d(1).u(5).c(0, 0, 0, 0).u(0), fontPayload())),
              "cannot load figure data interface: illegal value 5 in block");
    // A family of four billion letters.
    EXPECT_EQ(loadError(behind(2, linePayload(), Payload().u(4294967295U).d(9.5).u(3)))
                  .find("cannot load figure data interface: "),
              0U);
}

TEST(ImageDataVisualisationBlock, isRefusedWhereverItIsCut)
{
    std::string const bytes = newestBytes(8, newestPayload());
    std::size_t const header = BlockCrafter().bytes().size();
    for (std::size_t length = header; length < bytes.size(); ++length)
        EXPECT_EQ(loadError(bytes.substr(0, length)).find("cannot load figure data interface: "), 0U) << length;
}

constexpr char const *TEXT = "1 0 4 7.5 2.5 0.5 2 0 0 1 1 #040506ff 6 1 0.25 3 #010203ff 0 Serif 9.5 3 ";

Look readText(std::string const &text)
{
    Look look(false);
    std::istringstream(text) >> look;
    return look;
}

TEST(ImageDataVisualisationText, isOneLineOfItemsWithABlankBehindEach)
{
    std::ostringstream output;
    output << unusualLook();
    EXPECT_EQ(output.str(), TEXT);
    EXPECT_EQ(contentOf(readText(TEXT)), contentOf(unusualLook()));
}

TEST(ImageDataVisualisationText, ofAnotherVersionReadsNothing)
{
    std::istringstream input("2 0 4 7.5");
    Look look(false);

    input >> look;

    EXPECT_EQ(contentOf(look), contentOf(Look(false)));
    int next = -1;
    EXPECT_TRUE(input >> next);
    EXPECT_EQ(next, 0);
}

TEST(ImageDataVisualisationText, thatIsDamagedFailsAndChangesNothing)
{
    std::string const text = TEXT;
    for (std::string const &damaged :
         {std::string(), std::string("x"), std::string("1 2 4 7.5"), std::string("1 0 7 7.5"),
          std::string("1 0 -1 7.5"), "1 0 4 7.5 2.5 0.5 4" + text.substr(19),
          "1 0 4 7.5 2.5 0.5 2 0 0 1 1 red" + text.substr(37), text.substr(0, text.size() - 3)}) {
        Look look(false);
        std::istringstream input(damaged);
        EXPECT_FALSE(input >> look) << damaged;
        EXPECT_EQ(contentOf(look), contentOf(Look(false))) << damaged;
    }
}

TEST(ImageDataVisualisationText, withANegativeNumberRaisesAsTheSettersDo)
{
    std::string const rest = " 2 0 0 1 1 #040506ff 6 1 0.25 3 #010203ff 0 Serif 9.5 3 ";
    Look look(false);
    std::istringstream scaling("1 0 4 7.5 -2.5 0.5" + rest);
    std::istringstream width("1 0 4 7.5 2.5 -0.5" + rest);

    EXPECT_EQ(Support::thrownText<ProgError>([&] { scaling >> look; }), "Invalid scaling value (<0)");
    EXPECT_EQ(Support::thrownText<ProgError>([&] { width >> look; }), "Invalid line width value (<0)");
    EXPECT_EQ(contentOf(look), contentOf(Look(false)));
    EXPECT_EQ(readText("1 0 4 -7.5 2.5 0.5" + rest).getPointMarkerSize(), -7.5);
}

TEST(ImageDataVisualisationParameters, areWrittenInTheirOrderUnderThePrefix)
{
    EXPECT_EQ(unusualLook().getParameterString("vis").toStdString(),
              "vis_is_null = false\nvis_mode = \"yz\"\n"
              "vis_line_style_width = 0.25\nvis_line_style_color = #010203ff\nvis_line_style_style = \"dashed\"\n"
              "vis_line_style_cap_style = \"round\"\nvis_point_marker_size = 7.5\nvis_vector_scaling = 2.5\n"
              "vis_vector_line_width = 0.5\nvis_draw_arrows = \"second\"\nvis_draw_combined_vectors = false\n"
              "vis_draw_hidden_points = false\nvis_draw_point_ids = true\nvis_use_fixed_point_id_color = true\n"
              "vis_point_id_color = #040506ff\nvis_point_mask = 6\nvis_point_id_font = \"Serif,9.5,3\"\n");
}

TEST(ImageDataVisualisationParameters, haveBareKeysUnderAnEmptyPrefix)
{
    QString const written = Look::NONE.getParameterString(QString());
    EXPECT_TRUE(written.startsWith("is_null = true\nmode = \"xyz\"\nline_style_width = 0.1\n"))
        << written.toStdString();

    Look look(false);
    QString parameters = QStringLiteral("mode = \"x\"\nvis_mode = \"y\"\n");
    look.createFromParameterString(parameters, QString());
    EXPECT_EQ(look.getMode(), Look::MODE_X);
    look.createFromParameterString(parameters, QStringLiteral("vis"));
    EXPECT_EQ(look.getMode(), Look::MODE_Y);
    EXPECT_EQ(parameters, QString());
}

/// Each entry of unusualLook() by its key.
std::map<std::string, std::string> entriesOf(Look const &look)
{
    std::map<std::string, std::string> entries;
    std::istringstream lines(contentOf(look));
    for (std::string line; std::getline(lines, line);)
        entries[line.substr(0, line.find(' '))] = line;
    return entries;
}

TEST(ImageDataVisualisationParameters, changeOnlyWhatTheyName)
{
    Look given = unusualLook();
    given.setNull(true);
    auto const defaults = entriesOf(Look(false));
    for (auto const &[key, entry] : entriesOf(given)) {
        Look look(false);
        QString parameters = QString::fromStdString(entry + "\nother = 5\n");

        look.createFromParameterString(parameters, QString());

        auto expected = defaults;
        expected[key] = entry;
        EXPECT_EQ(entriesOf(look), expected) << entry;
        EXPECT_NE(entriesOf(look), defaults) << entry;
        EXPECT_EQ(parameters, "other = 5\n");
    }
}

TEST(ImageDataVisualisationParameters, existWhenOneOfTheKeysDoes)
{
    auto const entries = entriesOf(Look(false));
    EXPECT_EQ(entries.size(), 17U);
    for (auto const &[key, entry] : entries) {
        EXPECT_TRUE(Look::parameterExists(QString::fromStdString(entry + '\n'), QString())) << key;
        EXPECT_TRUE(Look::parameterExists(QString::fromStdString("vis_" + entry + '\n'), "vis")) << key;
        EXPECT_FALSE(Look::parameterExists(QString::fromStdString(entry + '\n'), "vis")) << key;
    }
    EXPECT_FALSE(Look::parameterExists("vis = 1\nother_mode = \"x\"\nvis_line_style = 1\n", "vis"));
}

std::string parameterError(std::string const &text)
{
    Look look(false);
    QString parameters = QString::fromStdString(text);
    return Support::thrownText<ParamError>([&] { look.createFromParameterString(parameters, QString()); });
}

TEST(ImageDataVisualisationParameters, refuseUnknownWordsWithTheirOwnTexts)
{
    EXPECT_EQ(parameterError("mode = \"zyx\"\n"), "unknown image data mode: zyx");
    EXPECT_EQ(parameterError("mode = \"x and y\"\n"), "unknown image data mode: x and y");
    EXPECT_EQ(parameterError("draw_arrows = \"third\"\n"), "unknown arrow mode");
    EXPECT_EQ(parameterError("point_id_font = \"Serif\"\n"), "illegal point id font: Serif");
    EXPECT_EQ(parameterError("point_id_font = \"Serif,0,0\"\n"), "illegal point id font: Serif,0,0");
}

TEST(ImageDataVisualisationParameters, tellNoPositionOfAnUnknownMode)
{
    Look look(false);
    QString parameters = QStringLiteral("mode = \"w\"\n");
    try {
        look.createFromParameterString(parameters, QString());
        FAIL();
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getPosition(), -1);
    }
}

TEST(ImageDataVisualisationParameters, takeTheNumbersWithinTheirRange)
{
    for (char const *bad : {"point_marker_size = -1\n", "vector_scaling = -1\n", "vector_line_width = -0.001\n",
                            "point_mask = 2147483648\n", "point_mask = -2147483649\n", "point_mask = 1.5\n"})
        EXPECT_NE(parameterError(bad), "nothing thrown") << bad;
    for (char const *good : {"point_marker_size = 0\n", "vector_scaling = 1.7976931348623157e308\n",
                             "vector_line_width = 0\n", "point_mask = 2147483647\n", "point_mask = -2147483648\n"})
        EXPECT_EQ(parameterError(good), "nothing thrown") << good;
}

TEST(ImageDataVisualisationParameters, areReadInTheirOrder)
{
    struct Bad
    {
        std::string entry;
        std::string told;
    };
    std::vector<Bad> const inOrder = {{"is_null = maybe\n", "is_null"},
                                      {"mode = \"w\"\n", "unknown image data mode"},
                                      {"point_marker_size = -1\n", "point_marker_size"},
                                      {"vector_scaling = -1\n", "vector_scaling"},
                                      {"vector_line_width = -1\n", "vector_line_width"},
                                      {"draw_arrows = \"third\"\n", "unknown arrow mode"},
                                      {"draw_combined_vectors = maybe\n", "draw_combined_vectors"},
                                      {"draw_hidden_points = maybe\n", "draw_hidden_points"},
                                      {"draw_point_ids = maybe\n", "draw_point_ids"},
                                      {"use_fixed_point_id_color = maybe\n", "use_fixed_point_id_color"},
                                      {"point_id_color = red\n", "point_id_color"},
                                      {"point_mask = all\n", "point_mask"},
                                      {"line_style_width = -1\n", "line_style_width"},
                                      {"point_id_font = \"Serif\"\n", "illegal point id font"}};
    std::string later;
    for (auto bad = inOrder.rbegin(); bad != inOrder.rend(); ++bad) {
        later += bad->entry;
        EXPECT_NE(parameterError(later).find(bad->told), std::string::npos) << parameterError(later);
    }
}

Look makeLook()
{
    using namespace Generated;
    auto const anyBool = [] { return *rc::gen::arbitrary<bool>(); };
    Look look(anyBool());
    look.setMode(*anyOf<Look::Mode_t>(7));
    look.setLineStyle(*anyLineStyle());
    look.setPointMarkerSize(*anyLength());
    look.setVectorScaling(*anyLength());
    look.setVectorLineWidth(*anyLength());
    look.setDrawArrows(*anyOf<Look::ArrowMode_t>(4));
    look.setDrawCombinedVectors(anyBool());
    look.setDrawHiddenPoints(anyBool());
    look.setDrawPointIds(anyBool());
    look.setUseFixedPointIdColor(anyBool());
    look.setPointIdFont(Font(*anyText(), *rc::gen::inRange(1, 1000) * 0.1, *rc::gen::inRange(0U, 128U)));
    look.setPointIdColor(*anyColor());
    look.setPointMask(*rc::gen::arbitrary<int>());
    return look;
}

RC_GTEST_PROP(ImageDataVisualisationInAllForms, isKept, ())
{
    Look const look = makeLook();
    RC_ASSERT(contentOf(Generated::throughBlock(look, Look(false))) == contentOf(look));
    RC_ASSERT(contentOf(Generated::throughText(look, Look(false))) == contentOf(look));
    RC_ASSERT(contentOf(Generated::throughParameters(look, Look(false))) == contentOf(look));
}

} // namespace
} // namespace Zem::Fig2
