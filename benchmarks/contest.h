// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

/// Measurements that mean something on any machine: ours beside a peer in the same run, as a ratio.
namespace contest {

using Function = std::function<void(benchmark::State&)>;

struct Peer {
    std::string name;
    Function run;
    double maxRatio;  ///< ours may take this many times the peer's time for one item
};

/// Registers "ours" and its peers under \a name. A function sets the items processed if an iteration is not
/// one.
void Add(const std::string& name, Function ours, std::vector<Peer> peers);

/// Registers a figure that is not a time: \a measure runs once and gives it.
void AddFigure(const std::string& name, const std::string& unit, std::function<double()> measure,
               double maximum);

/// Runs everything and prints one table. Returns the exit code: 0 if every ratio and figure is within its
/// limit.
int Run(int argc, char** argv);

}  // namespace contest
