// ZemFig2Template.h: FigureTemplate, a figure used as a pattern.
// Layer: document. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2Figure.h"

#include <map>
#include <utility>
#include <vector>

namespace Zem::Fig2 {

/// A figure whose charts remember the type of data that they expect.
class FigureTemplate : public Figure
{
public:
    static constexpr QLatin1StringView TEMPLATE_FILE_TYPE_ID{"KRVFigureTemplate"};

    FigureTemplate() = default;
    /// The elements as Figure's copy takes them; without hints.
    explicit FigureTemplate(Figure const &figure);
    FigureTemplate(FigureTemplate const &other);
    /// Copies the page as the constructor does, and the hints as they are: deliberately they go on telling of the other
    /// template's elements, not of the copies.
    FigureTemplate &operator=(FigureTemplate const &other);
    ~FigureTemplate() override = default;

    /// Empty for none.
    QString getTypeHint(Element const *element) const;
    /// Hints of elements that are not in this template are not saved. Whoever deletes an element with a hint takes the
    /// hint back: it is known by the element's address.
    void setTypeHint(Element const *element, QString const &hint);
    /// Forgets all hints.
    void clearImportedData();

    using Figure::load;
    using Figure::save;
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    /// Takes in a file that is no template: an older figure, or one that begins with its own tokens.
    void import(IO::InStream *stream, int a, int b);

    static bool canOpenFile(std::vector<char> const &head);
    /// False when the file cannot be read or written; the reason goes to `log`, which is not null. A failed save leaves
    /// an old file as it was.
    bool load(QString const &fileName, ErrorLog *log);
    bool save(QString const &fileName, ErrorLog *log) const;

protected:
    void elementsLoaded() override;

private:
    std::vector<std::pair<int, QString>> collectHints() const;
    void importFigureWithTokens(IO::InStream *stream, int a, int b);
    void importOldFigure(IO::InStream *stream);

    std::map<int, Element *> loadedElements_;
    std::map<Element const *, QString> typeHints_;
};

} // namespace Zem::Fig2
