// What a figure costs: updating, walking, hit testing, saving and loading.
#include <ZemFig2Figure.h>
#include <ZemFig2Label.h>
#include <ZemFig2Line.h>
#include <ZemFig2Polygon.h>
#include <ZemFig2Rectangle.h>
#include <ZemFig2TokenInterface.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <sstream>
#include <vector>

namespace Zem::Fig2 {
namespace {

/// Token "t<n>" has the value n; one of them can be changed.
class CountingTokens : public EmptyFigureTokenInterface
{
public:
    Value getValue(QString name, IndexIdentifier const &, StageIdentifier const &) const override
    {
        return Value(name.mid(1).toInt());
    }
    unsigned int getModifiedCounter(QString const &name) const override { return name == changing_ ? counter_ : 1; }
    void change(QString const &name)
    {
        changing_ = name;
        ++counter_;
    }

private:
    QString changing_;
    unsigned int counter_ = 1;
};

BaVec2d<double> placeOf(int i)
{
    return {i % 100 * 2.0, i / 100 % 140 * 2.0};
}

std::unique_ptr<Figure> labels(int count, FigureTokenInterface const *tokens)
{
    auto figure = std::make_unique<Figure>(tokens);
    for (int i = 0; i < count; ++i) {
        auto *label = new Label;
        label->setOrigin(placeOf(i));
        label->setText(QStringLiteral("Value <b>$.2t%1$</b> mm").arg(i));
        figure->getRoot()->addChild(label);
    }
    return figure;
}

Element *makeElement(int i)
{
    static constexpr Element::Type_t TYPES[] = {Element::RECTANGLE, Element::ELLIPSE, Element::LINE, Element::POLYGON,
                                                Element::LABEL};
    Element *element = Element::create(TYPES[i % 5]);
    element->setOrigin(placeOf(i));
    if (element->hasSize())
        element->setSize({3.0, 2.0});
    if (auto *polygon = dynamic_cast<Polygon *>(element))
        polygon->setPolygon(Polygon2d({{0, 0}, {2, 0}, {2, 2}}, true));
    if (auto *label = dynamic_cast<Label *>(element))
        label->setText(QStringLiteral("Point %1").arg(i));
    return element;
}

/// A tenth of the elements stand in groups of ten.
std::unique_ptr<Figure> mixed(int count, FigureTokenInterface const *tokens)
{
    auto figure = std::make_unique<Figure>(tokens);
    Group *group = nullptr;
    for (int i = 0; i < count; ++i) {
        if (i % 100 == 0) {
            group = new Group;
            figure->getRoot()->addChild(group);
        }
        (i % 100 < 10 ? group : figure->getRoot())->addChild(makeElement(i));
    }
    return figure;
}

void updateNothingChanged(benchmark::State &state)
{
    CountingTokens tokens;
    auto const figure = labels(static_cast<int>(state.range(0)), &tokens);
    figure->update(StageIdentifier(1), false);
    for (auto _ : state)
        benchmark::DoNotOptimize(figure->update(StageIdentifier(1), false));
}
BENCHMARK(updateNothingChanged)->Arg(10000)->Unit(benchmark::kMillisecond);

void updateOneTokenChanged(benchmark::State &state)
{
    CountingTokens tokens;
    auto const figure = labels(static_cast<int>(state.range(0)), &tokens);
    figure->update(StageIdentifier(1), false);
    for (auto _ : state) {
        tokens.change(QStringLiteral("t5000"));
        benchmark::DoNotOptimize(figure->update(StageIdentifier(1), false));
    }
}
BENCHMARK(updateOneTokenChanged)->Arg(10000)->Unit(benchmark::kMillisecond);

void updateForced(benchmark::State &state)
{
    CountingTokens tokens;
    auto const figure = labels(static_cast<int>(state.range(0)), &tokens);
    for (auto _ : state)
        benchmark::DoNotOptimize(figure->update(StageIdentifier(1), true));
}
BENCHMARK(updateForced)->Arg(10000)->Unit(benchmark::kMillisecond);

void buildMixed(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(mixed(static_cast<int>(state.range(0)), nullptr));
}
BENCHMARK(buildMixed)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

std::string savedBytes(Figure const &figure)
{
    std::ostringstream output;
    IO::OutStream stream(&output, Figure::FILE_TYPE_ID, 1);
    figure.save(&stream, -1, -1);
    stream.close();
    return std::move(output).str();
}

void saveMixed(benchmark::State &state)
{
    auto const figure = mixed(static_cast<int>(state.range(0)), nullptr);
    std::size_t bytes = 0;
    for (auto _ : state)
        bytes = savedBytes(*figure).size();
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(saveMixed)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void loadMixed(benchmark::State &state)
{
    std::string const bytes = savedBytes(*mixed(static_cast<int>(state.range(0)), nullptr));
    for (auto _ : state) {
        std::istringstream input(bytes);
        IO::InStream stream(&input);
        Figure figure;
        figure.load(&stream, -1, -1);
    }
}
BENCHMARK(loadMixed)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void deepWalk(benchmark::State &state)
{
    auto const figure = mixed(static_cast<int>(state.range(0)), nullptr);
    for (auto _ : state) {
        int visited = 0;
        for (auto it = figure->getElementBegin(); it != figure->getElementEnd(); ++it)
            visited += it->getVisible() ? 1 : 0;
        benchmark::DoNotOptimize(visited);
    }
}
BENCHMARK(deepWalk)->Arg(100000)->Unit(benchmark::kMillisecond);

void hitTest(benchmark::State &state)
{
    EmptyFigureTokenInterface const tokens;
    auto const figure = mixed(static_cast<int>(state.range(0)), &tokens);
    figure->update(StageIdentifier(1), true);
    for (auto _ : state)
        benchmark::DoNotOptimize(figure->getElementAt({100.5, 100.5}));
}
BENCHMARK(hitTest)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem::Fig2
