// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/value.h>

#include <QtCore/QString>

#include <random>

/// Edits a subtree at random: as a device does the one that its server serves, or as an operator does a
/// mirror of it.
class RandomEdits {
  public:
    enum class ERole { Device, Operator };

    RandomEdits(QString root, ERole role, unsigned seed);

    /// Makes what there is to edit, and two texts of which every change counts: "log" and "notes".
    void MakeTree();
    /// One edit, of what is there.
    void Step();
    int Chance(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

  private:
    values::TreeItem* Item(const QString& name) const;
    template <class V>
    V* Find(const QString& name) const {
        return dynamic_cast<V*>(Item(name));
    }
    template <class V>
    void Make(const QString& name);
    QString Text();
    void EditContent();
    void EditSelection();
    void EditList();
    void Create();
    void Describe();
    void DescribeSelection();
    void DeleteOne();
    void RenameOne();
    values::TreeItem* AnyChild() const;

    QString m_root;
    ERole m_role;
    mutable std::mt19937 m_random;
    int m_made = 0;
};
