// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/content.h>

#include <platform/values/visit.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>

namespace {

struct ContentName {
    unsigned content;
    const char* one;
    const char* several;
};

constexpr ContentName ContentNames[] = {
    {content::Node, QT_TRANSLATE_NOOP("content", "node"), QT_TRANSLATE_NOOP("content", "nodes")},
    {content::Boolean, QT_TRANSLATE_NOOP("content", "boolean"), QT_TRANSLATE_NOOP("content", "booleans")},
    {content::Integer, QT_TRANSLATE_NOOP("content", "integer"), QT_TRANSLATE_NOOP("content", "integers")},
    {content::Number, QT_TRANSLATE_NOOP("content", "number"), QT_TRANSLATE_NOOP("content", "numbers")},
    {content::Text, QT_TRANSLATE_NOOP("content", "text"), QT_TRANSLATE_NOOP("content", "texts")},
    {content::Selection, QT_TRANSLATE_NOOP("content", "selection"),
     QT_TRANSLATE_NOOP("content", "selections")},
    {content::List, QT_TRANSLATE_NOOP("content", "list"), QT_TRANSLATE_NOOP("content", "lists")},
};

}  // namespace

unsigned content::Of(const values::TreeItem* item) {
    unsigned found = None;
    if (item == nullptr) return found;
    const auto is = [&found](EContent content) { found = content; };
    values::Visit(*item, values::Overloaded{
                             [&](const values::Node&) { is(Node); },
                             [&](const values::Value<bool>&) { is(Boolean); },
                             [&](const values::Value<int>&) { is(Integer); },
                             [&](const values::Value<QString>&) { is(Text); },
                             [&](const values::ValueNumeric<int>&) { is(Integer); },
                             [&](const values::ValueNumeric<double>&) { is(Number); },
                             [&](const values::ValueSelection&) { is(Selection); },
                             [&](const values::ValueList<double>&) { is(List); },
                         });
    return found;
}

QString content::NameOf(unsigned content) {
    for (const ContentName& name : ContentNames)
        if (name.content == content) return QCoreApplication::translate("content", name.one);
    return QString();
}

QString content::NamesOf(unsigned contents) {
    if (contents == AnyValue) return QCoreApplication::translate("content", "values");
    QStringList names;
    for (const ContentName& name : ContentNames)
        if ((name.content & contents) != 0) names << QCoreApplication::translate("content", name.several);
    return names.join(QCoreApplication::translate("content", " or "));
}
