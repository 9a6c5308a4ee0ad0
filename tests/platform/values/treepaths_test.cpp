// SPDX-License-Identifier: Apache-2.0
// Which texts lead where, sane and otherwise.
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using values::Tree;
using values::TreeItem;
using values::Value;

struct PathCase {
    const char* name;
    const char* path;
    const char* found;  ///< the path name of what is found; null for nothing
};

void PrintTo(const PathCase& row, std::ostream* stream) {
    *stream << row.name;
}

class TreePathTest : public testing::TestWithParam<PathCase> {
  protected:
    TreePathTest() {
        values::CreateValue<Value<int>>(QStringLiteral("/a/b/v"), nullptr);
        values::CreateValue<Value<int>>(QStringLiteral("/w"), nullptr);
        values::CreateValue<Value<int>>(QString::fromUtf8("/\xC3\xA4 \xF0\x9F\x93\xA1/v"), nullptr);
    }
    Tree tree;
};

TEST_P(TreePathTest, LeadsThere) {
    const TreeItem* const item = tree.FindItem(QString::fromUtf8(GetParam().path));
    if (GetParam().found == nullptr)
        EXPECT_EQ(item, nullptr);
    else
        EXPECT_EQ(item != nullptr ? item->GetPathName() : QString(), QString::fromUtf8(GetParam().found));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, TreePathTest,
    testing::Values(
        PathCase{"Plain", "/a/b/v", "/a/b/v"}, PathCase{"Node", "/a/b", "/a/b"}, PathCase{"Empty", "", "/"},
        PathCase{"Root", "/", "/"}, PathCase{"ManySlashes", "////", "/"}, PathCase{"WithoutSlash", "w", "/w"},
        PathCase{"WithoutLeadingSlash", "a/b/v", "/a/b/v"}, PathCase{"TrailingSlash", "/a/b/", "/a/b"},
        PathCase{"TrailingSlashAfterValue", "/w/", "/w"}, PathCase{"DoubledSlashes", "//a//b///v", "/a/b/v"},
        PathCase{"BelowAValue", "/w/x", nullptr}, PathCase{"Absent", "/a/c", nullptr},
        PathCase{"AbsentBelowAbsent", "/x/y/z", nullptr}, PathCase{"OtherCase", "/A/b", nullptr},
        PathCase{"Blank", "/a /b", nullptr}, PathCase{"DotsMeanNothing", "/a/../w", nullptr},
        PathCase{"Unicode", "/\xC3\xA4 \xF0\x9F\x93\xA1/v", "/\xC3\xA4 \xF0\x9F\x93\xA1/v"},
        PathCase{"Decomposed", "/a\xCC\x88 \xF0\x9F\x93\xA1/v", nullptr}),
    [](const testing::TestParamInfo<PathCase>& row) { return std::string(row.param.name); });

class DeepPathTest : public testing::Test {
  protected:
    static constexpr int Depth = 10000;
    DeepPathTest() {
        for (int i = 0; i < Depth; ++i)
            path += QStringLiteral("/n%1").arg(i % 10);
    }
    Tree tree;
    QString path;
};

TEST_F(DeepPathTest, TenThousandSegmentsCanBeMadeFoundNamedCopiedAndDeleted) {
    auto* const value = values::CreateValue<Value<int>>(path, nullptr);
    ASSERT_EQ(tree.FindItem(path), value);
    EXPECT_EQ(value->GetPathName(), path);
    EXPECT_EQ(tree.ProvideNode(path + QStringLiteral("x/y"))->GetPathName(), path + QStringLiteral("x/y"));

    values::Node* const top = tree.FindNode(QStringLiteral("/n0"));
    const std::unique_ptr<values::Node> copy(top->DeepCopy());
    int depth = 0;
    for (const TreeItem* item = copy.get(); item->IsNode();
         item = static_cast<const values::Node*>(item)->GetTreeItems().front())
        ++depth;
    EXPECT_EQ(depth, Depth - 1);

    tree.Delete(top);
    EXPECT_EQ(tree.FindItem(path), nullptr);
    EXPECT_EQ(tree.GetRoot()->CountChildren(), 0);
}

TEST_F(DeepPathTest, OfEmptySegmentsAloneIsTheRoot) {
    EXPECT_EQ(tree.FindItem(QString(Depth, QLatin1Char('/'))), tree.GetRoot());
    EXPECT_EQ(tree.ProvideNode(QString(Depth, QLatin1Char('/'))), tree.GetRoot());
}

}  // namespace
