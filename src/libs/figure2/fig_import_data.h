// fig_import_data.h: readers of the data that older tokens carry.
// Layer: document. Internal to the library.
#pragma once

#include "ZemFig2DataInterface.h"

#include <ZemLegend.h>
#include <ZemLegendData.h>
#include <ZemStream.h>

#include <memory>

namespace Zem::Fig2 {

class ChartData;
class ImageData;
class ImportReport;
class SnapshotData;

/// The quantity of which `name` is the name or a unit, shown in that unit. None for any other name.
UnitData unitDataOf(QString const &name);

// What these make is the caller's. All throw IO::StreamException.

std::unique_ptr<ChartData> importChartData(IO::InStream *stream);
std::unique_ptr<ImageData> importImageData(IO::InStream *stream);
void importLegendData(IO::InStream *stream, Legend2::Legend *legend, Legend2::Data *data);
/// A figure with its own tokens; its records are told in the report, which may be null, behind the place.
std::unique_ptr<SnapshotData> importSnapshotData(IO::InStream *stream, ImportReport *report, QString const &place);
/// Puts a picture with all that belongs to it under the name.
void importPicture(IO::InStream *stream, QString const &name, DataInterface *tokens);
/// The tokens of the older of the two forms; those in snapshots are told behind their places.
void importTokens(IO::InStream *stream, DataInterface *tokens, ImportReport *report, QString const &place);

} // namespace Zem::Fig2
