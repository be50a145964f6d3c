#include "ZemFig2RichText.h"

#include "ZemFig2Tools.h"

#include <ZemError.h>

namespace Zem::Fig2 {

RTFIterator::RTFIterator(QString const &text) : text_(text), nextPosition_(endOfElement(0))
{
}

qsizetype RTFIterator::endOfElement(qsizetype begin) const
{
    if (begin >= text_.size())
        return begin;
    bool const isTag = text_[begin] == QLatin1Char('<');
    qsizetype const found = isTag ? text_.indexOf(QLatin1Char('>'), begin) : text_.indexOf(QLatin1Char('<'), begin);
    if (found < 0)
        return text_.size();
    return isTag ? found + 1 : found;
}

bool RTFIterator::getType() const
{
    if (!hasElement())
        throw ProgError("Zem::Fig2::RTFIterator::getType", "fig_rich_text", __LINE__, "Text end reached");
    return text_[position_] != QLatin1Char('<');
}

QString RTFIterator::getElement() const
{
    return text_.mid(position_, nextPosition_ - position_);
}

void RTFIterator::next()
{
    if (!hasElement())
        throw ProgError("Zem::Fig2::RTFIterator::next", "fig_rich_text", __LINE__, "No more elements");
    position_ = nextPosition_;
    nextPosition_ = endOfElement(position_);
}

RTFDocument::RTFDocument(QString const &text)
{
    QString paragraph;
    for (RTFIterator it(text); it.hasElement(); it.next()) {
        QString const element = it.getElement();
        paragraph += element;
        if (element == QLatin1StringView("</p>")) {
            paragraphs_.emplace_back(paragraph);
            paragraph.clear();
        }
    }
    if (!paragraph.isEmpty())
        paragraphs_.emplace_back(paragraph);
}

QString RTFDocument::toString() const
{
    QString text;
    for (RTFParagraph const &paragraph : paragraphs_)
        text += paragraph.toString();
    return text;
}

bool RTFTools::isRichText(QString const &text)
{
    return startsWith(text, QStringLiteral("<html>"));
}

bool RTFTools::startsWith(QString const &text, QString const &start)
{
    return text.startsWith(start, Qt::CaseSensitive);
}

QString RTFTools::stripTags(QString const &text, QString const &tag)
{
    QString stripped = text;
    qsizetype const opening = text.indexOf(QLatin1Char('<') + tag);
    qsizetype const openingEnd = opening < 0 ? -1 : text.indexOf(QLatin1Char('>'), opening);
    if (openingEnd >= 0)
        stripped = text.mid(openingEnd + 1);
    QLatin1StringView const mark("</");
    qsizetype const closing = stripped.lastIndexOf(mark);
    if (closing >= 0 && stripped.indexOf(tag, closing + mark.size()) >= 0)
        stripped.truncate(closing);
    return stripped;
}

namespace {

// Old texts may be long: each step below goes through them once, and holds no list of what it found.

/// The next tag of this name with something behind the name; -1 when there is none.
qsizetype findTag(QString const &text, QLatin1StringView mark, qsizetype from)
{
    qsizetype found = text.indexOf(mark, from);
    while (found >= 0 && (found + mark.size() >= text.size() || !text[found + mark.size()].isSpace()))
        found = text.indexOf(mark, found + 1);
    return found;
}

/// The white space in front of the last such attribute; -1 when there is none.
qsizetype findLastAttribute(QStringView tag, QLatin1StringView attribute)
{
    qsizetype found = tag.lastIndexOf(attribute);
    while (found > 0 && !tag[found - 1].isSpace())
        found = tag.lastIndexOf(attribute, found - 1);
    return found > 0 ? found - 1 : -1;
}

/// Takes the attribute out of the tags of this name; one from each, the last.
QString withoutAttribute(QString const &text, QLatin1StringView mark, QLatin1StringView attribute)
{
    QString result;
    qsizetype done = 0;
    for (qsizetype tag = findTag(text, mark, 0); tag >= 0;) {
        qsizetype const inside = tag + mark.size() + 1;
        qsizetype end = text.indexOf(QLatin1Char('>'), inside);
        if (end < 0)
            end = text.size();
        qsizetype const place = findLastAttribute(QStringView(text).mid(inside, end - inside), attribute);
        if (place >= 0) {
            result += QStringView(text).mid(done, inside + place - done);
            done = inside + place + 1 + attribute.size();
        }
        tag = findTag(text, mark, end);
    }
    return done == 0 ? text : result += QStringView(text).mid(done);
}

/// Begins a paragraph behind each opening tag of a cell.
QString withCellsOpened(QString const &text)
{
    constexpr QLatin1StringView CELL("<td");
    QString result;
    qsizetype done = 0;
    for (qsizetype cell = text.indexOf(CELL); cell >= 0; cell = text.indexOf(CELL, done)) {
        qsizetype const end = text.indexOf(QLatin1Char('>'), cell);
        if (end < 0)
            break;
        result += QStringView(text).mid(done, end + 1 - done);
        result += QLatin1StringView("<p>");
        done = end + 1;
    }
    return done == 0 ? text : result += QStringView(text).mid(done);
}

/// Ends the paragraph in front of each closing tag of a cell.
QString withCellsClosed(QString const &text)
{
    constexpr QLatin1StringView CELL_END("</td>");
    QString result;
    qsizetype done = 0;
    for (qsizetype end = text.indexOf(CELL_END); end >= 0; end = text.indexOf(CELL_END, done + CELL_END.size())) {
        result += QStringView(text).mid(done, end - done);
        result += QLatin1StringView("</p>");
        done = end;
    }
    return result.isEmpty() ? text : result += QStringView(text).mid(done);
}

} // namespace

QString RTFTools::convertToQt4(QString const &text)
{
    constexpr QLatin1StringView TABLE("<table");
    QString converted = withoutAttribute(text, TABLE, QLatin1StringView("width=1"));
    converted = withoutAttribute(converted, TABLE, QLatin1StringView("cellpadding=-1"));
    converted = withoutAttribute(converted, QLatin1StringView("<td"), QLatin1StringView("width=1"));
    return withCellsClosed(withCellsOpened(converted));
}

namespace {

constexpr QLatin1StringView COLOR_MARK("<color");
constexpr QLatin1StringView COLOR_END("</color>");

/// Replaces what plain text cannot hold.
void appendEscaped(QString const &text, QString *result)
{
    for (QChar character : text) {
        if (character == QLatin1Char('<'))
            *result += QLatin1StringView("&lt;");
        else if (character == QLatin1Char('>'))
            *result += QLatin1StringView("&gt;");
        else if (character == QLatin1Char('\n'))
            *result += QLatin1StringView("<br>\n");
        else
            *result += character;
    }
}

/// Enough for the converted text, so that it does not grow step by step to twice its size.
qsizetype roomForConverted(QString const &text)
{
    constexpr qsizetype BRACKET_GROWTH = 3; // "&lt;"
    constexpr qsizetype LINE_GROWTH = 4;    // "<br>\n"
    constexpr qsizetype COLOR_GROWTH = 16;  // "<span style="color:...">" for "<color...>"
    return text.size() + BRACKET_GROWTH * (text.count(QLatin1Char('<')) + text.count(QLatin1Char('>'))) +
           LINE_GROWTH * text.count(QLatin1Char('\n')) + COLOR_GROWTH * text.count(COLOR_MARK);
}

/// The colour between the mark and the next '>', without the '=' or blank that parts the two.
QString colorOfMark(QString const &element)
{
    qsizetype begin = element.indexOf(COLOR_MARK) + COLOR_MARK.size();
    qsizetype const end = element.indexOf(QLatin1Char('>'), begin);
    while (begin < element.size() && (element[begin] == QLatin1Char('=') || element[begin] == QLatin1Char(' ')))
        ++begin;
    return element.mid(begin, end < 0 ? -1 : std::max<qsizetype>(end - begin, 0));
}

QString hexadecimal(unsigned char byte)
{
    return QStringLiteral("%1").arg(byte, 2, 16, QLatin1Char('0'));
}

QString hexadecimal(Color const &color)
{
    return hexadecimal(color.getRed()) + hexadecimal(color.getGreen()) + hexadecimal(color.getBlue());
}

QString colorProperty(Color const &color)
{
    return QStringLiteral("color:#%1;").arg(hexadecimal(color));
}

} // namespace

QString RTFTools::convertText(QString const &text)
{
    QString result;
    result.reserve(roomForConverted(text));
    for (RTFIterator it(text); it.hasElement(); it.next()) {
        QString const element = it.getElement();
        if (element == COLOR_END)
            result += QLatin1StringView("</span>");
        else if (!it.getType() && element.contains(COLOR_MARK))
            result += QStringLiteral("<span style=\"color:%1\">").arg(colorOfMark(element));
        else
            appendEscaped(element, &result);
    }
    return result;
}

QString RTFTools::convertText(QString const &text, Color const &color)
{
    return QStringLiteral("<span style=\"color:#%1\">").arg(hexadecimal(color)) + convertText(text) +
           QLatin1StringView("</span>");
}

QString RTFTools::getStyleAttribute(Font const &font)
{
    unsigned int const style = font.getStyle();
    QString attribute = QStringLiteral("style=\"font-family:") + font.getFamily() + QLatin1Char(';');
    attribute += QStringLiteral("font-size:%1pt;").arg(font.getSize(), 0, 'f', 0);
    if (style & Font::ITALIC)
        attribute += QLatin1StringView("font-style:italic;");
    if (style & Font::UNDERLINE)
        attribute += QLatin1StringView("text-decoration:underline;");
    if (style & Font::BOLD)
        attribute += QLatin1StringView("font-weight:bold;");
    else if (style & Font::LIGHT)
        attribute += QLatin1StringView("font-weight:lighter;");
    return attribute + QLatin1Char('"');
}

QString RTFTools::getStyleAttribute(Color const &color)
{
    return QStringLiteral("style=\"") + colorProperty(color) + QLatin1Char('"');
}

QString RTFTools::getStyleAttribute(Font const &font, Color const &color)
{
    QString attribute = getStyleAttribute(font);
    if (attribute.size() <= 1 || !attribute.endsWith(QLatin1Char('"')))
        throw ProgError("Zem::Fig2::RTFTools::getStyleAttribute", "fig_rich_text", __LINE__,
                        "Font attribute format error");
    attribute.chop(1);
    return attribute + colorProperty(color) + QLatin1Char('"');
}

QString RTFTools::getStyleAttribute(std::map<QString, QString> const &properties)
{
    QString attribute = QStringLiteral("style=\"");
    for (auto const &[key, value] : properties)
        attribute += key + QLatin1Char(':') + value + QLatin1Char(';');
    return attribute + QLatin1Char('"');
}

std::map<QString, QString> RTFTools::parseStyleAttribute(QString const &text)
{
    std::map<QString, QString> properties;
    QString attribute;
    if (!Tools::parseRTFAttribute(text, QStringLiteral("style"), &attribute))
        return properties;
    for (QString const &piece : Tools::tokenize(attribute, QStringLiteral(";"))) {
        qsizetype const colon = piece.indexOf(QLatin1Char(':'));
        QString const key = piece.left(colon).trimmed();
        if (colon >= 0 && !key.isEmpty())
            properties[key] = piece.mid(colon + 1).trimmed();
    }
    return properties;
}

} // namespace Zem::Fig2
