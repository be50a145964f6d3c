// Saves a document in the form that its first argument names to its second, and when that fails to its third.
// The result is 0 for the second, 1 for the third, 2 for neither. What went wrong goes to the standard error output.
#include <ZemFig2Calculator.h>
#include <ZemFig2Figure.h>
#include <ZemFig2InitLibrary.h>
#include <ZemFig2Label.h>
#include <ZemFig2Snippet.h>
#include <ZemFig2Template.h>

#include <QtCore/QCoreApplication>

#include <functional>
#include <map>
#include <memory>

namespace {

using namespace Zem::Fig2;
using Zem::ErrorLog;

constexpr int LABELS = 3;
constexpr qsizetype LABEL_LENGTH = 1000000; ///< more than a stream gathers before it writes

/// The word tells old and new documents apart.
void fill(Figure *figure, QString const &word)
{
    for (int i = 0; i < LABELS; ++i) {
        auto *const label = new Label;
        label->setText(word.repeated(LABEL_LENGTH / word.size()));
        figure->getRoot()->addChild(label);
    }
}

/// Saves the document to a file. What the log tells counts too: some forms give true for a file that cannot even be
/// opened.
using Save = std::function<bool(QString const &, ErrorLog *)>;

Save makeFigure(QString const &word)
{
    auto const figure = std::make_shared<Figure>();
    fill(figure.get(), word);
    return [figure](QString const &fileName, ErrorLog *log) {
        return Figure::saveFigure(fileName, figure.get(), log) && log->getLog().isEmpty();
    };
}

Save makeTemplate(QString const &word)
{
    auto const pattern = std::make_shared<FigureTemplate>();
    fill(pattern.get(), word);
    return [pattern](QString const &fileName, ErrorLog *log) {
        return pattern->save(fileName, log) && log->getLog().isEmpty();
    };
}

Save makeSnippet(QString const &word)
{
    auto const snippet = std::make_shared<Snippet>();
    auto figure = std::make_unique<Figure>();
    fill(figure.get(), word);
    snippet->setFigure(figure.release());
    return
        [snippet](QString const &fileName, ErrorLog *log) { return Snippet::saveFile(fileName, snippet.get(), log); };
}

std::map<QString, Save (*)(QString const &)> const FORMS{
    {"figure", makeFigure}, {"template", makeTemplate}, {"snippet", makeSnippet}};

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication const application(argc, argv);
    QStringList const arguments = QCoreApplication::arguments();
    if (arguments.size() != 5 || !FORMS.contains(arguments[1]))
        return 3;
    InitLibrary();
    Save const save = FORMS.at(arguments[1])(arguments[2]);
    for (int i = 3; i <= 4; ++i) {
        ErrorLog log(true);
        if (save(arguments[i], &log))
            return i - 3;
    }
    return 2;
}
