// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>

#include <tests/support/printing.h>

#include <memory>
#include <vector>

/// Looks into the tree as any other program part would: by path.
namespace treeaccess {

inline QString Text(const char* text) {
    return QString::fromUtf8(text);
}

/// The value of exactly the type V at \a path, else null.
template <class V>
V* ValueAt(const QString& path) {
    return dynamic_cast<V*>(values::Tree::Instance()->FindItem(path));
}

/// Adds a new value of type V to the tree; null where the tree refuses it.
template <class V>
V* PutValue(const QString& parentPath, const char* name) {
    auto value = std::make_unique<V>();
    value->SetName(Text(name));
    return values::Tree::Instance()->AddValue(parentPath, value.get()) ? value.release() : nullptr;
}

inline void DeleteAt(const QString& path) {
    values::Tree* const tree = values::Tree::Instance();
    tree->Delete(tree->FindItem(path));
}

inline std::vector<QString> ChildNames(const values::Node* node) {
    std::vector<QString> names;
    if (node == nullptr) return names;
    for (const values::TreeItem* item : node->GetTreeItems())
        names.push_back(item->GetName());
    return names;
}

/// How many observers \a node and its children have together; 0 where no node is.
inline int CountObservers(const values::Node* node) {
    if (node == nullptr) return 0;
    int count = node->CountObservers();
    for (values::TreeItem* item : node->GetTreeItems())
        count += item->GetObservable()->CountObservers();
    return count;
}

/// The content of any kind of value as a text: a number in full, a selection by its current key. "(none)"
/// where no value is.
inline QString ContentOf(const values::TreeItem* item) {
    if (const auto* flag = dynamic_cast<const values::Value<bool>*>(item))
        return flag->GetValue() ? Text("true") : Text("false");
    if (const auto* integer = dynamic_cast<const values::Value<int>*>(item))
        return QString::number(integer->GetValue());
    if (const auto* text = dynamic_cast<const values::Value<QString>*>(item)) return text->GetValue();
    if (const auto* count = dynamic_cast<const values::ValueNumeric<int>*>(item))
        return QString::number(count->GetValue());
    if (const auto* number = dynamic_cast<const values::ValueNumeric<double>*>(item))
        return QString::number(number->GetValue(), 'g', 17);
    if (const auto* selection = dynamic_cast<const values::ValueSelection*>(item))
        return QString::number(selection->GetCurrentKey());
    return Text("(none)");
}

inline QString ContentAt(const QString& path) {
    return ContentOf(values::Tree::Instance()->FindItem(path));
}

}  // namespace treeaccess
