// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/itexttranslation.h>

/// Contents of a server's tree in the language of the application: by the code that stands beside a text, by
/// the list of known words for items of selections, and by known sentences for reasons. GUI thread.
class ContentTranslation : public ITextTranslation {
  public:
    /// The value "Name" is said by the value "NameCode" beside it, if there is one (apps/common/codedtext.h).
    QString Content(const values::Value<QString>& value) const override;
    QString Item(const QString& text) const override;
    QString Reason(const QString& text) const override;
};
