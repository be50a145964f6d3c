#include "figqt_markup.h"

#include "figqt_color.h"
#include "figqt_fonts.h"

#include <QtCore/QHash>
#include <QtGui/QColor>

#include <algorithm>
#include <utility>

namespace Zem::Fig2Qt {

namespace {

using View = QStringView;

/// Scripts that run from right to left, join, stack or lie outside the first plane, and characters that cannot be seen.
bool isIntricate(char16_t c)
{
    return (c < 0x20 && c != '\t' && c != '\n' && c != '\r') || c == 0xad || (c >= 0x300 && c < 0x370) ||
           (c >= 0x590 && c < 0x1e00) || (c >= 0x200b && c < 0x2010) || (c >= 0x2028 && c < 0x2070) || c >= 0x2e80;
}

bool isBlank(char16_t c)
{
    return c != 0xa0 && c != 0x2007 && c != 0x202f && QChar(c).isSpace();
}

std::optional<QColor> readColor(View text)
{
    QColor const color = QColor(text.trimmed().toString());
    return color.isValid() ? std::optional<QColor>(color) : std::nullopt;
}

/// The entities of engineering texts; the document knows the rest.
char16_t entityCharacter(View name)
{
    static QHash<QString, char16_t> const known{
        {QStringLiteral("amp"), u'&'},    {QStringLiteral("lt"), u'<'},        {QStringLiteral("gt"), u'>'},
        {QStringLiteral("quot"), u'"'},   {QStringLiteral("nbsp"), u'\u00a0'}, {QStringLiteral("deg"), u'°'},
        {QStringLiteral("plusmn"), u'±'}, {QStringLiteral("micro"), u'µ'},     {QStringLiteral("middot"), u'·'},
        {QStringLiteral("times"), u'×'},  {QStringLiteral("sup2"), u'²'},      {QStringLiteral("sup3"), u'³'},
        {QStringLiteral("alpha"), u'α'},  {QStringLiteral("beta"), u'β'},      {QStringLiteral("gamma"), u'γ'},
        {QStringLiteral("delta"), u'δ'},  {QStringLiteral("epsilon"), u'ε'},   {QStringLiteral("lambda"), u'λ'},
        {QStringLiteral("mu"), u'μ'},     {QStringLiteral("nu"), u'ν'},        {QStringLiteral("rho"), u'ρ'},
        {QStringLiteral("sigma"), u'σ'},  {QStringLiteral("tau"), u'τ'},       {QStringLiteral("phi"), u'φ'},
        {QStringLiteral("Delta"), u'Δ'},  {QStringLiteral("Sigma"), u'Σ'},     {QStringLiteral("Omega"), u'Ω'},
        {QStringLiteral("ndash"), u'–'},  {QStringLiteral("mdash"), u'—'},     {QStringLiteral("minus"), u'−'},
    };
    return known.value(name.toString(), u'\0');
}

char16_t numericCharacter(View digits)
{
    bool const hexadecimal = digits.startsWith(u'x') || digits.startsWith(u'X');
    bool valid = false;
    uint const code = hexadecimal ? digits.mid(1).toUInt(&valid, 16) : digits.toUInt(&valid, 10);
    // Below 0xa0 stand control characters, which the document replaces in its own way.
    bool const simple = valid && ((code >= 0x20 && code < 0x7f) || (code >= 0xa0 && code <= 0xffff));
    return simple ? static_cast<char16_t>(code) : u'\0';
}

bool setWeight(QFont *font, View value)
{
    bool numeric = false;
    int const weight = value.toInt(&numeric);
    if (numeric && (weight < 100 || weight > 900))
        return false;
    if (!numeric && value != u"bold" && value != u"normal")
        return false;
    font->setWeight(numeric ? static_cast<QFont::Weight>(weight) : value == u"bold" ? QFont::Bold : QFont::Normal);
    return true;
}

bool setSize(QFont *font, View value)
{
    bool valid = false;
    double const points = value.endsWith(u"pt") ? value.chopped(2).toDouble(&valid) : 0.0;
    if (valid && points > 0.0)
        font->setPixelSize(toFontUnits(points * UNITS_PER_POINT));
    return valid && points > 0.0;
}

bool setProperty(MarkupStyle *style, View name, View value)
{
    if (name == u"color") {
        std::optional<QColor> const color = readColor(value);
        if (color)
            style->color = toColor(*color);
        return color.has_value();
    }
    if (name == u"font-weight")
        return setWeight(&style->font, value);
    if (name == u"font-size")
        return setSize(&style->font, value);
    if (name == u"font-style" && (value == u"italic" || value == u"normal")) {
        style->font.setItalic(value == u"italic");
        return true;
    }
    if (name == u"text-decoration" && value == u"underline") {
        style->font.setUnderline(true);
        return true;
    }
    if (name == u"vertical-align" && (value == u"sub" || value == u"super")) {
        style->script = value == u"sub" ? Script::SUB : Script::SUPER;
        return true;
    }
    return false;
}

bool setProperties(MarkupStyle *style, View declarations)
{
    for (View const declaration : declarations.tokenize(u';')) {
        if (declaration.trimmed().isEmpty())
            continue;
        qsizetype const colon = declaration.indexOf(u':');
        if (colon < 0 || !setProperty(style, declaration.left(colon).trimmed(), declaration.mid(colon + 1).trimmed()))
            return false;
    }
    return true;
}

/// `attributes` is what stands behind the name in a tag. Exactly one attribute in quotes is understood.
bool readAttribute(View attributes, View name, View *value)
{
    View rest = attributes.trimmed();
    if (!rest.startsWith(name))
        return false;
    rest = rest.mid(name.size()).trimmed();
    if (!rest.startsWith(u'='))
        return false;
    rest = rest.mid(1).trimmed();
    bool const quoted = rest.size() >= 2 && (rest.front() == u'"' || rest.front() == u'\'') &&
                        rest.back() == rest.front() && rest.mid(1).indexOf(rest.front()) == rest.size() - 2;
    if (!quoted)
        return false;
    *value = rest.mid(1, rest.size() - 2);
    return !value->contains(u'&');
}

/// False for a tag, or an attribute, that the document must read.
bool openTag(View name, View attributes, MarkupStyle *style)
{
    View value;
    if (name == u"span")
        return readAttribute(attributes, u"style", &value) && setProperties(style, value);
    if (name == u"font")
        return readAttribute(attributes, u"color", &value) && setProperty(style, u"color", value);
    if (!attributes.trimmed().isEmpty())
        return false;
    if (name == u"b" || name == u"strong")
        style->font.setWeight(QFont::Bold);
    else if (name == u"i" || name == u"em")
        style->font.setItalic(true);
    else if (name == u"u")
        style->font.setUnderline(true);
    else if (name == u"s")
        style->font.setStrikeOut(true);
    else if (name == u"sub" || name == u"sup")
        style->script = name == u"sub" ? Script::SUB : Script::SUPER;
    else
        return false;
    return true;
}

class MarkupReader
{
public:
    MarkupReader(QString const &text, MarkupStyle const &base) : text_(text), styles_{{QString(), base}} {}

    bool read()
    {
        lines_.emplace_back();
        skipFrame();
        while (place_ < text_.size()) {
            if (!(text_[place_] == u'<' ? readTag() : readText()))
                return false;
        }
        finishText();
        // Elements left open, and a text of nothing, follow rules of their own.
        return styles_.size() == 1 && !lines_.back().empty() &&
               std::none_of(lines_.begin(), lines_.end(), isDecoratedMixture);
    }

    std::vector<MarkupLine> takeLines() { return std::move(lines_); }

private:
    /// A line under several fonts takes its place and width from all of them.
    static bool isDecoratedMixture(MarkupLine const &line)
    {
        auto const decorated = [](MarkupPiece const &piece) {
            return piece.style.font.underline() || piece.style.font.strikeOut();
        };
        return line.size() > 1 && std::any_of(line.begin(), line.end(), decorated);
    }

    /// html, body and a single paragraph around everything add nothing to a text.
    void skipFrame()
    {
        for (auto const &[open, close] :
             {std::pair(u"<html>", u"</html>"), std::pair(u"<body>", u"</body>"), std::pair(u"<p>", u"</p>")}) {
            View const inner = text_.mid(place_).trimmed();
            if (!inner.startsWith(View(open)) || !inner.endsWith(View(close)))
                continue;
            text_ = inner.mid(View(open).size()).chopped(View(close).size());
            place_ = 0;
        }
    }

    bool readTag()
    {
        qsizetype const end = text_.indexOf(u'>', place_);
        if (end < 0)
            return false;
        View inner = text_.mid(place_ + 1, end - place_ - 1);
        place_ = end + 1;
        if (inner.startsWith(u'/'))
            return closeTag(inner.mid(1));
        if (inner == u"br" || inner == u"br/" || inner == u"br /")
            return breakLine();
        qsizetype nameEnd = 0;
        while (nameEnd < inner.size() && inner[nameEnd].isLetter())
            ++nameEnd;
        finishText();
        MarkupStyle style = styles_.back().second;
        View const name = inner.left(nameEnd);
        // A script within a script keeps the reduction of the outer one in the document only.
        bool const nested = style.script != Script::NORMAL && (name == u"sub" || name == u"sup");
        if (nested || inner.endsWith(u'/') || !openTag(name, inner.mid(nameEnd), &style))
            return false;
        styles_.emplace_back(name.toString(), style);
        return true;
    }

    bool closeTag(View name)
    {
        finishText();
        if (styles_.size() == 1 || styles_.back().first != name)
            return false;
        styles_.pop_back();
        return true;
    }

    bool breakLine()
    {
        finishText();
        // The height of an empty line depends on the format of the break, and blanks before it have no width.
        if (lines_.back().empty() || styles_.size() != 1 || lines_.back().back().text.endsWith(QLatin1Char(' ')))
            return false;
        lines_.emplace_back();
        collapse_ = true;
        return true;
    }

    bool readText()
    {
        for (; place_ < text_.size() && text_[place_] != u'<'; ++place_) {
            char16_t character = text_[place_].unicode();
            if (isIntricate(character))
                return false;
            if (isBlank(character)) {
                if (!collapse_)
                    pending_ += u' ';
                collapse_ = true;
                continue;
            }
            if (character == u'&') {
                character = readEntity();
                if (character == u'\0' || isIntricate(character) || isBlank(character))
                    return false;
            }
            pending_ += QChar(character);
            collapse_ = false;
        }
        return true;
    }

    /// Leaves the place on the semicolon; 0 when this is no entity known here.
    char16_t readEntity()
    {
        qsizetype const end = text_.mid(place_, 12).indexOf(u';');
        if (end < 0)
            return u'\0';
        View const name = text_.mid(place_ + 1, end - 1);
        place_ += end;
        return name.startsWith(u'#') ? numericCharacter(name.mid(1)) : entityCharacter(name);
    }

    void finishText()
    {
        if (pending_.isEmpty())
            return;
        MarkupLine &line = lines_.back();
        if (!line.empty() && line.back().style == styles_.back().second)
            line.back().text += pending_;
        else
            line.push_back({pending_, styles_.back().second});
        pending_.clear();
    }

    View text_;
    qsizetype place_ = 0;
    bool collapse_ = true; // the next blank adds nothing
    QString pending_;
    std::vector<std::pair<QString, MarkupStyle>> styles_;
    std::vector<MarkupLine> lines_;
};

constexpr int MAX_TABLE_DEPTH = 6;
constexpr qsizetype MAX_DIGITS = 4;

/// The tag without the digits behind the fourth of a number. Colours, which begin with '#', stay.
QString boundNumbers(View tag)
{
    QString result;
    qsizetype digits = 0;
    bool color = false;
    for (QChar const character : tag) {
        color = character == u'#' || (color && character.isLetterOrNumber());
        digits = character.isDigit() ? digits + 1 : 0;
        if (color || digits <= MAX_DIGITS)
            result += character;
    }
    return result;
}

} // namespace

std::optional<std::vector<MarkupLine>> readSimpleMarkup(QString const &text, MarkupStyle const &base)
{
    MarkupReader reader(text, base);
    if (!reader.read())
        return std::nullopt;
    return reader.takeLines();
}

QString boundMarkup(QString const &text)
{
    QString result;
    int depth = 0;
    for (qsizetype place = 0; place < text.size();) {
        bool const tag = text[place] == u'<';
        qsizetype end = text.indexOf(tag ? u'>' : u'<', place);
        end = end < 0 ? text.size() : end + (tag ? 1 : 0);
        View const part = View(text).mid(place, end - place);
        place = end;
        if (!tag) {
            result += part;
            continue;
        }
        bool const opens = part.startsWith(u"<table", Qt::CaseInsensitive);
        bool const closes = part.startsWith(u"</table", Qt::CaseInsensitive);
        depth += opens ? 1 : 0;
        if (!(opens || closes) || depth <= MAX_TABLE_DEPTH)
            result += boundNumbers(part);
        depth = std::max(0, depth - (closes ? 1 : 0));
    }
    return result;
}

} // namespace Zem::Fig2Qt
