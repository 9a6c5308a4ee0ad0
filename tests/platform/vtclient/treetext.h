// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/node.h>
#include <platform/values/valuebase.h>
#include <platform/vtclient/wire/itemkinds.h>

#include <QtCore/QStringList>

#include <algorithm>

/// A subtree in one line, the same for subtrees that are alike whatever they are called and in whatever order
/// their children stand: kinds, contents, limits, choices, delivery and state.
inline QString TreeText(const values::TreeItem* item) {
    if (item == nullptr) return QStringLiteral("nothing");
    struct Write {
        QString operator()(std::monostate /*nothing*/) const { return QStringLiteral("none"); }
        QString operator()(bool content) const { return QString::number(content ? 1 : 0); }
        QString operator()(qint64 content) const { return QString::number(content); }
        QString operator()(double content) const { return QString::number(content, 'g', 17); }
        QString operator()(const QString& content) const { return content; }
        QString operator()(const QVector<double>& content) const {
            QString text;
            for (const double one : content)
                text += QString::number(one, 'g', 17) + QLatin1Char(';');
            return text;
        }
    };
    vt::ItemDescription description;
    vt::DescribeItem(*item, &description);
    QStringList parts{QString::number(static_cast<int>(description.kind)), QString::number(description.flags),
                      std::visit(Write(), description.content), std::visit(Write(), description.minimum),
                      std::visit(Write(), description.maximum)};
    for (const vt::Choice& choice : description.choices)
        parts += choice.text + QLatin1Char(':') + QString::number(choice.key) + QLatin1Char(':') +
                 QString::number(choice.number);
    if (description.kind == vt::EItemKind::Node) {
        QStringList children;
        for (const values::TreeItem* const child : static_cast<const values::Node*>(item)->GetTreeItems())
            children += child->GetName() + QLatin1Char('=') + TreeText(child);
        children.sort();
        parts += children;
    }
    return QLatin1Char('(') + parts.join(QLatin1Char(' ')) + QLatin1Char(')');
}
