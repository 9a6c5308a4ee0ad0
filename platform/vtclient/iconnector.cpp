// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/iconnector.h>

vt::IConnector::~IConnector() = default;
vt::IConnector::IListener::~IListener() = default;
