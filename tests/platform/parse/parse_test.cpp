#include "parameter_errors.h"

#include <ZemFont.h>

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cstdint>
#include <limits>
#include <random>

using namespace Zem;
using namespace Zem::Test;

namespace {

using Names = std::vector<QString>;
constexpr double LOWEST = std::numeric_limits<double>::lowest();
constexpr double HIGHEST = std::numeric_limits<double>::max();
constexpr unsigned int MANY = std::numeric_limits<unsigned int>::max();

QString const KEY = QStringLiteral("key");

QString q(char const *text)
{
    return QString::fromUtf8(text);
}

/// What is left of the string when nothing but this one entry was read.
double throughString(double value)
{
    QString parameters = Parse::createDouble(KEY, value);
    double const read = Parse::getDouble(parameters, KEY, LOWEST, HIGHEST);
    EXPECT_EQ(parameters, QString());
    return read;
}

QString throughString(QString const &text)
{
    QString parameters = Parse::createString(KEY, text);
    EXPECT_EQ(parameters.count(u'\n'), 1);
    QString const read = Parse::getString(parameters, KEY);
    EXPECT_EQ(parameters, QString());
    return read;
}

Names manyTexts()
{
    return {q(""),
            q("plain"),
            q(" blanks at both ends "),
            q("a, \"b\" (c] \\ \\\\ \\n\n\r\n\tend"),
            q("] , (x"),
            q("äöü \xe2\x82\xac"),
            QString(QChar(0)) + u'x',
            Parse::createString(q("inner"), q("a \"quoted\"\nline\\")) + Parse::createInt(q("n"), 1)};
}

} // namespace

TEST(ParameterString, isOneReadableLineForEachEntry)
{
    EXPECT_EQ(Parse::createBool(q("a"), true), q("a = true\n"));
    EXPECT_EQ(Parse::createInt(q("a"), -5), q("a = -5\n"));
    EXPECT_EQ(Parse::createUInt(q("a"), 4294967295u), q("a = 4294967295\n"));
    EXPECT_EQ(Parse::createDouble(q("a"), 0.1), q("a = 0.1\n"));
    EXPECT_EQ(Parse::createString(q("a"), q("b\nc")), q("a = \"b\\nc\"\n"));
    EXPECT_EQ(Parse::createColor(q("a"), Color(255, 0, 16, 128)), q("a = #ff001080\n"));
    EXPECT_EQ(Parse::createVec2d(q("a"), {1.5, -2}), q("a = (1.5, -2)\n"));
    EXPECT_EQ(Parse::createVec3dString(q("a"), {1, 2, 3}), q("a = (1, 2, 3)\n"));
    EXPECT_EQ(Parse::createVec2dVector(q("a"), {{1, 2}, {3, 4}}), q("a = [(1, 2), (3, 4)]\n"));
    EXPECT_EQ(Parse::createStringVector(q("a"), {q("x"), q("")}), q("a = [\"x\", \"\"]\n"));
    EXPECT_EQ(Parse::createStringVector(q("a"), {}), q("a = []\n"));
    EXPECT_EQ(Parse::createList(q("a"), 1, {q("x"), q("y")}), q("a = \"y\"\n"));
}

TEST(ParameterString, isConsumedByReading)
{
    QString parameters = Parse::createInt(q("a"), 1) + Parse::createInt(q("b"), 2) + Parse::createInt(q("c"), 3);
    EXPECT_EQ(Parse::getInt(parameters, q("b"), 0, 9), 2);
    EXPECT_EQ(parameters, q("a = 1\nc = 3\n"));
    EXPECT_FALSE(Parse::parameterExists(parameters, q("b")));
    EXPECT_TRUE(Parse::parameterExists(parameters, q("c")));
}

TEST(ParameterString, givesTheFirstOfSeveralEntriesAndKeepsTheOthers)
{
    QString parameters = Parse::createInt(KEY, 1) + Parse::createInt(KEY, 2);
    EXPECT_EQ(Parse::getInt(parameters, KEY, 0, 9), 1);
    EXPECT_EQ(Parse::getInt(parameters, KEY, 0, 9), 2);
    EXPECT_FALSE(Parse::parameterExists(parameters, KEY));
}

TEST(ParameterString, tellsKeysApartThatBeginAlike)
{
    QString parameters = Parse::createInt(q("size_x"), 1) + Parse::createInt(q("size"), 2);
    EXPECT_EQ(Parse::getInt(parameters, q("size"), 0, 9), 2);
    EXPECT_FALSE(Parse::parameterExists(parameters, q("size")));
    EXPECT_FALSE(Parse::parameterExists(parameters, q("x")));
}

TEST(ParameterString, doesNotSeeEntriesInsideATextAsItsOwn)
{
    QString const inner = Parse::createInt(KEY, 1);
    QString parameters = Parse::createString(q("outer"), inner);
    EXPECT_FALSE(Parse::parameterExists(parameters, KEY));
    EXPECT_EQ(Parse::getString(parameters, q("outer")), inner);
}

TEST(ParameterString, takesWhatPeopleWrite)
{
    QString parameters =
        q("\r\n  a=1\r\n\tb =  \"x\\\"y\\\\\"  \r\nc = word\nd = [ one , \"two\",(3, 4) ]\ne = #FF0000");
    EXPECT_EQ(Parse::getInt(parameters, q("a"), 0, 9), 1);
    EXPECT_EQ(Parse::getString(parameters, q("b")), q("x\"y\\"));
    EXPECT_EQ(Parse::getString(parameters, q("c")), q("word"));
    EXPECT_EQ(Parse::getStringVector(parameters, q("d"), 0, 9), (Names{q("one"), q("two"), q("(3, 4)")}));
    EXPECT_EQ(Parse::getColor(parameters, q("e")), Color(255, 0, 0, 255));
}

TEST(ParameterString, keepsTheBitsOfEveryDouble)
{
    std::mt19937_64 random(7);
    std::vector<double> values{0.0,    -0.0,    0.1,    1e22,
                               1e-300, HIGHEST, LOWEST, std::numeric_limits<double>::denorm_min()};
    for (int i = 0; i < 10000; ++i) {
        double const value = std::bit_cast<double>(random());
        if (value >= LOWEST && value <= HIGHEST) {
            values.push_back(value);
        }
    }
    for (double value : values) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(throughString(value)), std::bit_cast<std::uint64_t>(value)) << value;
    }
}

TEST(ParameterString, writesNumbersAlikeInEveryLocale)
{
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    EXPECT_EQ(Parse::createDouble(KEY, 1234.5), q("key = 1234.5\n"));
    EXPECT_EQ(throughString(1234.5), 1234.5);
    std::setlocale(LC_ALL, "C");
}

TEST(ParameterString, keepsEveryText)
{
    for (QString const &text : manyTexts()) {
        EXPECT_EQ(throughString(text), text) << text.toStdString();
    }
}

TEST(ParameterString, holdsNoLineEndsOfATextAsTheyAre)
{
    EXPECT_EQ(Parse::createString(KEY, q("a\r\nb")), q("key = \"a\\r\\nb\"\n"));
}

TEST(ParameterString, keepsEveryTextInAList)
{
    QString parameters = Parse::createStringVector(KEY, manyTexts());
    EXPECT_EQ(parameters.count(u'\n'), 1);
    EXPECT_EQ(Parse::getStringVector(parameters, KEY, 0, MANY), manyTexts());
}

TEST(ParameterString, growsEvenlyWhenNested)
{
    // One quote and one line end at the innermost level: each level adds its own few characters and one per escape.
    QString text = q("\"\n");
    QString const innermost = text;
    for (int depth = 0; depth < 200; ++depth) {
        text = Parse::createString(q("k"), text);
    }
    EXPECT_LT(text.size(), 200 * 200 * 4);
    for (int depth = 0; depth < 200; ++depth) {
        text = Parse::getString(text, q("k"));
    }
    EXPECT_EQ(text, innermost);
}

TEST(ParameterString, keepsVectorsAndColours)
{
    QString parameters = Parse::createVec2d(q("a"), {0.1, -2e30}) + Parse::createVec3dString(q("b"), {1, 2, 0.3}) +
                         Parse::createVec2dVector(q("c"), {{1, 2}, {3, 4.5}}) +
                         Parse::createColor(q("d"), Color(1, 2, 3, 4));
    EXPECT_EQ(Parse::getVec2d(parameters, q("a")), (BaVec2d<double>{0.1, -2e30}));
    EXPECT_EQ(Parse::getVec3dFromString(parameters, q("b")), (BaVec3d<double>{1, 2, 0.3}));
    EXPECT_EQ(Parse::getVec2dVector(parameters, q("c"), 2, 2), (std::vector<BaVec2d<double>>{{1, 2}, {3, 4.5}}));
    EXPECT_EQ(Parse::getColor(parameters, q("d")), Color(1, 2, 3, 4));
    EXPECT_TRUE(parameters.isEmpty());
}

TEST(ParameterString, givesPointsAsTextsToo)
{
    QString parameters = Parse::createVec2dVector(KEY, {{1, 2}, {-3, 4.5}});
    EXPECT_EQ(Parse::getStringVector(parameters, KEY, 2, MANY), (Names{q("(1, 2)"), q("(-3, 4.5)")}));
}

TEST(ParameterString, keepsAWordOfAList)
{
    Names const names{q("both"), q("image"), q("over lay")};
    QString parameters = Parse::createList(KEY, 2, names) + Parse::createList(q("b"), q("image"), names);
    EXPECT_EQ(Parse::getList(parameters, KEY, names), 2u);
    EXPECT_EQ(Parse::getList(parameters, q("b"), names), 1u);
}

TEST(ParameterString, keepsAFontAndLeavesItAloneWithoutAnEntry)
{
    Font const font(q("A \"strange\", font"), 7.5, Font::BOLD);
    QString parameters = Parse::getParameterString(KEY, font);
    Font read;
    Parse::createFromParameterString(parameters, KEY, &read);
    EXPECT_EQ(read, font);
    Parse::createFromParameterString(parameters, KEY, &read);
    EXPECT_EQ(read, font);
}

TEST(ParameterString, stripsBlanksAtBothEnds)
{
    EXPECT_EQ(Parse::stripBlanks(q(" \t(1, 2)\n ")), q("(1, 2)"));
}

TEST(ParameterStringErrors, nameTheMissingKey)
{
    QString parameters = Parse::createInt(q("a"), 1);
    EXPECT_EQ(paramError([&] { Parse::getInt(parameters, KEY, 0, 9); }), q("parameter 'key' is missing"));
}

TEST(ParameterStringErrors, nameKeyAndValueAndLeaveTheStringAlone)
{
    QString parameters = q("a = 1\nkey = 5 apples\n");
    QString const before = parameters;
    EXPECT_EQ(paramError([&] { Parse::getInt(parameters, KEY, 0, 9); }),
              q("parameter 'key', value '5 apples': is no integer"));
    EXPECT_EQ(parameters, before);
    try {
        Parse::getInt(parameters, KEY, 0, 9);
    } catch (ParamError const &error) {
        EXPECT_EQ(error.getPosition(), 12);
    }
}

TEST(ParameterStringErrors, showOnlyTheStartOfALongValue)
{
    QString parameters = Parse::createString(KEY, QString(1000, u'x'));
    EXPECT_LT(paramError([&] { Parse::getInt(parameters, KEY, 0, 9); }).size(), 150);
}

TEST(ParameterStringErrors, keepNumbersInTheirBounds)
{
    auto const intError = [](char const *value, int min, int max) {
        QString parameters = q("key = ") + q(value);
        return paramError([&] { Parse::getInt(parameters, KEY, min, max); });
    };
    EXPECT_EQ(intError("0", 0, 9), QString());
    EXPECT_EQ(intError("9", 0, 9), QString());
    EXPECT_EQ(intError("10", 0, 9), q("parameter 'key', value '10': is out of range"));
    EXPECT_EQ(intError("-1", 0, 9), q("parameter 'key', value '-1': is out of range"));
    EXPECT_EQ(intError("99999999999999999999", 0, 9),
              q("parameter 'key', value '99999999999999999999': is no integer"));
    EXPECT_EQ(intError("4294967296", 0, 9), q("parameter 'key', value '4294967296': is out of range"));
    for (char const *bad : {"", "1.0", "1 2", "0x1", "one", "--1"}) {
        EXPECT_NE(intError(bad, -9, 9), QString()) << bad;
    }
}

TEST(ParameterStringErrors, keepUnsignedNumbersInTheirBounds)
{
    QString parameters = q("key = -1\n");
    EXPECT_NE(paramError([&] { Parse::getUInt(parameters, KEY, 0, MANY); }), QString());
    parameters = q("key = 4294967296\n");
    EXPECT_NE(paramError([&] { Parse::getUInt(parameters, KEY, 0, MANY); }), QString());
    parameters = q("key = 4294967295\n");
    EXPECT_EQ(Parse::getUInt(parameters, KEY, 0, MANY), MANY);
}

TEST(ParameterStringErrors, refuseDoublesThatAreNone)
{
    for (char const *bad : {"nan", "inf", "-inf", "1e999", "1,5", "", "1.5 mm", "\"nan\""}) {
        QString parameters = q("key = ") + q(bad);
        EXPECT_NE(paramError([&] { Parse::getDouble(parameters, KEY, LOWEST, HIGHEST); }), QString()) << bad;
    }
    QString parameters = q("key = 1.5");
    EXPECT_NE(paramError([&] { Parse::getDouble(parameters, KEY, 0, 1); }), QString());
}

TEST(ParameterStringErrors, refuseOtherFormsThanTheOneAskedFor)
{
    auto const error = [](char const *value, std::function<void(QString &)> const &read) {
        QString parameters = q("key = ") + q(value);
        return paramError([&] { read(parameters); });
    };
    for (char const *bad : {"yes", "True", "2", ""}) {
        EXPECT_NE(error(bad, [](QString &p) { Parse::getBool(p, KEY); }), QString()) << bad;
    }
    for (char const *bad : {"#12345", "123456", "#1234567", "#gg0000", "#+10000", "red"}) {
        EXPECT_NE(error(bad, [](QString &p) { Parse::getColor(p, KEY); }), QString()) << bad;
    }
    for (char const *bad : {"(1)", "(1, 2, 3)", "1, 2", "(1, 2", "(a, b)", "(1, nan)", "("}) {
        EXPECT_NE(error(bad, [](QString &p) { Parse::getVec2d(p, KEY); }), QString()) << bad;
    }
    for (char const *bad : {"(1, 2)", "(1, 2, 3, 4)", "[1, 2, 3]"}) {
        EXPECT_NE(error(bad, [](QString &p) { Parse::getVec3dFromString(p, KEY); }), QString()) << bad;
    }
    for (char const *bad : {"\"open", "\"a\" b", "\"open\\"}) {
        EXPECT_NE(error(bad, [](QString &p) { Parse::getString(p, KEY); }), QString()) << bad;
    }
    for (char const *bad : {"\"a\"", "[", "[a", "[a,", "[a,]", "[,]", "[\"a\" b]", "[a] b", "[\"a]"}) {
        EXPECT_NE(error(bad, [](QString &p) { Parse::getStringVector(p, KEY, 0, MANY); }), QString()) << bad;
    }
    for (char const *bad : {"[1]", "[(1, 2), 3]", "[(1, 2, 3)]"}) {
        EXPECT_NE(error(bad, [](QString &p) { Parse::getVec2dVector(p, KEY, 0, MANY); }), QString()) << bad;
    }
    EXPECT_NE(error("c", [](QString &p) { Parse::getList(p, KEY, {q("a"), q("b")}); }), QString());
}

TEST(ParameterStringErrors, boundTheNumberOfItems)
{
    for (unsigned int min : {0u, 3u}) {
        QString parameters = Parse::createVec2dVector(KEY, {{1, 2}, {3, 4}});
        EXPECT_EQ(paramError([&] { Parse::getVec2dVector(parameters, KEY, min, min == 0 ? 1 : 9); }),
                  q("parameter 'key', value '[(1, 2), (3, 4)]': has a wrong number of items"));
    }
}

TEST(ParameterStringErrors, leaveTheFontAlone)
{
    QString parameters = Parse::createString(KEY, q("nonsense"));
    Font font;
    EXPECT_NE(paramError([&] { Parse::createFromParameterString(parameters, KEY, &font); }), QString());
    EXPECT_EQ(font, Font());
}

TEST(ParameterStringMisuse, isAProgramError)
{
    for (char const *bad : {"", " a", "a ", "a=b", "a\nb", "a\rb", "\"a"}) {
        EXPECT_THROW(Parse::createInt(q(bad), 1), ProgError) << bad;
    }
    EXPECT_THROW(Parse::createList(KEY, 2, {q("a"), q("b")}), ProgError);
    EXPECT_THROW(Parse::createList(KEY, q("c"), {q("a"), q("b")}), ProgError);
}

TEST(ParameterStringErrors, areAllThatAnyTextCanCause)
{
    std::vector<std::function<void(QString &)>> const readers{
        [](QString &p) { Parse::getString(p, q("a")); },
        [](QString &p) { Parse::getStringVector(p, q("a"), 0, MANY); },
        [](QString &p) { Parse::getVec2dVector(p, q("a"), 0, MANY); },
        [](QString &p) { Parse::getVec3dFromString(p, q("a")); },
        [](QString &p) { Parse::getColor(p, q("a")); },
        [](QString &p) { Parse::getDouble(p, q("a"), LOWEST, HIGHEST); },
        [](QString &p) { Parse::getInt(p, q("a"), -9, 9); }};
    QString const alphabet = q("a=\"\\[](), \n#1.e-q");
    std::mt19937 random(11);
    int refused = 0;
    for (int i = 0; i < 50000; ++i) {
        QString text = q("a=");
        for (auto length = random() % 12; length > 0; --length) {
            text += alphabet[static_cast<qsizetype>(random() % static_cast<unsigned int>(alphabet.size()))];
        }
        QString parameters = text;
        bool const bad = !paramError([&] { readers[random() % readers.size()](parameters); }).isEmpty();
        EXPECT_EQ(parameters == text, bad) << text.toStdString();
        refused += bad ? 1 : 0;
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, 50000);
}
