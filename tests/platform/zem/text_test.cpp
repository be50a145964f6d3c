#include <ZemText.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <random>
#include <sstream>

using Zem::tokenize;
using Zem::tokenizeRT;
using Zem::TString;
using Zem::untokenize;

namespace {

TString everyByte()
{
    TString bytes;
    for (int i = 0; i < 256; ++i) {
        bytes += static_cast<char>(i);
    }
    return bytes;
}

TString randomText(std::mt19937 &random)
{
    // Half of the characters are those that need care.
    static constexpr char CARE[] = {'\\', ' ', '\n', 'e', 's', '0', '\0', '\t'};
    TString text;
    for (auto left = random() % 12; left > 0; --left) {
        text += random() % 2 ? CARE[random() % sizeof(CARE)] : static_cast<char>(random() % 256);
    }
    return text;
}

} // namespace

TEST(Tokenize, leavesPlainWordsAsTheyAre)
{
    EXPECT_EQ(tokenize("plain_Word1", true), "plain_Word1");
}

TEST(Tokenize, escapesWhiteSpaceAndTheBackslash)
{
    EXPECT_EQ(tokenize("a b\tc\nd\ve\ff\rg\\h", true), "a\\sb\\tc\\nd\\ve\\ff\\rg\\\\h");
}

TEST(Tokenize, makesAWordOfTheEmptyTextWhenAsked)
{
    EXPECT_EQ(tokenize("", true), "\\e");
    EXPECT_EQ(tokenize("", false), "");
}

TEST(Tokenize, makesOneWordOfAnyTextThatReadsBackTheSame)
{
    std::mt19937 random(1);
    std::vector<TString> texts{"", "\\e", "\\", "\\\\e", " ", everyByte()};
    for (int i = 0; i < 2000; ++i) {
        texts.push_back(randomText(random));
    }
    for (TString const &text : texts) {
        std::stringstream stream;
        stream << tokenize(text, true) << ' ' << TString("next");
        TString word;
        TString next;
        stream >> word >> next;
        EXPECT_EQ(untokenize(word, true), text);
        EXPECT_EQ(next, "next");
        EXPECT_EQ(untokenize(tokenize(text, false), false), text);
    }
}

TEST(Untokenize, takesAnUnknownEscapeForItself)
{
    EXPECT_EQ(untokenize("a\\q", true), "a\\q");
    EXPECT_EQ(untokenize("a\\", true), "a\\");
}

TEST(TStringInAStream, isOneWord)
{
    std::istringstream stream("  first\tsecond");
    stream >> std::noskipws;
    TString word;
    stream >> word;
    EXPECT_EQ(word, "first");
}

TEST(TStringInAStream, ignoresAFieldWidth)
{
    std::stringstream stream;
    stream.width(10);
    stream.fill('*');
    stream << TString("word");
    EXPECT_EQ(stream.str(), "word");
}

TEST(TString, holdsTextAsUtf8)
{
    TString const text(QString::fromUtf8("µm"));
    EXPECT_EQ(text, "\xC2\xB5m");
    EXPECT_EQ(text.toQString(), QString::fromUtf8("µm"));
}

TEST(ClassicLocale, givesTheStreamBackAsItWas)
{
    std::ostringstream stream;
    stream << std::hex << std::setprecision(3);
    stream.fill('#');
    {
        Zem::ClassicLocale const classic(stream);
        stream << 0.1 << ' ' << 255 << ' ';
    }
    stream << 0.123456 << ' ' << 255 << ' ' << std::setw(3) << 1;
    EXPECT_EQ(stream.str(), "0.10000000000000001 255 0.123 ff ##1");
}

TEST(TokenizeRT, escapesWhatRichTextWouldRead)
{
    EXPECT_EQ(tokenizeRT("a<b> & \"c\"", false), "a&lt;b&gt; &amp; \"c\"");
}

TEST(TokenizeRT, keepsBlanksAndLinesWhenAsked)
{
    EXPECT_EQ(tokenizeRT("a  b\nc", true), "a&nbsp;&nbsp;b<br>c");
    EXPECT_EQ(tokenizeRT("a  b\nc", false), "a  b\nc");
}

TEST(TokenizeRT, escapesAnEscape)
{
    EXPECT_EQ(tokenizeRT("&nbsp;", true), "&amp;nbsp;");
}
