// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/askingcheckbox.h>

#include <apps/pages/question.h>

#include <QtCore/QPointer>

void AskingCheckBox::nextCheckState() {
    const bool isOn = !isChecked();
    const bool mayAsk = m_asker && GetBinding().MayEdit();
    const Question asked = mayAsk ? m_asker(isOn) : Question();
    if (!asked.text.isEmpty()) {
        const QPointer<AskingCheckBox> self(this);
        const QString path = GetBinding().GetPath();
        const bool isConfirmed = question::IsConfirmed(window(), asked.title, asked.text, asked.action);
        if (self == nullptr || !isConfirmed) return;
        // Meanwhile somebody may have switched it, or it may show another one's.
        if (isChecked() == isOn || GetBinding().GetPath() != path) return;
    }
    VCCheckBox::nextCheckState();
}
