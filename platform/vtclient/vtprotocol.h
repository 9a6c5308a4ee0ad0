// SPDX-License-Identifier: Apache-2.0
#pragma once

/// The version of the protocol that clients and servers of this library speak with each other.
constexpr int VtProtocolVersion = 1;
