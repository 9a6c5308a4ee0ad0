// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcscommands.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>
#include <devicecontrol/multichannelserver/common/observedvalues.h>

#include <platform/app/errorhandler.h>
#include <platform/values/valueaccess.h>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* SourcePath = L"devicecontrol/multichannelserver/common/mcscommands";

}  // namespace

MCSCommands::MCSCommands(const QString* basePath)
    : m_basePath(basePath != nullptr ? *basePath : mcskeys::DefaultBasePath(mcskeys::Config)) {
    const QString path = MCSCommands::GetShallBeConnected_ValuePath();
    m_pShallBeConnected = values::ProvideValue<values::Value<bool>>(path, true, false, this);
    AssertNotNull(m_pShallBeConnected, L"m_pShallBeConnected != NULL", SourcePath, 44);
}

MCSCommands::~MCSCommands() {
    observedvalues::DetachAll(ObservedValues(), this);
}

values::Value<bool>* MCSCommands::GetShallBeConnectedValue() const {
    return m_pShallBeConnected;
}

QString MCSCommands::GetShallBeConnected_ValuePath() {
    return mcskeys::Join(m_basePath, mcskeys::ShallBeConnected);
}

void MCSCommands::Update(Observable* source, TChangeCode code) {
    if (code == changecode::StateChanged) observedvalues::ForgetIfGoingAway(ObservedValues(), source, this);
}
