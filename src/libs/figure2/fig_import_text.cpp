// The texts of older files and the charts whose values they name.
#include "ZemFig2Chart.h"
#include "ZemFig2Figure.h"
#include "ZemFig2ImportHook.h"
#include "ZemFig2Label.h"
#include "ZemFig2RichText.h"
#include "ZemFig2Tools.h"
#include "fig_import_record.h"
#include "fig_importer.h"

#include <QtCore/QHash>
#include <QtCore/QStringList>

#include <ZemError.h>

#include <algorithm>
#include <array>

namespace Zem::Fig2 {

namespace {

constexpr unsigned int TEXT_VERSION = 4; // 2: size, alignment; 3: frame, angle; 4: what it annotates
constexpr int NO_TARGET = -1;
constexpr QLatin1Char TOKEN_MARK('$');
constexpr QLatin1Char CHART_SEPARATOR('.');

struct OldText
{
    OldFrame frame;
    QString text;
    OldFont font;
    OldAlignment alignmentX;
    OldAlignment alignmentY;
    OldPen pen;
    OldBrush brush;
    double angle = 0.0;
    int target = NO_TARGET;
    QString object;
    bool hasPoint = false;
    BaVec2d<double> point{0.0, 0.0};

    void read(BlockReader &reader)
    {
        reader.field(frame.corner);
        reader.field(text);
        font.read(reader);
        reader.keep(frame.size, Since{2});
        readSince(reader, Since{2}, alignmentX);
        readSince(reader, Since{2}, alignmentY);
        readSince(reader, Since{3}, pen);
        readSince(reader, Since{3}, brush);
        reader.keep(angle, Since{3});
        reader.keep(target, Since{4});
        reader.keep(object, Since{4});
        reader.keep(hasPoint, Since{4});
        reader.keep(point, Since{4});
    }

    bool isAsLargeAsText() const { return frame.size.x == 0.0 && frame.size.y == 0.0; }

    /// Rich text carries its colours, a plain one has that of its font.
    QString richText() const
    {
        if (RTFTools::isRichText(text))
            return Import::convertUnformattedLabelText(text);
        return font.color == Element::DEFAULT_TEXT_COLOR ? RTFTools::convertText(text)
                                                         : RTFTools::convertText(text, font.color);
    }

    void place(Label *label) const
    {
        label->setAngle(angle);
        label->setAutoSize(isAsLargeAsText());
        if (isAsLargeAsText()) {
            label->setAlignmentOrigin(frame.corner);
        } else {
            label->setSize(frame.size);
            label->setOrigin(frame.center());
        }
    }

    std::unique_ptr<Label> make() const
    {
        auto label = std::make_unique<Label>();
        place(label.get());
        label->setText(ImportHook::callConvertLabelText(label.get(), richText()));
        label->setFont(font.font());
        label->setTextAlignmentX(alignmentX.alignment());
        label->setTextAlignmentY(alignmentY.alignment());
        label->setBorder(pen.lineStyle());
        label->setBackground(brush.fillStyle());
        if (hasPoint)
            label->setConnectorPoint(point);
        return label;
    }
};

/// Whether a chart answers the token itself, whatever its data offer.
bool isChartValue(QStringView token)
{
    static constexpr std::array VALUES{ChartBase::TOKEN_UNIT_AXIS_X, ChartBase::TOKEN_UNIT_AXIS_Y};
    static constexpr std::array BEGINNINGS{
        ChartBase::TOKEN_NAME,  ChartBase::TOKEN_MIN_X,   ChartBase::TOKEN_MIN_Y,    ChartBase::TOKEN_MAX_X,
        ChartBase::TOKEN_MAX_Y, ChartBase::TOKEN_AVERAGE, ChartBase::TOKEN_VARIANCE, ChartBase::TOKEN_DEVIATION};
    return std::any_of(VALUES.begin(), VALUES.end(), [token](QLatin1StringView value) { return token == value; }) ||
           std::any_of(BEGINNINGS.begin(), BEGINNINGS.end(),
                       [token](QLatin1StringView beginning) { return token.startsWith(beginning); });
}

/// The token of a chart in front of one of its values, and where the value begins.
struct ChartValue
{
    QString chart;
    qsizetype begin = 0;
};

/// What stands between two token marks, taken apart. An empty chart when it is no value of a chart.
ChartValue parseChartValue(QString const &inner)
{
    QString name;
    QString format;
    if (!Tools::parseToken(inner, &name, &format))
        return {};
    for (qsizetype point = name.indexOf(CHART_SEPARATOR); point >= 0; point = name.indexOf(CHART_SEPARATOR, point + 1))
        if (isChartValue(QStringView(name).mid(point + 1)))
            return {name.left(point), inner.size() - name.size() + point + 1};
    return {};
}

/// Calls `visit` for each piece of the text that stands between two token marks, which it may change.
template <class Visit>
QString changeTokens(QString const &text, Visit const &visit)
{
    QStringList pieces = text.split(TOKEN_MARK);
    for (qsizetype i = 1; i + 1 < pieces.size(); i += 2)
        visit(pieces[i]);
    return pieces.join(TOKEN_MARK);
}

} // namespace

std::unique_ptr<Element> Importer::importText(IO::InStream *stream)
{
    OldText record;
    loadRecord(stream, TEXT_VERSION, nullptr, [&record](BlockReader &reader) { record.read(reader); });
    std::unique_ptr<Label> label = record.make();
    if (record.target != NO_TARGET)
        links_.push_back({label.get(), place(), record.target, record.object});
    labels_.emplace_back(label.get(), place());
    kept("text");
    return label;
}

class Importer::ChartIndex
{
public:
    explicit ChartIndex(Figure *figure)
    {
        for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it)
            if (auto *chart = dynamic_cast<Chart *>(*it); chart && !chart->getToken().isEmpty())
                add(chart);
    }

    bool isEmpty() const { return charts_.isEmpty(); }

    /// The first chart of the token in the label's group, or else in one around it, or else anywhere; null without one.
    Chart *findChartForLabel(LabelBase const *label, QString const &token) const
    {
        Group const *group = label->getParent();
        if (!group)
            throw ProgError("Zem::Fig2::Importer::findChartForLabel", "fig_import", __LINE__,
                            "Element without a parent");
        for (; group; group = group->getParent())
            if (Chart *chart = charts_.value({group, token}))
                return chart;
        return charts_.value({ANYWHERE, token});
    }

private:
    using Key = std::pair<Group const *, QString>;

    static constexpr Group const *ANYWHERE = nullptr;

    void add(Chart *chart)
    {
        for (Group const *group : {static_cast<Group const *>(chart->getParent()), ANYWHERE}) {
            Chart *&place = charts_[{group, chart->getToken()}];
            if (!place)
                place = chart;
        }
    }

    QHash<Key, Chart *> charts_;
};

/// A label asks the element that it is connected to for such values, so that the token in front of them goes.
void Importer::adaptChartLabelTokens(LabelBase *label, QString const &place, ChartIndex const &charts)
{
    Element *target = label->getConnectorTarget(nullptr);
    QString const text = changeTokens(label->getText(), [&](QString &inner) {
        ChartValue const value = parseChartValue(inner);
        Chart *chart = value.chart.isEmpty() ? nullptr : charts.findChartForLabel(label, value.chart);
        if (!chart)
            return;
        if (!target) {
            label->connect(chart, QString());
            target = chart;
        }
        auto const *connected = dynamic_cast<Chart const *>(target);
        if (connected && connected->getToken() == value.chart)
            inner.remove(value.begin - value.chart.size() - 1, value.chart.size() + 1);
        else
            report("text", place, ImportEntry::DROPPED, "values of a further chart");
    });
    if (text != label->getText())
        label->setText(text);
}

void Importer::connectLabels(Figure *figure)
{
    ChartIndex const charts(figure);
    for (auto const &[label, place] : std::exchange(labels_, {}))
        if (!charts.isEmpty())
            adaptChartLabelTokens(label, place, charts);
}

} // namespace Zem::Fig2
