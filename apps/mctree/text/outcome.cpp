// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/outcome.h>

#include <apps/common/safetext.h>

namespace mctree {

Outcome Outcome::RefusedAt(const QString& path, const QString& reason) {
    // The server's reason may name the path already.
    const QString message = reason.contains(path) ? reason : path + QStringLiteral(": ") + reason;
    return {EExitCode::Refused, safetext::Escaped(message)};
}

}  // namespace mctree
