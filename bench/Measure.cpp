#include "Measure.h"
#include <QCoreApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>

namespace bench {
namespace {

/// Roads that take long get fewer samples: this time a side and round, in seconds, but not less than kFewest.
constexpr double kTime = 1;
constexpr int kFewest = 5;

class Collector : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                samples[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
    }

    std::map<std::string, std::vector<double>> samples;
};

void add(const std::string& name, int runs, int samples, const std::function<void(size_t)>& work) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [work, at = size_t(0)](benchmark::State& state) mutable {
                                     // What other roads have left to be read and painted is not on this one.
                                     QCoreApplication::processEvents();
                                     QCoreApplication::sendPostedEvents();
                                     for (auto step : state) {
                                         (void)step;
                                         work(at++);
                                     }
                                 })
        ->Iterations(runs)
        ->Repetitions(samples)
        ->Unit(benchmark::kNanosecond);
}

/// The first look at a page and the first preparation of a statement, and how many samples there is time for.
int warm(const Road& road, int samples) {
    const auto from = std::chrono::steady_clock::now();
    for (size_t i = 0; i < size_t(road.runs); ++i) {
        road.ours(i);
        if (road.raw)
            road.raw(i);
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - from;
    return std::clamp(int(kTime / took.count()), kFewest, samples);
}

std::string oursOf(const Road& road) {
    return road.name + "#ours";
}

std::string rawOf(const Road& road) {
    return road.name + "#raw";
}

} // namespace

void measure(const std::vector<Road>& roads, int samples, Figures& figures) {
    char program[] = "tavolino-bench";
    char interleaved[] = "--benchmark_enable_random_interleaving=true";
    char* arguments[] = {program, interleaved, nullptr};
    int argumentCount = 2;
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::ClearRegisteredBenchmarks();
    for (const Road& road : roads) {
        const int count = warm(road, samples);
        add(oursOf(road), road.runs, count, road.ours);
        if (road.raw)
            add(rawOf(road), road.runs, count, road.raw);
    }
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    for (const Road& road : roads) {
        Samples& all = figures[road.name];
        const auto append = [](std::vector<double>& to, const std::vector<double>& from) {
            to.insert(to.end(), from.begin(), from.end());
        };
        append(all.ours, collector.samples[oursOf(road)]);
        append(all.raw, collector.samples[rawOf(road)]);
    }
}

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + long(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace bench
