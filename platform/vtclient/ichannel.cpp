// SPDX-License-Identifier: Apache-2.0
#include <platform/vtclient/ichannel.h>

vt::IChannel::~IChannel() = default;
vt::IChannelListener::~IChannelListener() = default;
