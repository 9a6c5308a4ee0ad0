// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/contenttranslation.h>

#include <apps/common/codedtext.h>
#include <apps/common/problemtext.h>

#include <platform/values/node.h>

QString ContentTranslation::Content(const values::Value<QString>& value) const {
    const QString text = value.GetValue();
    const values::Node* const parent = value.GetParent();
    if (text.isEmpty() || parent == nullptr) return text;
    const auto* const code = dynamic_cast<const values::Value<QString>*>(
        parent->FindChild(value.GetName() + QLatin1String("Code")));
    return code != nullptr ? CodedText::TranslatedBeside(text, code->GetValue()) : text;
}

QString ContentTranslation::Item(const QString& text) const {
    return CodedText::TranslatedWord(text);
}

QString ContentTranslation::Reason(const QString& text) const {
    return problemtext::Translated(text);
}
