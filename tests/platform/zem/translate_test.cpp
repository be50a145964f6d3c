#include <ZemTranslate.h>

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QLocale>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTranslator>

#include <memory>

namespace {

/// Translates one text.
class OneText : public QTranslator
{
public:
    QString translate(char const *context, char const *text, char const *, int) const override
    {
        return qstrcmp(context, "Shop") == 0 && qstrcmp(text, "bread") == 0 ? QString("Brot") : QString();
    }
    bool isEmpty() const override { return false; }
};

/// The hash by which a translation file finds its texts.
quint32 elfHash(QByteArray const &text)
{
    quint32 hash = 0;
    for (char c : text) {
        hash = (hash << 4) + static_cast<unsigned char>(c);
        quint32 const high = hash & 0xf0000000U;
        hash = (hash ^ (high >> 24)) & ~high;
    }
    return hash;
}

QByteArray section(quint8 tag, QByteArray const &content)
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << tag << content; // as tag, big-endian length, content
    return bytes;
}

/// A translation file (.qm) with one text in the context "Shop".
QByteArray translationFile(QByteArray const &text, QString const &translation)
{
    QByteArray utf16;
    QDataStream stream(&utf16, QIODevice::WriteOnly);
    for (QChar c : translation) {
        stream << c.unicode();
    }
    QByteArray hashes;
    QDataStream(&hashes, QIODevice::WriteOnly) << elfHash(text) << quint32(0);
    return QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd") + section(0x42, hashes) +
           section(0x69, section(3, utf16) + section(6, text) + section(7, "Shop") + '\x01');
}

/// A user who speaks German and keeps the translations in a folder of his own.
class InstallTranslator : public testing::Test
{
protected:
    void SetUp() override
    {
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        qputenv("ZEM_TRANSLATIONS", QFile::encodeName("/nowhere:" + folder_.path()));
    }
    void TearDown() override
    {
        qDeleteAll(translators());
        qunsetenv("ZEM_TRANSLATIONS");
        QLocale::setDefault(QLocale::c());
    }

    static QList<QTranslator *> translators() { return QCoreApplication::instance()->findChildren<QTranslator *>(); }
    void write(QString const &name, QByteArray const &bytes)
    {
        QFile file(folder_.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder_;
};

} // namespace

TEST(Translate, givesTheTextItselfWhenThereIsNoTranslation)
{
    EXPECT_EQ(Zem::translate("Shop", "größer"), QString::fromUtf8("größer"));
}

TEST(Translate, givesTheTextOfTheUsersLanguage)
{
    OneText translator;
    QCoreApplication::installTranslator(&translator);
    EXPECT_EQ(Zem::translate("Shop", "bread"), "Brot");
    EXPECT_EQ(Zem::translate("Bank", "bread"), "bread");
    QCoreApplication::removeTranslator(&translator);
}

TEST_F(InstallTranslator, loadsTheTextsOfTheUsersLanguage)
{
    write("Bakery_de.qm", translationFile("bread", "Brot"));
    Zem::installTranslator("Bakery");
    EXPECT_EQ(Zem::translate("Shop", "bread"), "Brot");
}

TEST_F(InstallTranslator, loadsALibraryOnce)
{
    write("Bakery_de.qm", translationFile("bread", "Brot"));
    Zem::installTranslator("Bakery");
    Zem::installTranslator("Bakery");
    EXPECT_EQ(translators().size(), 1);
}

TEST_F(InstallTranslator, doesNothingWhenThereIsNoFileForTheLanguage)
{
    write("Bakery_fr.qm", translationFile("bread", "pain"));
    Zem::installTranslator("Bakery");
    EXPECT_TRUE(translators().isEmpty());
}

TEST_F(InstallTranslator, doesNothingWithADamagedFile)
{
    write("Bakery_de.qm", "no translation");
    Zem::installTranslator("Bakery");
    EXPECT_TRUE(translators().isEmpty());
}
