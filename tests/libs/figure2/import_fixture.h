// import_fixture.h: reading what OldFigureWriter writes.
#pragma once

#include <ElementForms.h>
#include <OldFigureWriter.h>
#include <ZemFig2DataInterface.h>
#include <ZemFig2Group.h>
#include <ZemFig2Import.h>
#include <ZemFig2ImportReport.h>
#include <ZemFig2Template.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace Zem::Fig2 {

using Support::OldRecords;

inline std::unique_ptr<FigureTemplate> importFile(std::string const &bytes, ImportReport *report = nullptr,
                                                  DataInterface *tokens = nullptr)
{
    std::istringstream input(bytes);
    IO::InStream stream(&input);
    return std::unique_ptr<FigureTemplate>(Import::importTemplate(&stream, report, tokens));
}

inline std::unique_ptr<FigureTemplate> importFigure(OldRecords const &figure, ImportReport *report = nullptr,
                                                    DataInterface *tokens = nullptr)
{
    return importFile(Support::oldFile(figure), report, tokens);
}

/// A record behind its element record.
inline OldRecords oldElementOf(unsigned int type, OldRecords const &record,
                               Support::OldElementFields const &fields = {})
{
    return Support::oldElement(type, fields).add(record);
}

/// Runs `read` on records that stand alone.
template <class Read>
void readRecords(OldRecords const &records, Read const &read)
{
    std::istringstream input(Support::oldFile(records));
    IO::InStream stream(&input);
    read(&stream);
}

inline std::unique_ptr<Element> importElement(OldRecords const &element)
{
    std::unique_ptr<Element> result;
    readRecords(element, [&result](IO::InStream *stream) { result.reset(Import::importElement(stream)); });
    return result;
}

/// The element that the record becomes; null when it becomes one of another class.
template <class Class>
std::unique_ptr<Class> importAs(unsigned int type, OldRecords const &record)
{
    std::unique_ptr<Element> element = importElement(oldElementOf(type, record));
    auto *result = dynamic_cast<Class *>(element.get());
    if (result)
        element.release();
    return std::unique_ptr<Class>(result);
}

/// Why the element is refused.
inline std::string elementRefusal(unsigned int type, OldRecords const &record)
{
    return Support::thrownText<IO::StreamException>([&] { importElement(oldElementOf(type, record)); });
}

/// The element at this place below the root.
template <class Class>
Class &childAt(Figure const &figure, std::ptrdiff_t index)
{
    return dynamic_cast<Class &>(*figure.getRoot()->getChildBegin()[index]);
}

/// The entries but those of what was simply kept, one a line.
inline std::string losses(ImportReport const &report)
{
    std::string result;
    for (ImportEntry const &entry : report.getEntries())
        if (entry.outcome != ImportEntry::KEPT)
            result += entry.record.toStdString() + " " + entry.place.toStdString() + " " +
                      ImportReport::getOutcomeName(entry.outcome).toStdString() + ": " + entry.text.toStdString() +
                      "\n";
    return result;
}

/// Record and place of what was kept.
inline std::string keptPlaces(ImportReport const &report)
{
    std::string result;
    for (ImportEntry const &entry : report.getEntries())
        if (entry.outcome == ImportEntry::KEPT)
            result += entry.record.toStdString() + " " + entry.place.toStdString() + "\n";
    return result;
}

} // namespace Zem::Fig2
