// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/guibase.h>

GuiBase& GuiBase::Instance() {
    static GuiBase base;
    return base;
}

QFileDialog::Options GuiBase::UseNativeDialogs() const {
    return m_isNative ? QFileDialog::Options() : QFileDialog::DontUseNativeDialog;
}
