// SPDX-License-Identifier: Apache-2.0
// Which names are told apart, of any length and of any characters, among few siblings and among many.
#include <platform/values/namekey.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

using values::Node;
using values::TreeItem;
using values::Value;

constexpr int Longest = 70;

QString Of(int length, ushort character) {
    return QString(length, QChar(character));
}

/// Names that a careless comparison takes for each other: of every length, differing in one character or only
/// in its upper or lower byte, and in trailing characters that are zero.
std::vector<QString> AlikeNames() {
    std::vector<QString> names;
    for (int length = 1; length <= Longest; ++length) {
        const QString plain = Of(length, 'A');
        names.push_back(plain);
        for (const ushort other : {ushort(0), ushort('B'), ushort(0xe4), ushort(0x0141), ushort(0x4100)}) {
            for (const int place : {0, length / 2, length - 1}) {
                QString name = plain;
                name[place] = QChar(other);
                names.push_back(name);
            }
        }
        names.push_back(Of(length, 0));
        names.push_back(Of(length, 0x0141));
    }
    return names;
}

std::vector<QString> Distinct(const std::vector<QString>& names) {
    const std::set<QString> distinct(names.begin(), names.end());
    return {distinct.begin(), distinct.end()};
}

TEST(NamesTest, AllAreFoundAmongMany) {
    Node node;
    std::vector<std::pair<QString, TreeItem*>> children;
    for (const QString& name : Distinct(AlikeNames())) {
        ASSERT_EQ(node.FindChild(name), nullptr) << name.size();
        TreeItem* const child = node.CreateChild(Value<int>(), name);
        ASSERT_NE(child, nullptr) << name.size();
        children.emplace_back(name, child);
    }
    for (const auto& [name, child] : children)
        ASSERT_EQ(node.FindChild(name), child) << name.size();
}

TEST(NamesTest, AllAreFoundAmongFew) {
    const std::vector<QString> names = Distinct(AlikeNames());
    for (std::size_t i = 1; i < names.size(); ++i) {
        Node node;
        TreeItem* const first = node.CreateChild(Value<int>(), names[i - 1]);
        ASSERT_EQ(node.FindChild(names[i]), nullptr) << names[i].size();
        TreeItem* const second = node.CreateChild(Value<int>(), names[i]);
        ASSERT_EQ(node.FindChild(names[i - 1]), first);
        ASSERT_EQ(node.FindChild(names[i]), second);
    }
}

// Some are renamed, some go: what remains is found under its name, and nothing else is.
TEST(NamesTest, OfWhatWentOrWasRenamedAreNotFound) {
    Node node;
    std::vector<QString> kept;
    std::vector<QString> lost;
    int number = 0;
    for (const QString& name : Distinct(AlikeNames()))
        node.CreateChild(Value<int>(), name);
    for (const QString& name : Distinct(AlikeNames())) {
        auto* const child = static_cast<Value<int>*>(node.FindChild(name));
        switch (++number % 3) {
            case 0:
                delete child;
                lost.push_back(name);
                break;
            case 1:
                child->SetName(name + QLatin1Char('+'));
                lost.push_back(name);
                kept.push_back(name + QLatin1Char('+'));
                break;
            default:
                kept.push_back(name);
        }
    }
    for (const QString& name : lost)
        ASSERT_EQ(node.FindChild(name), nullptr) << name.size();
    for (const QString& name : kept) {
        ASSERT_NE(node.FindChild(name), nullptr) << name.size();
        ASSERT_EQ(node.FindChild(name)->GetName(), name);
    }
}

TEST(NamesTest, OfAnyLengthLeadToAValueInAPath) {
    values::Tree tree;
    const QString end = QStringLiteral("v");
    for (int length = 1; length <= Longest; ++length) {
        const QString path = QStringLiteral("/%1/").arg(Of(length, 'n'));
        auto* const value = new Value<int>();
        value->SetName(end);
        ASSERT_TRUE(tree.AddValue(path, value));
        ASSERT_EQ(tree.FindItem(path + end), value) << length;
        ASSERT_EQ(tree.FindItem(path + end + QLatin1Char('/')), value) << length;
        ASSERT_EQ(tree.FindItem(path), value->GetParent()) << length;
    }
}

TEST(NamesTest, ChildIsNotFoundByAPath) {
    Node node;
    node.CreateChild(Value<int>(), QStringLiteral("a"));
    EXPECT_EQ(node.FindChild(QStringLiteral("a/")), nullptr);
    EXPECT_EQ(node.FindChild(QStringLiteral("a/b")), nullptr);
    EXPECT_EQ(node.FindChild(QStringLiteral("/a")), nullptr);
    EXPECT_EQ(node.FindChild(QString()), nullptr);
}

// The upper bit of a character passes through multiplications unchanged: a hash that only multiplies and
// folds lets it be taken back two characters on, whatever its secret.
TEST(NamesTest, ChosenToCollideDoNot) {
    std::set<std::uint32_t> hashes;
    constexpr int Choices = 10;
    constexpr int Names = 1 << Choices;
    for (int number = 0; number < Names; ++number) {
        QString name;
        for (int choice = 0; choice < Choices; ++choice)
            name += (number >> choice & 1) != 0 ? QStringLiteral("aaa\u8061a\u8061a\u8061")
                                                : QStringLiteral("aaaaaaaa");
        hashes.insert(values::NameKey(name).Hash());
    }
    EXPECT_GT(hashes.size(), std::size_t(Names - 5)) << "a few may collide by chance";
}

}  // namespace
