// SPDX-License-Identifier: Apache-2.0
#include <platform/values/valuedescriptor.h>

#include <platform/values/tree.h>

values::Node* values::ValueDescriptor::CreateNodeAbsolute(const QString& path, IObserver* observer) {
    Tree* const tree = Tree::Instance();
    Node* const node = tree != nullptr ? tree->ProvideNode(path) : nullptr;
    if (node != nullptr) node->AddObserver(observer);
    return node;
}
