// SPDX-License-Identifier: Apache-2.0
// Finding a value by its path, beside one hash lookup of the whole path (which keeps every path a second
// time, and knows neither children nor order).
#include "contest.h"

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int ValueCount = 100000;

QString PathOf(int number) {
    return QStringLiteral("/Group%1/Device%2/Channel%3/Value%4")
        .arg(number / 10000)
        .arg(number / 1000 % 10)
        .arg(number / 100 % 10)
        .arg(number % 100);
}

/// Every path once, in an order that no cache can foresee. Texts of their own: a program looks up paths that
/// it has just built.
std::vector<QString> ShuffledPaths() {
    std::vector<QString> paths;
    for (int i = 0; i < ValueCount; ++i)
        paths.push_back(PathOf(i));
    std::shuffle(paths.begin(), paths.end(), std::mt19937(1));
    return paths;
}

template <class Find>
void Measure(benchmark::State& state, const Find& find) {
    const std::vector<QString> paths = ShuffledPaths();
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(find(paths[i]));
        if (++i == paths.size()) i = 0;
    }
}

void RunOurs(benchmark::State& state) {
    values::Tree tree;
    for (int i = 0; i < ValueCount; ++i) {
        const QString path = PathOf(i);
        const int slash = path.lastIndexOf(QLatin1Char('/'));
        auto* const value = new values::ValueNumeric<double>();
        value->SetName(path.mid(slash + 1));
        tree.AddValue(path.left(slash), value);
    }
    Measure(state, [&tree](const QString& path) { return tree.FindItem(path); });
}

void RunHash(benchmark::State& state) {
    std::vector<std::unique_ptr<values::ValueBase>> owned;
    QHash<QString, values::TreeItem*> byPath;
    for (int i = 0; i < ValueCount; ++i) {
        owned.push_back(std::make_unique<values::ValueNumeric<double>>());
        byPath.insert(PathOf(i), owned.back().get());
    }
    Measure(state, [&byPath](const QString& path) { return byPath.value(path); });
}

}  // namespace

void AddLookupContests() {
    contest::Add("find by path, depth 4 of 100,000 values", RunOurs,
                 {{"QHash of whole paths", RunHash, 1.5}});
}
