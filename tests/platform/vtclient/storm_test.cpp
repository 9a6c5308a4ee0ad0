// SPDX-License-Identifier: Apache-2.0
// Two ends in memory under everything at once: both sides change, create, delete and rename, clients read
// when they like, wires are cut. Once it is quiet all trees are alike and nothing was lost.
#include <tests/platform/vtclient/treesequal.h>
#include <tests/platform/vtclient/twoends.h>

#include <random>

using namespace std::chrono_literals;

namespace {

using values::Value;
using values::ValueList;
using values::ValueNumeric;
using values::ValueSelection;
using Text = Value<QString>;

QString S(const char* text) {
    return QString::fromUtf8(text);
}

class Storm : public TwoEnds, public testing::WithParamInterface<unsigned> {
  protected:
    int Chance(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    QString Name() { return QStringLiteral("n%1").arg(Chance(6)); }

    values::Node* RandomNode(const char* root) {
        auto* node = dynamic_cast<values::Node*>(Item(root));
        for (int depth = 0; node != nullptr && depth < Chance(4); ++depth) {
            auto* const below = dynamic_cast<values::Node*>(node->FindChild(Name()));
            if (below == nullptr) break;
            node = below;
        }
        return node;
    }
    std::unique_ptr<values::TreeItem> RandomItem() {
        std::unique_ptr<values::TreeItem> item;
        switch (Chance(8)) {
            case 0:
                item = std::make_unique<Value<bool>>(true);
                break;
            case 1:
                item = std::make_unique<Value<int>>(Chance(100));
                break;
            case 2:
                item = std::make_unique<Text>(QString::number(Chance(1000)));
                break;
            case 3:
                item = std::make_unique<ValueNumeric<int>>(Chance(100), 0, 100);
                break;
            case 4:
                item = std::make_unique<ValueNumeric<double>>(Chance(100), 0.0, 100.0);
                break;
            case 5:
                item = std::make_unique<ValueSelection>();
                break;
            case 6:
                item = std::make_unique<ValueList<double>>();
                break;
            default: {
                auto node = std::make_unique<values::Node>();
                for (int i = Chance(4); i > 0; --i) {
                    std::unique_ptr<values::TreeItem> child = RandomItem();
                    vt::EItemKind kind;
                    vt::KindOf(*child, &kind);
                    if (kind != vt::EItemKind::Node) static_cast<values::ValueBase&>(*child).SetName(Name());
                    if (!child->GetName().isEmpty()) node->AddChild(child);
                }
                item = std::move(node);
            }
        }
        return item;
    }
    /// Adds an item somewhere; a node gets its name through its path.
    void AddSomewhere(const char* root) {
        values::Node* const parent = RandomNode(root);
        if (parent == nullptr) return;
        std::unique_ptr<values::TreeItem> item = RandomItem();
        if (item->IsNode()) {
            m_tree.ProvideNode(parent->GetPathName() + QLatin1Char('/') + Name());
            return;
        }
        static_cast<values::ValueBase&>(*item).SetName(Name());
        parent->AddChild(item);
    }
    void ChangeSomething(const char* root) {
        values::Node* const node = RandomNode(root);
        if (node == nullptr) return;
        values::TreeItem* const item = node->FindChild(Name());
        vt::EItemKind kind;
        if (item == nullptr || !vt::KindOf(*item, &kind) || kind == vt::EItemKind::Node) return;
        switch (kind) {
            case vt::EItemKind::Bool: {
                auto* const flag = static_cast<Value<bool>*>(item);
                return flag->SetValue(!flag->GetValue());
            }
            case vt::EItemKind::Int:
                return static_cast<Value<int>*>(item)->SetValue(Chance(1000));
            case vt::EItemKind::Text:
                return static_cast<Text*>(item)->SetValue(QString::number(Chance(1000)));
            case vt::EItemKind::NumericInt:
                return static_cast<ValueNumeric<int>*>(item)->SetValue(Chance(200));
            case vt::EItemKind::NumericDouble:
                return static_cast<ValueNumeric<double>*>(item)->SetValue(Chance(200));
            case vt::EItemKind::Selection: {
                auto* const selection = static_cast<ValueSelection*>(item);
                return selection->SelectIndex(selection->Count() == 0 ? -1 : Chance(selection->Count()));
            }
            default:
                return static_cast<ValueList<double>*>(item)->SetItems({1.0 * Chance(9), 2.0});
        }
    }
    void Describe(const char* root) {
        values::Node* const node = RandomNode(root);
        if (node == nullptr) return;
        values::TreeItem* const item = node->FindChild(Name());
        if (auto* const selection = dynamic_cast<ValueSelection*>(item)) {
            if (Chance(3) == 0 && selection->Count() != 0)
                selection->DeleteItem(selection->GetItemAt(Chance(selection->Count())));
            else
                selection->AddItem(QString::number(Chance(9)), 1.0, Chance(5));
        } else if (auto* const number = dynamic_cast<ValueNumeric<int>*>(item)) {
            number->SetMax(50 + Chance(100));
        } else if (auto* const text = dynamic_cast<Text*>(item)) {
            text->SetName(Name());
        }
    }
    void DeleteSomething(const char* root) {
        values::Node* const node = RandomNode(root);
        if (node != nullptr) m_tree.Delete(node->FindChild(Name()));
    }
    void Cut(End& end) {
        if (!end.connector->wire) return;
        end.connector->wire->isOpen = false;
        if (Chance(2) == 0) end.connector->wire->toA.clear();
        if (Chance(2) == 0) end.connector->wire->toB.clear();
    }

    std::mt19937 m_random{GetParam()};
};

TEST_P(Storm, EndsWithEqualTrees) {
    Add<Text>("/S", "n0");
    const char* const roots[] = {"/L0", "/L1", "/L2"};
    for (const char* root : roots)
        AddClient().client->AddTic(S(root) + S(",/S"), "");
    Settle();
    for (int i = 0; i < 3000; ++i) {
        const char* const root = roots[Chance(3)];
        End& end = *m_ends[static_cast<std::size_t>(Chance(3))];
        switch (Chance(20)) {
            case 0:
                DeleteSomething("/S");
                break;
            case 1:
            case 2:
            case 3:
                AddSomewhere("/S");
                break;
            case 4:
                Describe("/S");
                break;
            case 5:
            case 6:
            case 7:
                ChangeSomething("/S");
                break;
            case 8:
            case 9:
                ChangeSomething(root);
                break;
            case 10:
                AddSomewhere(root);
                break;
            case 11:
                end.isReading = !end.isReading;
                break;
            case 12:
                if (Chance(20) == 0) Cut(end);
                break;
            case 13:
                if (Chance(100) == 0) m_tree.Delete(Item("/S"));
                if (Item("/S") == nullptr) Add<Text>("/S", "n0");
                break;
            case 14:
                m_clock.Pass(Chance(40) * 1ms);
                break;
            case 15:
                m_clock.SetCost(Chance(2) == 0 ? 0us : 200us);
                break;
            default:
                Step();
                break;
        }
        if (HasFailure()) return;
    }
    m_clock.SetCost(0us);
    for (const auto& end : m_ends)
        end->isReading = true;
    for (int i = 0; i < 5; ++i)
        Pass(10s);
    for (std::size_t i = 0; i < m_ends.size(); ++i) {
        EXPECT_TRUE(m_ends[i]->client->AreAllTicsEstablished());
        EXPECT_FALSE(m_ends[i]->client->HasUnansweredWrites());
        EXPECT_TRUE(AreEqual(Item("/S"), Item(roots[i]))) << roots[i];
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Storm, testing::Range(1U, 61U));

/// Every occurrence reaches who is connected, once and in order, however the wire is used.
TEST_P(Storm, DeliversEveryOccurrenceInOrder) {
    auto* const log = Add<Text>("/S", "log");
    log->SetDelivery(values::EDelivery::EveryChange);
    auto* const n = Add<ValueNumeric<int>>("/S", "n");
    End& end = AddClient();
    end.client->AddTic(S("/L,/S"), "");
    Settle();
    std::vector<int> heard;
    auto* const mirrored = Find<Text>("/L/log");
    RecordingObserver observer([&](Observable*, TChangeCode code) {
        if (code == changecode::ContentChanged) heard.push_back(mirrored->GetValue().toInt());
    });
    mirrored->AddObserver(&observer);
    int sent = 0;
    for (int i = 0; i < 3000; ++i) {
        switch (Chance(6)) {
            case 0:
                end.isReading = !end.isReading;
                break;
            case 1:
                n->SetValue(i);
                break;
            case 2:
                AddSomewhere("/S");
                break;
            case 3:
                Step();
                break;
            default:
                log->SetValue(QString::number(++sent));
                break;
        }
    }
    end.isReading = true;
    Settle();
    ASSERT_EQ(static_cast<int>(heard.size()), sent);
    for (int i = 0; i < sent; ++i)
        ASSERT_EQ(heard[static_cast<std::size_t>(i)], i + 1);
    mirrored->DeleteObserver(&observer);
}

}  // namespace
