// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/text/outcome.h>

#include <functional>

namespace mctree {

/// Collects how the parts of a command ended, which goes on with the others where one fails: what is to be
/// said is said at once, and of the exit codes the greatest counts.
class Report {
  public:
    /// Takes one line.
    using Tell = std::function<void(const QString&)>;

    explicit Report(const Tell& tell) : m_tell(tell) {}

    void Add(const Outcome& outcome);
    /// How all of it ended; everything was said.
    Outcome Result() const { return {m_code, QString()}; }

  private:
    const Tell& m_tell;
    EExitCode m_code = EExitCode::Done;
};

}  // namespace mctree
