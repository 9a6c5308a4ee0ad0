// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/mcscommands.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <platform/values/fields.h>

namespace {

/// What traces and assertions name as their place. (fixed: trace-places)
constexpr const wchar_t* CommandsPlace = L"devicecontrol/multichannelserver/common/mcscommands";

}  // namespace

struct MCSCommands::Fields {
    using C = MCSCommands;
    // clang-format off
    static constexpr std::tuple Rows = {
        //            member                  path                               starts with           asserted as                       line  looked for
        fields::Field{&C::m_pShallBeConnected, &C::GetShallBeConnected_ValuePath, fields::Content{true}, L"m_pShallBeConnected != NULL", 44,   {1}},
    };
    // clang-format on
};

MCSCommands::MCSCommands(const QString* basePath)
    : m_basePath(basePath != nullptr ? *basePath : mcskeys::DefaultBasePath(mcskeys::Config)) {
    fields::Provide<Fields>(*this, CommandsPlace, false, this);
}

MCSCommands::~MCSCommands() {
    fields::DetachAll<Fields>(*this, this);
}

values::Value<bool>* MCSCommands::GetShallBeConnectedValue() const {
    return m_pShallBeConnected;
}

QString MCSCommands::GetShallBeConnected_ValuePath() {
    return mcskeys::Join(m_basePath, mcskeys::ShallBeConnected);
}

void MCSCommands::Update(Observable* source, TChangeCode code) {
    if (code == changecode::StateChanged) fields::ForgetIfGoingAway<Fields>(*this, source, this);
}
