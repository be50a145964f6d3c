// ZemFig2Logo.h: Logo, an element that shows one picture of its own.
// Layer: element. Used from the thread that owns the figure.
#pragma once

#include "ZemFig2AlignedElement.h"

#include <memory>

namespace Zem {
class Image;
} // namespace Zem

namespace Zem::Fig2 {

/// The picture is stored with the figure; the file that it came from is only a name.
class Logo : public AlignedElement
{
public:
    static constexpr QLatin1StringView PARAM_FILE_NAME{"file_name"};
    /// Read, never written: what older releases called auto scale and scaling.
    static constexpr QLatin1StringView PARAM_AUTO_COMPUTE{"auto_compute"};
    static constexpr QLatin1StringView PARAM_SCALE{"scale"};

    /// No picture and no border.
    Logo();
    /// With a picture of its own.
    Logo(Logo const &other);
    Logo &operator=(Logo const &) = delete;
    ~Logo() override;

    /// Null when there is none.
    Zem::Image const *getImage() const { return image_.get(); }
    /// Takes ownership of `image`, which may be null, and deletes the picture of before.
    void setImage(Zem::Image *image);
    QString const &getFileName() const { return fileName_; }
    /// The name alone: the picture stays.
    void setFileName(QString const &fileName);

    Element *copy() const override;
    unsigned int getEstimatedObjectSize() const override;
    bool isTokenUsed(QString const &) const override { return false; }
    void load(IO::InStream *stream, int a, int b) override;
    void save(IO::OutStream *stream, int a, int b) const override;
    std::istream &loadFromStream(std::istream &stream) override;
    std::ostream &saveToStream(std::ostream &stream) const override;
    QString getParameterString() const override;
    /// A file name other than the present one loads its picture; none is there then if that fails.
    void createFromParameterString(QString &parameters) override;
    /// Everything in step 0.
    bool draw(FigureTokenInterface const *tokens, Painter *painter, int step) const override;
    void computeDynamicData(StageIdentifier const &stage, FigureTokenInterface const *tokens) override;
    std::pair<BaVec2d<double>, BaVec2d<double>> getInnerOriginBounds() override;

protected:
    BaVec2d<double> getInnerElementSize() const override;

private:
    void loadPictureFile(QString const &fileName);
    BaVec2d<double> getPixelSize() const;
    void drawMissing(Painter *painter) const;
    void drawPicture(Painter *painter) const;

    static unsigned int _unique_id_counter;

    std::unique_ptr<Zem::Image> image_;
    QString fileName_;
    unsigned int uniqueId_; ///< another one for each picture: painters keep what they made of it
};

} // namespace Zem::Fig2
