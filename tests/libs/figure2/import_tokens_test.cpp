// The tokens of older figures, in both of their forms.
#include "import_fixture.h"

#include <ZemFig2Chart.h>
#include <ZemFig2ChartData.h>
#include <ZemFig2Figure.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2SnapshotData.h>
#include <ZemFig2TokenContainer.h>

#include <ZemImage.h>
#include <ZemTokenContainer.h>

namespace Zem::Fig2 {
namespace {

using Support::oldAxis;
using Support::oldBool;
using Support::oldChart;
using Support::oldChartData;
using Support::oldDouble;
using Support::oldFigure;
using Support::oldInteger;
using Support::oldPicture;
using Support::oldString;
using Support::OldTokenFields;
using Support::oldTokens;
using Support::packedGrey;
using Support::Payload;
using Support::progError;
using Support::thrownText;

std::string const WRAPPED = "cannot load figure token data: ";

/// A list with this one token, then what it holds.
OldRecords oneToken(unsigned int type, OldRecords const &value, std::string const &name = "t")
{
    return oldTokens(1, {{name, type, "", "", ""}}).add(value);
}

/// Runs `look` on the registry that the token data fill.
template <class Look>
void withTokens(OldRecords const &records, Look const &look)
{
    DataInterface tokens;
    readRecords(records, [&tokens](IO::InStream *stream) { Import::importTokenData(stream, &tokens); });
    look(tokens);
}

std::string tokenRefusal(OldRecords const &records)
{
    return thrownText<IO::StreamException>([&] { withTokens(records, [](DataInterface const &) {}); });
}

Variable const &variableOf(DataInterface const &tokens)
{
    return *tokens.getTokenBegin()->second;
}

/// The registry's dump of tokens.
std::string dump(OldRecords const &records)
{
    std::string result;
    withTokens(records, [&result](DataInterface const &tokens) { result = tokens.toString().toStdString(); });
    return result;
}

Value valueOf(TokenContainer const &container, QString const &name)
{
    return container.getValue(name, IndexIdentifier::NO_INDEX, StageIdentifier::NO_STAGE);
}

TEST(ImportTokens, ofTypeBoolBecomeWords)
{
    withTokens(oneToken(0, oldBool(1, true)),
               [](DataInterface const &tokens) { EXPECT_EQ(tokens.getString("t"), "true"); });
    withTokens(oneToken(0, oldBool(2, false, "5")), [](DataInterface const &tokens) {
        EXPECT_EQ(tokens.getString("t"), "false");
        EXPECT_EQ(variableOf(tokens).defaultFormat, "5");
    });
}

TEST(ImportTokens, ofTypeIntegerKeepValueAndFormat)
{
    withTokens(oneToken(1, oldInteger(1, -7)), [](DataInterface const &tokens) {
        EXPECT_EQ(tokens.getInt("t"), -7);
        EXPECT_EQ(variableOf(tokens).defaultFormat, "");
    });
    withTokens(oneToken(1, oldInteger(2, 8, "+4")),
               [](DataInterface const &tokens) { EXPECT_EQ(variableOf(tokens).defaultFormat, "+4"); });
}

TEST(ImportTokens, ofTypeDoubleKeepValueUnitAndFormat)
{
    UnitData unit;
    withTokens(oneToken(2, oldDouble(1, 1.5)), [&unit](DataInterface const &tokens) {
        EXPECT_EQ(tokens.getDouble("t", &unit), 1.5);
        EXPECT_FALSE(unit.hasUnit());
    });
    withTokens(oneToken(2, oldDouble(2, 2500.0, "kN")), [&unit](DataInterface const &tokens) {
        EXPECT_EQ(tokens.getDouble("t", &unit), 2500.0);
        EXPECT_EQ(unit.getUnit(), uForce);
        EXPECT_EQ(unit.getUnitName(), "kN");
    });
    withTokens(oneToken(2, oldDouble(3, 2.5, "force", "5.1")), [&unit](DataInterface const &tokens) {
        tokens.getDouble("t", &unit);
        EXPECT_EQ(unit, UnitData(uForce));
        EXPECT_EQ(variableOf(tokens).defaultFormat, "5.1");
    });
}

TEST(ImportTokens, ofAnUnknownUnitHaveNone)
{
    withTokens(oneToken(2, oldDouble(2, 2.5, "furlong")), [](DataInterface const &tokens) {
        UnitData unit(uForce);
        tokens.getDouble("t", &unit);
        EXPECT_FALSE(unit.hasUnit());
    });
}

TEST(ImportTokens, ofTypeStringKeepValueAndFormat)
{
    withTokens(oneToken(3, oldString(1, "Smith")),
               [](DataInterface const &tokens) { EXPECT_EQ(tokens.getString("t"), "Smith"); });
    withTokens(oneToken(3, oldString(2, "Smith", "9")),
               [](DataInterface const &tokens) { EXPECT_EQ(variableOf(tokens).defaultFormat, "9"); });
}

TEST(ImportTokens, withoutDataAreThereAllTheSame)
{
    std::pair<unsigned int, Variable_t> const types[] = {{6, VARIABLE_IMAGE_REFERENCE},
                                                         {7, VARIABLE_CHART_REFERENCE},
                                                         {8, VARIABLE_GROUP},
                                                         {10, VARIABLE_SNAPSHOT_REFERENCE},
                                                         {11, VARIABLE_SEPARATOR}};
    for (auto const &[old, type] : types)
        withTokens(oneToken(old, {}),
                   [type = type](DataInterface const &tokens) { EXPECT_TRUE(tokens.tokenExists(Token_t("t", type))); });
}

TEST(ImportTokens, areDescribedFromVersion2On)
{
    OldTokenFields const token{"t", 1, "thickness", "part", "sizes"};

    withTokens(oldTokens(2, {token}).add(oldInteger(1, 3)), [](DataInterface const &tokens) {
        EXPECT_EQ(variableOf(tokens).displayText, "thickness");
        EXPECT_EQ(variableOf(tokens).typeHint, "part");
        EXPECT_EQ(variableOf(tokens).groupToken, "sizes");
    });
    withTokens(oldTokens(1, {token}).add(oldInteger(1, 3)), [](DataInterface const &tokens) {
        EXPECT_EQ(variableOf(tokens).displayText, "");
        EXPECT_EQ(variableOf(tokens).typeHint, "");
        EXPECT_EQ(variableOf(tokens).groupToken, "");
    });
}

TEST(ImportTokens, areReadInTheirOrder)
{
    OldRecords records = oldTokens(1, {{"b", 1, "", "", ""}, {"a", 3, "", "", ""}, {"b", 1, "", "", ""}});

    std::string const text = dump(records.add(oldInteger(1, 1)).add(oldString(1, "x")).add(oldInteger(2, 2, "3")));

    EXPECT_EQ(text, "Token: token='a', type=STRING, value='x', text='', sort_index='-1', group=''\n"
                    "Token: token='b', type=INTEGER, value='2.00', text='', sort_index='-1', group=''\n");
}

TEST(ImportTokens, haveFormatsOfTheirOwn)
{
    OldRecords records = oldTokens(1, {{"a", 1, "", "", ""}, {"b", 1, "", "", ""}});

    withTokens(records.add(oldInteger(2, 1, "5")).add(oldInteger(1, 2)), [](DataInterface const &tokens) {
        EXPECT_EQ(tokens.getTokenBegin()->second->defaultFormat, "5");
        EXPECT_EQ(std::next(tokens.getTokenBegin())->second->defaultFormat, "");
    });
}

TEST(ImportTokens, ofUnknownVersionsAreRefused)
{
    OldRecords const newer = OldRecords().record(4, Payload());

    EXPECT_EQ(tokenRefusal(OldRecords().record(3, Payload())), WRAPPED + "wrong block version");
    EXPECT_EQ(tokenRefusal(oneToken(0, OldRecords().record(3, Payload()))),
              WRAPPED + "unhandled BOOL variable version: 3");
    EXPECT_EQ(tokenRefusal(oneToken(1, OldRecords().record(3, Payload()))),
              WRAPPED + "unhandled INTEGER variable version: 3");
    EXPECT_EQ(tokenRefusal(oneToken(2, newer)), WRAPPED + "unhandled DOUBLE variable version: 4");
    EXPECT_EQ(tokenRefusal(oneToken(3, OldRecords().record(3, Payload()))),
              WRAPPED + "unhandled STRING variable version: 3");
    EXPECT_EQ(tokenRefusal(oneToken(4, newer)), WRAPPED + "unknown image version: 4");
    EXPECT_EQ(tokenRefusal(oneToken(5, newer)), WRAPPED + "unhandled chart version: 4");
    EXPECT_EQ(tokenRefusal(oneToken(9, newer)), WRAPPED + "invalid figure file version: 4");
}

TEST(ImportTokens, ofAnUnknownTypeAreRefused)
{
    EXPECT_EQ(tokenRefusal(oneToken(12, {})), WRAPPED + "illegal value 12 in block");
}

TEST(ImportTokens, withinEachOtherAreRefusedBelowADepth)
{
    // A picture whose object has a picture as its value, and so on.
    auto const nested = [](unsigned int depth) {
        OldRecords records;
        for (unsigned int i = 0; i < depth; ++i)
            records.add(oneToken(4, oldPicture(2, 0, packedGrey(1, 1, "a"), true)))
                .add(Support::oldImageData(1, false, 1))
                .add(Support::oldObject(3, "o", 0, true));
        return records.add(oldTokens(1, {}));
    };

    EXPECT_EQ(tokenRefusal(nested(31)), "nothing thrown");
    EXPECT_NE(tokenRefusal(nested(32)).find("figure is nested too deeply"), std::string::npos);
}

TEST(ImportPicture, keepsItsPixels)
{
    withTokens(oneToken(4, oldPicture(1, 0, packedGrey(3, 2, "abcxyz"))), [](DataInterface const &tokens) {
        auto const *picture = dynamic_cast<Image8 const *>(variableOf(tokens).image);
        ASSERT_NE(picture, nullptr);
        EXPECT_EQ(picture->getWidth(), 3U);
        EXPECT_EQ(picture->getRow(0)[1], 'b');
        EXPECT_EQ(picture->getRow(1)[2], 'z');
        EXPECT_EQ(variableOf(tokens).imageData, nullptr);
        EXPECT_EQ(variableOf(tokens).overlayImage, nullptr);
    });
}

TEST(ImportPicture, mayHaveDataFromVersion2On)
{
    OldRecords picture = oldPicture(2, 0, packedGrey(1, 1, "a"), true);

    withTokens(oneToken(4, picture.add(Support::oldImageData(1, false, 1)).add(Support::oldObject(1, "bolt", 0))),
               [](DataInterface const &tokens) {
                   ASSERT_NE(variableOf(tokens).imageData, nullptr);
                   EXPECT_TRUE(variableOf(tokens).imageData->objectExists("bolt"));
               });
}

TEST(ImportPicture, mayHaveAnOverlayFromVersion3On)
{
    withTokens(oneToken(4, oldPicture(3, 0, packedGrey(1, 1, "a"), false, Support::packedColor(1, 1, 4, 5, 6))),
               [](DataInterface const &tokens) {
                   ASSERT_NE(variableOf(tokens).overlayImage, nullptr);
                   EXPECT_EQ(variableOf(tokens).overlayImage->getPixel(0, 0), Color(4, 5, 6));
               });
    withTokens(oneToken(4, oldPicture(3, 0, packedGrey(1, 1, "a"))),
               [](DataInterface const &tokens) { EXPECT_EQ(variableOf(tokens).overlayImage, nullptr); });
}

TEST(ImportPicture, mayBeOfColours)
{
    withTokens(oneToken(4, oldPicture(1, 3, Support::packedColor(2, 2, 4, 5, 6))), [](DataInterface const &tokens) {
        auto const *picture = dynamic_cast<ImageColor const *>(variableOf(tokens).image);
        ASSERT_NE(picture, nullptr);
        EXPECT_EQ(picture->getPixel(1, 1), Color(4, 5, 6));
    });
}

TEST(ImportPicture, mayBeOfEachKind)
{
    // Empty pictures: a header of their kind and a stream of nothing.
    std::string const empty = packedGrey(0, 0, "");
    for (unsigned int kind = 0; kind < 4; ++kind) {
        std::string bytes = empty;
        bytes[5] = static_cast<char>(kind);
        withTokens(oneToken(4, oldPicture(1, kind, bytes)), [kind](DataInterface const &tokens) {
            EXPECT_EQ(static_cast<unsigned int>(variableOf(tokens).image->getType()), kind);
        });
    }
}

TEST(ImportPicture, thatCannotBeUnpackedIsRefused)
{
    std::string const packed = packedGrey(2, 1, "ab");
    Payload tooLong;
    tooLong.u(0).u(1000000000);

    EXPECT_EQ(tokenRefusal(oneToken(4, oldPicture(1, 0, "nonsense"))), WRAPPED + "uncompressing image failed");
    EXPECT_EQ(tokenRefusal(oneToken(4, oldPicture(1, 3, packed))), WRAPPED + "uncompressing image failed");
    EXPECT_EQ(tokenRefusal(oneToken(4, oldPicture(3, 0, packed, false, packed))),
              WRAPPED + "uncompressing image failed");
    EXPECT_EQ(tokenRefusal(oneToken(4, OldRecords().record(1, tooLong))), WRAPPED + "uncompressing image failed");
}

TEST(ImportPicture, ofAnUnknownKindIsRefused)
{
    EXPECT_EQ(tokenRefusal(oneToken(4, oldPicture(1, 4, ""))), WRAPPED + "illegal value 4 in block");
}

TEST(ImportChartData, keepTheirCurves)
{
    withTokens(oneToken(5, oldChartData(1)), [](DataInterface const &tokens) {
        ChartData const *data = nullptr;
        tokens.getChart("t", &data);
        ChartDataset const *left = data->getDataset("left");
        ASSERT_EQ(left->getNumberOfPoints(), 2U);
        EXPECT_EQ(*left->getPointBegin(1), ChartPoint(1, {1.0, 4.0}, 0.0));
        EXPECT_EQ(left->getDisplayText(), "left");
        EXPECT_EQ(*data->getDataset("right")->getPointBegin(0), ChartPoint(0, {2.0, -3.0}, 0.0));
        EXPECT_EQ(data->getUnitX(), UnitData(uLength));
        EXPECT_EQ(data->getUnitY(), UnitData(uLength));
        EXPECT_TRUE(data->getComputeStatistics());
    });
}

TEST(ImportChartData, haveTextsFromVersion2On)
{
    withTokens(oneToken(5, oldChartData(2)), [](DataInterface const &tokens) {
        ChartData const *data = nullptr;
        tokens.getChart("t", &data);
        EXPECT_EQ(data->getDataset("left")->getDisplayText(), "left side");
        EXPECT_EQ(data->getDataset("right")->getDisplayText(), "right side");
    });
}

TEST(ImportChartData, haveUnitsFromVersion3On)
{
    withTokens(oneToken(5, oldChartData(3)), [](DataInterface const &tokens) {
        ChartData const *data = nullptr;
        tokens.getChart("t", &data);
        EXPECT_EQ(data->getUnitX(), UnitData(uTime));
        EXPECT_EQ(data->getUnitY().getUnit(), uForce);
        EXPECT_EQ(data->getUnitY().getUnitName(), "kN");
    });
}

TEST(ImportChartData, keepTheLaterOfTwoCurvesWithOneId)
{
    Payload payload;
    payload.u(2).s("a").u(0).s("a").u(1).v(5.0, 6.0);

    withTokens(oneToken(5, OldRecords().record(1, payload)), [](DataInterface const &tokens) {
        ChartData const *data = nullptr;
        tokens.getChart("t", &data);
        EXPECT_EQ(data->getDataset("a")->getNumberOfPoints(), 1U);
    });
}

TEST(ImportSnapshotToken, isAFigureWithItsOwnTokens)
{
    OldRecords const axes = oldAxis(1).add(oldAxis(1));
    OldRecords const inner = oldFigure(2, oldTokens(1, {{"curve", 5, "", "", ""}}).add(oldChartData(1)),
                                       {oldElementOf(Import::OLD_CHART, oldChart(1).add(axes))});

    withTokens(oneToken(9, inner), [](DataInterface const &tokens) {
        SnapshotData const *snapshot = nullptr;
        tokens.getSnapshot("t", &snapshot);
        ASSERT_NE(snapshot->getFigure(), nullptr);
        EXPECT_EQ(childAt<Chart>(*snapshot->getFigure(), 0).getToken(), "curve");
        ASSERT_NE(snapshot->getTokenContainer(), nullptr);
        ASSERT_NE(snapshot->getTokenContainer()->getChart("curve"), nullptr);
        EXPECT_TRUE(snapshot->getTokenContainer()->getChart("curve")->datasetExists("left"));
    });
}

TEST(ImportSnapshotToken, canBeSavedAndReadAgain)
{
    withTokens(oneToken(9, oldFigure({oldElementOf(Import::OLD_LINE, Support::oldLine(1))})),
               [](DataInterface const &tokens) {
                   SnapshotData const *snapshot = nullptr;
                   tokens.getSnapshot("t", &snapshot);
                   std::string const bytes = Support::streamOf([&](IO::OutStream &s) { snapshot->save(&s); });
                   SnapshotData read;
                   Support::readFrom(bytes, [&read](IO::InStream &stream) { read.load(&stream); });
                   EXPECT_EQ(read.getFigure()->toString(), snapshot->getFigure()->toString());
               });
}

TEST(ImportTokenContainer, takesThePlainValues)
{
    TokenContainer container;
    OldRecords records = oldTokens(2, {{"n", 1, "number", "", ""},
                                       {"d", 2, "", "", ""},
                                       {"s", 3, "", "", ""},
                                       {"b", 0, "", "", ""},
                                       {"g", 8, "", "", ""}});
    records.add(oldInteger(1, 5)).add(oldDouble(2, 1500.0, "kN")).add(oldString(1, "x")).add(oldBool(1, true));

    readRecords(records, [&container](IO::InStream *stream) { Import::importTokenData(stream, &container); });

    std::vector<TokenInfo> infos;
    container.getTokens(&infos);
    EXPECT_EQ(infos, (std::vector<TokenInfo>{{TokenInfo::TYPE_STRING, "b", "b"},
                                             {TokenInfo::TYPE_FORCE, "d", "d"},
                                             {TokenInfo::TYPE_INTEGER, "n", "number"},
                                             {TokenInfo::TYPE_STRING, "s", "s"}}));
    EXPECT_EQ(valueOf(container, "n"), Value(5));
    EXPECT_EQ(valueOf(container, "d").toString("[kN].1", nullptr), "1.5");
    EXPECT_EQ(valueOf(container, "s"), Value(QString("x")));
    EXPECT_EQ(valueOf(container, "b"), Value(QString("true")));
}

TEST(ImportTokenContainer, takesTheLastOfSeveralTypes)
{
    DataInterface tokens;
    tokens.setString("a", "text");
    tokens.setInt("a", 3);
    TokenContainer container;

    Import::convertDataInterface(&tokens, &container);

    EXPECT_EQ(valueOf(container, "a"), Value(QString("text")));
}

TEST(ImportTokenContainer, leavesOutWhatIsNoToken)
{
    DataInterface tokens;
    tokens.setInt("", 1);
    tokens.setInt("two words", 2);
    tokens.setInt("good", 3);
    TokenContainer container;

    Import::convertDataInterface(&tokens, &container);

    std::vector<TokenInfo> infos;
    container.getTokens(&infos);
    ASSERT_EQ(infos.size(), 1U);
    EXPECT_EQ(infos[0].getName(), "good");
}

TEST(ImportTokenContainer, takesNoneOfTheOtherTypes)
{
    DataInterface tokens;
    tokens.setImage("a", new Image8(1, 1), nullptr, nullptr);
    tokens.setChart("b", new ChartData);
    tokens.setSnapshot("c", new SnapshotData);
    tokens.setImageReference("d");
    tokens.setChartReference("e");
    tokens.setSnapshotReference("f");
    tokens.setGroup("g");
    tokens.setSeparator("h");
    TokenContainer container;

    Import::convertDataInterface(&tokens, &container);

    std::vector<TokenInfo> infos;
    container.getTokens(&infos);
    EXPECT_TRUE(infos.empty());
}

TEST(ImportTokenContainer, refusesAVariableOfNoKnownType)
{
    DataInterface tokens;
    auto const type = static_cast<Variable_t>(11);
    tokens.addVariable(Token_t("a", type), new Variable(type));
    TokenContainer container;

    EXPECT_EQ(progError([&] { Import::convertDataInterface(&tokens, &container); }),
              "fig_import: Unhandled variable type");
}

TEST(ImportVariableType, isThatOfToday)
{
    Variable_t const types[] = {VARIABLE_STRING,
                                VARIABLE_INTEGER,
                                VARIABLE_DOUBLE,
                                VARIABLE_STRING,
                                VARIABLE_IMAGE,
                                VARIABLE_CHART,
                                VARIABLE_IMAGE_REFERENCE,
                                VARIABLE_CHART_REFERENCE,
                                VARIABLE_GROUP,
                                VARIABLE_SNAPSHOT,
                                VARIABLE_SNAPSHOT_REFERENCE,
                                VARIABLE_SEPARATOR};
    for (unsigned int type = 0; type < Import::NUMBER_OF_OLD_VARS; ++type)
        EXPECT_EQ(Import::convertVariableType(static_cast<Import::OldVar_t>(type)), types[type]);
}

TEST(ImportVariableType, thatIsNoneIsRefused)
{
    EXPECT_EQ(progError([] { Import::convertVariableType(static_cast<Import::OldVar_t>(12)); }),
              "fig_import: Illegal variable type");
}

TEST(ImportRegistry, isReadWithItsDescriptions)
{
    DataInterface tokens;

    readRecords(Support::oldRegistry(),
                [&tokens](IO::InStream *stream) { Import::importDataInterface(stream, &tokens); });

    EXPECT_EQ(tokens.getString("operator"), "Smith");
    EXPECT_EQ(tokens.getTypeHint(Token_t("curve", VARIABLE_CHART_REFERENCE)), "strain");
}

TEST(ImportRegistry, fillsAContainer)
{
    TokenContainer container;

    readRecords(Support::oldRegistry(),
                [&container](IO::InStream *stream) { Import::importDataInterface(stream, &container); });

    EXPECT_EQ(valueOf(container, "operator"), Value(QString("Smith")));
    EXPECT_EQ(valueOf(container, "curve"), Value::UNKNOWN);
}

TEST(ImportRegistry, ofANewerVersionIsRefused)
{
    DataInterface tokens;

    EXPECT_EQ(thrownText<IO::StreamException>([&tokens] {
                  readRecords(OldRecords().record(2, Payload()),
                              [&tokens](IO::InStream *stream) { Import::importDataInterface(stream, &tokens); });
              }),
              WRAPPED + "wrong block version");
}

TEST(ImportSkipping, endsBehindTheTokens)
{
    auto const nextVersion = [](OldRecords records, void (*skip)(IO::InStream *)) {
        unsigned int version = 0;
        readRecords(records.record(77, Payload()), [&](IO::InStream *stream) {
            skip(stream);
            stream->openBlock();
            version = stream->getBlockVersion();
        });
        return version;
    };

    EXPECT_EQ(nextVersion(oneToken(1, oldInteger(1, 3)), Import::skipTokenData), 77U);
    EXPECT_EQ(nextVersion(Support::oldRegistry(), Import::skipDataInterface), 77U);
}

TEST(ImportFigureTokens, ofVersion2AreTokenData)
{
    DataInterface tokens;

    importFigure(oldFigure(2, oneToken(1, oldInteger(1, 3)), {}), nullptr, &tokens);

    EXPECT_EQ(tokens.getInt("t"), 3);
}

TEST(ImportFigureTokens, ofVersion3AreARegistry)
{
    DataInterface tokens;

    importFigure(oldFigure(3, Support::oldRegistry(), {}), nullptr, &tokens);

    EXPECT_EQ(tokens.getString("operator"), "Smith");
}

TEST(ImportFigureTokens, areToldByTheirNames)
{
    ImportReport report;

    importFigure(
        oldFigure(2, oneToken(9, oldFigure({oldElementOf(Import::OLD_LINE, Support::oldLine(1))}), "frozen"), {}),
        &report);

    EXPECT_EQ(keptPlaces(report), "page frozen/\nline frozen/1\ntoken frozen\npage \n");
}

TEST(ImportFigureTokens, ofARegistryAreToldTooByTheirNames)
{
    ImportReport report;

    importFigure(oldFigure(3, Support::oldRegistry(), {}), &report);

    EXPECT_EQ(keptPlaces(report), "token curve\ntoken operator\npage \n");
}

TEST(ImportFigureTokens, areDroppedWithoutARegistryForThem)
{
    OldRecords const file = oldFigure(2, oneToken(1, oldInteger(1, 3)), {});
    DataInterface tokens;
    ImportReport with;
    ImportReport without;

    importFigure(file, &with, &tokens);
    importFigure(file, &without);

    EXPECT_EQ(losses(with), "");
    EXPECT_EQ(losses(without), "figure  dropped: a page does not hold the data of its tokens\n");
}

OldRecords chart(std::string const &token)
{
    Support::OldChartFields fields;
    fields.token = token;
    return oldElementOf(Import::OLD_CHART, oldChart(1, fields).add(oldAxis(1)).add(oldAxis(1)));
}

TEST(ImportTypeHints, areThoseOfTheTokensOfCharts)
{
    OldRecords tokens = oldTokens(
        2, {{"a", 7, "", "force", ""}, {"b", 5, "", "strain", ""}, {"c", 7, "", "", ""}, {"d", 1, "", "number", ""}});
    tokens.add(oldChartData(1)).add(oldInteger(1, 1));

    auto const figure =
        importFigure(oldFigure(2, tokens, {chart("a"), chart("b"), chart("c"), chart("d"), chart(""), chart("e")}));

    auto const hint = [&figure](int index) { return figure->getTypeHint(&childAt<Chart>(*figure, index)); };
    EXPECT_EQ(hint(0), "force");
    EXPECT_EQ(hint(1), "strain");
    for (int index = 2; index < 6; ++index)
        EXPECT_EQ(hint(index), "");
}

TEST(ImportTypeHints, comeFromARegistryToo)
{
    auto const figure = importFigure(oldFigure(3, Support::oldRegistry(), {chart("curve")}));

    EXPECT_EQ(figure->getTypeHint(&childAt<Chart>(*figure, 0)), "strain");
}

TEST(ImportTypeHints, goOverToATemplate)
{
    std::istringstream input(Support::oldFile(oldFigure(3, Support::oldRegistry(), {chart("curve")})));
    IO::InStream stream(&input);
    FigureTemplate figure;

    figure.import(&stream, -1, -1);

    EXPECT_EQ(figure.getTypeHint(&childAt<Chart>(figure, 0)), "strain");
    EXPECT_EQ(figure.getSize(), (BaVec2d<double>(100.0, 50.0)));
}

} // namespace
} // namespace Zem::Fig2
