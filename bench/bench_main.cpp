#include <benchmark/benchmark.h>

#include <QtCore/QCoreApplication>

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    QCoreApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
