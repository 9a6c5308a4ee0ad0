// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/treeitem.h>
#include <platform/vtclient/wire/itemkinds.h>

#include <gtest/gtest.h>

#include <map>

/// Whether two subtrees are alike, whatever they are called and in whatever order their children stand:
/// kinds, contents, limits, choices, delivery and state. Tells the first difference.
inline testing::AssertionResult AreEqual(const values::TreeItem* a, const values::TreeItem* b,
                                         const QString& path = QString()) {
    const auto differ = [&path](const char* what) {
        return testing::AssertionFailure() << "at '" << path.toStdString() << "': " << what;
    };
    if (a == nullptr || b == nullptr)
        return a == b ? testing::AssertionSuccess() : differ("only one is there");
    vt::ItemDescription left;
    vt::ItemDescription right;
    vt::DescribeItem(*a, &left);
    vt::DescribeItem(*b, &right);
    if (left.kind != right.kind) return differ("the kinds");
    if (left.flags != right.flags) return differ("delivery or state");
    if (left.content != right.content) return differ("the contents");
    if (left.minimum != right.minimum || left.maximum != right.maximum) return differ("the limits");
    if (left.choices.size() != right.choices.size()) return differ("how many choices");
    for (std::size_t i = 0; i < left.choices.size(); ++i)
        if (left.choices[i].text != right.choices[i].text || left.choices[i].key != right.choices[i].key ||
            left.choices[i].number != right.choices[i].number)
            return differ("the choices");
    if (left.kind != vt::EItemKind::Node) return testing::AssertionSuccess();
    const auto* const leftNode = static_cast<const values::Node*>(a);
    const auto* const rightNode = static_cast<const values::Node*>(b);
    for (const values::TreeItem* child : rightNode->GetTreeItems())
        if (leftNode->FindChild(child->GetName()) == nullptr)
            return differ("a child that only the second has: ") << child->GetName().toStdString();
    for (const values::TreeItem* child : leftNode->GetTreeItems()) {
        const testing::AssertionResult result = AreEqual(child, rightNode->FindChild(child->GetName()),
                                                         path + QLatin1Char('/') + child->GetName());
        if (!result) return result;
    }
    return testing::AssertionSuccess();
}
