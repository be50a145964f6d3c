// What vectors on a picture cost: 100,000 of them seen by a camera with distortion and coloured by their length, drawn
// into a painter that does nothing.
#include "no_painter.h"

#include "vector_field.h"

#include <ZemFig2Image.h>

namespace Zem::Fig2 {
namespace {

/// With all components in one vector (0), or one vector for each (1).
void drawVectors(benchmark::State &state)
{
    OnePicture const tokens;
    ImageDataVisualisation look(false);
    look.setVectorLineWidth(0.1);
    look.setDrawCombinedVectors(state.range(0) == 0);
    Image image;
    image.setToken("camera");
    image.setOrigin({100, 100});
    image.setSize({180, 180});
    image.setVisualisation(QString(), look);
    image.update(StageIdentifier(1), &tokens, nullptr);
    NoPainter painter;
    painter.setMode(0);
    for (auto _ : state)
        image.draw(&tokens, &painter, 0);
    state.SetItemsProcessed(state.iterations() * POINTS);
}
BENCHMARK(drawVectors)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace Zem::Fig2
