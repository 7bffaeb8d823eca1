// Takes measurements in turn and prints ratios.
#include "bench.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace {

double Milliseconds(const Contender& contender, double (*now)()) {
    contender.before();
    const double start = now();
    contender.work();
    return now() - start;
}

double Median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

double WallMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

double ProcessorMilliseconds() {
    timespec used{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

std::vector<Figure> RunInTurn(const std::vector<Contender>& contenders, int rounds, double (*now)()) {
    for (const Contender& contender : contenders) {
        Milliseconds(contender, now);
    }
    std::vector<std::vector<double>> times(contenders.size());
    std::vector<std::vector<double>> ratios(contenders.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < contenders.size(); ++i) {
            times[i].push_back(Milliseconds(contenders[i], now));
            ratios[i].push_back(times[i].back() / times[0].back());
        }
    }
    std::vector<Figure> figures;
    for (std::size_t i = 0; i < contenders.size(); ++i) {
        figures.push_back({contenders[i].name, Median(times[i]), Median(ratios[i])});
    }
    return figures;
}

void PrintRow(const QString& title, const std::vector<Figure>& figures) {
    std::printf("%s\n", qPrintable(title));
    for (const Figure& figure : figures) {
        std::printf("  %-44s %10.3f ms   x %.2f\n", qPrintable(figure.name), figure.milliseconds,
                    figure.ratio);
    }
    std::fflush(stdout);
}
