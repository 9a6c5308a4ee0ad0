// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/mirror/targets.h>

#include <apps/common/safetext.h>
#include <apps/mctree/mirror/walk.h>

#include <algorithm>

namespace mctree {

Targets::Targets(Session& session, const std::vector<PathPattern>& patterns, EPurpose purpose)
    : m_session(session) {
    for (const PathPattern& pattern : patterns)
        m_operands.push_back({&pattern, &MirrorOf(pattern.FixedPath(), purpose)});
}

const Mirror& Targets::MirrorOf(const QString& path, EPurpose purpose) {
    const auto found = std::find_if(m_mirrors.begin(), m_mirrors.end(),
                                    [&path](const auto& mirror) { return mirror->GetRemotePath() == path; });
    if (found != m_mirrors.end()) return **found;
    m_mirrors.push_back(std::make_unique<Mirror>(m_session, path, purpose));
    return *m_mirrors.back();
}

std::vector<Target> Targets::Find(const Operand& operand) {
    values::TreeItem* const top = operand.mirror->GetItem();
    if (!operand.mirror->IsEstablished() || top == nullptr) return {};
    if (!operand.pattern->IsGlob()) return {{top, operand.mirror->GetRemotePath(), operand.mirror}};
    std::vector<Target> found;
    Walk(*top, [&](values::TreeItem& item, int) {
        const QString path = operand.mirror->RemotePathOf(item);
        if (operand.pattern->Matches(path)) found.push_back({&item, path, operand.mirror});
    });
    return found;
}

Outcome Targets::NotFound(const Operand& operand) {
    if (!operand.mirror->IsEstablished()) return NotHere(*operand.mirror);
    return {EExitCode::Refused,
            QStringLiteral("nothing matches ") + safetext::Escaped(operand.pattern->Text())};
}

}  // namespace mctree
