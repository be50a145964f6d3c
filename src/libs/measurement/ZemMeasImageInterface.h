// ZemMeasImageInterface.h: what the image labels of a figure may show of a measurement project.
#pragma once

#include <ZemFig2ImageInterface.h>
#include <ZemMeasTokenInterface.h>

#include <map>

namespace Zem::Measurement {

class PointStore;

/// Things measured with a view have ids of a point set and the ids of some of its points: "field" is all its vectors,
/// "field:17" a point, "field:17:42" the line from one point to another, "field:17:42:99" the angle at 42 between the
/// legs to 17 and 99.
///
/// Their values at a stage, as tokens of their labels:
/// - of a point: "id", "x", "y", "z", "dx", "dy", "dz", "length" (of the vector), and each column of numbers of its
/// set;
/// - of a line: "length" now and "length0" before the displacement, "elongation" and "strain" (its share of length0);
/// - of an angle: "angle", "angle0" before the displacement, and "change";
/// - of a set: "count", "min", "max", "mean" and "sigma" of what colours its vectors.
/// A vector is taken for a displacement where it has the unit of the places.
///
/// All operations may throw ProjectError. To be used from the thread that made the project.
class ProjectImageInterface : public Fig2::ImageInterface
{
public:
    /// `tokens` is not owned and outlives the interface. Labels show its current stage.
    explicit ProjectImageInterface(ProjectTokenInterface const *tokens);
    ~ProjectImageInterface() override;

    /// The sets of a view, and their points at its stage.
    std::vector<QString> getImageElements(QString const &token) override;
    QString getImageElementName(QString const &id) const override;
    /// A label of a displacement field, a point, a line or an angle, with that id.
    Fig2::ImageLabel *createImageLabel(QString const &id) const override;
    /// Sets what the labels of ZemMeasImageLabels.h mark; where there is nothing at the stage, nothing is marked.
    bool updateImageElement(Fig2::ImageLabel *label) const override;
    /// False: nothing is known of looks in 3D.
    bool configureImageLabel(Fig2::ImageLabel *label) const override;
    void importImageElementVisualisation(Fig2::ImageLabel *label,
                                         Fig2::ImageDataVisualisation const &visualisation) const override;
    TokenInterface const *getTokenInterface(QString const &id) const override;
    /// The place of the point of the set that is shown nearest to `imagePoint`.
    bool getObjectPoint(QString const &id, BaVec2d<double> const &imagePoint,
                        BaVec3d<double> *objectPoint) const override;
    void measurementsChanged(QString const &id) override;

private:
    class Values;

    std::unique_ptr<PointStore> store_;
    mutable std::map<QString, std::unique_ptr<Values>> values_; ///< of every id that was ever asked for
};

} // namespace Zem::Measurement
