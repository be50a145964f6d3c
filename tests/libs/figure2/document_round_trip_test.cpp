// A document that was read and is saved again is the same to the byte, whatever the locale of the process.
#include "generated_elements.h"
#include "probe_elements.h"

#include <BlockCrafter.h>
#include <ZemFig2Chart.h>
#include <ZemFig2Figure.h>
#include <ZemFig2Image.h>
#include <ZemFig2Snippet.h>
#include <ZemFig2Template.h>

#include <QtCore/QLocale>

#include <locale>
#include <rapidcheck/gtest.h>

namespace Zem::Fig2 {
namespace {

constexpr int DOCUMENTS = 10; ///< of each of the hundred rounds

/// Ids run on in the process: here each document gets the same ones.
class FirstId : public BareElement
{
public:
    static void reset() { _id_counter = 1; }
};

/// Numbers with other signs than C has.
class ForeignNumbers : public std::numpunct<char>
{
public:
    ForeignNumbers(char point, char separator) : point_(point), separator_(separator) {}

protected:
    char do_decimal_point() const override { return point_; }
    char do_thousands_sep() const override { return separator_; }
    std::string do_grouping() const override { return "\3"; }

private:
    char point_;
    char separator_;
};

/// The locale of the process, of Qt and of the standard streams, while it lives.
class ForeignLocale
{
public:
    ForeignLocale(char const *name, char point, char separator)
        : before_(std::locale::global(std::locale(std::locale::classic(), new ForeignNumbers(point, separator))))
    {
        QLocale::setDefault(QLocale(QString::fromLatin1(name)));
    }
    ~ForeignLocale()
    {
        QLocale::setDefault(QLocale::c());
        std::locale::global(before_);
    }
    ForeignLocale(ForeignLocale const &) = delete;
    ForeignLocale &operator=(ForeignLocale const &) = delete;

private:
    std::locale before_;
};

void fill(Figure *figure)
{
    figure->setRoot(static_cast<Group *>(generateElement(Element::GROUP).release()));
}

template <class Document>
std::string saved(Document const &document)
{
    return Support::streamOf([&](IO::OutStream &stream) {
        if constexpr (std::is_base_of_v<Figure, Document>)
            document.save(&stream, -1, -1);
        else
            document.save(&stream);
    });
}

template <class Document>
std::string savedAgain(std::string const &bytes)
{
    Document read;
    FirstId::reset();
    Support::readFrom(bytes, [&](IO::InStream &stream) {
        if constexpr (std::is_base_of_v<Figure, Document>)
            read.load(&stream, -1, -1);
        else
            read.load(&stream);
    });
    return saved(read);
}

/// Saved, read and saved again in each of the locales: every time the same bytes.
template <class Document>
void expectSameBytes(Document const &document)
{
    std::string const bytes = saved(document);
    std::string const once = savedAgain<Document>(bytes);
    RC_ASSERT(Support::blocksOf(once) == Support::blocksOf(bytes));
    for (auto const &[name, point, separator] : {std::tuple("C", '.', ','), std::tuple("de_DE", ',', '.'),
                                                 std::tuple("ar_EG", ';', ' '), std::tuple("hi_IN", '\'', '_')}) {
        ForeignLocale const locale(name, point, separator);
        RC_ASSERT(saved(document) == bytes);
        RC_ASSERT(savedAgain<Document>(once) == once);
    }
}

RC_GTEST_PROP(DocumentRoundTrip, ofAFigureIsTheSameToTheByteInEveryLocale, ())
{
    for (int i = 0; i < DOCUMENTS; ++i) {
        Figure figure;
        fill(&figure);
        expectSameBytes(figure);
    }
}

RC_GTEST_PROP(DocumentRoundTrip, ofATemplateIsTheSameToTheByteInEveryLocale, ())
{
    FigureTemplate pattern;
    fill(&pattern);
    for (auto it = pattern.getElementBegin(); it != pattern.getElementEnd(); ++it) {
        if (it->getType() == Element::GENERIC_CHART)
            pattern.setTypeHint(*it, QStringLiteral("time; 1,5 %1").arg(it->getId()));
    }
    expectSameBytes(pattern);
}

RC_GTEST_PROP(DocumentRoundTrip, ofASnippetIsTheSameToTheByteInEveryLocale, ())
{
    auto figure = std::make_unique<Figure>();
    fill(figure.get());
    Snippet snippet;
    snippet.setFigure(figure.release());
    expectSameBytes(snippet);
}

} // namespace
} // namespace Zem::Fig2
