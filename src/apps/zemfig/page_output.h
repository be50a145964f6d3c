// page_output.h: writing a page, as the ending of the file name asks.
#pragma once

#include "page_document.h"

namespace Zem::Zemfig {

/// Writes the page as a page document (.toml), figure file (.fig) or template (.template), or as a snippet (.snippet) with
/// the data that it brings along. The data that the page names stays named where the new file can still reach it; else a
/// message tells. Throws UsageError for another ending and OutputFailure. `input` is where the page came from.
void writePage(PageDocument const &document, QString const &input, QString const &output);

/// Writes a template with the hints that makeTemplate finds. Throws OutputFailure.
void writeTemplate(Fig2::Figure const &figure, QString const &output);

/// Writes a page, which is up to date for the stage, with all that it shows. Throws OutputFailure.
void writeSnippet(Fig2::Figure &figure, StageIdentifier const &stage, QString const &output);

/// Draws an updated page as the ending of the file name asks; `dpi` is for pictures. Throws UsageError and OutputFailure.
void writePicture(Fig2::Figure const &figure, QString const &output, double dpi);

/// The path of a data file as a page document names it: relative to the folder of the page. Throws UsageError when the
/// page stands neither in the folder of the file nor above it.
QString pathFromPage(QString const &file, QString const &page);

/// The ending of a picture's file name in small letters: pdf, png or svg. Throws UsageError for another one.
QString pictureEnding(QString const &output);

} // namespace Zem::Zemfig
