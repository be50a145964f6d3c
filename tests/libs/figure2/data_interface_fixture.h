// data_interface_fixture.h: registries of tokens and providers of reference data.
#pragma once

#include "chart_fixture.h"

#include <ZemFig2DataInterface.h>
#include <ZemFig2ImageData.h>
#include <ZemFig2SnapshotData.h>
#include <ZemFig2TokenInterface.h>

#include <ZemImage.h>

#include <map>
#include <string>

namespace Zem::Fig2 {

/// Serves what the test puts in, and writes down what it is asked for.
class Provider : public DataReferenceInterface
{
public:
    explicit Provider(std::string *log = nullptr, char const *name = "")
        : DataReferenceInterface(nullptr), log_(log), name_(name)
    {
    }

    bool getImageReference(QString const &token, Zem::Image const **foundImage,
                           ImageData const **foundData) const override
    {
        note("image ", token);
        if (!servesImage)
            return false;
        *foundImage = image;
        *foundData = imageData;
        return true;
    }
    bool getImageReference(QString const &token, Zem::Image const **foundImage, Zem::ImageColor const **foundOverlay,
                           ImageData const **foundData) const override
    {
        note("overlay ", token);
        // What it leaves behind with a refusal means nothing.
        *foundOverlay = overlay;
        if (!servesOverlay)
            return false;
        *foundImage = image;
        *foundData = imageData;
        return true;
    }
    bool getChartReference(QString const &token, ChartData const **foundData) const override
    {
        note("chart ", token);
        *foundData = chart;
        return servesChart;
    }
    bool getSnapshotReference(QString const &token, SnapshotData const **foundData) const override
    {
        note("snapshot ", token);
        *foundData = snapshot;
        return servesSnapshot;
    }
    void releaseReferenceData(Token_t const &token) const override { note("release ", token.getName()); }

    bool servesImage = false;
    bool servesOverlay = false;
    bool servesChart = false;
    bool servesSnapshot = false;
    Zem::Image const *image = nullptr;
    Zem::ImageColor const *overlay = nullptr;
    ImageData const *imageData = nullptr;
    ChartData const *chart = nullptr;
    SnapshotData const *snapshot = nullptr;

private:
    void note(char const *what, QString const &token) const
    {
        if (log_)
            *log_ += name_ + what + token.toStdString() + "; ";
    }

    std::string *log_;
    std::string name_;
};

/// The tokens of the registry and the counters of their changes: "a integer 0, b double 3, ".
inline std::string contentOf(DataInterface const &registry)
{
    std::string text;
    for (auto it = registry.getTokenBegin(); it != registry.getTokenEnd(); ++it) {
        text += it->first.getName().toStdString() + ' ' + getVariableParameterText(it->first.getType()).toStdString();
        text += ' ' + std::to_string(it->second->modifiedCounter) + ", ";
    }
    return text;
}

} // namespace Zem::Fig2
