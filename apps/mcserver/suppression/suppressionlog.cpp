// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionlog.h>

#include <apps/mcserver/log/serverlog.h>

#include <devicecontrol/multichannelserver/common/gts/modulefailure.h>

namespace {

QString ReasonOf(const ModuleFailure& failure) {
    return QStringLiteral("%1 %2 %3")
        .arg(failure.module.address, QString::number(failure.code), failure.text);
}

}  // namespace

bool SuppressionLog::IsTold(const ModuleFailure& failure) const {
    const auto reasons = m_told.find(failure.module.NodeName());
    if (reasons == m_told.end()) return false;
    return reasons->second.size() >= MaxReasons || reasons->second.count(ReasonOf(failure)) != 0;
}

void SuppressionLog::OnModuleFailed(const ModuleFailure& failure) {
    const CodedText further =
        failure.addressFault.isEmpty() ? CodedText() : CodedText(ECode::Further, {failure.addressFault});
    if (!failure.isRepeated) m_told.erase(failure.module.NodeName());
    ServerLog::Origin origin;
    origin.isRepetition = IsTold(failure);
    const CodedText text(ECode::ModuleFailed, {failure.module.GetName(), failure.module.address, failure.text,
                                               CodedText::Number(failure.code), further});
    const bool isWritten = m_log.WriteFrom(failure.module.GetName(), text, origin);
    if (isWritten && !origin.isRepetition) m_told[failure.module.NodeName()].insert(ReasonOf(failure));
}

void SuppressionLog::OnModuleAnswersAgain(const ModuleIdentity& module) {
    m_told.erase(module.NodeName());
    m_log.WriteFrom(module.GetName(), {ECode::ModuleAnswersAgain, {module.GetName(), module.address}});
}
