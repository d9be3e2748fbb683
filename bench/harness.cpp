// SPDX-License-Identifier: MIT
#include "bench/harness.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <vector>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// Long enough for the clock, and shorter than a busy machine's slices of time: most rounds are then
/// undisturbed.
constexpr double secondsPerRound = 0.001;
/// Where single calls are longer than that, this is enough after the first few rounds.
constexpr double secondsPerComparison = 3;
constexpr int fewestRounds = 15;

std::vector<Comparison>& comparisons() {
    static std::vector<Comparison> s_comparisons;
    return s_comparisons;
}

std::vector<Figure>& figures() {
    static std::vector<Figure> s_figures;
    return s_figures;
}

double secondsSince(Clock::time_point start) {
    return Seconds(Clock::now() - start).count();
}

/// Seconds for one of so many calls.
double timeOf(const std::function<void()>& side, int calls) {
    const auto start = Clock::now();
    for (int i = 0; i < calls; i++)
        side();
    return secondsSince(start) / calls;
}

/// How many calls fill a round; also warms the side up.
int callsPerRound(const std::function<void()>& side) {
    int calls = 1;
    while (timeOf(side, calls) * calls < secondsPerRound && calls < (1 << 24))
        calls *= 2;
    return calls;
}

double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::string durationText(double seconds) {
    const char* unit = "s";
    double value = seconds;
    for (const char* smaller : {"ms", "us", "ns"}) {
        if (value >= 1) break;
        value *= 1000;
        unit = smaller;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.3g %s", value, unit);
    return text;
}

void measure(const Comparison& comparison) {
    const Sides sides = comparison.prepare();
    const int ourCalls = callsPerRound(sides.ours), plainCalls = callsPerRound(sides.plain);
    std::vector<double> ours, plain, ratios;
    // Which side comes first is drawn, so that nothing periodic on the machine meets always the same one.
    std::minstd_rand draw;
    const auto start = Clock::now();
    for (int round = 0; round < comparison.rounds; round++) {
        if (round >= fewestRounds && secondsSince(start) > secondsPerComparison) break;
        const bool oursFirst = draw() % 2 == 0;
        if (oursFirst) ours.push_back(timeOf(sides.ours, ourCalls));
        plain.push_back(timeOf(sides.plain, plainCalls));
        if (!oursFirst) ours.push_back(timeOf(sides.ours, ourCalls));
        ratios.push_back(ours.back() / plain.back());
    }
    std::printf("%-44s %-44s %6.2f %6.2f %10s %10s\n", comparison.what.c_str(), comparison.against.c_str(),
                comparison.aim, medianOf(ratios), durationText(medianOf(ours)).c_str(),
                durationText(medianOf(plain)).c_str());
    std::fflush(stdout);
}

void measure(const Figure& figure) {
    const double value = figure.measure();
    std::printf("%-44s %-44s %6.4g %6.4g\n", figure.what.c_str(), ("a limit, in " + figure.unit).c_str(),
                figure.limit, value);
    std::fflush(stdout);
}

/// Measures those whose name contains the filter, in order of their names. Returns how many there were.
template <typename T>
int measureAll(std::vector<T>& all, const std::string& filter) {
    std::stable_sort(all.begin(), all.end(), [](const T& a, const T& b) { return a.what < b.what; });
    int count = 0;
    for (const T& item : all) {
        if (item.what.find(filter) == std::string::npos) continue;
        measure(item);
        count++;
    }
    return count;
}

} // namespace

Registration::Registration(Comparison comparison) {
    comparisons().push_back(std::move(comparison));
}

Registration::Registration(Figure figure) {
    figures().push_back(std::move(figure));
}

int run(const std::string& filter) {
    std::printf("%-44s %-44s %6s %6s %10s %10s\n", "what", "against", "aim", "ratio", "ours", "plain");
    const int count = measureAll(comparisons(), filter) + measureAll(figures(), filter);
    std::printf(
        "The ratio is our time over the plain one's, the median of interleaved rounds; the aim is at most "
        "that.\n");
    return count;
}

} // namespace bench
