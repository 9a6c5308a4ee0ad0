// SPDX-License-Identifier: Apache-2.0
// Shared roads under everything at once: the server and its clients edit, the bus loses, repeats, delays and
// turns round, sessions are slower or quicker than it, keys change, strangers publish, wires are cut. At
// every moment each client sees an order that there was, and once it is quiet all trees are alike.
#include <tests/platform/vtclient/randomedits.h>
#include <tests/platform/vtclient/roadends.h>

#include <algorithm>
#include <deque>
#include <random>

using namespace std::chrono_literals;

namespace {

using values::Value;
using Number = Value<int>;
using Text = Value<QString>;

QString MirrorOf(std::size_t client) {
    return QStringLiteral("/L%1").arg(client + 1);
}

class RoadStorm : public RoadEnds, public testing::WithParamInterface<unsigned> {
  protected:
    static constexpr unsigned Clients = 3;

    RoadStorm() : m_device(QStringLiteral("/S"), RandomEdits::ERole::Device, GetParam()) {
        m_device.MakeTree();
        if (GetParam() % 3 == 0) m_serverBus.maxMessage = 120;  // nearly everything goes in several
        Add<Number>("/S", "steps");
        for (unsigned i = 0; i < Clients; ++i) {
            m_riders.push_back(AddRider());
            m_operators.emplace_back(MirrorOf(i), RandomEdits::ERole::Operator,
                                     GetParam() + 1000U * (1U + i));
            MakeFaulty(m_riders.back());
        }
        m_riders.push_back(AddRider(false));
        Ride();
    }

    int Chance(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    void MakeFaulty(const Rider& rider) {
        rider.bus->fate = [this](const QByteArray&) {
            const int chance = Chance(100);
            return chance < m_losses ? 0 : chance < m_losses + 3 ? 2 : 1;
        };
        rider.bus->next = [this](std::size_t count) {
            return Chance(10) == 0
                       ? static_cast<std::size_t>(Chance(static_cast<int>(std::min<std::size_t>(count, 4))))
                       : std::size_t{0};
        };
    }
    void DoSomething() {
        Rider& rider = m_riders[static_cast<std::size_t>(Chance(static_cast<int>(Clients)))];
        switch (Chance(16)) {
            case 0:
            case 1:
            case 2:
                return m_device.Step();
            case 3:
            case 4:
                return Count();
            case 5:
            case 6:
                return m_operators[static_cast<std::size_t>(Chance(static_cast<int>(Clients)))].Step();
            case 7:
                rider.end->isReading = !rider.end->isReading;
                return;
            case 8:
                rider.bus->isReading = !rider.bus->isReading;
                return;
            case 9:
                return m_clock.Pass(Chance(300) * 1ms);
            case 10:
                if (Chance(10) == 0) m_hub->ChangeRoadKeys();
                return;
            case 11:
                return Strange();
            case 12:
                if (m_isCut && Chance(20) == 0) Cut(*rider.end);
                return;
            default:
                Step();
        }
    }
    /// Before the log says a number, "steps" has it.
    void Count() {
        auto* const steps = Find<Number>("/S/steps");
        auto* const log = Find<Text>("/S/log");
        steps->SetValue(++m_count);
        log->SetValue(QString::number(m_count));
    }
    void Strange() {
        if (m_bus.published.empty()) return;
        const auto& one =
            m_bus.published[static_cast<std::size_t>(Chance(static_cast<int>(m_bus.published.size())))];
        QByteArray message = one.message;
        const int at = Chance(message.size());
        message[at] = static_cast<char>(message[at] ^ Chance(256));
        const QString road = one.road;
        m_bus.Publish(road, message);
    }
    static void Cut(End& end) {
        if (end.connector->wire) end.connector->wire->isOpen = false;
    }
    void ComeToRest() {
        m_losses = 0;
        for (const Rider& rider : m_riders) {
            rider.end->isReading = rider.bus->isReading = true;
            rider.bus->fate = [](const QByteArray&) { return 1; };
            rider.bus->next = [](std::size_t) { return std::size_t{0}; };
        }
        Settle();
        PassSlowly(20s);
    }

    /// Hears the log of one client, and looks at its steps meanwhile.
    class Witness final : public IObserver {
      public:
        Witness(values::Tree& tree, QString root) : m_tree(tree), m_root(std::move(root)) { Look(); }
        ~Witness() override { Forget(); }
        /// The log may have gone and come back.
        void Look() {
            auto* const log = dynamic_cast<Text*>(m_tree.FindItem(m_root + QStringLiteral("/log")));
            if (log == m_log) return;
            Forget();
            m_log = log;
            if (m_log != nullptr) m_log->AddObserver(this);
        }
        void Update(Observable* /*source*/, TChangeCode code) override {
            if (code == changecode::StateChanged && m_log->GetState() == values::GoingAway) return Forget();
            if (code != changecode::ContentChanged) return;
            const int number = m_log->GetValue().toInt();
            auto* const steps = dynamic_cast<Number*>(m_tree.FindItem(m_root + QStringLiteral("/steps")));
            EXPECT_GT(number, last) << m_root.toStdString();
            // In a snapshot it comes behind the log.
            if (steps != nullptr && steps->GetState() == values::Valid) {
                EXPECT_GE(steps->GetValue(), number) << m_root.toStdString();
            }
            last = number;
            ++heard;
        }

        int last = 0;
        int heard = 0;

      private:
        void Forget() {
            if (m_log != nullptr) m_log->DeleteObserver(this);
            m_log = nullptr;
        }

        values::Tree& m_tree;
        QString m_root;
        Text* m_log = nullptr;
    };

    std::mt19937 m_random{GetParam()};
    int m_losses = 3;  ///< percent
    bool m_isCut = true;
    int m_count = 0;
    RandomEdits m_device;
    std::vector<RandomEdits> m_operators;
    std::vector<Rider> m_riders;
};

TEST_P(RoadStorm, EndsWithEqualTrees) {
    m_bus.hasKeeper = GetParam() % 2 == 0;
    std::deque<Witness> witnesses;
    for (const Rider& rider : m_riders)
        witnesses.emplace_back(m_tree, rider.root);
    for (int i = 0; i < 3000 && !HasFailure(); ++i) {
        DoSomething();
        for (Witness& witness : witnesses)
            witness.Look();
    }
    ComeToRest();
    for (const Rider& rider : m_riders) {
        EXPECT_TRUE(IsEqual(rider)) << rider.root.toStdString();
        EXPECT_TRUE(rider.tic->IsEstablished());
        EXPECT_FALSE(rider.end->client->HasUnansweredWrites());
    }
}

TEST_P(RoadStorm, LosesNoOccurrenceThatIsKept) {
    m_bus.hasKeeper = true;
    m_isCut = false;
    std::deque<Witness> witnesses;
    for (const Rider& rider : m_riders)
        witnesses.emplace_back(m_tree, rider.root);
    TraceRecorder traces;
    for (int i = 0; i < 3000 && !HasFailure(); ++i)
        DoSomething();
    ComeToRest();
    for (const Rider& rider : m_riders)
        EXPECT_TRUE(IsEqual(rider)) << rider.root.toStdString();
    for (const QString& message : traces.Messages())
        EXPECT_FALSE(message.contains(QStringLiteral("given up"))) << message.toStdString();
    for (const Witness& witness : witnesses)
        EXPECT_EQ(witness.heard, m_count);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RoadStorm, testing::Range(1U, 31U));

}  // namespace
