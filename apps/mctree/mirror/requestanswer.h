// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mctree/mirror/mirror.h>

#include <platform/values/observation.h>
#include <platform/values/value.h>

#include <QtCore/QString>

#include <optional>

namespace mctree {

/// The answer to a request: that it was written only means that the server has heard of it, and what became
/// of it is told by a text, every time: as "done: ...", "refused: ..." or "failed: ...". The values below a
/// node "Request" are requests, answered by "Answer" of that node, and "SaveConfig" is one, answered by
/// "SaveConfigAnswer" beside it.
class RequestAnswer final : private IObserver {
  public:
    /// The path of the answer to the request at \a path; empty if there is no request.
    static QString PathFor(const QString& path);
    /// Whether \a path is that of an answer.
    static bool IsAnswer(const QString& path);

    /// Listens to \a mirror, an established one of an answer's path. It outlives this object.
    RequestAnswer(Session& session, const Mirror& mirror);

    /// The first answer since this object was made.
    const std::optional<QString>& Get() const { return m_answer; }
    /// Whether the answer is that the request was refused, or failed, and then the reason.
    bool IsRefused(QString* reason) const;

  private:
    void Update(Observable* source, TChangeCode code) override;

    Session& m_session;
    Observation<values::Value<QString>> m_value;
    std::optional<QString> m_answer;
};

}  // namespace mctree
