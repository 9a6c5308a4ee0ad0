// SPDX-License-Identifier: Apache-2.0
#include "valueroles.h"

#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <vector>

namespace bench {

namespace {

using Number = values::ValueNumeric<int>;

constexpr int ValuesToFind = 10'000;

class CountingObserver final : public IObserver {
  public:
    void Update(Observable* /*source*/, TChangeCode code) override {
        if (code == changecode::ContentChanged) ++count;
    }
    int count = 0;
};

/// No name comes twice: which names of a node are near each other in its table differs from run to run, and
/// so it averages out.
QString PathOf(int number) {
    return QStringLiteral("/Group%1/Device%2/Channel%3/Value%4")
        .arg(number / 1000)
        .arg(number / 100)
        .arg(number / 10)
        .arg(number);
}

}  // namespace

void SetRole::Start() {
    const int count = GetSettings().Int(QStringLiteral("count"));
    Number number;
    CountingObserver observer;
    number.AddObserver(&observer);
    for (int i = 1; i <= count; ++i)
        number.SetValue(i);
    number.DeleteObserver(&observer);
    if (observer.count != count) Fail(QStringLiteral("told of %1 changes").arg(observer.count));
    TellResult(Settings());
}

void FindRole::Start() {
    const int count = GetSettings().Int(QStringLiteral("count"));
    values::Tree tree;
    std::vector<QString> paths;
    for (int i = 0; i < ValuesToFind; ++i) {
        paths.push_back(PathOf(i));
        values::CreateValue<Number>(paths.back(), nullptr);
    }
    for (int i = 0; i < count; ++i) {
        const QString& path = paths[static_cast<std::size_t>(i % ValuesToFind)];
        if (tree.FindItem(path) == nullptr) Fail(QStringLiteral("no value ") + path);
    }
    TellResult(Settings());
}

}  // namespace bench
