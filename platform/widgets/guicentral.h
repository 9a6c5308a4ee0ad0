// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/widgetsexport.h>

#include <QtCore/QString>

/// Values that widgets need for themselves, below "/Gui" in the tree. GUI thread only.
class MCS_WIDGETS_EXPORT GuiCentral {
  public:
    static GuiCentral& Instance();  ///< the one of the process
    GuiCentral(const GuiCentral&) = delete;
    GuiCentral& operator=(const GuiCentral&) = delete;

    /// Creates a boolean value with a name that no other has.
    /// \return its path; empty without a tree. The value belongs to the tree.
    QString CreateUniqueValueBoolean(bool content);

  private:
    GuiCentral() = default;

    quint64 m_lastNumber = 0;
};
