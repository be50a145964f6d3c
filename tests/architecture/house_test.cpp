// The house as its documents describe it: every folder on the map, every file in its build list.
#include <gtest/gtest.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>

namespace {

QDir const ROOT(QStringLiteral(ZEM_SOURCE_DIR));

QString contentOf(QString const &file)
{
    QFile input(ROOT.filePath(file));
    EXPECT_TRUE(input.open(QIODevice::ReadOnly)) << file.toStdString();
    return QString::fromUtf8(input.readAll());
}

/// The folders named in the first column of the README's map.
QStringList foldersOfTheMap()
{
    QString const readme = contentOf("README.md");
    QString const map = readme.mid(readme.indexOf("\n## Map"));
    static QRegularExpression const row(QStringLiteral("^\\| (`[^|]*`) \\|"), QRegularExpression::MultilineOption);
    static QRegularExpression const name(QStringLiteral("`([^`]+)`"));
    QStringList folders;
    for (QRegularExpressionMatch const &cells : row.globalMatch(map)) {
        for (QRegularExpressionMatch const &folder : name.globalMatch(cells.captured(1)))
            folders += folder.captured(1);
    }
    return folders;
}

QStringList subfolders(QString const &folder)
{
    QStringList found;
    for (QString const &name : QDir(ROOT.filePath(folder)).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden))
        found += folder.isEmpty() ? name : folder + QLatin1Char('/') + name;
    return found;
}

/// What git does not keep: builds, pictures of examples, what editors leave.
bool isMade(QString const &folder)
{
    static QStringList const ignored = contentOf(".gitignore").split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return folder == ".git" || std::any_of(ignored.begin(), ignored.end(), [&](QString pattern) {
               return QDir::match(pattern.remove(QLatin1Char('/')), folder);
           });
}

/// The folders that have source files, with their build lists; those of tests too.
QStringList foldersWithSources()
{
    QStringList found;
    for (char const *top : {"platform", "src/libs", "src/apps", "tests/platform", "tests/libs", "tests/apps"})
        found += subfolders(top);
    return found += {"tests/architecture", "tests/examples", "tests/support", "bench"};
}

TEST(MapOfTheReadme, namesOnlyFoldersThatExist)
{
    QStringList const map = foldersOfTheMap();
    EXPECT_GT(map.size(), 10);
    for (QString const &folder : map)
        EXPECT_TRUE(QDir(ROOT.filePath(folder)).exists()) << folder.toStdString();
}

TEST(MapOfTheReadme, namesEveryFolderOfTheHouse)
{
    QStringList const map = foldersOfTheMap();
    QStringList wanted = subfolders("platform") + subfolders("src/libs") + subfolders("src/apps");
    for (QString const &folder : subfolders(QString())) {
        if (folder != "platform" && folder != "src" && !isMade(folder))
            wanted += folder;
    }
    for (QString const &folder : wanted)
        EXPECT_TRUE(map.contains(folder)) << folder.toStdString() << " is not on the map";
}

TEST(BuildLists, nameEverySourceAndPublicHeaderBesideThem)
{
    for (QString const &folder : foldersWithSources()) {
        QString const list = contentOf(folder + "/CMakeLists.txt");
        static QRegularExpression const word(QStringLiteral("[\\w.-]+\\.(cpp|h)"));
        QSet<QString> named;
        for (QRegularExpressionMatch const &match : word.globalMatch(list))
            named += match.captured();
        for (QString const &file : QDir(ROOT.filePath(folder)).entryList({"*.cpp", "Zem*.h"}, QDir::Files)) {
            bool const sharedByTests = file == "AllocationPeak.cpp"; // each test that counts memory compiles it
            EXPECT_TRUE(named.contains(file) || sharedByTests) << folder.toStdString() << '/' << file.toStdString();
        }
    }
}

TEST(SourceFiles, areShortEnoughToBeRead)
{
    constexpr qsizetype MOST_LINES = 700;
    for (char const *top : {"platform", "src", "tests", "bench", "fuzz", "examples"}) {
        QDirIterator it(ROOT.filePath(top), {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QString const file = ROOT.relativeFilePath(it.next());
            EXPECT_LE(contentOf(file).count(QLatin1Char('\n')), MOST_LINES) << file.toStdString();
        }
    }
}

} // namespace
