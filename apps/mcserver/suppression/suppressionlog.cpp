// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/suppressionlog.h>

#include <apps/mcserver/log/serverlog.h>

#include <devicecontrol/multichannelserver/common/gts/modulefailure.h>

void SuppressionLog::OnModuleFailed(const ModuleFailure& failure) {
    const CodedText further =
        failure.addressFault.isEmpty() ? CodedText() : CodedText(ECode::Further, {failure.addressFault});
    m_log.WriteFrom(failure.module.GetName(), {ECode::ModuleFailed,
                                               {failure.module.GetName(), failure.module.address,
                                                failure.text, CodedText::Number(failure.code), further}});
}

void SuppressionLog::OnModuleAnswersAgain(const ModuleIdentity& module) {
    m_log.WriteFrom(module.GetName(), {ECode::ModuleAnswersAgain, {module.GetName(), module.address}});
}
