// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/mirror/requestanswer.h>

#include <platform/values/treeitem.h>

namespace mctree {

namespace {

const QLatin1String RequestNode("/Request/");
const QLatin1String SaveButton("/SaveConfig");
const QLatin1String Refused("refused: ");
const QLatin1String Failed("failed: ");
/// Something that was granted before has ended by itself.
const QLatin1String Ended("ended: ");

}  // namespace

QString RequestAnswer::PathFor(const QString& path) {
    if (path.endsWith(SaveButton)) return path + QStringLiteral("Answer");
    const int at = path.lastIndexOf(RequestNode);
    if (at < 0) return QString();
    const QString answer = path.left(at) + RequestNode + QStringLiteral("Answer");
    return answer == path ? QString() : answer;
}

bool RequestAnswer::IsAnswer(const QString& path) {
    const QLatin1String word("Answer");
    if (path.endsWith(SaveButton + word)) return true;
    return path.endsWith(RequestNode + word);
}

RequestAnswer::RequestAnswer(Session& session, const Mirror& mirror) : m_session(session), m_value(*this) {
    m_value.Begin(dynamic_cast<values::Value<QString>*>(mirror.GetItem()));
}

bool RequestAnswer::IsRefused(QString* reason) const {
    if (!m_answer) return false;
    for (const QLatin1String& beginning : {Refused, Failed}) {
        if (!m_answer->startsWith(beginning)) continue;
        *reason = m_answer->mid(beginning.size());
        return true;
    }
    return false;
}

void RequestAnswer::Update(Observable* source, TChangeCode code) {
    if (m_value.EndIfGoingAway(source, code) || code != changecode::ContentChanged || m_answer) return;
    const QString answer = m_value->GetValue();
    if (answer.startsWith(Ended)) return;
    m_answer = answer;
    m_session.Wake();
}

}  // namespace mctree
