// Documents of every version are read, and saved again they hold what is expected.
#include "GoldenDocuments.h"

#include <ZemFig2InitLibrary.h>

#include <QtCore/QCryptographicHash>

#include <gtest/gtest.h>
#include <sstream>

namespace Zem::Fig2 {
namespace {

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
            return "line " + std::to_string(number) + " behind \"" + above + "\": is \"" + leftLine +
                   "\", expected \"" + rightLine + "\"";
        above = leftLine;
    }
}

TEST(GoldenFiles, areReadAsTheyAreMeant)
{
    InitLibrary();
    QStringList const names = Support::goldenDocuments();
    ASSERT_FALSE(names.isEmpty());
    for (QString const &name : names) {
        SCOPED_TRACE(name.toStdString());
        Support::GoldenKind const &kind = Support::goldenKindOf(name);
        try {
            std::string const saved = kind.saveAgain(Support::goldenContent("files/" + name));

            EXPECT_EQ(firstDifference(Support::tellFile(Support::formatForms(), kind.form, saved),
                                      Support::goldenContent("files/" + name + ".txt").toStdString()),
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
    for (QString const &name : Support::goldenDocuments()) {
        QByteArray const sum =
            QCryptographicHash::hash(Support::goldenContent("files/" + name), QCryptographicHash::Sha256);
        sums += QString::fromLatin1(sum.toHex()) + QLatin1String("  ") + name;
    }
    sums.sort();
    QStringList expected = QString::fromUtf8(Support::goldenContent("SHA256SUMS")).split('\n', Qt::SkipEmptyParts);
    expected.sort();

    EXPECT_EQ(sums, expected);
}

} // namespace
} // namespace Zem::Fig2
