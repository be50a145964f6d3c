// ZemLegend.h: the parameters of a colour scale: quantity, limits, colours, ticks.
#pragma once

#include <ZemColor.h>
#include <ZemLegendData.h>
#include <ZemScaling.h>
#include <ZemUnit.h>

#include <QtCore/QString>

#include <span>
#include <vector>

namespace Zem {

namespace IO {
class InStream;
class OutStream;
} // namespace IO

namespace Legend2 {

/// Whether colours run into each other or stand for classes. Stored in files: never renumber.
enum ScaleMode_t { SCALE_MODE_CONTINUOUS = 0, SCALE_MODE_DISCRETE = 1 };

/// Where a limit of a scale comes from. Stored in files: never renumber.
enum LimitMode_t {
    LIMIT_DYNAMIC = 0, ///< from the Data beside the scale
    LIMIT_FIXED = 1    ///< from the scale itself
};

/// The colours of a scale, from the minimum to the maximum. Stored in files by number and by name: append only.
enum ColorMapName_t {
    COLOR_MAP_VIRIDIS = 0,   ///< blue, green, yellow; perceptually even
    COLOR_MAP_PLASMA = 1,    ///< blue, red, yellow; perceptually even
    COLOR_MAP_CIVIDIS = 2,   ///< blue, grey, yellow; looks the same to colour-blind people
    COLOR_MAP_COOL_WARM = 3, ///< blue, light grey, red; for values on both sides of a middle
    COLOR_MAP_RAINBOW = 4    ///< blue, cyan, green, yellow, red; not perceptually even
};

/// What a colour scale shows and how. Limits are in the base unit of the quantity, which is not owned. Setters throw
/// ProgError for a value out of range and then change nothing. A plain value; several threads may read it.
class Legend
{
public:
    static constexpr unsigned int MAX_CLASSES = 1000;
    static constexpr int MAX_DIGITS = Scaling::MAX_DIGITS;

    /// A linear, continuous scale with dynamic limits in the base unit of the quantity; null means no quantity.
    explicit Legend(Unit const *unit = nullptr);

    /// Null when there is none.
    Unit const *getUnit() const noexcept { return unitData_.getUnit(); }
    UnitData const &getUnitData() const noexcept { return unitData_; }
    void setUnitData(UnitData const &unitData) { unitData_ = unitData; }
    /// The unit in which the scale is labelled; 0 when there is no quantity.
    Unit::Units_t getActiveUnit() const noexcept { return unitData_.getCurrentUnit(); }
    /// The name set by setUnitName(), or that of the active unit when it is empty.
    QString getUnitName() const;
    /// A free name to be shown in place of the unit's own; empty for none.
    void setUnitName(QString const &name) { unitName_ = name; }

    /// The limits that hold with `data`. The minimum may lie above the maximum, and either may be no number when
    /// `data` says so: such a scale has no colours and no ticks.
    double getMinimum(Data const &data) const noexcept;
    double getMaximum(Data const &data) const noexcept;
    LimitMode_t getMinimumMode() const noexcept { return minimumMode_; }
    LimitMode_t getMaximumMode() const noexcept { return maximumMode_; }
    double getFixedMinimum() const noexcept { return fixedMinimum_; }
    double getFixedMaximum() const noexcept { return fixedMaximum_; }
    /// Set the value and make the limit a fixed one. The value must be finite.
    void setFixedMinimum(double minimum);
    void setFixedMaximum(double maximum);
    /// The limit is taken from the Data again; the fixed value is kept.
    void setDynamicMinimum() noexcept { minimumMode_ = LIMIT_DYNAMIC; }
    void setDynamicMaximum() noexcept { maximumMode_ = LIMIT_DYNAMIC; }

    /// Decimals of the tick texts; negative when they follow from the ticks. At most MAX_DIGITS.
    int getDigits() const noexcept { return digits_; }
    void setDigits(int digits);
    /// The greatest number of tick intervals; negative for the usual one.
    int getMaxTicks() const noexcept { return maxTicks_; }
    void setMaxTicks(int ticks) noexcept { maxTicks_ = ticks; }

    ColorMode_t getColorMode() const noexcept { return colorMode_; }
    void setColorMode(ColorMode_t mode);
    ScaleMode_t getScaleMode() const noexcept { return scaleMode_; }
    void setScaleMode(ScaleMode_t mode);
    bool isDiscrete() const noexcept { return scaleMode_ == SCALE_MODE_DISCRETE; }
    /// How many classes a discrete scale has, from 1 to MAX_CLASSES.
    unsigned int getNumberOfClasses() const noexcept { return numberOfClasses_; }
    void setNumberOfClasses(unsigned int count);
    ColorMapName_t getColorMapName() const noexcept { return colorMapName_; }
    void setColorMapName(ColorMapName_t name);
    /// The words by which colour maps are stored, by number.
    static std::span<char const *const> getColorMapNames() noexcept;

    /// Fills `values` with the boundaries of the classes, ascending, one more than there are classes, in the active
    /// unit if `inActiveUnit`, else in the base unit; the outermost are exactly the limits. `indices` receives as many
    /// numbers: the class that the boundary begins, and for the last one the class that it ends. Both become empty when
    /// the scale has no colours with `data`, or a limit no finite number in the active unit. They have equal distances,
    /// on a logarithmic scale equal ratios. Neither pointer is null. For a continuous scale the answer is that of a
    /// discrete one of as many classes.
    void getDiscreteTicks(Data const &data, bool inActiveUnit, std::vector<double> *values,
                          std::vector<int> *indices) const;

    /// Values beyond the limits are shown in colours of their own, each as far as it is valid.
    bool getUseExtremaColors() const noexcept { return useExtremaColors_; }
    void setUseExtremaColors(bool use) noexcept { useExtremaColors_ = use; }
    Color const &getMinColor() const noexcept { return minColor_; }
    bool isMinColorValid() const noexcept { return minColorValid_; }
    /// Makes the colour valid. The same holds for setMaxColor().
    void setMinColor(Color const &color) noexcept;
    void setMinColorInvalid() noexcept { minColorValid_ = false; }
    Color const &getMaxColor() const noexcept { return maxColor_; }
    bool isMaxColorValid() const noexcept { return maxColorValid_; }
    void setMaxColor(Color const &color) noexcept;
    void setMaxColorInvalid() noexcept { maxColorValid_ = false; }

    /// A mark of scales made by an older release. Kept and stored; it changes nothing here.
    bool getV602CompatibilityMode() const noexcept { return v602CompatibilityMode_; }
    void setV602CompatibilityMode(bool on) noexcept { v602CompatibilityMode_ = on; }

    bool operator==(Legend const &) const = default;

    /// One block, then that of the UnitData. Both throw IO::StreamException; a failed load leaves this alone.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Entries with keys that begin with "legend_", none with "legend_data_".
    QString getParameterString() const;
    /// Consumes those entries and leaves alone what has none. Throw ParamError for a bad value, and then change neither
    /// argument nor object. The second reads the form of an older release.
    void createFromParameterString(QString &parameters);
    void createFromV541ParameterString(QString &parameters);

private:
    template <class Self, class Form>
    static void fields(Self &self, Form &form);
    template <class Parser>
    void readParameters(QString &parameters);

    UnitData unitData_;
    QString unitName_;
    LimitMode_t minimumMode_ = LIMIT_DYNAMIC;
    LimitMode_t maximumMode_ = LIMIT_DYNAMIC;
    double fixedMinimum_ = 0.0;
    double fixedMaximum_ = 1.0;
    ColorMode_t colorMode_ = COLOR_MODE_LINEAR;
    ScaleMode_t scaleMode_ = SCALE_MODE_CONTINUOUS;
    unsigned int numberOfClasses_ = 10;
    ColorMapName_t colorMapName_ = COLOR_MAP_VIRIDIS;
    int digits_ = -1;
    int maxTicks_ = -1;
    bool useExtremaColors_ = false;
    Color minColor_{128, 128, 128};
    bool minColorValid_ = true;
    Color maxColor_{192, 192, 192};
    bool maxColorValid_ = true;
    bool v602CompatibilityMode_ = false;
};

} // namespace Legend2
} // namespace Zem
