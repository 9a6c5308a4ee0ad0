// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/mirror/mirror.h>
#include <apps/mctree/text/pathpattern.h>

#include <vector>

namespace mctree {

/// An item that was asked for.
struct Target {
    values::TreeItem* item;
    QString path;  ///< where the server has it
    const Mirror* mirror;
};

/// What the paths of a command name, mirrored: one mirror for what lies below the same item.
class Targets {
  public:
    struct Operand {
        const PathPattern* pattern;
        const Mirror* mirror;
    };

    /// Asks for all that may match. The session and the patterns outlive this object.
    Targets(Session& session, const std::vector<PathPattern>& patterns, EPurpose purpose);

    /// As the function of this name.
    Outcome Settle(QDeadlineTimer deadline) { return mctree::Settle(m_session, m_mirrors, deadline); }

    const std::vector<Operand>& Operands() const { return m_operands; }
    const Mirrors& GetMirrors() const { return m_mirrors; }

    /// What \a operand names at the moment, in the order of the tree; nothing while its mirror is not here.
    static std::vector<Target> Find(const Operand& operand);
    /// What is said if that is nothing.
    static Outcome NotFound(const Operand& operand);

  private:
    const Mirror& MirrorOf(const QString& path, EPurpose purpose);

    Session& m_session;
    Mirrors m_mirrors;
    std::vector<Operand> m_operands;
};

}  // namespace mctree
