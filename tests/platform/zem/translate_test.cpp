#include <ZemTranslate.h>

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTranslator>

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

TEST(InstallTranslator, doesNothingWhenThereIsNoFile)
{
    Zem::installTranslator("NoSuchLibrary");
    EXPECT_TRUE(QCoreApplication::instance()->findChildren<QTranslator *>().isEmpty());
}
