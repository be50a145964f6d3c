// page_template.h: pages as patterns: what data they expect, and how they come to those of a project.
#pragma once

#include "page_document.h"

#include <ZemFig2Template.h>

#include <map>

namespace Zem::Zemfig {

/// Something that an element of a page wants from the data.
struct Expectation
{
    enum class Kind { Value, CurveX, CurveY, Chart, Picture, Snippet };

    QString element; ///< its description
    Kind kind;
    QString name;   ///< of the token
    QString detail; ///< of a value its format, of a curve the type hint of its chart

    bool operator==(Expectation const &) const = default;
};

/// "value", "x", "y", "chart", "picture" or "snippet".
QString wordOf(Expectation::Kind kind);

/// In the order of the elements. Type hints are those of a template.
std::vector<Expectation> expectationsOf(Fig2::Figure const &figure);

/// A template with the elements of the page. Each chart gets, as its type hint, the quantities that it shows now, as
/// "time; force, strain", as far as the chart interface of the page knows them; hints of a template stay.
std::unique_ptr<Fig2::FigureTemplate> makeTemplate(Fig2::Figure const &figure);

/// Lets elements that ask for one name ask for another one.
void renameTokens(Fig2::Figure *figure, std::map<QString, QString> const &names);

} // namespace Zem::Zemfig
