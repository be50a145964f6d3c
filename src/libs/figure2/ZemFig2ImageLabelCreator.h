// ZemFig2ImageLabelCreator.h: ImageLabelCreator, the factory of one type of image labels, and the registry of all.
// Layer: labels. Creators come and go on one thread; the registry is then only read.
#pragma once

#include <ZemStream.h>

#include <QtCore/QString>

#include <map>

namespace Zem::Fig2 {

class ImageLabel;

/// The classes of image labels are the application's: it makes a creator with new for each type that its figures may
/// hold, before it loads the first of them.
class ImageLabelCreator
{
public:
    /// Stored in files: never renumber.
    enum Type_t : unsigned int {
        TYPE_UNKNOWN = 0,
        TYPE_POINT = 1,
        TYPE_LINE = 2,
        TYPE_ANGLE = 3,
        TYPE_DISPLACEMENT_FIELD = 4,
        TYPE_IMPORTED_IMAGE_DATA = 5,
        TYPE_INFO_LABEL = 6,
        TYPE_STRAIN_GRID = 7,
        TYPE_STRAIN_SECTION = 8,
        TYPE_STAGE_POINT = 9,
        TYPE_DOF_ORIGIN = 10
    };
    static constexpr unsigned int NUMBER_OF_TYPES = TYPE_DOF_ORIGIN + 1;

    using Creators = std::map<Type_t, ImageLabelCreator const *>;

    ImageLabelCreator(ImageLabelCreator const &) = delete;
    ImageLabelCreator &operator=(ImageLabelCreator const &) = delete;
    /// Takes the creator from the registry. Throws ProgError when it is not there.
    virtual ~ImageLabelCreator() noexcept(false);

    /// A new label, which the caller owns.
    virtual ImageLabel *create() const = 0;
    /// The name of the type for the user, translated.
    virtual QString getDisplayName() const = 0;

    Type_t getType() const { return type_; }

    /// A new label of the type, by its creator; owned by the caller. Throws ProgError for a type without one.
    static ImageLabel *create(Type_t type);
    /// The type of a label and its blocks. What load makes is the caller's; it throws IO::StreamException, and
    /// ProgError for a type without a creator.
    static ImageLabel *load(IO::InStream *stream);
    static void save(IO::OutStream *stream, ImageLabel const *label);

    /// The word for a type; empty for a number outside the enumeration.
    static QString getLabelTypeId(Type_t type);
    /// Throws ParamError for an unknown word.
    static Type_t parseLabelTypeId(QString const &id);

    /// All creators, by type.
    static Creators const &getCreators();
    /// Deletes all creators: at the end of an application, when no figure is loaded any more.
    static void destroyCreators();

protected:
    /// Registers the creator. Throws ProgError when the type has one.
    explicit ImageLabelCreator(Type_t type);

private:
    static Creators &_creators();

    Type_t type_;
};

} // namespace Zem::Fig2
