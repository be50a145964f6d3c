#include "page_diff.h"

#include <QtGui/QPainter>
#include <QtGui/QTextDocumentFragment>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <optional>

namespace Zem::Zemfig {

namespace {

/// Less than this many millimetres are what arithmetic leaves over.
constexpr double SAME_PLACE = 1e-6;

bool isSamePlace(BaVec2d<double> const &a, BaVec2d<double> const &b)
{
    return std::abs(a.x - b.x) <= SAME_PLACE && std::abs(a.y - b.y) <= SAME_PLACE;
}

QJsonObject pointFacts(BaVec2d<double> const &point)
{
    return {{"x", point.x}, {"y", point.y}};
}

using ElementPair = std::pair<ElementLook const *, ElementLook const *>;

/// Elements of two pages that are taken for the same one, in the order of the first page.
struct Matches
{
    std::vector<ElementPair> pairs;
    std::vector<ElementLook const *> onlyInA;
    std::vector<ElementLook const *> onlyInB;
};

class Matcher
{
public:
    Matcher(PageLook const &a, PageLook const &b) : a_(a), b_(b), taken_(b.elements.size(), false) {}

    Matches match()
    {
        std::vector<ElementLook const *> partners(a_.elements.size(), nullptr);
        findPartners(&partners, [](ElementLook const &element) { return std::pair(element.type, element.name); });
        findPartners(&partners, [](ElementLook const &element) { return element.type; });
        Matches matches;
        for (std::size_t i = 0; i < partners.size(); ++i) {
            if (partners[i])
                matches.pairs.emplace_back(&a_.elements[i], partners[i]);
            else
                matches.onlyInA.push_back(&a_.elements[i]);
        }
        for (std::size_t i = 0; i < taken_.size(); ++i) {
            if (!taken_[i])
                matches.onlyInB.push_back(&b_.elements[i]);
        }
        return matches;
    }

private:
    /// Of several with the same key the first of one page belongs to the first of the other.
    template <class KeyOf>
    void findPartners(std::vector<ElementLook const *> *partners, KeyOf const &keyOf)
    {
        std::map<decltype(keyOf(a_.elements.front())), std::vector<std::size_t>> free;
        for (std::size_t i = taken_.size(); i > 0; --i) {
            if (!taken_[i - 1])
                free[keyOf(b_.elements[i - 1])].push_back(i - 1);
        }
        for (std::size_t i = 0; i < partners->size(); ++i) {
            auto const found = free.find(keyOf(a_.elements[i]));
            if ((*partners)[i] || found == free.end() || found->second.empty())
                continue;
            (*partners)[i] = &b_.elements[found->second.back()];
            taken_[found->second.back()] = true;
            found->second.pop_back();
        }
    }

    PageLook const &a_;
    PageLook const &b_;
    std::vector<bool> taken_;
};

/// Collects what differs, a list for each kind of difference.
class Comparison
{
public:
    void addElements(Matches const &matches)
    {
        for (auto const &[a, b] : matches.pairs)
            addPair(*a, *b);
        for (ElementLook const *element : matches.onlyInA)
            onlyInA_.append(QJsonObject{{"name", element->description}, {"at", pointFacts(element->place)}});
        for (ElementLook const *element : matches.onlyInB)
            onlyInB_.append(QJsonObject{{"name", element->description}, {"at", pointFacts(element->place)}});
    }

    void addTo(Facts *facts) const
    {
        facts->addUnlessEmpty(QStringLiteral("only_in_a"), onlyInA_);
        facts->addUnlessEmpty(QStringLiteral("only_in_b"), onlyInB_);
        facts->addUnlessEmpty(QStringLiteral("values"), values_);
        facts->addUnlessEmpty(QStringLiteral("texts"), texts_);
        facts->addUnlessEmpty(QStringLiteral("curves"), curves_);
        facts->addUnlessEmpty(QStringLiteral("moved"), moved_);
        facts->addUnlessEmpty(QStringLiteral("resized"), resized_);
        facts->addUnlessEmpty(QStringLiteral("parameters"), parameters_);
    }

    bool isEmpty() const
    {
        return onlyInA_.isEmpty() && onlyInB_.isEmpty() && values_.isEmpty() && texts_.isEmpty() && curves_.isEmpty() &&
               moved_.isEmpty() && resized_.isEmpty() && parameters_.isEmpty();
    }

private:
    void addPair(ElementLook const &a, ElementLook const &b)
    {
        if (a.name != b.name)
            parameters_.append(
                QJsonObject{{"name", a.description}, {"parameter", "name"}, {"a", a.name}, {"b", b.name}});
        addText(a, b);
        addCurves(a, b);
        if (!isSamePlace(a.place, b.place))
            moved_.append(QJsonObject{{"name", a.description}, {"a", pointFacts(a.place)}, {"b", pointFacts(b.place)}});
        if (!isSamePlace(a.size, b.size))
            resized_.append(QJsonObject{{"name", a.description}, {"a", pointFacts(a.size)}, {"b", pointFacts(b.size)}});
        addParameters(a, b);
    }

    /// The values in a text tell more than the text; it is told when they do not tell it all.
    void addText(ElementLook const &a, ElementLook const &b)
    {
        qsizetype const before = values_.size();
        for (std::size_t i = 0; i < a.tokens.size(); ++i) {
            TokenLook const &token = a.tokens[i];
            auto const other = std::find_if(b.tokens.begin(), b.tokens.end(),
                                            [&token](TokenLook const &each) { return each.name == token.name; });
            // Shown twice it is told once.
            bool const isFirst = std::none_of(a.tokens.begin(), a.tokens.begin() + static_cast<std::ptrdiff_t>(i),
                                              [&token](TokenLook const &each) { return each.name == token.name; });
            if (isFirst && other != b.tokens.end() && other->exact != token.exact)
                addValue(a, token, *other);
        }
        if (a.text == b.text || values_.size() != before)
            return;
        bool const isOtherText = plain(a.text) != plain(b.text);
        texts_.append(QJsonObject{{"name", a.description},
                                  {"a", isOtherText ? plain(a.text) : a.text},
                                  {"b", isOtherText ? plain(b.text) : b.text}});
    }

    static QString plain(QString const &richText)
    {
        return QTextDocumentFragment::fromHtml(richText).toPlainText().replace(QChar::Nbsp, QLatin1Char(' '));
    }

    void addValue(ElementLook const &element, TokenLook const &a, TokenLook const &b)
    {
        bool const isSeen = a.shown != b.shown;
        QJsonObject entry{{"name", element.description},
                          {"token", a.name},
                          {"a", isSeen ? a.shown : a.exact},
                          {"b", isSeen ? b.shown : b.exact}};
        bool aIsNumber = false;
        bool bIsNumber = false;
        double const difference = b.exact.toDouble(&bIsNumber) - a.exact.toDouble(&aIsNumber);
        if (aIsNumber && bIsNumber)
            entry["difference"] = difference;
        values_.append(entry);
    }

    void addCurves(ElementLook const &a, ElementLook const &b)
    {
        static std::vector<BaVec2d<double>> const NONE;
        std::map<QString, std::pair<std::vector<BaVec2d<double>> const *, std::vector<BaVec2d<double>> const *>> all;
        for (auto const &[id, points] : a.curves)
            all[id] = {&points, &NONE};
        for (auto const &[id, points] : b.curves)
            all.try_emplace(id, &NONE, nullptr).first->second.second = &points;
        for (auto const &[id, points] : all)
            addCurve(a.description, id, *points.first, *points.second);
    }

    void addCurve(QString const &chart, QString const &id, std::vector<BaVec2d<double>> const &a,
                  std::vector<BaVec2d<double>> const &b)
    {
        if (a == b)
            return;
        QJsonObject entry{{"name", chart},
                          {"curve", id},
                          {"points_in_a", static_cast<double>(a.size())},
                          {"points_in_b", static_cast<double>(b.size())}};
        double largest = 0.0;
        for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i) {
            double const difference = std::abs(b[i].y - a[i].y);
            if (std::isfinite(difference) && a[i].y != DBL_MAX && b[i].y != DBL_MAX)
                largest = std::max(largest, difference);
        }
        if (largest > 0.0)
            entry["largest_difference_in_y"] = largest;
        curves_.append(entry);
    }

    /// What was told as place, size or text already is left out.
    static bool isOther(Parameter const &parameter)
    {
        return parameter.key != QLatin1StringView("origin") && parameter.key != QLatin1StringView("size") &&
               parameter.key != QLatin1StringView("text");
    }

    void addParameters(ElementLook const &a, ElementLook const &b)
    {
        for (Parameter const &parameter : a.parameters) {
            std::optional<Parameter> const other = findParameter(b.parameters, parameter.key);
            if (isOther(parameter) && (!other || other->value != parameter.value))
                addParameter(a, parameter.key, parameter.value, other ? other->value : QString());
        }
        for (Parameter const &parameter : b.parameters) {
            if (isOther(parameter) && !findParameter(a.parameters, parameter.key))
                addParameter(a, parameter.key, QString(), parameter.value);
        }
    }

    void addParameter(ElementLook const &element, QString const &key, QString const &a, QString const &b)
    {
        parameters_.append(QJsonObject{{"name", element.description}, {"parameter", key}, {"a", a}, {"b", b}});
    }

    QJsonArray onlyInA_;
    QJsonArray onlyInB_;
    QJsonArray values_;
    QJsonArray texts_;
    QJsonArray curves_;
    QJsonArray moved_;
    QJsonArray resized_;
    QJsonArray parameters_;
};

/// Beyond the page there is white.
QRgb pixelAt(QImage const &picture, int x, int y)
{
    return x < picture.width() && y < picture.height() ? picture.pixel(x, y) : qRgb(255, 255, 255);
}

double countDifferentPixels(QImage const &a, QImage const &b)
{
    double count = 0.0;
    for (int y = 0; y < std::max(a.height(), b.height()); ++y) {
        for (int x = 0; x < std::max(a.width(), b.width()); ++x)
            count += pixelAt(a, x, y) != pixelAt(b, x, y) ? 1.0 : 0.0;
    }
    return count;
}

constexpr QRgb COLOR_OF_A = qRgb(213, 94, 0);
constexpr QRgb COLOR_OF_B = qRgb(0, 114, 178);
constexpr double PALE = 0.25;        ///< of the ink that both have
constexpr double LEAST_INK = 0.4;    ///< of a difference, so that small ones are seen too
constexpr double STRIP_HEIGHT = 8.0; ///< millimetres

QRgb onWhite(QRgb color, double ink)
{
    auto const mix = [ink](int part) { return static_cast<int>(std::lround(255.0 - ink * (255.0 - part))); };
    return qRgb(mix(qRed(color)), mix(qGreen(color)), mix(qBlue(color)));
}

QRgb differenceOf(QRgb a, QRgb b)
{
    if (a == b)
        return onWhite(a, PALE);
    int const darkness = qGray(b) - qGray(a);
    return onWhite(darkness >= 0 ? COLOR_OF_A : COLOR_OF_B, LEAST_INK + (1.0 - LEAST_INK) * std::abs(darkness) / 255.0);
}

void drawStrip(QImage *picture, int top, QString const &nameOfA, QString const &nameOfB)
{
    QPainter painter(picture);
    int const height = picture->height() - top;
    QFont font = painter.font();
    font.setPixelSize(std::max(4, height / 2));
    painter.setFont(font);
    painter.setPen(Qt::gray);
    painter.drawLine(0, top, picture->width(), top);
    int const half = picture->width() / 2;
    int const margin = height / 4;
    auto const entry = [&](int left, QRgb color, QString const &name) {
        painter.fillRect(left + margin, top + margin, height / 2, height / 2, QColor(color));
        QString const text = QStringLiteral("only in ") + name;
        painter.setPen(QColor(color));
        painter.drawText(left + margin + height, top, half - height - margin, height, Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(text, Qt::ElideMiddle, half - height - margin));
    };
    entry(0, COLOR_OF_A, nameOfA);
    entry(half, COLOR_OF_B, nameOfB);
}

} // namespace

PageDifference compare(PageLook const &a, PageLook const &b)
{
    Comparison comparison;
    comparison.addElements(Matcher(a, b).match());
    double const pixels = countDifferentPixels(a.picture, b.picture);
    bool const isSameSize = isSamePlace(a.size, b.size);
    PageDifference difference;
    difference.isEqual = isSameSize && comparison.isEmpty() && pixels == 0.0;
    difference.facts.add(QStringLiteral("equal"), difference.isEqual);
    if (!isSameSize)
        difference.facts.add(QStringLiteral("page"),
                             QJsonObject{{"a", QJsonArray{a.size.x, a.size.y}}, {"b", QJsonArray{b.size.x, b.size.y}}});
    comparison.addTo(&difference.facts);
    if (pixels > 0.0)
        difference.facts.add(QStringLiteral("different_pixels"), pixels);
    return difference;
}

QImage differencePicture(PageLook const &a, QString const &nameOfA, PageLook const &b, QString const &nameOfB)
{
    int const width = std::max(a.picture.width(), b.picture.width());
    int const height = std::max(a.picture.height(), b.picture.height());
    double const pixelsPerMm = a.picture.height() / a.size.y;
    int const strip = std::max(8, static_cast<int>(std::lround(STRIP_HEIGHT * pixelsPerMm)));
    QImage picture(width, height + strip, QImage::Format_RGB32);
    picture.fill(Qt::white);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, differenceOf(pixelAt(a.picture, x, y), pixelAt(b.picture, x, y)));
    }
    drawStrip(&picture, height, nameOfA, nameOfB);
    return picture;
}

} // namespace Zem::Zemfig
