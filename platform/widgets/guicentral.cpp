// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/guicentral.h>

#include <platform/values/tree.h>
#include <platform/values/value.h>

#include <memory>

GuiCentral& GuiCentral::Instance() {
    static GuiCentral central;
    return central;
}

QString GuiCentral::CreateUniqueValueBoolean(bool content) {
    values::Tree* const tree = values::Tree::Instance();
    if (tree == nullptr) return QString();
    const QString parent = QStringLiteral("/Gui");
    values::Node* const node = tree->ProvideNode(parent);
    if (node == nullptr) return QString();  // a value has the node's name
    const values::Value<bool> prototype(content);
    QString name;
    do {
        name = QStringLiteral("Flag%1").arg(++m_lastNumber);
    } while (node->FindChild(name) != nullptr);  // others may make items here too
    if (node->CreateChild(prototype, name) == nullptr) return QString();
    return parent + QLatin1Char('/') + name;
}
