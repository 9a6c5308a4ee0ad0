// SPDX-License-Identifier: Apache-2.0
// Trees built and torn down at random beside a model that is too simple to be wrong.
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/printing.h>
#include <tests/support/recordingobserver.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <set>

namespace {

using values::Node;
using values::Tree;
using values::TreeItem;
using values::Value;

/// The model: every path with, for a value, its content; and the order of each node's children.
struct Model {
    std::map<QString, std::vector<QString>> nodes = {{QString(), {}}};
    std::map<QString, int> values;

    static QString ParentOf(const QString& path) { return path.left(path.lastIndexOf(QLatin1Char('/'))); }
    static QString NameOf(const QString& path) { return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1); }
    bool Has(const QString& path) const { return nodes.count(path) != 0 || values.count(path) != 0; }

    /// Makes the nodes down to \a path; false, and nothing done, if a value is in the way.
    bool ProvideNode(const QString& path) {
        for (QString above = path; !above.isEmpty(); above = ParentOf(above))
            if (values.count(above) != 0) return false;
        if (nodes.count(path) != 0) return true;
        ProvideNode(ParentOf(path));
        nodes[path];
        nodes[ParentOf(path)].push_back(NameOf(path));
        return true;
    }
    bool AddValue(const QString& path, int content) {
        if (Has(path) || !ProvideNode(ParentOf(path))) return false;
        values[path] = content;
        nodes[ParentOf(path)].push_back(NameOf(path));
        return true;
    }
    void Delete(const QString& path) {
        std::vector<QString>& siblings = nodes[ParentOf(path)];
        siblings.erase(std::find(siblings.begin(), siblings.end(), NameOf(path)));
        const QString below = path + QLatin1Char('/');
        const auto isGone = [&](const QString& p) { return p == path || p.startsWith(below); };
        for (auto it = nodes.begin(); it != nodes.end();)
            it = isGone(it->first) ? nodes.erase(it) : std::next(it);
        for (auto it = values.begin(); it != values.end();)
            it = isGone(it->first) ? values.erase(it) : std::next(it);
    }
};

class RandomTreeTest : public testing::TestWithParam<unsigned> {
  protected:
    QString RandomPath() {
        QString path;
        for (auto depth = 1 + random() % 4; depth > 0; --depth)
            path += QStringLiteral("/%1").arg(random() % 12);
        return path;
    }
    void Step();
    void Compare(const Node* node, const QString& path);

    std::mt19937 random{GetParam()};
    Model model;
    Tree tree;
    // Holds on to values as data objects do: until they say that they go away.
    std::set<Value<int>*> held;
    RecordingObserver holder{[this](Observable* source, TChangeCode code) {
        auto* const value = dynamic_cast<Value<int>*>(source);
        if (code == changecode::StateChanged && value->GetState() == values::GoingAway) held.erase(value);
    }};
};

void RandomTreeTest::Step() {
    const QString path = RandomPath();
    const int content = static_cast<int>(random() % 1000);
    switch (random() % 6) {
        case 0:
        case 1: {
            auto value = std::make_unique<Value<int>>(content);
            value->SetName(Model::NameOf(path));
            value->AddObserver(&holder);
            const bool isAdded = tree.AddValue(Model::ParentOf(path), value.get());
            ASSERT_EQ(isAdded, model.AddValue(path, content)) << path.toStdString();
            if (isAdded)
                held.insert(value.release());
            else
                value->DeleteObserver(&holder);
            break;
        }
        case 2:
            ASSERT_EQ(tree.ProvideNode(path) != nullptr, model.ProvideNode(path)) << path.toStdString();
            break;
        case 3:
            if (auto* const value = values::FindValue<Value<int>>(path, nullptr, nullptr)) {
                ASSERT_EQ(model.values.count(path), 1U);
                value->SetValue(content);
                model.values[path] = content;
            }
            break;
        case 4:
            if (model.Has(path) && random() % 3 == 0) {
                tree.Delete(tree.FindItem(path));
                model.Delete(path);
            }
            break;
        default:
            ASSERT_EQ(tree.FindItem(path) != nullptr, model.Has(path)) << path.toStdString();
            ASSERT_EQ(tree.FindNode(path) != nullptr, model.nodes.count(path) != 0) << path.toStdString();
    }
}

void RandomTreeTest::Compare(const Node* node, const QString& path) {
    const std::vector<TreeItem*> items = node->GetTreeItems();
    const std::vector<QString>& names = model.nodes.at(path);
    ASSERT_EQ(items.size(), names.size()) << path.toStdString();
    for (std::size_t i = 0; i < items.size(); ++i) {
        ASSERT_EQ(items[i]->GetName(), names[i]) << "order below " << path.toStdString();
        const QString childPath = path + QLatin1Char('/') + names[i];
        ASSERT_EQ(items[i]->GetPathName(), childPath);
        ASSERT_EQ(tree.FindItem(childPath), items[i]);
        if (items[i]->IsNode())
            Compare(static_cast<const Node*>(items[i]), childPath);
        else
            ASSERT_EQ(dynamic_cast<Value<int>*>(items[i])->GetValue(), model.values.at(childPath));
    }
}

TEST_P(RandomTreeTest, TenThousandStepsKeepTreeAndModelEqual) {
    for (int step = 0; step < 10000; ++step) {
        ASSERT_NO_FATAL_FAILURE(Step()) << "in step " << step;
        ASSERT_EQ(held.size(), model.values.size()) << "in step " << step;
        if (step % 500 == 0) {
            ASSERT_NO_FATAL_FAILURE(Compare(tree.GetRoot(), QString())) << "after step " << step;
        }
    }
    ASSERT_NO_FATAL_FAILURE(Compare(tree.GetRoot(), QString()));
    const std::unique_ptr<Node> copy(tree.GetRoot()->DeepCopy());
    EXPECT_EQ(copy->CountChildren(), tree.GetRoot()->CountChildren());
    for (TreeItem* item : tree.GetRoot()->GetTreeItems())
        tree.Delete(item);
    EXPECT_TRUE(held.empty());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTreeTest, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
