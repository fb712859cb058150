#pragma once
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace bench {

/// A way through the program, measured beside the same work on the C interface.
struct Road {
    std::string name;
    /// How often it goes in one sample; about half a millisecond, so that few samples are interrupted.
    int runs;
    /// Called with 0, 1, 2, …
    std::function<void(size_t)> ours;
    /// Nothing where there is nothing to compare with.
    std::function<void(size_t)> raw;
    /// What the ratio may be; 0 without an aim.
    double aim = 0;
};

/// Nanoseconds of one run, a value a sample.
struct Samples {
    std::vector<double> ours, raw;
};

using Figures = std::map<std::string, Samples>;

/// Measures all roads, samples of both sides in random order, so that what disturbs the machine disturbs
/// both, after one sample of each to get warm. Adds to `figures`.
void measure(const std::vector<Road>& roads, int samples, Figures& figures);

double median(std::vector<double> values);

} // namespace bench
