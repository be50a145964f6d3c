// The image elements of older files and the snapshots within them.
#include "ZemFig2Image.h"
#include "ZemFig2ImageDataShapes.h"
#include "ZemFig2ImportInfo.h"
#include "ZemFig2SnapshotData.h"
#include "ZemFig2TokenContainer.h"
#include "fig_import_data.h"
#include "fig_import_record.h"
#include "fig_importer.h"
#include "fig_items.h"

#include <ZemIdentifiers.h>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int IMAGE_VERSION = 4; // 2: scaling, frame; 3: overlay, axes, looks; 4: snapshot
constexpr unsigned int LOOK_VERSION = 2;  // 2: components, points, width of vectors
constexpr unsigned int TOKEN_TYPES = ImageImportInfo::TOKEN_SNAPSHOT + 1;
constexpr unsigned int MODES = ImageDataVisualisation::MODE_XYZ + 1;
constexpr unsigned int ARROW_MODES = ImageDataVisualisation::ARROW_BOTH + 1;

struct OldImage
{
    OldFrame frame;
    QString token;
    ImageImportInfo::TokenType_t tokenType = ImageImportInfo::TOKEN_NONE;
    bool autoScale = true;
    double scaling = 1.0;
    BaVec2d<double> innerOrigin{0.0, 0.0};
    OldAlignment alignmentX{Import::OLD_AL_CENTER};
    OldAlignment alignmentY{Import::OLD_AL_CENTER};
    OldPen border;
    OldBrush background;
    bool showOverlay = false;
    bool showAxes = false;
    std::vector<QString> lookIds;
    bool hasSnapshot = false;

    void read(BlockReader &reader)
    {
        frame.read(reader);
        reader.field(token);
        reader.list(tokenType, TOKEN_TYPES);
        reader.keep(autoScale, Since{2});
        reader.keep(scaling, Since{2});
        reader.keep(innerOrigin, Since{2});
        readSince(reader, Since{2}, alignmentX);
        readSince(reader, Since{2}, alignmentY);
        readSince(reader, Since{2}, border);
        readSince(reader, Since{2}, background);
        reader.field(showOverlay, Since{3}, token == Import::TOKEN_IMAGE_OVERLAY_STRAIN);
        reader.keep(showAxes, Since{3});
        if (reader.version() >= 3)
            blockList(reader, lookIds);
        reader.keep(hasSnapshot, Since{4});
    }

    std::unique_ptr<Image> make() const
    {
        auto image = std::make_unique<Image>();
        image->setOrigin(frame.center());
        image->setSize(frame.size);
        image->setAutoScale(autoScale);
        image->setScaling(scaling);
        image->setInnerOrigin(innerOrigin);
        image->setAlignmentX(alignmentX.alignment());
        image->setAlignmentY(alignmentY.alignment());
        image->setBorder(border.lineStyle());
        image->setBackground(background.fillStyle());
        image->setOverlayMode(showOverlay ? ImageBase::OVERLAY_BOTH : ImageBase::OVERLAY_IMAGE);
        CoordinateSystem axes;
        axes.setVisible(showAxes);
        image->setCoordinateSystem(axes);
        return image;
    }
};

ImageDataVisualisation importLook(IO::InStream *stream)
{
    ImageDataVisualisation look(false);
    loadRecord(stream, LOOK_VERSION, nullptr, [&look](BlockReader &reader) {
        ImageDataVisualisation::Mode_t mode{};
        OldPen pen;
        double markerSize = 0.0;
        double scaling = 1.0;
        ImageDataVisualisation::ArrowMode_t arrows{};
        bool combined = true;
        bool hiddenPoints = true;
        bool pointIds = false;
        int mask = -1;
        double width = 1.0;
        reader.list(mode, MODES);
        pen.read(reader);
        reader.field(markerSize);
        reader.field(scaling);
        reader.list(arrows, ARROW_MODES);
        reader.keep(combined, Since{2});
        reader.keep(hiddenPoints, Since{2});
        reader.keep(pointIds, Since{2});
        reader.keep(mask, Since{2});
        reader.keep(width, Since{2});

        look.setMode(mode);
        look.setLineStyle(pen.lineStyle());
        look.setPointMarkerSize(lengthOr(markerSize, ImageDataPointMarker::DEFAULT_POINT_MARKER_SIZE));
        look.setVectorScaling(lengthOr(scaling, 1.0));
        look.setDrawArrows(arrows);
        look.setDrawCombinedVectors(combined);
        look.setDrawHiddenPoints(hiddenPoints);
        look.setDrawPointIds(pointIds);
        look.setPointMask(mask);
        look.setVectorLineWidth(lengthOr(width, 1.0));
    });
    return look;
}

} // namespace

std::unique_ptr<Element> Importer::importImage(IO::InStream *stream)
{
    OldImage record;
    loadRecord(stream, IMAGE_VERSION, nullptr, [&record](BlockReader &reader) { record.read(reader); });
    std::unique_ptr<Image> image = record.make();
    kept("image");
    for (QString const &id : record.lookIds)
        image->setVisualisation(id, importLook(stream));
    if (record.hasSnapshot) {
        record.token = importSnapshot(stream);
        record.tokenType = ImageImportInfo::TOKEN_SNAPSHOT;
    }
    image->setToken(record.token);
    if (record.tokenType != ImageImportInfo::TOKEN_NONE) {
        auto info = std::make_unique<ImageImportInfo>();
        info->setTokenType(record.tokenType);
        image->setImportInfo(info.release());
    }
    return image;
}

/// The token under which the snapshot was put.
QString Importer::importSnapshot(IO::InStream *stream)
{
    QString const group(Import::TOKEN_IMPORTED_SNAPSHOT_GROUP);
    QString const name = QString(Import::TOKEN_IMPORTED_SNAPSHOT).arg(++snapshots_);
    std::unique_ptr<SnapshotData> snapshot = importSnapshotData(stream, report_, place());
    tokens_->setGroup(group);
    tokens_->setSnapshot(name, snapshot.release());
    tokens_->setGroupToken(Token_t(name, VARIABLE_SNAPSHOT), group);
    return name;
}

std::unique_ptr<SnapshotData> importSnapshotData(IO::InStream *stream, ImportReport *report, QString const &place)
{
    ImportDepth const depth(ImportDepth::SNAPSHOT);
    DataInterface tokens;
    auto figure = std::make_unique<Figure>();
    Importer(report, &tokens, place).importFigure(stream, figure.get());
    auto container = std::make_unique<FigureTokenContainer>(figure.get(), &tokens);
    return std::make_unique<SnapshotData>(StageIdentifier::NO_STAGE, figure.release(), container.release());
}

} // namespace Zem::Fig2
