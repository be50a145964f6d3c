// The page and the tree of older figures, and how files reach them.
#include "import_fixture.h"

#include <ZemFig2Chart.h>
#include <ZemFig2Label.h>
#include <ZemFig2Line.h>
#include <ZemFig2Rectangle.h>

#include <ZemErrorLog.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace Zem::Fig2 {
namespace {

using Support::oldElement;
using Support::oldFigure;
using Support::oldFile;
using Support::oldGroup;
using Support::oldLine;
using Support::oldPage;
using Support::oldRectangle;
using Support::Payload;
using Support::thrownText;

std::vector<char> headOf(std::string const &bytes)
{
    return {bytes.begin(), bytes.begin() + 64};
}

OldRecords pageOnly(OldRecords const &page)
{
    return OldRecords().record(1, Payload()).add(page).add(oldGroup(1, 0));
}

/// Why the figure is refused.
std::string refusal(OldRecords const &figure)
{
    return thrownText<IO::StreamException>([&] { importFigure(figure); });
}

OldRecords line(Support::OldElementFields const &fields = {})
{
    return oldElementOf(Import::OLD_LINE, oldLine(3), fields);
}

TEST(ImportFile, isKnownByItsTypeWord)
{
    std::istringstream older(oldFile(oldFigure({})));
    std::istringstream other(oldFile({}, "Figure"));
    IO::InStream olderStream(&older);
    IO::InStream otherStream(&other);

    EXPECT_TRUE(Import::canImportFile(&olderStream));
    EXPECT_FALSE(Import::canImportFile(&otherStream));
}

TEST(ImportFile, isKnownByItsFirstBytes)
{
    std::string const text = "x FIGURE-GRAPHICS";

    EXPECT_TRUE(Import::canImportFile(headOf(oldFile({}))));
    EXPECT_TRUE(Import::canImportFile(std::vector<char>(text.begin(), text.end())));
    EXPECT_FALSE(Import::canImportFile(std::vector<char>(text.begin(), text.end() - 1)));
    EXPECT_FALSE(Import::canImportFile(headOf(oldFile({}, "Figure"))));
    EXPECT_FALSE(Import::canImportFile(std::vector<char>()));
}

TEST(ImportFile, canBeOpenedAsAFigure)
{
    EXPECT_TRUE(Figure::canOpenFile(headOf(oldFile({}))));
    EXPECT_FALSE(Figure::canOpenFile(headOf(oldFile({}, "KRVFigureTemplate"))));
}

TEST(ImportFile, ofAnotherTypeIsRefused)
{
    EXPECT_EQ(thrownText<IO::StreamException>([] { importFile(oldFile(oldFigure({}), "Other")); }),
              "invalid file type 'Other'");
}

TEST(ImportFile, isReadByLoadFigure)
{
    QTemporaryDir folder;
    QString const name = folder.filePath("old.fig");
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(oldFile(oldFigure({line()}))));
    file.close();
    ErrorLog log{false};

    std::unique_ptr<Figure> const figure(Figure::loadFigure(name, &log));

    ASSERT_NE(figure, nullptr);
    EXPECT_NO_THROW(childAt<Line>(*figure, 0));
}

TEST(ImportFile, thatIsDamagedIsToldByLoadFigure)
{
    QTemporaryDir folder;
    QString const name = folder.filePath("old.fig");
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(oldFile(OldRecords().record(4, Payload()))));
    file.close();
    ErrorLog log{false};

    std::unique_ptr<Figure> const figure(Figure::loadFigure(name, &log));

    EXPECT_EQ(figure, nullptr);
    EXPECT_NE(log.getLog().indexOf("invalid figure file version: 4"), -1);
}

TEST(ImportFile, isReadFromTheMiddleOfAnyStream)
{
    std::istringstream input(oldFile(OldRecords().record(9, Payload()).add(oldFigure({line()})), "Other"));
    IO::InStream stream(&input);
    stream.openBlock();
    stream.closeBlock();

    std::unique_ptr<FigureTemplate> const figure(Import::importTemplateStream(&stream));

    EXPECT_NO_THROW(childAt<Line>(*figure, 0));
}

TEST(ImportFile, ofANewerVersionIsRefused)
{
    EXPECT_EQ(refusal(OldRecords().record(4, Payload())), "invalid figure file version: 4");
    EXPECT_EQ(refusal(OldRecords().record(0, Payload())), "invalid figure file version: 0");
}

TEST(ImportFile, canBeSavedAsAFigureOfToday)
{
    auto const figure = importFigure(oldFigure({line()}));
    std::string const bytes = Support::streamOf([&](IO::OutStream &stream) { figure->Figure::save(&stream, -1, -1); });
    Figure read;

    Support::readFrom(bytes, [&read](IO::InStream &stream) { read.load(&stream, -1, -1); });

    EXPECT_EQ(read.toString(), figure->toString());
}

TEST(ImportPage, hasASizeAndAWhiteBackgroundInVersion1)
{
    auto const figure = importFigure(pageOnly(oldPage(1)));

    EXPECT_EQ(figure->getSize(), (BaVec2d<double>(100.0, 50.0)));
    EXPECT_EQ(figure->getBackground(), FillStyle(Color(255, 255, 255)));
}

TEST(ImportPage, hasABackgroundFromVersion2On)
{
    auto const filled = importFigure(pageOnly(oldPage(2)));
    auto const empty = importFigure(pageOnly(oldPage(2, {100.0, 50.0, {false, 4, 5, 6}, {}})));

    EXPECT_EQ(filled->getBackground(), FillStyle(Color(1, 2, 3)));
    EXPECT_FALSE(empty->getBackground().getFilled());
    EXPECT_EQ(empty->getBackground().getColor(), Color(4, 5, 6));
}

TEST(ImportPage, losesItsMargins)
{
    ImportReport none;
    ImportReport report;

    importFigure(pageOnly(oldPage(3)), &none);
    auto const figure = importFigure(pageOnly(oldPage(3, {100.0, 50.0, {}, {0.0, 0.0, 0.0, 5.0}})), &report);

    EXPECT_EQ(figure->getSize(), (BaVec2d<double>(100.0, 50.0)));
    EXPECT_EQ(losses(none), "");
    EXPECT_EQ(losses(report), "page  dropped: a page has no margins\n");
}

TEST(ImportPage, ofANewerVersionIsRefused)
{
    EXPECT_EQ(refusal(OldRecords().record(1, Payload()).record(4, Payload())), "invalid figure header version: 4");
}

TEST(ImportFigure, losesItsTitle)
{
    ImportReport report;

    importFigure(OldRecords()
                     .record(2, Payload().s("Report"))
                     .add(Support::oldTokens(1, {}))
                     .add(oldPage(1))
                     .add(oldGroup(1, 0)),
                 &report);

    EXPECT_EQ(losses(report), "figure  dropped: a page has no title\n");
}

TEST(ImportElement, isVisibleAndHasNoIdInVersion1)
{
    EXPECT_TRUE(importElement(oldElement(Import::OLD_LINE, {5, false}, 1).add(oldLine(1)))->getVisible());
    EXPECT_TRUE(importElement(oldElement(Import::OLD_LINE, {5, false}, 2).add(oldLine(1)))->getVisible());
    EXPECT_FALSE(importElement(oldElement(Import::OLD_LINE, {5, false}, 3).add(oldLine(1)))->getVisible());
}

TEST(ImportElement, ofAnUnknownTypeIsRefused)
{
    for (unsigned int type : {1U, 4U, 8U, 12U, 4294967295U})
        EXPECT_EQ(elementRefusal(type, oldLine(1)), "invalid element type: " + std::to_string(type));
}

TEST(ImportElement, ofANewerVersionIsRefused)
{
    EXPECT_EQ(thrownText<IO::StreamException>([] { importElement(oldElement(0, {}, 4).add(oldLine(1))); }),
              "wrong block version");
}

TEST(ImportGroup, keepsItsElementsInTheirOrder)
{
    OldRecords const inner =
        oldElementOf(Import::OLD_GROUP, oldGroup(2, 2, 1)
                                            .add(oldElementOf(Import::OLD_LINE, oldLine(1)))
                                            .add(oldElementOf(Import::OLD_RECTANGLE, oldRectangle(1))));

    auto const figure = importFigure(oldFigure({line(), inner}));

    EXPECT_NO_THROW(childAt<Line>(*figure, 0));
    auto &group = childAt<Group>(*figure, 1);
    ASSERT_EQ(group.getChildEnd() - group.getChildBegin(), 2);
    EXPECT_EQ(group.getChildBegin()[0]->getType(), Element::LINE);
    EXPECT_EQ(group.getChildBegin()[1]->getType(), Element::RECTANGLE);
    EXPECT_EQ(group.getMasterElement(), group.getChildBegin()[1]);
    EXPECT_EQ(group.getFigure(), figure.get());
}

TEST(ImportGroup, beginsWithItsFirstElementWhenNoneIsNamed)
{
    for (OldRecords const &header : {oldGroup(1, 2), oldGroup(2, 2, -1), oldGroup(2, 2, 7)}) {
        OldRecords records = header;
        auto const group = importAs<Group>(Import::OLD_GROUP, records.add(line()).add(line()));
        EXPECT_EQ(group->getMasterElement(), group->getChildBegin()[0]);
    }
}

TEST(ImportGroup, ofANewerVersionIsRefused)
{
    EXPECT_EQ(elementRefusal(Import::OLD_GROUP, OldRecords().record(3, Payload().u(0))),
              "invalid group block header version: 3");
}

/// So many groups, each in the one before.
OldRecords nested(unsigned int depth)
{
    OldRecords records;
    for (unsigned int i = 0; i < depth; ++i)
        records.add(oldElement(Import::OLD_GROUP)).add(oldGroup(1, i + 1 < depth ? 1 : 0));
    return records;
}

TEST(ImportGroup, isRefusedBelowADepth)
{
    EXPECT_NO_THROW(importElement(nested(256)));
    EXPECT_EQ(thrownText<IO::StreamException>([] { importElement(nested(257)); }), "figure is nested too deeply");
    EXPECT_NO_THROW(importElement(nested(256))); // the refusal has left nothing behind
}

TEST(ImportGroup, isRefusedWithMoreThanAMillionElementsInAll)
{
    std::string const tooMany = "more than 1000000 elements";
    OldRecords inner = oldGroup(1, 1);
    inner.add(oldElement(Import::OLD_GROUP));

    EXPECT_EQ(elementRefusal(Import::OLD_GROUP, oldGroup(1, 1000001)), tooMany);
    EXPECT_EQ(elementRefusal(Import::OLD_GROUP, OldRecords(inner).add(oldGroup(1, 1000000))), tooMany);
    // These are only cut off.
    EXPECT_NE(elementRefusal(Import::OLD_GROUP, oldGroup(1, 1000000)), tooMany);
    EXPECT_NE(elementRefusal(Import::OLD_GROUP, OldRecords(inner).add(oldGroup(1, 999999))), tooMany);
}

TEST(ImportReport, namesEachElementByItsPlace)
{
    ImportReport report;
    OldRecords const group = oldElementOf(Import::OLD_GROUP, oldGroup(1, 2).add(line()).add(line()));

    importFigure(oldFigure({line(), group, line()}), &report);

    EXPECT_EQ(keptPlaces(report), "page \nline 1\ngroup 2\nline 2.1\nline 2.2\nline 3\n");
    EXPECT_EQ(report.count(ImportEntry::KEPT), 6U);
    EXPECT_EQ(report.count(ImportEntry::DROPPED), 0U);
}

TEST(ImportReport, hasWordsForWhatBecameOfARecord)
{
    EXPECT_EQ(ImportReport::getOutcomeName(ImportEntry::KEPT), "kept");
    EXPECT_EQ(ImportReport::getOutcomeName(ImportEntry::APPROXIMATED), "approximated");
    EXPECT_EQ(ImportReport::getOutcomeName(ImportEntry::DROPPED), "dropped");
}

TEST(ImportNumbers, areThoseOfTheOlderFormat)
{
    EXPECT_EQ(QString(Import::FILE_TYPE), "FIGURE-GRAPHICS");
    EXPECT_EQ(Import::OLD_LINE, 0U);
    EXPECT_EQ(Import::OLD_POLYGON, 2U);
    EXPECT_EQ(Import::OLD_TEXT, 3U);
    EXPECT_EQ(Import::OLD_CHART, 5U);
    EXPECT_EQ(Import::OLD_LEGEND, 6U);
    EXPECT_EQ(Import::OLD_GROUP, 7U);
    EXPECT_EQ(Import::OLD_CIRCLE, 9U);
    EXPECT_EQ(Import::OLD_IMAGE, 10U);
    EXPECT_EQ(Import::OLD_RECTANGLE, 11U);
    EXPECT_EQ(Import::LINE_ARROW, 32U);
    EXPECT_EQ(Import::LINE_SYMBOL, 16U);
    EXPECT_EQ(Import::LINE_SYMBOL_MASK, 15U);
    EXPECT_EQ(Import::OLD_FONT_STRIKEOUT, 64U);
    EXPECT_EQ(Import::OLD_AL_BOTTOM, 2U);
    EXPECT_EQ(Import::OLD_AXIS_RIGHT, 3U);
}

} // namespace
} // namespace Zem::Fig2
