// The pictures and the fields of the example tell of the same deformation.
#include <ZemImage.h>
#include <ZemVec.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <memory>

namespace Zem {
namespace {

class Speckle : public testing::Test
{
protected:
    static QProcess &run(QProcess *process, QStringList const &arguments)
    {
        process->start(QStringLiteral(ZEM_BIN_DIR "/speckle"), arguments);
        EXPECT_TRUE(process->waitForFinished());
        return *process;
    }

    /// The line of a point in the field of a stage, as numbers.
    std::vector<double> lineOf(int stage, QByteArray const &id) const
    {
        QFile file(folder.filePath(QStringLiteral("field_%1.csv").arg(stage)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        std::vector<double> numbers;
        for (QByteArray const &line : file.readAll().split('\n')) {
            if (line.startsWith(id + ',')) {
                for (QByteArray const &cell : line.split(','))
                    numbers.push_back(cell.toDouble());
            }
        }
        return numbers;
    }

    QTemporaryDir folder;
};

/// The middle of the brightest pixels about a place.
BaVec2d<double> targetNear(Image16 const &picture, BaVec2d<double> const &place)
{
    double sum = 0.0;
    BaVec2d<double> weighted;
    for (int y = static_cast<int>(place.y) - 8; y <= static_cast<int>(place.y) + 8; ++y) {
        for (int x = static_cast<int>(place.x) - 8; x <= static_cast<int>(place.x) + 8; ++x) {
            bool const bright = picture.getRow(static_cast<unsigned int>(y))[x] >= 45000;
            sum += bright ? 1.0 : 0.0;
            weighted += BaVec2d<double>{x + 0.5, y + 0.5} * (bright ? 1.0 : 0.0);
        }
    }
    return weighted * (1.0 / sum);
}

} // namespace

TEST_F(Speckle, hasItsTargetsWhereItsFieldTakesThem)
{
    QProcess process;
    ASSERT_EQ(run(&process, {folder.path()}).exitCode(), 0);
    for (int stage = 0; stage < 4; ++stage) {
        std::unique_ptr<Image const> const picture(
            Image::loadImage(folder.filePath(QStringLiteral("speckle_%1.tif").arg(stage)), nullptr, -1, -1));
        ASSERT_TRUE(picture);
        ASSERT_EQ(picture->getType(), Image::TYPE_IMAGE16);
        std::vector<double> const point = lineOf(stage, "708"); // (320, 290), on the axis of the stretching
        ASSERT_EQ(point.size(), 7u);
        EXPECT_NEAR(point[3], 2.0 * stage, 1e-9);
        EXPECT_NEAR(point[4], -0.003 * stage * (290 - 210) - 1.0 * stage, 1e-9);
        BaVec2d<double> const expected{point[1] + point[3], point[2] + point[4]};
        // Counting bright pixels finds the middle to a fraction of one; speckles add to it.
        BaVec2d<double> const found = targetNear(static_cast<Image16 const &>(*picture), expected);
        EXPECT_NEAR(found.x, expected.x, 0.6) << stage;
        EXPECT_NEAR(found.y, expected.y, 0.6) << stage;
    }
}

TEST_F(Speckle, saysWhatItCannotDo)
{
    QProcess without;
    EXPECT_EQ(run(&without, {}).exitCode(), 1);
    QProcess nowhere;
    EXPECT_EQ(run(&nowhere, {folder.filePath(QStringLiteral("none"))}).exitCode(), 3);
    EXPECT_TRUE(nowhere.readAllStandardError().contains("cannot write to"));
}

} // namespace Zem
