// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/ivtclient.h>

IVtTic::~IVtTic() = default;
IVtClient::~IVtClient() = default;
