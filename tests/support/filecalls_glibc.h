// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <chrono>
#include <vector>

/// Counts what the process asks of the system for the files in one directory. Its source, which takes the
/// place of the C library's functions, is part of the programs that count.
namespace filecalls {

struct Counts {
    int locks = 0;
    int reads = 0;   ///< files opened for reading
    int writes = 0;  ///< files made anew
    int renames = 0;
    int syncs = 0;  ///< anywhere
    std::chrono::nanoseconds syncTime{0};
};

/// Counts from zero, for the files in \a directory.
void Start(const QString& directory);
Counts Get();
/// Locks, reads, writes, renames and syncs, in this order.
std::vector<int> GetCalls();

/// What one save asks for.
inline const std::vector<int> OneTransaction = {1, 1, 1, 1, 1};

}  // namespace filecalls
