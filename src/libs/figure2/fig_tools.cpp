#include "ZemFig2Tools.h"

#include "ZemFig2Figure.h"
#include "ZemFig2Group.h"
#include "ZemFig2Painter.h"
#include "fig_block.h"
#include "fig_parameters.h"
#include "fig_picture.h"
#include "fig_words.h"

#include <cmath>
#include <iostream>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int POLYGON_BLOCK_VERSION = 1;
constexpr unsigned int FONT_BLOCK_VERSION = 1;
constexpr unsigned int TOKEN_BLOCK_VERSION = 3; // 3: no type any more
constexpr PictureBlockRules PICTURE_RULES{4, [](unsigned int version) { return version == 2; }, 4, false};

constexpr std::array<char const *, 3> ALIGNMENT_WORDS{"begin", "center", "end"};

constexpr double CROSS_ARM = 2.5;

} // namespace

void Tools::save(IO::OutStream *stream, Polygon2d const &polygon)
{
    saveBlock(stream, POLYGON_BLOCK_VERSION, [&polygon](auto &archive) {
        archive.field(static_cast<unsigned int>(polygon.size()));
        for (BaVec2d<double> const &point : polygon.getPoints())
            archive.field(point);
    });
}

void Tools::load(IO::InStream *stream, Polygon2d *polygon)
{
    Polygon2d read(true);
    loadBlock(stream, POLYGON_BLOCK_VERSION, [&read](BlockReader &archive) {
        unsigned int count = 0;
        archive.field(count);
        // No room is made for the count: a wrong one ends at the end of the block.
        for (unsigned int i = 0; i < count; ++i) {
            BaVec2d<double> point;
            archive.field(point);
            read.addPoint(point);
        }
    });
    *polygon = std::move(read);
}

void Tools::save(IO::OutStream *stream, Font const &font)
{
    saveBlock(stream, FONT_BLOCK_VERSION, [&font](auto &archive) {
        archive.field(font.getFamily());
        archive.field(font.getSize());
        archive.field(font.getStyle());
    });
}

void Tools::load(IO::InStream *stream, Font *font)
{
    QString family;
    double size = 0.0;
    unsigned int style = 0;
    loadBlock(stream, FONT_BLOCK_VERSION, [&](BlockReader &archive) {
        archive.field(family);
        archive.field(size);
        archive.field(style);
    });
    try {
        *font = Font(family, size, style);
    } catch (Exception const &cause) {
        throw IO::StreamException(
            translate("Figure_Tools_err", "cannot load figure font: %1").arg(cause.getText()));
    }
}

void Tools::saveImage(IO::OutStream *stream, Zem::Image const *image)
{
    savePicture(stream, PICTURE_RULES, *image);
}

Zem::Image *Tools::loadImage(IO::InStream *stream)
{
    return loadPicture(stream, PICTURE_RULES).release();
}

void Tools::saveToken(IO::OutStream *stream, QString const &token)
{
    saveBlock(stream, TOKEN_BLOCK_VERSION, [&token](auto &archive) { archive.field(token); });
}

QString Tools::loadToken(IO::InStream *stream, Variable_t *type)
{
    QString token;
    loadBlock(stream, TOKEN_BLOCK_VERSION, [&](BlockReader &archive) {
        archive.field(token);
        if (archive.version() >= 3)
            return;
        Variable_t oldType = VARIABLE_INTEGER;
        archive.list(oldType, static_cast<unsigned int>(VARIABLE_SEPARATOR) + 1);
        if (type)
            *type = oldType;
    });
    return token;
}

Alignment_t Tools::getAlignment(QString &parameters, QString const &key)
{
    return static_cast<Alignment_t>(Parse::getList(parameters, key, parameterWords(ALIGNMENT_WORDS)));
}

QString Tools::createAlignment(QString const &key, Alignment_t alignment)
{
    return Parse::createList(key, static_cast<unsigned int>(alignment), parameterWords(ALIGNMENT_WORDS));
}

Alignment_t Tools::getV541Alignment(QString &parameters, QString const &key)
{
    QString const word = V541Parser::getString(parameters, key);
    return requireValueOf<Alignment_t>(ALIGNMENT_WORDS, word, "Figure_Tools_err", "unknown alignment type");
}

QString Tools::getToken(QString &parameters, QString const &key)
{
    return Parse::getString(parameters, key);
}

QString Tools::replaceString(QString text, QString const &from, QString const &to)
{
    return from.isEmpty() ? text : text.replace(from, to);
}

QString Tools::insertString(QString const &text, QString const &insertion, unsigned int position)
{
    auto const place = std::min<qsizetype>(static_cast<qsizetype>(position), text.size());
    return text.left(place) + insertion + text.mid(place);
}

QString Tools::stripCRLF(QString const &text)
{
    qsizetype length = text.size();
    while (length > 0 && (text[length - 1] == QLatin1Char('\n') || text[length - 1] == QLatin1Char('\r')))
        --length;
    return text.left(length);
}

QString Tools::stripRTFTags(QString const &text)
{
    QString stripped;
    bool inTag = false;
    for (QChar character : text) {
        if (character == QLatin1Char('<'))
            inTag = true;
        if (!inTag)
            stripped += character;
        if (character == QLatin1Char('>'))
            inTag = false;
    }
    return stripped;
}

namespace {

bool isFormatCharacter(QChar character)
{
    return character.isDigit() || QStringView(u".+-").contains(character);
}

/// The place of the first character outside brackets that belongs to no format, -1 when there is none.
qsizetype findTokenName(QString const &text)
{
    bool inBrackets = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('['))
            inBrackets = true;
        else if (text[i] == QLatin1Char(']'))
            inBrackets = false;
        else if (!inBrackets && !isFormatCharacter(text[i]))
            return i;
    }
    return -1;
}

} // namespace

bool Tools::parseToken(QString const &text, QString *name, QString *format)
{
    qsizetype const split = std::max<qsizetype>(findTokenName(text), 0);
    *format = text.left(split);
    *name = text.mid(split);
    return !name->isEmpty();
}

void Tools::parseTokens(QString const &text, QChar separator, std::vector<QString> *names,
                        std::vector<QString> *formats)
{
    names->clear();
    formats->clear();
    for (qsizetype begin = text.indexOf(separator); begin >= 0;) {
        qsizetype const end = text.indexOf(separator, begin + 1);
        if (end < 0)
            return;
        QString name;
        QString format;
        if (parseToken(text.mid(begin + 1, end - begin - 1), &name, &format)) {
            names->push_back(name);
            formats->push_back(format);
        }
        begin = text.indexOf(separator, end + 1);
    }
}

std::vector<QString> Tools::tokenize(QString text, QString const &separators)
{
    std::vector<QString> pieces;
    qsizetype begin = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && !separators.contains(text[i]))
            continue;
        if (i > begin)
            pieces.push_back(text.mid(begin, i - begin));
        begin = i + 1;
    }
    return pieces;
}

bool Tools::parseRTFAttribute(QString const &tag, QString const &attribute, QString *value)
{
    QString const mark = attribute + QLatin1StringView("=\"");
    qsizetype begin = tag.indexOf(mark);
    // A longer name that merely ends in this one is another attribute.
    while (begin > 0 && !tag[begin - 1].isSpace())
        begin = tag.indexOf(mark, begin + 1);
    if (begin < 0)
        return false;
    begin += mark.size();
    qsizetype const end = tag.indexOf(QLatin1Char('"'), begin);
    if (end < 0)
        return false;
    *value = tag.mid(begin, end - begin);
    return true;
}

BaVec2d<double> Tools::rotateVector(BaVec2d<double> const &vector, double angle)
{
    return Rotation(BaVec2d<double>(0.0, 0.0), angle).applyTo(vector);
}

void Tools::getArrowHead(BaVec2d<double> const &tip, BaVec2d<double> const &other, double length, double angle,
                         Polygon2d *polygon, BaVec2d<double> *base)
{
    BaVec2d<double> const towards = other - tip;
    double const direction = std::atan2(towards.y, towards.x);
    auto const cornerAt = [&](double turn) {
        return tip + BaVec2d<double>(std::cos(direction + turn), std::sin(direction + turn)) * length;
    };
    BaVec2d<double> const first = cornerAt(angle);
    BaVec2d<double> const second = cornerAt(-angle);
    polygon->clear();
    polygon->addPoint(first);
    polygon->addPoint(tip);
    polygon->addPoint(second);

    BaVec2d<double> middle = (first + second) * 0.5 - tip;
    double const distance = middle.length();
    if (distance >= 1e-50)
        middle = middle * (1.0 / distance);
    *base = tip + middle * (0.95 * length);
}

void Tools::drawCross(Painter *painter, BaVec2d<double> const &point)
{
    BaVec2d<double> const across(CROSS_ARM, 0.0);
    BaVec2d<double> const along(0.0, CROSS_ARM);
    painter->drawLine(point - across, point + across, LineStyle(), Rotation::null);
    painter->drawLine(point - along, point + along, LineStyle(), Rotation::null);
}

void Tools::getAllLineStyles(std::vector<LineStyle::Style> *styles)
{
    *styles = LineStyle::getAllStyles();
}

void Tools::printFigure(Figure const *figure)
{
    printFigure(figure, std::cout);
}

void Tools::printFigure(Figure const *figure, std::ostream &output)
{
    output << "ELEMENTS:\n"
           << "=========\n";
    printElement(figure->getRoot(), 0, output);
}

void Tools::printElement(Element const *element, unsigned int depth)
{
    printElement(element, depth, std::cout);
}

void Tools::printElement(Element const *element, unsigned int depth, std::ostream &output)
{
    output << std::string(4 * static_cast<std::size_t>(depth), ' ') << element->getTypeName().toStdString() << " "
           << element->getId() << "\n";
    auto const *group = dynamic_cast<Group const *>(element);
    if (!group)
        return;
    for (auto child = group->getChildBegin(); child != group->getChildEnd(); ++child)
        printElement(*child, depth + 1, output);
}

} // namespace Zem::Fig2
