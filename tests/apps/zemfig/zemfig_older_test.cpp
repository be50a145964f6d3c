// Older figures on the command line: what became of them, and how they look.
#include "CommandRun.h"

#include <OldFigureWriter.h>

#include <gtest/gtest.h>

namespace Zem::Support {
namespace {

/// "operator" and a curve are what its tokens hold.
QByteArray olderFigure()
{
    OldRecords const rectangle = OldRecords().add(oldElement(11)).add(oldRectangle(1));
    OldRecords const line = OldRecords().add(oldElement(0)).add(oldLine(1));
    OldTextFields fields;
    fields.text = "by $operator$";
    OldRecords const text = OldRecords().add(oldElement(3)).add(oldText(1, fields));
    return QByteArray::fromStdString(oldFile(oldFigure(3, oldRegistry(), {rectangle, line, text})));
}

class OlderFigure : public testing::Test
{
protected:
    void SetUp() override { place.write("old.fig", olderFigure()); }

    QByteArray drawing(QString const &page) const
    {
        CommandResult const result = place.zemfig({"render", page, "-o", "drawing.svg"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        return place.read("drawing.svg");
    }

    Workplace place;
};

TEST_F(OlderFigure, isConvertedWithAReport)
{
    CommandResult const result = place.zemfig({"convert", "old.fig", "-o", "new.fig"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_FALSE(result.output.empty());
    std::string const tree = place.zemfig({"show", "new.fig"}).output;
    for (char const *line : {"page 100 x 50", "rectangle ", "line ", "label ", "by $operator$"})
        EXPECT_NE(tree.find(line), std::string::npos) << tree;
}

TEST_F(OlderFigure, tellsThatItsDataStayBehindInAFigureFile)
{
    std::string const told = place.zemfig({"convert", "old.fig", "-o", "new.fig"}).errors;
    EXPECT_NE(told.find("old.fig: the data that it brings are left out"), std::string::npos) << told;
}

TEST_F(OlderFigure, becomesATemplateAPageDocumentAndASnippet)
{
    for (char const *name : {"new.template", "new.figure.toml", "new.snippet"}) {
        CommandResult const result = place.zemfig({"convert", "old.fig", "-o", name});
        EXPECT_EQ(result.exitCode, 0) << name << result.errors;
        EXPECT_NE(place.zemfig({"show", name}).output.find("by $operator$"), std::string::npos) << name;
    }
}

TEST_F(OlderFigure, isDrawnWithItsOwnData)
{
    QByteArray const drawn = drawing("old.fig");
    EXPECT_FALSE(drawn.contains("???")) << drawn.toStdString();
    EXPECT_TRUE(place.zemfig({"convert", "old.fig", "-o", "new.snippet"}).exitCode == 0);
    EXPECT_EQ(drawing("new.snippet"), drawn);
}

TEST_F(OlderFigure, tellsWhatWasNotKeptWhenItIsDrawn)
{
    std::string const told = place.zemfig({"render", "old.fig", "-o", "x.png"}).errors;
    for (std::size_t line = 0; line < told.size(); line = told.find('\n', line) + 1)
        EXPECT_EQ(told.compare(line, 9, "old.fig: "), 0) << told;
}

TEST_F(OlderFigure, refusesOtherDataAndStages)
{
    place.write("data.csv", "operator\nme\n");
    EXPECT_EQ(place.zemfig({"render", "old.fig", "--data", "data.csv", "-o", "x.png"}).exitCode, 1);
    EXPECT_EQ(place.zemfig({"render", "old.fig", "--stage", "1", "-o", "x.png"}).exitCode, 1);
}

TEST_F(OlderFigure, thatIsDamagedIsRefusedAtEveryCut)
{
    QByteArray const good = olderFigure();
    place.write("new.fig", "as before");
    for (qsizetype size = 64; size < good.size(); size += good.size() / 10) {
        place.write("old.fig", good.left(size));
        EXPECT_EQ(place.zemfig({"convert", "old.fig", "-o", "new.fig"}).exitCode, 2) << size;
    }
    EXPECT_EQ(place.read("new.fig"), "as before");
}

} // namespace
} // namespace Zem::Support
