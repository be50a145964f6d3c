#include "OldFigureWriter.h"

#include <zlib.h>

#include <cstdint>
#include <initializer_list>

namespace Zem::Support {

namespace {

std::string checksum(std::string const &bytes)
{
    auto const *data = reinterpret_cast<Bytef const *>(bytes.data());
    return Payload().u(static_cast<unsigned int>(crc32(0, data, static_cast<uInt>(bytes.size())))).bytes();
}

void pen(Payload &payload, OldPenFields const &fields)
{
    payload.d(fields.width).u(fields.style).c(fields.red, fields.green, fields.blue, 255);
}

void brush(Payload &payload, OldBrushFields const &fields)
{
    payload.b(fields.filled).c(fields.red, fields.green, fields.blue, 255);
}

void font(Payload &payload, OldFontFields const &fields)
{
    payload.s(fields.family).d(fields.size).u(fields.flags).c(fields.red, fields.green, fields.blue, 255);
}

void frame(Payload &payload, OldFrameFields const &fields)
{
    payload.v(fields.x, fields.y).v(fields.width, fields.height);
}

void vec3(Payload &payload, double x, double y, double z)
{
    payload.d(x).d(y).d(z);
}

OldRecords single(unsigned int version, Payload const &payload)
{
    return OldRecords().record(version, payload);
}

std::string deflated(std::string const &bytes)
{
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    std::string result(size, '\0');
    compress2(reinterpret_cast<Bytef *>(result.data()), &size, reinterpret_cast<Bytef const *>(bytes.data()),
              static_cast<uLong>(bytes.size()), 1);
    result.resize(size);
    return result;
}

/// Each byte less the one on its left.
std::string differences(std::string const &row)
{
    std::string result;
    unsigned char left = 0;
    for (char byte : row) {
        auto const value = static_cast<unsigned char>(byte);
        result += static_cast<char>(static_cast<unsigned char>(value - left));
        left = value;
    }
    return result;
}

std::string packed(unsigned char kind, unsigned int width, unsigned int height, std::string const &planes)
{
    std::string const magic{'\x8a', 'Z', 'P', '\n', 1, static_cast<char>(kind), 0, 0};
    return magic + Payload().u(width).u(height).bytes() + deflated(planes);
}

/// A variable of a registry: its header, then its value.
void variable(OldRecords &records, unsigned int type, std::string const &typeHint)
{
    records.record(6, Payload().u(type).s(typeHint).s("").i(-1).s("").s("").s(""));
}

} // namespace

OldRecords &OldRecords::record(unsigned int version, Payload const &payload)
{
    std::string const checked = Payload().u(version).bytes() + payload.bytes();
    bytes_ += Payload().u(static_cast<unsigned int>(payload.bytes().size())).bytes() + checked + checksum(checked);
    return *this;
}

OldRecords &OldRecords::add(OldRecords const &records)
{
    bytes_ += records.bytes();
    return *this;
}

std::string oldFile(OldRecords const &records, std::string const &type)
{
    std::string header{'\x8a', 'Z', 'B', '\n'};
    header += type;
    header.resize(56, '\0');
    header += Payload().u(1).bytes();
    return header + checksum(header) + records.bytes();
}

OldRecords oldElement(unsigned int type, OldElementFields const &fields, unsigned int version)
{
    Payload payload;
    payload.u(type);
    if (version >= 2)
        payload.i(fields.id);
    if (version >= 3)
        payload.b(fields.visible);
    return single(version, payload);
}

OldRecords oldPage(unsigned int version, OldPageFields const &fields)
{
    Payload payload;
    payload.d(fields.width).d(fields.height);
    if (version >= 2)
        brush(payload, fields.background);
    if (version >= 3)
        for (double margin : fields.margins)
            payload.d(margin);
    return single(version, payload);
}

OldRecords oldGroup(unsigned int version, unsigned int count, int master)
{
    Payload payload;
    payload.u(count);
    if (version >= 2)
        payload.i(master);
    return single(version, payload);
}

OldRecords oldFigure(std::vector<OldRecords> const &elements)
{
    return oldFigure(1, {}, elements);
}

OldRecords oldFigure(unsigned int fileVersion, OldRecords const &tokens, std::vector<OldRecords> const &elements)
{
    OldRecords records = single(fileVersion, fileVersion >= 2 ? Payload().s("") : Payload());
    records.add(tokens).add(oldPage(2)).add(oldGroup(1, static_cast<unsigned int>(elements.size())));
    for (OldRecords const &element : elements)
        records.add(element);
    return records;
}

OldRecords oldLine(unsigned int version, OldLineFields const &fields)
{
    Payload payload;
    payload.v(fields.x1, fields.y1).v(fields.x2, fields.y2);
    pen(payload, fields.pen);
    if (version >= 2)
        payload.u(fields.end1).u(fields.end2);
    if (version >= 3)
        payload.d(fields.symbolSize);
    return single(version, payload);
}

OldRecords oldRectangle(unsigned int version, OldAreaFields const &fields)
{
    Payload payload;
    frame(payload, fields.frame);
    pen(payload, fields.pen);
    brush(payload, fields.brush);
    if (version >= 2)
        payload.d(fields.angle);
    return single(version, payload);
}

OldRecords oldCircle(unsigned int version, OldCircleFields const &fields)
{
    Payload payload;
    payload.v(fields.x, fields.y).d(fields.radiusX);
    pen(payload, fields.pen);
    brush(payload, fields.brush);
    if (version >= 2)
        payload.d(fields.radiusY).d(fields.angle);
    return single(version, payload);
}

OldRecords oldPolygon(unsigned int version, OldPolygonFields const &fields)
{
    Payload payload;
    payload.u(static_cast<unsigned int>(fields.points.size()));
    for (auto const &[x, y] : fields.points)
        payload.v(x, y);
    pen(payload, fields.pen);
    brush(payload, fields.brush);
    if (version >= 2)
        payload.b(fields.closed);
    return single(version, payload);
}

OldRecords oldText(unsigned int version, OldTextFields const &fields)
{
    Payload payload;
    payload.v(fields.x, fields.y).s(fields.text);
    font(payload, fields.font);
    if (version >= 2)
        payload.v(fields.width, fields.height).u(fields.alignmentX).u(fields.alignmentY);
    if (version >= 3) {
        pen(payload, fields.pen);
        brush(payload, fields.brush);
        payload.d(fields.angle);
    }
    if (version >= 4)
        payload.i(fields.target).s(fields.object).b(fields.hasPoint).v(fields.pointX, fields.pointY);
    return single(version, payload);
}

OldRecords oldAxis(unsigned int version, OldAxisFields const &fields)
{
    Payload payload;
    payload.u(fields.place).b(fields.automatic).d(fields.minimum).d(fields.maximum);
    if (version >= 2) {
        payload.i(fields.ticks).i(fields.digits);
        pen(payload, fields.pen);
    }
    if (version >= 3) {
        font(payload, fields.font);
        payload.s(fields.unit);
    }
    return single(version, payload);
}

OldRecords oldChart(unsigned int version, OldChartFields const &fields)
{
    Payload payload;
    frame(payload, fields.frame);
    payload.s(fields.token);
    pen(payload, fields.grid);
    pen(payload, fields.innerBorder);
    if (version >= 2) {
        pen(payload, fields.border);
        brush(payload, fields.background);
    }
    if (version >= 3)
        payload.b(fields.showCurrentStage).b(fields.showPointMarkers);
    return single(version, payload);
}

OldRecords oldLegend(unsigned int version, OldLegendFields const &fields)
{
    Payload payload;
    frame(payload, fields.frame);
    if (version >= 2)
        payload.s(fields.token);
    if (version >= 3) {
        pen(payload, fields.border);
        brush(payload, fields.background);
        payload.b(fields.hasScale);
    }
    return single(version, payload);
}

OldRecords oldLegendDisplay(unsigned int version)
{
    Payload payload;
    payload.d(6.0);
    pen(payload, {0.15, 1, 11, 12, 13});
    pen(payload, {0.25, 3, 14, 15, 16});
    font(payload, {"Courier", 7.0, 2, 17, 18, 19});
    if (version >= 2)
        payload.b(true).b(true);
    return single(version, payload);
}

OldRecords oldLegendData(unsigned int version, std::string const &unit, unsigned int classes)
{
    Payload payload;
    payload.s(unit).d(-2.0).d(3.0);
    if (version >= 2)
        payload.u(classes).d(0.5).d(0.75);
    return single(version, payload);
}

OldRecords oldImage(unsigned int version, OldImageFields const &fields)
{
    Payload payload;
    frame(payload, fields.frame);
    payload.s(fields.token).u(fields.tokenType);
    if (version >= 2) {
        payload.b(fields.autoScale).d(fields.scaling).v(fields.innerX, fields.innerY);
        payload.u(fields.alignmentX).u(fields.alignmentY);
        pen(payload, fields.border);
        brush(payload, fields.background);
    }
    if (version >= 3) {
        payload.b(fields.showOverlay).b(fields.showAxes).u(static_cast<unsigned int>(fields.looks.size()));
        for (std::string const &id : fields.looks)
            payload.s(id);
    }
    if (version >= 4)
        payload.b(fields.hasSnapshot);
    return single(version, payload);
}

OldRecords oldLook(unsigned int version, OldLookFields const &fields)
{
    Payload payload;
    payload.u(fields.mode);
    pen(payload, fields.pen);
    payload.d(fields.markerSize).d(fields.scaling).u(fields.arrows);
    if (version >= 2)
        payload.b(fields.combined).b(fields.hiddenPoints).b(fields.pointIds).i(fields.mask).d(fields.width);
    return single(version, payload);
}

OldRecords oldTokens(unsigned int version, std::vector<OldTokenFields> const &tokens)
{
    Payload payload;
    payload.u(static_cast<unsigned int>(tokens.size()));
    for (OldTokenFields const &token : tokens) {
        payload.s(token.name).u(token.type);
        if (version >= 2)
            payload.s(token.text).s(token.typeHint).s(token.group);
    }
    return single(version, payload);
}

OldRecords oldBool(unsigned int version, bool value, std::string const &format)
{
    Payload payload;
    payload.b(value);
    if (version >= 2)
        payload.s(format);
    return single(version, payload);
}

OldRecords oldInteger(unsigned int version, int value, std::string const &format)
{
    Payload payload;
    payload.i(value);
    if (version >= 2)
        payload.s(format);
    return single(version, payload);
}

OldRecords oldDouble(unsigned int version, double value, std::string const &unit, std::string const &format)
{
    Payload payload;
    payload.d(value);
    if (version >= 2)
        payload.s(unit);
    if (version >= 3)
        payload.s(format);
    return single(version, payload);
}

OldRecords oldString(unsigned int version, std::string const &value, std::string const &format)
{
    Payload payload;
    payload.s(value);
    if (version >= 2)
        payload.s(format);
    return single(version, payload);
}

std::string packedGrey(unsigned int width, unsigned int height, std::string const &pixels)
{
    std::string planes;
    for (unsigned int y = 0; y < height; ++y)
        planes += differences(pixels.substr(y * width, width));
    return packed(0, width, height, planes);
}

std::string packedColor(unsigned int width, unsigned int height, unsigned char red, unsigned char green,
                        unsigned char blue)
{
    std::string planes;
    for (unsigned int y = 0; y < height; ++y)
        for (unsigned char channel : {red, green, blue, static_cast<unsigned char>(255)})
            planes += differences(std::string(width, static_cast<char>(channel)));
    return packed(3, width, height, planes);
}

OldRecords oldPicture(unsigned int version, unsigned int kind, std::string const &bytes, bool hasData,
                      std::string const &overlay)
{
    Payload payload;
    payload.u(kind).s(bytes); // a string has the same form as counted bytes
    if (version >= 2)
        payload.b(hasData);
    if (version >= 3)
        payload.s(overlay);
    return single(version, payload);
}

OldRecords oldImageData(unsigned int version, bool hasCamera, unsigned int objects, unsigned int masks, bool hasLegend)
{
    Payload payload;
    payload.b(hasCamera).u(objects);
    if (version >= 2)
        payload.u(masks);
    if (version >= 3)
        payload.b(hasLegend);
    return single(version, payload);
}

OldRecords oldCamera(unsigned int version)
{
    Payload payload;
    payload.d(1.0).i(3).i(-4).u(640).u(480);
    vec3(payload, 1.0, 2.0, 100.0);
    vec3(payload, 0.1, 0.2, 0.3);
    if (version >= 2)
        payload.b(false);
    if (version >= 3)
        payload.b(true);
    Payload orientation;
    for (double number : {1000.0, 1000.0, 320.0, 240.0, 0.0, 0.0, 0.0, 0.0, 0.0})
        orientation.d(number);
    return single(version, payload).record(1, orientation);
}

OldRecords oldMask(unsigned int version)
{
    Payload payload;
    payload.i(6);
    if (version >= 2)
        payload.s("edge");
    return single(version, payload);
}

OldRecords oldObject(unsigned int version, std::string const &id, unsigned int points, bool hasTokens)
{
    Payload payload;
    payload.s(id).v(12.0, 34.0).u(points);
    if (version >= 2)
        payload.s("seen " + id);
    if (version >= 3)
        payload.b(true).b(false).b(hasTokens);
    return single(version, payload);
}

OldRecords oldPoint(unsigned int version, int id)
{
    Payload payload;
    payload.i(id);
    vec3(payload, 1.0, 2.0, 3.0);
    vec3(payload, 0.5, 0.25, 0.125);
    payload.d(7.5);
    if (version >= 2)
        payload.b(false).i(9);
    return single(version, payload);
}

OldRecords oldChartData(unsigned int version)
{
    Payload payload;
    payload.u(2);
    payload.s("left").u(2).v(0.0, 1.0).v(1.0, 4.0);
    if (version >= 2)
        payload.s("left side");
    payload.s("right").u(1).v(2.0, -3.0);
    if (version >= 2)
        payload.s("right side");
    if (version >= 3)
        payload.s("s").s("kN");
    return single(version, payload);
}

OldRecords oldRegistry()
{
    OldRecords records = single(1, Payload().u(2).s("curve").s("operator"));
    variable(records, 6, "strain");
    variable(records, 2, "");
    return records.add(single(1, Payload().s("Smith")));
}

} // namespace Zem::Support
