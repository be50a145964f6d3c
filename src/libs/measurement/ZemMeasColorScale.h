// ZemMeasColorScale.h: the colour scale of a project, and how a page comes to show it.
// Operations with a project are called from the thread that made it.
#pragma once

#include <ZemLegend.h>
#include <ZemToleranceParams.h>

#include <QtCore/QString>

namespace Zem::Measurement {

class Project;

/// A colour scale with the tokens whose values it is for. A plain value; several threads may read it.
struct ColorScale
{
    /// Names with commas in between; one that ends with "*" stands for all names that begin so. The values of all of
    /// them over all stages give the dynamic limits, the statistics and the histogram; empty for none.
    QString token;
    Legend2::Legend legend;
    bool showTolerances = false;
    Legend2::ToleranceParams tolerance;

    /// Entries "token", "show_tolerances", those of the scale ("legend_...") and of the tolerance ("tolerance_...").
    QString getParameterString() const;
    /// Consumes those entries and leaves alone what has none. Throws ParamError for a bad value; then this is
    /// unchanged.
    void createFromParameterString(QString &parameters);

    bool operator==(ColorScale const &) const = default;
};

/// Makes the scale that of the whole process (Legend2::ColorMap), without values: its tokens are not looked at.
/// May be called from any thread.
void applyColorScale(ColorScale const &scale);

/// Makes the scale that of the whole process (Legend2::ColorMap), with limits, statistics and histogram taken from the
/// project: the histogram has one count for each interval of the scale's ticks. A scale without a unit is labelled in
/// that of the first token. Throws ProjectError, and changes nothing, when the project has no such token, when its
/// values are no numbers, or when tokens measure different quantities.
void applyColorScale(Project const &project, ColorScale const &scale);

/// The same with the scale that is stored in the project; the plain scale when none is.
void applyColorScale(Project const &project);

} // namespace Zem::Measurement
