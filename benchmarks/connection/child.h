// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "settings.h"

#include <apps/common/childprogram.h>

#include <optional>

namespace bench {

/// A role to be played by a process of its own.
struct Part {
    QString role;
    Settings settings;
    QString program = QString();  ///< beside this one; empty: this one
};

/// This program once more, or another one, in a role. Ends with this object.
class Child {
  public:
    explicit Child(const Part& part);

    /// The number in the line "port ..."; empty if the child failed before.
    std::optional<int> WaitForPort();
    /// What the line "result ..." holds; empty if the child failed before.
    std::optional<Settings> WaitForResult();
    QString GetFailure() const { return m_failure; }

  private:
    std::optional<QString> WaitForLine(const QString& kind);

    QString m_role;
    QString m_failure;
    ChildProgram m_process{ChildProgram::EErrors::PassedOn};
};

}  // namespace bench
