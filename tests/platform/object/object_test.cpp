#include <ZemErrorLog.h>
#include <ZemObject.h>
#include <ZemStream.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <sstream>

using Zem::ErrorLog;

namespace {

/// One number is all it keeps.
class Note : public Zem::Object
{
public:
    explicit Note(int number_, QString const &fileType = "Note") : Object(fileType), number(number_) {}

    int number;
    mutable int lastFirst = 0;
    mutable int lastSecond = 0;

protected:
    void loadData(Zem::IO::InStream &stream, int first, int second) override
    {
        remember(first, second);
        stream.openBlock();
        stream.readInt(&number);
        stream.closeBlock();
    }
    void saveData(Zem::IO::OutStream &stream, int first, int second) const override
    {
        remember(first, second);
        stream.beginBlock(4, 1);
        stream.writeInt(number);
        stream.endBlock();
    }

private:
    void remember(int first, int second) const
    {
        lastFirst = first;
        lastSecond = second;
    }
};

class ObjectFile : public testing::Test
{
protected:
    QTemporaryDir folder_;
    QString fileName_ = folder_.filePath("a.note");
    ErrorLog log_{false};
};

/// A stream of one block that holds the text, then the number.
std::string headerStream(unsigned int blockVersion, QString const &text)
{
    std::ostringstream bytes;
    Zem::IO::OutStream stream(&bytes, "Notes", 1);
    stream.beginBlock(Zem::IO::Stream::sizeOf(text), blockVersion);
    stream.writeString(text);
    stream.endBlock();
    stream.beginBlock(4, 1);
    stream.writeInt(5);
    stream.endBlock();
    stream.close();
    return bytes.str();
}

} // namespace

TEST_F(ObjectFile, readsBackWhatWasSaved)
{
    Note saved(42);
    EXPECT_TRUE(saved.saveHeader(fileName_, &log_, 1, 2));
    EXPECT_EQ(saved.getFileName(), fileName_);

    Note loaded(0);
    EXPECT_TRUE(loaded.loadHeader(fileName_, &log_, 3, 4));
    EXPECT_EQ(loaded.number, 42);
    EXPECT_EQ(loaded.getFileName(), fileName_);
    EXPECT_EQ(log_.getLog(), "");
}

TEST_F(ObjectFile, handsTheTwoNumbersOn)
{
    Note note(1);
    note.saveHeader(fileName_, nullptr, 3, 4);
    EXPECT_EQ(note.lastFirst, 3);
    EXPECT_EQ(note.lastSecond, 4);
    note.loadHeader(fileName_, nullptr, -1, 7);
    EXPECT_EQ(note.lastFirst, -1);
    EXPECT_EQ(note.lastSecond, 7);
}

TEST_F(ObjectFile, thatCannotBeWrittenIsReported)
{
    Note note(1);
    note.setFileName("before");
    EXPECT_FALSE(note.saveHeader(folder_.filePath("none/a.note"), &log_, -1, -1));
    EXPECT_TRUE(log_.getLog().contains("none/a.note"));
    EXPECT_TRUE(log_.getLog().endsWith('\n'));
    EXPECT_EQ(note.getFileName(), "before");
}

TEST_F(ObjectFile, thatDoesNotExistIsReported)
{
    Note note(1);
    EXPECT_FALSE(note.loadHeader(fileName_, &log_, -1, -1));
    EXPECT_TRUE(log_.getLog().contains("a.note"));
    EXPECT_EQ(note.getFileName(), "");
    EXPECT_FALSE(note.loadHeader(fileName_, nullptr, -1, -1));
}

TEST_F(ObjectFile, ofAnotherTypeIsRefused)
{
    Note(1, "Letter").saveHeader(fileName_, nullptr, -1, -1);
    Note note(7);
    EXPECT_FALSE(note.loadHeader(fileName_, &log_, -1, -1));
    EXPECT_EQ(log_.getLog(), QString("file '%1' is not of type 'Note'\n").arg(fileName_));
    EXPECT_EQ(note.number, 7);
}

TEST_F(ObjectFile, ofANewerVersionIsRefused)
{
    {
        Zem::IO::OutStream stream(fileName_, "Note", 2);
        stream.close();
    }
    EXPECT_FALSE(Note(7).loadHeader(fileName_, &log_, -1, -1));
    EXPECT_EQ(log_.getLog(), QString("file '%1' is of a newer version\n").arg(fileName_));
}

TEST_F(ObjectFile, thatIsCutOffIsReported)
{
    Note(1).saveHeader(fileName_, nullptr, -1, -1);
    QFile file(fileName_);
    file.resize(file.size() - 1);
    EXPECT_FALSE(Note(7).loadHeader(fileName_, &log_, -1, -1));
    EXPECT_FALSE(log_.getLog().isEmpty());
}

TEST(ObjectInAStream, keepsItsFileNameAndData)
{
    std::stringstream bytes;
    Note saved(42);
    saved.setFileName(QString::fromUtf8("größe.note"));
    Zem::IO::OutStream out(&bytes, "Notes", 1);
    saved.saveStreamHeader(out, 1, 2);
    out.close();

    Note loaded(0);
    Zem::IO::InStream in(&bytes);
    loaded.loadStreamHeader(in, 3, 4);
    EXPECT_EQ(loaded.number, 42);
    EXPECT_EQ(loaded.getFileName(), QString::fromUtf8("größe.note"));
    EXPECT_EQ(saved.lastSecond, 2);
    EXPECT_EQ(loaded.lastSecond, 4);
}

TEST(ObjectInAStream, refusesANewerBlock)
{
    std::istringstream known(headerStream(1, "x"));
    Zem::IO::InStream knownStream(&known);
    Note note(0);
    note.loadStreamHeader(knownStream, -1, -1);
    EXPECT_EQ(note.number, 5);

    std::istringstream newer(headerStream(2, "y"));
    Zem::IO::InStream newerStream(&newer);
    EXPECT_THROW(note.loadStreamHeader(newerStream, -1, -1), Zem::IO::StreamException);
    EXPECT_EQ(note.getFileName(), "x");
}
