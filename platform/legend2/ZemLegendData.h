// ZemLegendData.h: what has been measured of the values behind a colour scale.
#pragma once

#include <QtCore/QString>

namespace Zem {

namespace IO {
class InStream;
class OutStream;
} // namespace IO

namespace Legend2 {

/// Extremes, average and deviation of the values shown, in the base unit of their quantity. Any number is taken, as
/// measured: limits that are no numbers make a scale without colours. A plain value that may be copied as bytes;
/// several threads may read it.
class Data
{
public:
    /// 0 to 1, with average and sigma 0.
    constexpr Data() noexcept = default;

    constexpr double getDynamicMinimum() const noexcept { return dynamicMinimum_; }
    constexpr void setDynamicMinimum(double minimum) noexcept { dynamicMinimum_ = minimum; }
    constexpr double getDynamicMaximum() const noexcept { return dynamicMaximum_; }
    constexpr void setDynamicMaximum(double maximum) noexcept { dynamicMaximum_ = maximum; }
    constexpr double getAverage() const noexcept { return average_; }
    constexpr void setAverage(double average) noexcept { average_ = average; }
    /// The standard deviation.
    constexpr double getSigmaValue() const noexcept { return sigma_; }
    constexpr void setSigmaValue(double sigma) noexcept { sigma_ = sigma; }

    bool operator==(Data const &) const = default;

    /// One block. Both throw IO::StreamException; a failed load leaves this alone.
    void save(IO::OutStream *stream) const;
    void load(IO::InStream *stream);

    /// Entries with keys that begin with "legend_data_". A value that is not finite has no text form and is left out.
    QString getParameterString() const;
    /// Consumes those entries and leaves alone what has none. Throw ParamError for a value that is no number, and then
    /// change neither argument nor object. The second reads the form of an older release.
    void createFromParameterString(QString &parameters);
    void createFromV541ParameterString(QString &parameters);

private:
    template <class Self, class Form>
    static void fields(Self &self, Form &form);
    template <class Parser>
    void readParameters(QString &parameters);

    double dynamicMinimum_ = 0.0;
    double dynamicMaximum_ = 1.0;
    double average_ = 0.0;
    double sigma_ = 0.0;
};

} // namespace Legend2
} // namespace Zem
