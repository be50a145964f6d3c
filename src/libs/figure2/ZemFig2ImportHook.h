// ZemFig2ImportHook.h: how the application takes part in reading older figures.
// Layer: services. Used from the thread that loads figures.
#pragma once

#include <QtCore/QString>

#include <vector>

namespace Zem::Fig2 {

class Element;
class Figure;

/// The application derives from it and registers what it makes. Hooks are called in the order of registration.
class ImportHook
{
public:
    virtual ~ImportHook();
    /// Called last for every figure that was loaded.
    virtual void convertFigure(Figure *figure) = 0;
    /// The text of a label that was loaded; the text as it is here.
    virtual QString convertLabelText(Element const *element, QString const &text);

    static std::vector<ImportHook *> const &getImportHooks() { return hooks(); }
    /// Not owned; taken away before it is destroyed.
    static void registerImportHook(ImportHook *hook);
    /// Throws ProgError for one that is not registered.
    static void unregisterImportHook(ImportHook *hook);
    static void callConvertFigure(Figure *figure);
    /// Each hook gets the former one's text.
    static QString callConvertLabelText(Element const *element, QString const &text);

private:
    static std::vector<ImportHook *> &hooks();
};

} // namespace Zem::Fig2
