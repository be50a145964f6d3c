// Includes go down: from the command to the libraries, from the figure library to the platform, and inside the figure
// library from documents to values.
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QMap>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <set>
#include <string>

namespace {

/// A folder of the house and the folders that its files may include from.
struct Room
{
    QString folder;
    std::set<QString> below;
};

std::vector<Room> const &rooms()
{
    static std::vector<Room> const all = [] {
        std::set<QString> const ground{"platform/zem", "platform/math"};
        std::set<QString> const platform{
            "platform/zem",   "platform/math",    "platform/io",     "platform/parse",       "platform/object",
            "platform/token", "platform/legend2", "platform/spline", "platform/calibration", "platform/image"};
        // Not the makers': nothing of the figure library may need it.
        std::set<QString> const file{"platform/file"};
        auto const with = [](std::set<QString> rooms, std::set<QString> const &more) {
            rooms.insert(more.begin(), more.end());
            return rooms;
        };
        std::set<QString> const figure = with(platform, {"src/libs/figure2"});
        return std::vector<Room>{
            {"platform/zem", {}},
            {"platform/math", {}},
            {"platform/file", {"platform/zem"}},
            {"platform/io", with(ground, file)},
            {"platform/parse", ground},
            {"platform/object", with(ground, {"platform/io", "platform/parse"})},
            {"platform/token", with(ground, {"platform/io", "platform/parse"})},
            {"platform/legend2", with(ground, {"platform/io", "platform/parse"})},
            {"platform/spline", {"platform/math"}},
            {"platform/calibration", with(ground, {"platform/io"})},
            {"platform/image", with({"platform/zem"}, file)},
            {"src/libs/figure2", platform},
            {"src/libs/figure2qt", with(figure, file)},
            {"src/libs/measurement", figure},
            {"src/apps/zemfig", with(figure, {"platform/file", "src/libs/figure2qt", "src/libs/measurement"})}};
    }();
    return all;
}

QString const ROOT = QStringLiteral(ZEM_SOURCE_DIR "/");

QStringList sourcesOf(QString const &folder)
{
    QStringList files;
    for (QDirIterator it(ROOT + folder, {"*.h", "*.cpp"}, QDir::Files, QDirIterator::Subdirectories); it.hasNext();)
        files += it.next();
    return files;
}

QString contentOf(QString const &file)
{
    QFile input(file);
    EXPECT_TRUE(input.open(QIODevice::ReadOnly)) << file.toStdString();
    return QString::fromUtf8(input.readAll());
}

QStringList includesOf(QString const &content)
{
    static QRegularExpression const form(QStringLiteral("^#include [<\"]([^>\"]+)[>\"]"),
                                         QRegularExpression::MultilineOption);
    QStringList names;
    for (QRegularExpressionMatch const &match : form.globalMatch(content))
        names += match.captured(1);
    return names;
}

/// Where each header of the project lives, by its file name.
QMap<QString, QString> const &homes()
{
    static QMap<QString, QString> const all = [] {
        QMap<QString, QString> found;
        for (Room const &room : rooms()) {
            for (QString const &file : sourcesOf(room.folder))
                found[QFileInfo(file).fileName()] = room.folder;
        }
        return found;
    }();
    return all;
}

TEST(Includes, goDownBetweenTheLibraries)
{
    for (Room const &room : rooms()) {
        QStringList const files = sourcesOf(room.folder);
        EXPECT_FALSE(files.isEmpty()) << room.folder.toStdString();
        for (QString const &file : files) {
            for (QString const &name : includesOf(contentOf(file))) {
                QString const home = homes().value(name);
                EXPECT_TRUE(home.isEmpty() || home == room.folder || room.below.contains(home))
                    << file.toStdString() << " includes " << name.toStdString() << " of " << home.toStdString();
            }
        }
    }
}

TEST(Includes, areWatchedInEveryFolderWithSources)
{
    for (char const *place : {"platform/", "src/libs/", "src/apps/"}) {
        for (QString const &name : QDir(ROOT + QLatin1StringView(place)).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            bool const watched = std::any_of(rooms().begin(), rooms().end(), [&](Room const &room) {
                return room.folder == QLatin1StringView(place) + name;
            });
            EXPECT_TRUE(watched) << place << name.toStdString();
        }
    }
}

TEST(Includes, nameOnlyPublicHeadersOfOtherLibraries)
{
    for (Room const &room : rooms()) {
        for (QString const &file : sourcesOf(room.folder)) {
            for (QString const &name : includesOf(contentOf(file))) {
                QString const home = homes().value(name);
                EXPECT_TRUE(home.isEmpty() || home == room.folder || name.startsWith("Zem"))
                    << file.toStdString() << " includes " << name.toStdString() << " of " << home.toStdString();
            }
        }
    }
}

TEST(Includes, ofTheFigureLibraryAndThePlatformStayWithinTheCoreOfQt)
{
    for (Room const &room : rooms()) {
        if (!room.folder.startsWith("platform/") && room.folder != "src/libs/figure2")
            continue;
        for (QString const &file : sourcesOf(room.folder)) {
            for (QString const &name : includesOf(contentOf(file))) {
                EXPECT_FALSE(name.startsWith(QLatin1Char('Q')) && !name.startsWith("QtCore/"))
                    << file.toStdString() << " includes " << name.toStdString();
            }
        }
    }
}

TEST(Includes, goDownBetweenTheLayersOfTheFigureLibrary)
{
    static QStringList const layers{"values",   "streams", "painting", "tokens",
                                    "services", "element", "labels",   "document"};
    static QRegularExpression const form(QStringLiteral("// Layer: ([a-z]+)"));
    QMap<QString, qsizetype> layerOf;
    for (QString const &file : sourcesOf("src/libs/figure2")) {
        if (!file.endsWith(".h"))
            continue;
        QString const name = QFileInfo(file).fileName();
        QString const layer = form.match(contentOf(file)).captured(1);
        EXPECT_TRUE(layers.contains(layer)) << name.toStdString() << " names the layer '" << layer.toStdString() << "'";
        layerOf[name] = layers.indexOf(layer);
    }
    for (QString const &file : sourcesOf("src/libs/figure2")) {
        QString const name = QFileInfo(file).fileName();
        if (!layerOf.contains(name))
            continue;
        for (QString const &included : includesOf(contentOf(file))) {
            bool const goesUp = layerOf.contains(included) && layerOf[included] > layerOf[name];
            EXPECT_FALSE(goesUp) << name.toStdString() << " includes " << included.toStdString();
        }
    }
}

} // namespace
