// SPDX-License-Identifier: Apache-2.0
#pragma once

/// For those that the system tells what ShutdownSignals are told of by signals elsewhere. Any thread.
namespace shutdownrequests {

/// Asks the process to end; if nobody listens yet, as soon as somebody does.
void End();
/// Asks it to read its files anew.
void HangUp();

}  // namespace shutdownrequests
