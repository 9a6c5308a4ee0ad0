// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <chrono>
#include <random>

namespace dimodule {

enum class EFault {
    None,
    Delay,
    Reset,
    Refused,
    Silence,
    Half,
    Transaction,
    Function,
    Length,
    Garbage,
    Exception,
    Duplicate,
    Idle,
    Storm
};

/// What a module does wrong, for how many questions.
struct Fault {
    EFault kind = EFault::None;
    int argument = 0;  ///< of Delay and Idle in ms, of Exception its number, of Storm in percent
    int count = 0;     ///< of questions; 0: until it is changed

    static constexpr int MaxCount = 1000000;

    /// Reads "NAME [ARGUMENT] [xCOUNT]", split into \a words. What is wrong with them; empty if nothing is.
    static QString Parse(const QStringList& words, Fault* fault);
    QString ToText() const;
    /// One line for each fault: how it is written and what it does.
    static QString Help();
};

/// What a module does about a question.
struct Reaction {
    enum class EThen { Stay, Leave, Reset };

    std::chrono::milliseconds delay{};
    QByteArray bytes;
    EThen then = EThen::Stay;
};

/// What becomes of the right \a answer to the question \a frame by \a fault. An answer that is wrong always
/// says the opposite of the true states, so that whoever believes it is found out.
Reaction React(const Fault& fault, const QByteArray& frame, const QByteArray& answer, std::mt19937& random);

}  // namespace dimodule
