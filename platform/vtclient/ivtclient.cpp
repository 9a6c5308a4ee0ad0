// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/ivtclient.h>

IVtTic::~IVtTic() = default;
IVtClient::~IVtClient() = default;

bool IVtClient::Recall(const QString& /*path*/, quint64 /*before*/, int /*count*/,
                       const IVtHistory::Answer& /*answer*/) {
    return false;
}
