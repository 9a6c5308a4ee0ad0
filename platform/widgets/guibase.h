// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtWidgets/QFileDialog>

/// What the application decides once for all its windows. GUI thread only.
class MCS_WIDGETS_EXPORT GuiBase {
  public:
    static GuiBase& Instance();  ///< the one of the process
    GuiBase(const GuiBase&) = delete;
    GuiBase& operator=(const GuiBase&) = delete;

    /// The options that file dialogs are opened with: none while the desktop's own dialogs are used.
    QFileDialog::Options UseNativeDialogs() const;
    void SetUseNativeDialogs(bool isNative) { m_isNative = isNative; }  ///< true at first

  private:
    GuiBase() = default;

    bool m_isNative = true;
};
