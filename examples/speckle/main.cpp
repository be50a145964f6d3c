// Makes the pictures and fields of the example page: a speckle pattern under a known deformation, so that every number
// on the page can be checked. Usage: speckle FOLDER
#include <ZemErrorLog.h>
#include <ZemImage.h>
#include <ZemVec.h>

#include <QtCore/QFile>
#include <QtCore/QTextStream>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>

using namespace Zem;

namespace {

constexpr unsigned int WIDTH = 640;
constexpr unsigned int HEIGHT = 420;
constexpr BaVec2d<double> MIDDLE{320.0, 210.0};
constexpr int STAGES = 4;      // the first one is without load
constexpr double STRAIN = 0.01; // at each stage, along x
constexpr double POISSON = 0.3;

constexpr int STEP = 40; // pixels from point to point
constexpr int COLUMNS = 15;
constexpr int ROWS = 9;

constexpr double GROUND = 9000.0;
constexpr double BRIGHTEST = 60000.0;

/// Pixels at a stage: stretched along x, contracted along y, and moved as a whole.
BaVec2d<double> displacement(BaVec2d<double> const &p, int stage)
{
    double const strain = STRAIN * stage;
    return {strain * (p.x - MIDDLE.x) + 2.0 * stage, -POISSON * strain * (p.y - MIDDLE.y) - 1.0 * stage};
}

BaVec2d<double> placeOf(int column, int row)
{
    return {40.0 + STEP * column, 50.0 + STEP * row};
}

/// A spot of light with its centre between the pixels.
void addSpot(Image16 *picture, BaVec2d<double> const &centre, double radius, double light)
{
    int const reach = static_cast<int>(std::ceil(3.0 * radius));
    auto const column = static_cast<int>(std::floor(centre.x));
    auto const row = static_cast<int>(std::floor(centre.y));
    for (int y = std::max(row - reach, 0); y <= std::min(row + reach, static_cast<int>(HEIGHT) - 1); ++y) {
        std::uint16_t *const pixels = picture->getRow(static_cast<unsigned int>(y));
        for (int x = std::max(column - reach, 0); x <= std::min(column + reach, static_cast<int>(WIDTH) - 1); ++x) {
            double const dx = x + 0.5 - centre.x;
            double const dy = y + 0.5 - centre.y;
            double const sum = pixels[x] + light * std::exp(-(dx * dx + dy * dy) / (radius * radius));
            pixels[x] = static_cast<std::uint16_t>(std::clamp(sum, 0.0, BRIGHTEST));
        }
    }
}

Image16 makePicture(int stage)
{
    Image16 picture(WIDTH, HEIGHT);
    for (unsigned int y = 0; y < HEIGHT; ++y)
        std::fill_n(picture.getRow(y), WIDTH, static_cast<std::uint16_t>(GROUND));
    std::minstd_rand random(7); // the same on every machine
    auto const next = [&random](double range) { return range * static_cast<double>(random()) / static_cast<double>(std::minstd_rand::max()); };
    for (int i = 0; i < 9000; ++i) {
        BaVec2d<double> const p{next(WIDTH + 80.0) - 40.0, next(HEIGHT + 80.0) - 40.0};
        addSpot(&picture, p + displacement(p, stage), 1.3 + next(0.8), 9000.0 + next(14000.0));
    }
    // Targets that the marks of the page must hit.
    for (auto const &[column, row] : {std::pair(2, 2), std::pair(12, 2), std::pair(7, 6)}) {
        BaVec2d<double> const p = placeOf(column, row);
        addSpot(&picture, p + displacement(p, stage), 4.0, BRIGHTEST);
    }
    return picture;
}

bool writeField(QString const &fileName, int stage)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QTextStream text(&file);
    text << "id,x [px],y [px],dx [px],dy [px],strain x [%],strain y [%]\n";
    text.setRealNumberPrecision(12);
    for (int row = 0; row < ROWS; ++row) {
        for (int column = 0; column < COLUMNS; ++column) {
            BaVec2d<double> const p = placeOf(column, row);
            BaVec2d<double> const d = displacement(p, stage);
            double const strain = 100.0 * STRAIN * stage;
            text << 100 * (row + 1) + column + 1 << ',' << p.x << ',' << p.y << ',' << d.x << ',' << d.y << ',' << strain
                 << ',' << -POISSON * strain << '\n';
        }
    }
    text.flush();
    return text.status() == QTextStream::Ok;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: speckle FOLDER\n", stderr);
        return 1;
    }
    QString const folder = QString::fromLocal8Bit(argv[1]);
    for (int stage = 0; stage < STAGES; ++stage) {
        ErrorLog log(false);
        QString const picture = QStringLiteral("%1/speckle_%2.tif").arg(folder).arg(stage);
        QString const field = QStringLiteral("%1/field_%2.csv").arg(folder).arg(stage);
        if (!makePicture(stage).saveImage(picture, &log) || !writeField(field, stage)) {
            std::fprintf(stderr, "cannot write to %s: %s\n", argv[1], qPrintable(log.getLog()));
            return 3;
        }
    }
    return 0;
}
