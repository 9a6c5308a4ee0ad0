// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Lets this process and the programs that it starts speak and write as on every machine, whatever the
/// language of this one is. Before the application is made.
void UsePlainLanguage();

/// Runs the tests that the command line asks for, beside what GoogleTest's own options leave:
///
///     --source=<name>   those of one source file, which must have some
///     --alone           each in a process of its own, for tests of what happens once per process
///
/// Once GoogleTest and the application are initialised.
/// \return the exit code of the program.
int RunTests();
