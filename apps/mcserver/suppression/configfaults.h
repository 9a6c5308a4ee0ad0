// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <vector>

class ServerLog;

/// What the server says right after its start of a configuration that it could not take as it stands. Main
/// thread.
namespace configfaults {

/// What was found damaged of the file since this was asked last.
std::vector<CodedText> TakeDamages();
/// That, and what of the section of the suppression is not in use. Keeps a copy of the file where something
/// of it is going to be written over. All of it is told in \a log.
std::vector<CodedText> TellAll(ServerLog& log);

}  // namespace configfaults
