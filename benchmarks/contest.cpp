// SPDX-License-Identifier: Apache-2.0
#include "contest.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace contest {

namespace {

struct Match {
    std::string name;
    std::vector<Peer> peers;
};

struct Figure {
    std::string name;
    std::string unit;
    std::function<double()> measure;
    double maximum;
};

std::vector<Match>& Matches() {
    static std::vector<Match> matches;
    return matches;
}

std::vector<Figure>& Figures() {
    static std::vector<Figure> figures;
    return figures;
}

std::string FullName(const std::string& match, const std::string& contestant) {
    return match + ": " + contestant;
}

/// Collects the time per item of every repetition.
class Collector final : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
            const auto rate = run.counters.find("items_per_second");
            const double seconds = rate != run.counters.end()
                                       ? 1.0 / rate->second.value
                                       : run.cpu_accumulated_time / static_cast<double>(run.iterations);
            m_times[run.run_name.function_name].push_back(seconds * 1e9);
        }
        std::fputc('.', stderr);
    }
    void Finalize() override { std::fputc('\n', stderr); }

    /// Median over the repetitions, in ns per item; 0 if it was not run.
    double Median(const std::string& name) {
        std::vector<double>& times = m_times[name];
        if (times.empty()) return 0.0;
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

  private:
    std::map<std::string, std::vector<double>> m_times;
};

const char* Verdict(bool isWithin) {
    return isWithin ? "ok" : "OVER";
}

bool PrintMatches(Collector& collector) {
    bool allWithin = true;
    std::printf("%-44s %12s  %-34s %12s %8s %8s\n", "case", "ours ns", "peer", "peer ns", "ratio", "limit");
    for (const Match& match : Matches()) {
        const double ours = collector.Median(FullName(match.name, "ours"));
        if (ours == 0.0) continue;
        for (const Peer& peer : match.peers) {
            const double theirs = collector.Median(FullName(match.name, peer.name));
            if (theirs == 0.0) continue;  // left out by a filter
            const double ratio = ours / theirs;
            const bool isWithin = ratio <= peer.maxRatio;
            allWithin = allWithin && isWithin;
            std::printf("%-44s %12.2f  %-34s %12.2f %8.2f %8.2f  %s\n", match.name.c_str(), ours,
                        peer.name.c_str(), theirs, ratio, peer.maxRatio, Verdict(isWithin));
        }
    }
    return allWithin;
}

bool PrintFigures() {
    bool allWithin = true;
    std::printf("\n%-44s %12s %8s\n", "figure", "measured", "limit");
    for (const Figure& figure : Figures()) {
        const double measured = figure.measure();
        const bool isWithin = measured <= figure.maximum;
        allWithin = allWithin && isWithin;
        std::printf("%-44s %12.1f %8.1f  %s  %s\n", figure.name.c_str(), measured, figure.maximum,
                    figure.unit.c_str(), Verdict(isWithin));
    }
    return allWithin;
}

}  // namespace

void Add(const std::string& name, Function ours, std::vector<Peer> peers) {
    benchmark::RegisterBenchmark(FullName(name, "ours").c_str(), std::move(ours));
    for (const Peer& peer : peers)
        benchmark::RegisterBenchmark(FullName(name, peer.name).c_str(), peer.run);
    Matches().push_back({name, std::move(peers)});
}

void AddFigure(const std::string& name, const std::string& unit, std::function<double()> measure,
               double maximum) {
    Figures().push_back({name, unit, std::move(measure), maximum});
}

int Run(int argc, char** argv) {
    // Repetitions of all in random order, so that a slow moment of the machine hits both sides of a ratio.
    std::string repetitions = "--benchmark_repetitions=9";
    std::string interleaving = "--benchmark_enable_random_interleaving=true";
    std::string time = "--benchmark_min_time=0.05";
    std::vector<char*> arguments = {argv[0], repetitions.data(), interleaving.data(), time.data()};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;

    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    const bool timesWithin = PrintMatches(collector);
    const bool isFiltered = argc > 1;  // whoever asks for some wants no others
    const bool figuresWithin = isFiltered || PrintFigures();
    return timesWithin && figuresWithin ? 0 : 1;
}

}  // namespace contest
