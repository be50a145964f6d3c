// ZemFig2Element.h: Element, the base of everything that stands on a page.
// Layer: element. An element is used from the thread that owns its figure; elements are created on one thread only.
#pragma once

#include "ZemFig2ElementAttributes.h"
#include "ZemFig2FillStyle.h"
#include "ZemFig2LineStyle.h"

#include <ZemAlignment.h>
#include <ZemColor.h>
#include <ZemFont.h>
#include <ZemIdentifiers.h>
#include <ZemPolygon2d.h>
#include <ZemRect.h>
#include <ZemStream.h>
#include <ZemTObject.h>
#include <ZemVec.h>

#include <QtCore/QString>

#include <iosfwd>
#include <memory>
#include <vector>

namespace Zem::Legend2 {
class Data;
class HistogramData;
class Legend;
class ToleranceParams;
} // namespace Zem::Legend2

namespace Zem::Fig2 {

class Connector;
class Figure;
class FigureTokenInterface;
class Group;
class ImageImportInfo;
class Painter;

/// Identity, place, looks, selection and connectors of an element, the update of its dynamic data, and its three
/// persistent forms. All positions and sizes are page millimetres, x to the right, y down; angles are radians in the
/// sense of Rotation.
///
/// A Group owns its children unless isExternallyManaged; a connector belongs to the two elements it joins: the
/// destructor of either deletes it and takes it from the other.
///
/// What a concrete element can do is asked through the has... operations; a setter that an element does not support
/// throws ProgError and leaves the element as it was. Every setter of persistent state clears the valid flag, which
/// update sets again.
class Element : public TObject
{
public:
    /// Stored in files: never renumber.
    enum Type_t : unsigned int {
        LINE = 0,
        RECTANGLE = 1,
        ELLIPSE = 2,
        POLYGON = 3,
        LABEL = 4,
        CHART = 5,
        GENERIC_CHART = 6,
        LEGEND = 7,
        CHART_LEGEND = 8,
        IMAGE = 9,
        LOGO = 10,
        GROUP = 11,
        SNAPSHOT = 12,
        IMAGE_LABEL = 13,
        SNAPSHOT_FRAME = 14
    };
    /// What counts or walks the types asks this; every type has its texts and its answer in create.
    static constexpr unsigned int NUMBER_OF_TYPES = SNAPSHOT_FRAME + 1;

    using ConnectorIterator = std::vector<Connector *>::iterator;
    using ConnectorConstIterator = std::vector<Connector *>::const_iterator;

    static constexpr Color DEFAULT_TEXT_COLOR{0, 0, 0};
    /// The blue is one less than the others on purpose, so that the colour can be told from a chosen grey.
    static constexpr Color ERROR_BACKGROUND_COLOR{200, 200, 199, 127};

    static constexpr QLatin1StringView PARAM_TYPE{"type"};
    static constexpr QLatin1StringView PARAM_ORIGIN{"origin"};
    static constexpr QLatin1StringView PARAM_VISIBLE{"visible"};
    static constexpr QLatin1StringView PARAM_SIZE{"size"};
    static constexpr QLatin1StringView PARAM_LINK_TO_3D{"link_to_3d"};
    static constexpr QLatin1StringView PARAM_AUTO_SIZE{"auto_size"};
    static constexpr QLatin1StringView PARAM_MAXIMIZE{"maximize"};
    static constexpr QLatin1StringView PARAM_ANGLE{"angle"};
    static constexpr QLatin1StringView PARAM_BORDER{"border"};
    static constexpr QLatin1StringView PARAM_BACKGROUND{"background"};
    static constexpr QLatin1StringView PARAM_FONT{"font"};
    static constexpr QLatin1StringView PARAM_FONT_COLOR{"font_color"};
    static constexpr QLatin1StringView PARAM_USE_SYSTEM_FONT{"use_system_font"};
    static constexpr QLatin1StringView PARAM_HIGHLIGHT_COLOR{"highlight_color"};
    static constexpr QLatin1StringView PARAM_PIVOT_ALIGNMENT_X{"pivot_align_x"};
    static constexpr QLatin1StringView PARAM_PIVOT_ALIGNMENT_Y{"pivot_align_y"};
    static constexpr QLatin1StringView PARAM_MARGIN{"margin"};
    static constexpr QLatin1StringView PARAM_SPACING{"spacing"};

    ~Element() override;

    /// An element of the type with its defaults, owned by the caller; null for an unknown type. Throws ProgError for
    /// image labels, which come from their creators.
    static Element *create(Type_t type);

    /// A copy with a new id, without figure, parent, name and connectors. Owned by the caller.
    virtual Element *copy() const = 0;
    /// A rough footprint in bytes, for caches.
    virtual unsigned int getEstimatedObjectSize() const = 0;

    Type_t getType() const { return type_; }
    /// Names the element anew, its class stays: a group stores it as a `type`, and reads that type's class from its
    /// blocks. Meant for a class that stores what the class of `type` stores.
    void setType(Type_t type);
    /// The type for the user, translated.
    QString getTypeName() const;

    int getId() const { return id_; }
    /// Gives the element the next free id.
    void updateId();

    /// Not owned; null outside a figure.
    Figure *getFigure() const { return figure_; }
    /// Also gives the element a name that is unique among those of the figure.
    void setFigure(Figure *figure);
    /// Not owned; null for a root and outside a tree.
    Group *getParent() const { return parent_; }
    void setParent(Group *parent) { parent_ = parent; }

    /// Where the element stands and about what it turns: the centre of areas, the first point of lines.
    virtual BaVec2d<double> const &getOrigin() const { return origin_; }
    virtual void setOrigin(BaVec2d<double> const &origin);
    /// The point that the pivot alignment names: of areas a corner, the middle of a side or the centre, as turned. To
    /// set it moves the element.
    virtual BaVec2d<double> getAlignmentOrigin() const = 0;
    virtual void setAlignmentOrigin(BaVec2d<double> const &point) = 0;
    virtual void moveBy(BaVec2d<double> const &delta);

    virtual bool hasSize() const { return false; }
    BaVec2d<double> const &getSize() const { return size_; }
    void setSize(BaVec2d<double> const &size);
    virtual bool hasMinimumSize() const { return false; }
    /// Throws ProgError unless the element has one.
    virtual BaVec2d<double> getMinimumSize() const;
    virtual bool hasAutoSize() const { return false; }
    bool getAutoSize() const { return autoSize_; }
    void setAutoSize(bool autoSize);
    virtual bool hasMaximize() const { return false; }
    bool getMaximize() const { return maximize_; }
    void setMaximize(bool maximize);
    virtual bool canLinkTo3D() const { return false; }
    bool getLinkTo3D() const { return linkTo3D_; }
    void setLinkTo3D(bool linkTo3D);

    virtual bool hasAngle() const { return false; }
    double getAngle() const { return angle_; }
    virtual void setAngle(double angle);
    virtual bool hasBackground() const { return false; }
    FillStyle const &getBackground() const { return background_; }
    virtual void setBackground(FillStyle const &background);
    virtual bool hasBorder() const { return false; }
    LineStyle const &getBorder() const { return border_; }
    virtual void setBorder(LineStyle const &border);

    virtual bool hasFont() const { return false; }
    /// The font in force: the system's label font when the element uses it, else the user's.
    Font getFont() const;
    Font const &getUserFont() const { return userFont_; }
    virtual void setFont(Font const &font);
    bool getUseSystemFont() const { return useSystemFont_; }
    void setUseSystemFont(bool useSystemFont);
    virtual bool hasFontColor() const { return hasFont(); }
    Color const &getFontColor() const { return fontColor_; }
    virtual void setFontColor(Color const &color);

    virtual bool hasPivotAlignment() const { return false; }
    Alignment_t getPivotAlignmentX() const { return pivotAlignmentX_; }
    virtual void setPivotAlignmentX(Alignment_t alignment);
    Alignment_t getPivotAlignmentY() const { return pivotAlignmentY_; }
    virtual void setPivotAlignmentY(Alignment_t alignment);
    virtual bool hasMargin() const { return false; }
    double getMargin() const { return margin_; }
    virtual void setMargin(double margin);
    virtual bool hasSpacing() const { return false; }
    virtual bool getSpacingUsed() const { return hasSpacing(); }
    double getSpacing() const { return spacing_; }
    virtual void setSpacing(double spacing);

    virtual bool hasLegendData() const { return false; }
    /// Copies the colour scale of what the element shows. False, and nothing is written but `canDrawColors`, when there
    /// is none now. `histogram` and `canDrawColors` may be null. Throws ProgError unless hasLegendData().
    virtual bool getLegendData(FigureTokenInterface const *tokens, Legend2::Legend *legend, Legend2::Data *data,
                               bool *showTolerances, Legend2::ToleranceParams *tolerance,
                               Legend2::HistogramData *histogram, bool *canDrawColors) const;

    /// Whether the element has any of the attributes.
    bool hasAttributes(ElementAttributes const &attributes) const;

    /// For computeRenderingOrder of the figure, element by element; draw does not ask.
    bool getVisible() const { return visible_; }
    void setVisible(bool visible);
    bool isSelected() const { return selected_; }
    void setSelected(bool selected);
    bool isHighlighted() const { return highlighted_; }
    void setHighlighted(bool highlighted);
    Color const &getHighlightColor() const { return highlightColor_; }
    void setHighlightColor(Color const &color);
    /// Kept for the application alone, and not stored.
    bool isTemporarilyInvisible() const { return temporarilyInvisible_; }
    void setTemporarilyInvisible(bool invisible) { temporarilyInvisible_ = invisible; }
    /// A group does not delete such a child.
    bool isExternallyManaged() const { return externallyManaged_; }
    void setExternallyManaged(bool externallyManaged) { externallyManaged_ = externallyManaged; }

    /// Whether polygons and dynamic data are up to date.
    bool isValid() const { return valid_; }
    void invalidate() { valid_ = false; }
    /// The version of the element block last read by load, -1 when none was.
    int getBlockVersion() const { return blockVersion_; }

    /// What is known of the older file that the element came from, null for nothing; owned here.
    ImageImportInfo const *getImportInfo() const { return importInfo_.get(); }
    ImageImportInfo *getImportInfo() { return importInfo_.get(); }
    /// Takes ownership and deletes the one before. May be null.
    void setImportInfo(ImageImportInfo *info);

    /// Outline without the border; its points are the drag points.
    Polygon2d const &getDragPolygon() const { return dragPolygon_; }
    /// Outline with the border.
    Polygon2d const &getCoveredPolygon() const { return coveredPolygon_; }
    /// What must be redrawn when the element changes.
    Polygon2d const &getUpdatePolygon() const { return updatePolygon_; }
    virtual Polygon2d computeCoveredPolygon(bool includeBorder) const = 0;
    /// Whether the outline without the border lies in the rectangle; true for an empty outline.
    bool isInBounds(Rect const &rect) const;
    /// Whether the bounding rectangle of the update polygon meets the rectangle.
    bool intersects(Rect const &rect) const;
    /// Hit test. An element with a size below 0.1 is hit up to 2.0 from its origin.
    virtual bool isPointIn(BaVec2d<double> const &point) const;

    /// Moves one point of the drag polygon to `position`. False when the element refuses.
    virtual bool dragPointMove(int index, BaVec2d<double> const &position);
    /// Whether the element has a handle for its content, and then where.
    virtual bool hasHandle(BaVec2d<double> *position) const;
    /// Each throws ProgError when the element has no handle.
    virtual void handleDragStart();
    virtual void handleMove(BaVec2d<double> const &delta);
    virtual void handleDragEnd();

    virtual bool isTokenUsed(QString const &token) const = 0;
    virtual bool isDataValid(StageIdentifier const &stage, FigureTokenInterface const *tokens) const = 0;
    /// Brings the element up to date. `polygon` may be null; it receives the area before and after. The result is
    /// whether something was recomputed that shows.
    virtual bool update(StageIdentifier const &stage, FigureTokenInterface const *tokens, Polygon2d *polygon);
    /// Recomputes all that depends on stage and tokens, and the three polygons. Called by update.
    virtual void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) = 0;
    /// Draws one step, counted from 0; true means that the element has finished.
    virtual bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const = 0;

    virtual bool canConnectTo(Element const *target, QString const &point) const;
    /// Joins this element to `target`. Throws ProgError when canConnectTo answers no. Owned by the two elements.
    virtual Connector *connect(Element *target, QString const &point);
    /// Ends and deletes the first such connector. Throws ProgError when there is none.
    void disconnect(Element *target, QString const &point);
    /// The two ends of a connector of this element on the page; false when it has none to show.
    virtual bool computeConnectorPoints(Connector const *connector, FigureTokenInterface const *tokens,
                                        BaVec2d<double> *from, BaVec2d<double> *to) const;
    /// The target of the first connector that begins here, null when there is none. `point`, when given, receives the
    /// target's connection name.
    Element *getConnectorTarget(QString *point) const;
    ConnectorIterator getConnectorBegin() { return connectors_.begin(); }
    ConnectorIterator getConnectorEnd() { return connectors_.end(); }
    ConnectorConstIterator getConnectorBegin() const { return connectors_.begin(); }
    ConnectorConstIterator getConnectorEnd() const { return connectors_.end(); }

    /// Stream blocks. `a` and `b` are handed on and mean nothing here. load throws IO::StreamException and leaves the
    /// element partly read.
    virtual void load(IO::InStream *stream, int a, int b);
    virtual void save(IO::OutStream *stream, int a, int b) const;
    /// Text form. Reading a newer version puts the stream into its failed state or throws IO::StreamException.
    virtual std::istream &loadFromStream(std::istream &stream);
    virtual std::ostream &saveToStream(std::ostream &stream) const;
    /// Named parameters, the type first. Reading takes the entries that exist out of `parameters`; it throws ParamError
    /// for a bad value or one that the element cannot have, what was read before it staying in the element.
    virtual QString getParameterString() const;
    virtual void createFromParameterString(QString &parameters);
    /// The same for parameter strings of an older release.
    void createFromV541ParameterString(QString &parameters);

    /// The word for a type in parameter strings; empty for a number outside the enumeration.
    static QString getTypeParameterName(Type_t type);
    /// False for an unknown word; then `type` is unchanged.
    static bool getTypeFromParameterName(QString const &name, Type_t *type);

protected:
    explicit Element(Type_t type);
    Element(Element const &other);
    /// Copies every member as it is, ids and pointers included: for the assignment of derived values only.
    Element &operator=(Element const &) = default;

    /// The number that the next element gets. Of the process, and of no thread in particular.
    static int _id_counter;

    /// Called while the element is still in its figure, before it leaves; nothing here. An element that has told
    /// something to an interface of the figure takes it back.
    virtual void leavingFigure() {}

    /// Throws ProgError with `text` unless `supported`.
    static void requireSupport(bool supported, char const *function, unsigned int line, char const *text);

    Polygon2d dragPolygon_{true};
    Polygon2d coveredPolygon_{true};
    Polygon2d updatePolygon_{true};

private:
    friend class Figure;
    friend class Group;

    struct BlockExtras;
    template <class Archive, class Self, class Extras>
    static void blockFields(Archive &archive, Self &self, Extras &extras);
    template <class Archive, class Self>
    static void textItems(Archive &archive, Self &self);
    template <class Reader>
    void readCommonParameters(Reader &reader);
    template <class Reader>
    void readFrameParameters(Reader &reader, QString &parameters);
    void createScriptObject();
    void joinFigure(Figure *figure);
    void giveName(Figure *figure);
    void addConnector(Connector *connector);
    void removeConnector(Connector *connector);
    bool dropConnector(Connector const *connector);
    void loadConnectors(IO::InStream *stream, unsigned int count, int a, int b);

    Type_t type_;
    int id_;
    bool selected_ = false;
    bool valid_ = false;
    BaVec2d<double> origin_{0.0, 0.0};
    BaVec2d<double> size_{0.0, 0.0};
    bool visible_ = true;
    bool linkTo3D_ = false;
    bool autoSize_ = false;
    bool maximize_ = false;
    double angle_ = 0.0;
    LineStyle border_{0.1, LineStyle::STYLE_NONE, Color(0, 0, 0)};
    FillStyle background_;
    Font userFont_;
    Font appliedFont_;
    bool useSystemFont_ = false;
    Color fontColor_ = DEFAULT_TEXT_COLOR;
    bool highlighted_ = false;
    Color highlightColor_{8, 8, 132};
    Alignment_t pivotAlignmentX_ = ALIGN_BEGIN;
    Alignment_t pivotAlignmentY_ = ALIGN_BEGIN;
    double margin_ = 1.0;
    double spacing_ = 1.0;
    Figure *figure_ = nullptr;
    Group *parent_ = nullptr;
    std::vector<Connector *> connectors_;
    bool externallyManaged_ = false;
    int blockVersion_ = -1;
    bool temporarilyInvisible_ = false;
    std::shared_ptr<ImageImportInfo> importInfo_; // shared by assigned values only
};

} // namespace Zem::Fig2
