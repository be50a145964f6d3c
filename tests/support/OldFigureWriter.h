// OldFigureWriter.h: figures of the older format, byte by byte, of any version of each record.
//
// Each function writes the fields that a record of `version` has, as docs/formats/older-figures.md lists them; the
// defaults of the structures are the values that the tests expect to find again.
#pragma once

#include "BlockCrafter.h"

#include <string>
#include <vector>

namespace Zem::Support {

/// Records one behind the other.
class OldRecords
{
public:
    OldRecords &record(unsigned int version, Payload const &payload);
    OldRecords &add(OldRecords const &records);

    std::string const &bytes() const { return bytes_; }

private:
    std::string bytes_;
};

/// A whole file: the header of a stream of this type, then the records.
std::string oldFile(OldRecords const &records, std::string const &type = "FIGURE-GRAPHICS");

struct OldPenFields
{
    double width = 0.5;
    unsigned int style = 2; ///< dashed
    unsigned char red = 200;
    unsigned char green = 10;
    unsigned char blue = 20;
};

struct OldBrushFields
{
    bool filled = true;
    unsigned char red = 1;
    unsigned char green = 2;
    unsigned char blue = 3;
};

struct OldFontFields
{
    std::string family = "Courier";
    double size = 9.0;
    unsigned int flags = 1 | 2 | 32;
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
};

struct OldFrameFields
{
    double x = 10.0;
    double y = 20.0;
    double width = 40.0;
    double height = 30.0;
};

struct OldElementFields
{
    int id = -1;
    bool visible = true;
};

OldRecords oldElement(unsigned int type, OldElementFields const &fields = {}, unsigned int version = 3);

struct OldPageFields
{
    double width = 100.0;
    double height = 50.0;
    OldBrushFields background;
    double margins[4] = {0.0, 0.0, 0.0, 0.0};
};

OldRecords oldPage(unsigned int version, OldPageFields const &fields = {});
OldRecords oldGroup(unsigned int version, unsigned int count, int master = -1);
/// File record, page and root with the elements, each with its element record in front.
OldRecords oldFigure(std::vector<OldRecords> const &elements);
/// The same with token data (2) or a token registry (3).
OldRecords oldFigure(unsigned int fileVersion, OldRecords const &tokens, std::vector<OldRecords> const &elements);

struct OldLineFields
{
    double x1 = 10.0;
    double y1 = 20.0;
    double x2 = 30.0;
    double y2 = 50.0;
    OldPenFields pen;
    unsigned int end1 = 32;
    unsigned int end2 = 16 | 1; ///< a box
    double symbolSize = 4.0;
};

OldRecords oldLine(unsigned int version, OldLineFields const &fields = {});

struct OldAreaFields
{
    OldFrameFields frame;
    OldPenFields pen;
    OldBrushFields brush;
    double angle = 0.25;
};

OldRecords oldRectangle(unsigned int version, OldAreaFields const &fields = {});

struct OldCircleFields
{
    double x = 50.0;
    double y = 40.0;
    double radiusX = 8.0;
    OldPenFields pen;
    OldBrushFields brush;
    double radiusY = 5.0;
    double angle = 0.25;
};

OldRecords oldCircle(unsigned int version, OldCircleFields const &fields = {});

struct OldPolygonFields
{
    std::vector<std::pair<double, double>> points = {{10.0, 10.0}, {30.0, 10.0}, {30.0, 25.0}};
    OldPenFields pen;
    OldBrushFields brush;
    bool closed = true;
};

OldRecords oldPolygon(unsigned int version, OldPolygonFields const &fields = {});

struct OldTextFields
{
    double x = 10.0;
    double y = 20.0;
    std::string text = "length $5.2[mm]part.length$";
    OldFontFields font;
    double width = 40.0;
    double height = 30.0;
    unsigned int alignmentX = 1;
    unsigned int alignmentY = 2;
    OldPenFields pen;
    OldBrushFields brush;
    double angle = 0.25;
    int target = -1;
    std::string object;
    bool hasPoint = false;
    double pointX = 70.0;
    double pointY = 80.0;
};

OldRecords oldText(unsigned int version, OldTextFields const &fields = {});

struct OldAxisFields
{
    unsigned int place = 3;
    bool automatic = false;
    double minimum = -1.0;
    double maximum = 5.0;
    int ticks = 7;
    int digits = 3;
    OldPenFields pen;
    OldFontFields font;
    std::string unit = "kN";
};

OldRecords oldAxis(unsigned int version, OldAxisFields const &fields = {});

struct OldChartFields
{
    OldFrameFields frame;
    std::string token = "curve";
    OldPenFields grid;
    OldPenFields innerBorder = {0.2, 1, 5, 6, 7};
    OldPenFields border = {0.3, 3, 8, 9, 10};
    OldBrushFields background;
    bool showCurrentStage = true;
    bool showPointMarkers = true;
};

/// Without its axes.
OldRecords oldChart(unsigned int version, OldChartFields const &fields = {});

struct OldLegendFields
{
    OldFrameFields frame;
    std::string token;
    OldPenFields border;
    OldBrushFields background;
    bool hasScale = false;
};

/// Without its display parameters.
OldRecords oldLegend(unsigned int version, OldLegendFields const &fields = {});
OldRecords oldLegendDisplay(unsigned int version);
/// From -2 to 3 in 12 classes, average 0.5, deviation 0.75.
OldRecords oldLegendData(unsigned int version, std::string const &unit = "%", unsigned int classes = 12);

struct OldImageFields
{
    OldFrameFields frame;
    std::string token = "camera";
    unsigned int tokenType = 1;
    bool autoScale = false;
    double scaling = 0.5;
    double innerX = 3.0;
    double innerY = 4.0;
    unsigned int alignmentX = 0;
    unsigned int alignmentY = 2;
    OldPenFields border;
    OldBrushFields background;
    bool showOverlay = true;
    bool showAxes = true;
    std::vector<std::string> looks;
    bool hasSnapshot = false;
};

/// Without its looks and its snapshot.
OldRecords oldImage(unsigned int version, OldImageFields const &fields = {});

struct OldLookFields
{
    unsigned int mode = 4;
    OldPenFields pen;
    double markerSize = 12.0;
    double scaling = 3.0;
    unsigned int arrows = 1;
    bool combined = false;
    bool hiddenPoints = false;
    bool pointIds = true;
    int mask = 5;
    double width = 0.25;
};

OldRecords oldLook(unsigned int version, OldLookFields const &fields = {});

struct OldTokenFields
{
    std::string name;
    unsigned int type;
    std::string text;
    std::string typeHint;
    std::string group;
};

/// The list alone; what the tokens hold follows.
OldRecords oldTokens(unsigned int version, std::vector<OldTokenFields> const &tokens);
OldRecords oldBool(unsigned int version, bool value, std::string const &format = "");
OldRecords oldInteger(unsigned int version, int value, std::string const &format = "");
OldRecords oldDouble(unsigned int version, double value, std::string const &unit = "", std::string const &format = "");
OldRecords oldString(unsigned int version, std::string const &value, std::string const &format = "");

/// 8 bit grey values, packed.
std::string packedGrey(unsigned int width, unsigned int height, std::string const &pixels);
/// The same colour in each pixel, packed.
std::string packedColor(unsigned int width, unsigned int height, unsigned char red, unsigned char green,
                        unsigned char blue);
OldRecords oldPicture(unsigned int version, unsigned int kind, std::string const &packed, bool hasData = false,
                      std::string const &overlay = "");
OldRecords oldImageData(unsigned int version, bool hasCamera, unsigned int objects, unsigned int masks = 0,
                        bool hasLegend = false);
/// R0 1, offset (3, -4), a frame of 640 by 480, shift (1, 2, 100), angles (0.1, 0.2, 0.3), and an image distance of
/// 1000 pixels with the principal point at (320, 240).
OldRecords oldCamera(unsigned int version);
OldRecords oldMask(unsigned int version);
OldRecords oldObject(unsigned int version, std::string const &id, unsigned int points, bool hasTokens = false);
OldRecords oldPoint(unsigned int version, int id);

/// Curves "left" with the points (0, 1), (1, 4) and "right" with (2, -3).
OldRecords oldChartData(unsigned int version);

/// A token registry as templates have it: the text "operator", and a chart reference "curve" with the hint "strain".
OldRecords oldRegistry();

} // namespace Zem::Support
