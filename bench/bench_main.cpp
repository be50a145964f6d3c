#include <ZemFig2QtApplication.h>

#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    auto const application = Zem::Fig2Qt::ensureGuiApplication(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
