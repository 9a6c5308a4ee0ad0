// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/gts/blankingclient.h>

#include <devicecontrol/multichannelserver/common/gts/blanking.h>

BlankingClient::BlankingClient(const QString& name) : m_name(name) {}

BlankingClient::BlankingClient(const BlankingClient& other) = default;

BlankingClient& BlankingClient::operator=(const BlankingClient& other) = default;

BlankingClient::~BlankingClient() {
    Blanking::Forget(this);
}

QString BlankingClient::Name() const {
    return m_name;
}
