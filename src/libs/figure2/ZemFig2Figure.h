// ZemFig2Figure.h: Figure, the document.
// Layer: document. A figure and all that hangs from it belong to one thread; update, draw and changes of the tree must
// not overlap.
#pragma once

#include "ZemFig2FillStyle.h"
#include "ZemFig2Group.h"

#include <ZemErrorLog.h>
#include <ZemIdentifiers.h>
#include <ZemPolygon2d.h>
#include <ZemStream.h>
#include <ZemTObject.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <list>
#include <memory>
#include <unordered_map>
#include <vector>

namespace Zem {
class ScriptObject;
} // namespace Zem

namespace Zem::Fig2 {

class ChartInterface;
class FigureTokenInterface;
class ImageInterface;
class Invalidator;
class Painter;

/// One page with a background and a tree of elements. The application calls update whenever stage or data may have
/// changed and then draw. All lengths are page millimetres. Owns its root and through it all elements; interfaces and
/// invalidators stay the application's and outlive the figure or are taken away before.
class Figure : public TObject
{
public:
    static constexpr QLatin1StringView FILE_TYPE_ID{"Figure"};
    static constexpr QLatin1StringView FILE_EXTENSION{".fig"};

    /// An empty white page of 210 x 297.
    Figure();
    explicit Figure(FigureTokenInterface const *tokenInterface);
    /// Copies the elements with the connectors among them; selection and invalidators are not copied.
    Figure(Figure const &other);
    ~Figure() override;

    /// Owned by the figure; never null but while loading.
    Group *getRoot() const { return root_; }
    /// Deletes the old root and takes ownership of the new one.
    void setRoot(Group *root);
    BaVec2d<double> const &getSize() const { return size_; }
    void setSize(BaVec2d<double> const &size) { size_ = size; }
    FillStyle const &getBackground() const { return background_; }
    void setBackground(FillStyle const &background) { background_ = background; }
    /// Not owned. Without one, update does nothing and nothing but the background is drawn.
    FigureTokenInterface const *getTokenInterface() const { return tokenInterface_; }
    void setTokenInterface(FigureTokenInterface const *tokenInterface) { tokenInterface_ = tokenInterface; }
    /// Not owned, and may be destroyed before the figure. The figure registers with it; a copy does so too.
    ChartInterface *getChartInterface() const { return chartInterface_; }
    void setChartInterface(ChartInterface *chartInterface);
    /// The same for what image labels show.
    ImageInterface *getImageInterface() const { return imageInterface_; }
    void setImageInterface(ImageInterface *imageInterface);
    /// The parent of the script objects of all elements. Owned by the figure.
    ScriptObject *getElementsScriptObject() const { return elementsScriptObject_.get(); }

    /// Throws ProgError when it is registered already. Not owned.
    void registerInvalidator(Invalidator *invalidator);
    /// An unknown one is ignored.
    void unregisterInvalidator(Invalidator *invalidator);
    /// The next update reports the whole page.
    void invalidate() { invalidatePage_ = true; }

    /// Recomputes, for the stage, the elements that were changed, those with a token whose getModifiedCounter moved or
    /// that had no value, and those connected to one of these; tells the invalidators what changed. Which stage came
    /// last is not looked at: for another one, `force` must be true, which recomputes every element. True when
    /// something changed.
    bool update(StageIdentifier const &stage, bool force);
    /// Draws the page as of the last update: background, connector lines, then the elements in layer order, also those
    /// that are not visible, which computeRenderingOrder leaves out.
    void draw(Painter *painter) const;
    void drawBackground(Painter *painter) const;
    void drawConnectorLines(Painter *painter) const;
    /// For callers that draw element by element: replaces `order` by the visible elements in the order of drawing.
    /// Image labels stand behind their image and vanish with it. Throws ProgError for an element of no known type, and
    /// for one named image or snapshot frame that is none.
    void computeRenderingOrder(std::vector<Element const *> *order) const;

    /// All elements below the root, groups before their children.
    Group::ElementIterator getElementBegin() { return root_->getElementBegin(); }
    Group::ElementIterator getElementEnd() { return root_->getElementEnd(); }
    Group::ElementConstIterator getElementBegin() const { return std::as_const(*root_).getElementBegin(); }
    Group::ElementConstIterator getElementEnd() const { return std::as_const(*root_).getElementEnd(); }

    /// Selects or deselects the element of the top level that `element` belongs to.
    void selectElement(Element *element, bool selected);
    void clearSelection();
    /// Called by the elements when something changed that the selection depends on.
    void updateElementSelection(Element *element);
    /// The selected elements of the top level.
    std::vector<Element *> getSelectedElements() const { return {selection_.begin(), selection_.end()}; }

    /// The element of the top level that is hit at `point`, the one painted last; null for none.
    Element *getElementAt(BaVec2d<double> const &point) const;
    /// Whether something of it lies on the page, less a rim of 0.1 %.
    bool isInBounds(Polygon2d const &polygon) const;
    bool isInBounds(Element const *element) const;

    /// Removes all groups without children, but not the root. True when there was one.
    bool removeEmptyGroups();
    bool isTokenUsed(QString const &token) const;
    /// The parameters of all elements as an indented text, without ids, names, connectors and the page itself: for
    /// people, and to compare figures.
    QString toString() const;

    virtual unsigned int getEstimatedObjectSize() const;
    /// The stream blocks of a figure. load throws IO::StreamException, and ProgError for an image label of a type
    /// without ImageLabelCreator; the elements of before are gone then and the page is empty. `a` and `b` are handed on
    /// to the elements.
    virtual void load(IO::InStream *stream, int a, int b);
    virtual void save(IO::OutStream *stream, int a, int b) const;
    /// For readers of damaged files: takes the place of the root, with elements that were loaded one by one, and joins
    /// their connectors as load does. A connector without its target, or to one that it cannot be connected to, is
    /// deleted; the result are the elements that it began at, one for each. The ids stay those of the file.
    std::vector<Element *> setLoadedRoot(Group *root);

    /// Whether a file that begins with these bytes is one for loadFigure.
    static bool canOpenFile(std::vector<char> const &head);
    /// Null when the file cannot be read; the reason goes to `log`, which is not null. Owned by the caller. Interfaces
    /// are the caller's to set, and the figure is to be updated before it is drawn. Throws ProgError as load does.
    static Figure *loadFigure(QString const &fileName, ErrorLog *log);
    /// Stores page, elements and connectors, no data of the interfaces. False when the file cannot be written, which
    /// leaves an old file as it was; the reason goes to `log`, which is not null. A file that cannot even be opened is
    /// told in `log` alone, the result is true then. What a figure file does not keep is told there too.
    static bool saveFigure(QString const &fileName, Figure const *figure, ErrorLog *log);

protected:
    /// Replaces the page by a copy of the other one, as the copy constructor makes it; what listens to this figure
    /// stays. For derived classes alone: of a figure no elements are to be assigned away under the hands of those who
    /// hold them.
    Figure &operator=(Figure const &other);

    /// Called while loading, when elements and connectors stand and have the ids of the file.
    virtual void elementsLoaded();

private:
    friend class Group;

    void createScriptObjects();
    void adoptRoot(Group *root);
    Element *topLevelElement(Element *element) const;
    bool isTopLevelSelected(Element const *top) const;
    bool isListed(Element const *top) const { return selectionPlaces_.contains(top); }
    void list(Element *top);
    void unlist(Element const *top);
    void unlistAll();
    void forgetSelection(Element const *element, Group *group);
    bool updateElements(StageIdentifier const &stage, Polygon2d *modified, bool (*wanted)(Element::Type_t));
    void loadPage(IO::InStream *stream);
    void loadElements(IO::InStream *stream, int a, int b);
    void connectLoadedElements();
    template <class Dangling>
    void connectLoadedElements(Dangling const &dangling);

    FigureTokenInterface const *tokenInterface_ = nullptr;
    ChartInterface *chartInterface_ = nullptr;
    ImageInterface *imageInterface_ = nullptr;
    Group *root_ = nullptr;
    BaVec2d<double> size_{210.0, 297.0};
    FillStyle background_{Color(255, 255, 255)};
    std::vector<Invalidator *> invalidators_;
    bool invalidatePage_ = false;
    // In the order of selection, with the place of each: selecting everything must not walk the list each time.
    std::list<Element *> selection_;
    std::unordered_map<Element const *, std::list<Element *>::iterator> selectionPlaces_;
    std::unique_ptr<ScriptObject> elementsScriptObject_;
};

} // namespace Zem::Fig2
