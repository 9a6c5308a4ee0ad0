// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Lets the process open as many files and connections as the system allows it: what it is allowed at first
/// is little for a server.
void RaiseDescriptorLimit();
/// How many those are, as far as the system has a limit for it.
int GetDescriptorLimit();
