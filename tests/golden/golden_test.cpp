// Documents of every version are read, and saved again they hold what is expected.
#include "FormatPage.h"

#include <ZemFig2Figure.h>
#include <ZemFig2InitLibrary.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <gtest/gtest.h>
#include <memory>
#include <sstream>

namespace Zem::Fig2 {
namespace {

QString const FOLDER = QStringLiteral(ZEM_SOURCE_DIR "/tests/golden/");

QByteArray contentOf(QString const &name)
{
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
}

/// All documents, by name.
QStringList documents()
{
    QStringList names;
    for (QString const &name : QDir(FOLDER + "files").entryList(QDir::Files, QDir::Name)) {
        if (!name.endsWith(QLatin1String(".txt")))
            names += name;
    }
    return names;
}

Support::FormatForms const &forms()
{
    static Support::FormatForms const read = Support::readFormatPages(ZEM_SOURCE_DIR "/docs/formats");
    return read;
}

/// How the documents of one extension are read and written again.
struct Kind
{
    char const *extension;
    char const *form;
    std::string (*saveAgain)(QByteArray const &bytes);
};

std::string saveFigureAgain(QByteArray const &bytes)
{
    std::istringstream input(bytes.toStdString());
    IO::InStream stream(&input);
    Figure figure;
    figure.load(&stream, -1, -1);
    std::ostringstream output;
    IO::OutStream saved(&output, Figure::FILE_TYPE_ID, 1);
    figure.save(&saved, -1, -1);
    saved.close();
    return output.str();
}

constexpr Kind KINDS[] = {{"fig", "Figure file", saveFigureAgain}};

Kind const &kindOf(QString const &name)
{
    for (Kind const &kind : KINDS) {
        if (name.endsWith(QLatin1Char('.') + QLatin1String(kind.extension)))
            return kind;
    }
    throw std::runtime_error("no such kind of document: " + name.toStdString());
}

/// Where two texts part, for people; empty when they are equal.
std::string firstDifference(std::string const &is, std::string const &expected)
{
    std::istringstream left(is);
    std::istringstream right(expected);
    std::string above;
    for (int number = 1;; ++number) {
        std::string leftLine;
        std::string rightLine;
        bool const leftGood = static_cast<bool>(std::getline(left, leftLine));
        bool const rightGood = static_cast<bool>(std::getline(right, rightLine));
        if (!leftGood && !rightGood)
            return {};
        if (leftLine != rightLine || leftGood != rightGood)
            return "line " + std::to_string(number) + " behind \"" + above + "\": is \"" + leftLine + "\", expected \"" +
                   rightLine + "\"";
        above = leftLine;
    }
}

TEST(GoldenFiles, areReadAsTheyAreMeant)
{
    InitLibrary();
    ASSERT_FALSE(documents().isEmpty());
    for (QString const &name : documents()) {
        SCOPED_TRACE(name.toStdString());
        Kind const &kind = kindOf(name);
        try {
            std::string const saved = kind.saveAgain(contentOf(FOLDER + "files/" + name));

            EXPECT_EQ(firstDifference(Support::tellFile(forms(), kind.form, saved),
                                      contentOf(FOLDER + "files/" + name + ".txt").toStdString()),
                      "");
        } catch (std::exception const &error) {
            ADD_FAILURE() << error.what();
        }
    }
}

/// They stand for the files that users have: a change here is a change of those.
TEST(GoldenFiles, areNeverChanged)
{
    QStringList sums;
    QDir const files(FOLDER + "files");
    for (QString const &name : files.entryList(QDir::Files, QDir::Name)) {
        QByteArray const sum = QCryptographicHash::hash(contentOf(files.filePath(name)), QCryptographicHash::Sha256);
        sums += QString::fromLatin1(sum.toHex()) + QLatin1String("  ") + name;
    }
    sums.sort();
    QStringList expected = QString::fromUtf8(contentOf(FOLDER + "SHA256SUMS")).split('\n', Qt::SkipEmptyParts);
    expected.sort();

    EXPECT_EQ(sums, expected);
}

} // namespace
} // namespace Zem::Fig2
