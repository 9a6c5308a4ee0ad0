// SPDX-License-Identifier: Apache-2.0
// Setting a value and telling its observers, beside the least that a program can do for it and beside Qt.
#include "contest.h"
#include "handwritten.h"

#include <platform/values/value.h>

#include <QtCore/QObject>

#include <memory>
#include <vector>

namespace {

class CountingListener final : public handwritten::Listener {
  public:
    void OnChanged(void* /*source*/, int code) override { sum += code; }
    int sum = 0;
};

class CountingObserver final : public IObserver {
  public:
    void Update(Observable* /*source*/, TChangeCode code) override { sum += code; }
    int sum = 0;
};

class SignalValue final : public QObject {
    Q_OBJECT

  public:
    void Set(int content) {
        if (content == m_content) return;
        m_content = content;
        emit Changed(3);
    }

  signals:
    void Changed(int code);

  private:
    int m_content = 0;
};

class SlotReceiver final : public QObject {
    Q_OBJECT

  public:
    void OnChanged(int code) { sum += code; }
    int sum = 0;
};

void RunOurs(benchmark::State& state, std::size_t count) {
    values::Value<int> value;
    std::vector<CountingObserver> observers(count);
    for (CountingObserver& observer : observers)
        value.AddObserver(&observer);
    int content = 0;
    for (auto _ : state) {
        value.SetValue(++content);
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(observers.data());
    for (CountingObserver& observer : observers)
        value.DeleteObserver(&observer);
}

void RunVirtualLoop(benchmark::State& state, std::size_t count) {
    auto value = std::make_unique<handwritten::Value>();
    std::vector<CountingListener> listeners(count);
    for (CountingListener& listener : listeners)
        value->listeners.push_back(&listener);
    benchmark::DoNotOptimize(value);
    int content = 0;
    for (auto _ : state) {
        value->Set(++content);
        benchmark::ClobberMemory();
    }
    benchmark::DoNotOptimize(listeners.data());
}

void RunSignal(benchmark::State& state, std::size_t count) {
    SignalValue value;
    std::vector<std::unique_ptr<SlotReceiver>> receivers;
    for (std::size_t i = 0; i < count; ++i) {
        receivers.push_back(std::make_unique<SlotReceiver>());
        QObject::connect(&value, &SignalValue::Changed, receivers.back().get(), &SlotReceiver::OnChanged,
                         Qt::DirectConnection);
    }
    int content = 0;
    for (auto _ : state) {
        value.Set(++content);
        benchmark::ClobberMemory();
    }
}

}  // namespace

void AddNotifyContests() {
    for (const std::size_t count : {std::size_t(1), std::size_t(10)}) {
        const std::string name =
            "set and notify " + std::to_string(count) + (count == 1 ? " observer" : " observers");
        contest::Add(
            name, [count](benchmark::State& state) { RunOurs(state, count); },
            {{"loop of virtual calls", [count](benchmark::State& state) { RunVirtualLoop(state, count); },
              1.5},
             {"Qt signal, direct", [count](benchmark::State& state) { RunSignal(state, count); }, 1.0}});
    }
}

#include "notify_bench.moc"
