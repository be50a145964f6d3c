// figqt_text_recorder.h: catches what Qt's text layout paints.
#pragma once

#include "figqt_fonts.h"
#include "figqt_text_layout.h"

#include <QtGui/QPaintDevice>
#include <QtGui/QPaintEngine>
#include <QtGui/QPainter>

namespace Zem::Fig2Qt {

/// Turns everything that is painted into the shapes and runs of a layout.
class TextRecorder : public QPaintEngine
{
public:
    explicit TextRecorder(Fonts *fonts) : QPaintEngine(QPaintEngine::AllFeatures), fonts_(fonts) {}

    /// Not owned. Where the painting of the next QPainter goes.
    void setTarget(TextLayout *target) { target_ = target; }

    bool begin(QPaintDevice *) override { return target_ != nullptr; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(QPaintEngineState const &state) override;
    void drawTextItem(QPointF const &position, QTextItem const &item) override;
    void drawPath(QPainterPath const &path) override;
    void drawRects(QRectF const *rects, int count) override;
    void drawLines(QLineF const *lines, int count) override;
    void drawPolygon(QPointF const *points, int count, PolygonDrawMode mode) override;
    /// Labels have no pictures.
    void drawPixmap(QRectF const &, QPixmap const &, QRectF const &) override {}

private:
    void addShape(QPainterPath const &path, bool filled);

    Fonts *fonts_;
    TextLayout *target_ = nullptr;
};

/// The imaginary device on which text is laid out, see figqt_units.h.
class TextDevice : public QPaintDevice
{
public:
    explicit TextDevice(TextRecorder *recorder) : recorder_(recorder) {}

    QPaintEngine *paintEngine() const override { return recorder_; }

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    TextRecorder *recorder_;
};

} // namespace Zem::Fig2Qt
