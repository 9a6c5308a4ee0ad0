// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>

#include <gtest/gtest.h>

#include <QtCore/QString>

/// A tree, looked into by path.
class TreeFixture : public testing::Test {
  protected:
    values::TreeItem* Item(const char* path) { return m_tree.FindItem(QString::fromUtf8(path)); }
    template <class V>
    V* Find(const char* path) {
        return dynamic_cast<V*>(Item(path));
    }
    template <class V>
    V* Add(const char* parent, const char* name) {
        auto* const value = new V();
        value->SetName(QString::fromUtf8(name));
        EXPECT_TRUE(m_tree.AddValue(QString::fromUtf8(parent), value));
        return value;
    }

    values::Tree m_tree;
};
