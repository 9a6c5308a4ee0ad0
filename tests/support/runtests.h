// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Runs the tests that the command line asks for, beside what GoogleTest's own options leave:
///
///     --source=<name>   those of one source file, which must have some
///     --alone           each in a process of its own, for tests of what happens once per process
///
/// Once GoogleTest and the application are initialised.
/// \return the exit code of the program.
int RunTests();
