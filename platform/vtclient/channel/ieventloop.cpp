// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/channel/ieventloop.h>

vt::ITurnTaker::~ITurnTaker() = default;
vt::IEventLoop::~IEventLoop() = default;
