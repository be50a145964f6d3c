// Builds a report page with a chart and a label, draws it for two stages, saves it and loads it again.
// Usage: embedding FOLDER, which receives stage1.pdf, stage2.pdf, page.fig and loaded.pdf.

#include <ZemErrorLog.h>
#include <ZemFig2Chart.h>
#include <ZemFig2Figure.h>
#include <ZemFig2InitLibrary.h>
#include <ZemFig2Label.h>
#include <ZemFig2QtApplication.h>
#include <ZemFig2QtCalculator.h>
#include <ZemFig2QtPageWriter.h>
#include <ZemFig2TokenInterface.h>

#include <QtCore/QFile>

#include <array>
#include <iostream>
#include <memory>

using namespace Zem;

namespace {

constexpr QLatin1StringView FORCE{"force"};
constexpr QLatin1StringView CURVE{"force_over_time"};

/// The application's data: the force at each stage, one second apart, as a value and as a curve.
class Measurement : public Fig2::EmptyFigureTokenInterface
{
public:
    Measurement()
    {
        auto *dataset = new Fig2::ChartDataset("force");
        for (unsigned int stage = 0; stage < FORCES.size(); ++stage) {
            dataset->addPoint({static_cast<int>(stage), {double(stage), FORCES[stage]}, FORCES[stage]});
        }
        curve_.addDataset(dataset);
        curve_.setUnitX(UnitData(uTime));
        curve_.setUnitY(UnitData(uForce));
    }

    Value getValue(QString name, IndexIdentifier const &, StageIdentifier const &stage) const override
    {
        if (name != FORCE) {
            return Value::UNKNOWN;
        }
        return stage.getIdentifier() < FORCES.size() ? Value(FORCES[stage.getIdentifier()], uForce) : Value::INVALID;
    }

    Fig2::ChartData const *getChart(QString const &token) const override { return token == CURVE ? &curve_ : nullptr; }
    void releaseChart(QString const &) const override {}

private:
    static constexpr std::array FORCES{0.0, 1250.0, 3100.0, 2750.0}; // N

    Fig2::ChartData curve_;
};

void fillPage(Fig2::Figure *figure)
{
    auto *label = new Fig2::Label;
    label->setAlignmentOrigin({25.0, 40.0}); // its top left corner: the box sizes itself to the text
    label->setText("Force <b>$.2[kN]force$ kN</b>");
    figure->getRoot()->addChild(label);

    auto *chart = new Fig2::Chart;
    chart->setOrigin({105.0, 110.0});
    chart->setSize({170.0, 90.0});
    chart->setToken(CURVE);
    figure->getRoot()->addChild(chart);
}

void render(Fig2::Figure *figure, unsigned int stage, QString const &fileName)
{
    figure->update(StageIdentifier(stage), true); // true: another stage than before
    auto const writer = Fig2Qt::createPageWriter(fileName);
    Fig2Qt::drawPage(*figure, writer.get());
    writer->close();
}

QByteArray contents(QString const &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void save(Fig2::Figure const &figure, QString const &fileName)
{
    ErrorLog log(false);
    if (!Fig2::Figure::saveFigure(fileName, &figure, &log) || !log.getLog().isEmpty()) {
        throw Exception(log.getLog());
    }
}

std::unique_ptr<Fig2::Figure> load(QString const &fileName, Measurement const &measurement)
{
    ErrorLog log(false);
    std::unique_ptr<Fig2::Figure> figure(Fig2::Figure::loadFigure(fileName, &log));
    if (!figure) {
        throw Exception(log.getLog());
    }
    figure->setTokenInterface(&measurement); // a file holds no data
    return figure;
}

void run(QString const &folder)
{
    Measurement const measurement;
    Fig2::Figure figure(&measurement);
    fillPage(&figure);
    render(&figure, 1, folder + "/stage1.pdf");
    render(&figure, 2, folder + "/stage2.pdf");

    save(figure, folder + "/page.fig");
    auto const loaded = load(folder + "/page.fig", measurement);
    render(loaded.get(), 2, folder + "/loaded.pdf");
    if (loaded->toString() != figure.toString() ||
        contents(folder + "/loaded.pdf") != contents(folder + "/stage2.pdf")) {
        throw Exception("What was loaded is not what was saved");
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2) {
        std::cerr << "Usage: embedding FOLDER\n";
        return 1;
    }
    try {
        auto const application = Fig2Qt::ensureGuiApplication(argc, argv);
        Fig2::InitLibrary();
        Fig2Qt::QtCalculator const calculator; // measures text as long as figures are laid out
        run(QString::fromLocal8Bit(argv[1]));
        return 0;
    } catch (Exception const &error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
