// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/fault.h>

#include <apps/dimodule/answer.h>
#include <apps/dimodule/modbusframe.h>

#include <algorithm>
#include <iterator>

using namespace std::chrono_literals;

namespace dimodule {

namespace {

constexpr int LongestMs = 3600 * 1000;

struct Description {
    const char* name;
    EFault kind;
    const char* argument;  ///< what it is called in the help; null: takes none
    int lowest;
    int highest;
    int unlessGiven;
    const char* help;
};

// clang-format off
constexpr Description Descriptions[] = {
    {"none",        EFault::None,        nullptr,   0, 0, 0,           "answer every question, and rightly"},
    {"delay",       EFault::Delay,       "MS",      0, LongestMs, 1000, "answer after MS"},
    {"reset",       EFault::Reset,       nullptr,   0, 0, 0,           "reset the connection"},
    {"refused",     EFault::Refused,     nullptr,   0, 0, 0,           "reset all connections, and take none"},
    {"silence",     EFault::Silence,     nullptr,   0, 0, 0,           "say nothing"},
    {"half",        EFault::Half,        nullptr,   0, 0, 0,           "send half an answer"},
    {"transaction", EFault::Transaction, nullptr,   0, 0, 0,           "answer another question"},
    {"function",    EFault::Function,    nullptr,   0, 0, 0,           "answer another function"},
    {"length",      EFault::Length,      nullptr,   0, 0, 0,           "send a byte too few or too many, or say so"},
    {"garbage",     EFault::Garbage,     nullptr,   0, 0, 0,           "send what is no Modbus"},
    {"exception",   EFault::Exception,   "NUMBER",  0, 255, 4,         "answer with the exception NUMBER"},
    {"duplicate",   EFault::Duplicate,   nullptr,   0, 0, 0,           "send each answer twice"},
    {"idle",        EFault::Idle,        "MS",      1, LongestMs, 1000, "drop a connection MS after its last question"},
    {"storm",       EFault::Storm,       "PERCENT", 0, 100, 50,        "any of these, at random, PERCENT of the time"},
};
// clang-format on

/// What a storm is made of: all that can befall one answer.
constexpr EFault StormFaults[] = {EFault::Delay,       EFault::Reset,    EFault::Silence, EFault::Half,
                                  EFault::Transaction, EFault::Function, EFault::Length,  EFault::Garbage,
                                  EFault::Exception,   EFault::Duplicate};
constexpr int StormDelayMs = 1000;

const Description& DescriptionOf(EFault kind) {
    return *std::find_if(std::begin(Descriptions), std::end(Descriptions),
                         [kind](const Description& d) { return d.kind == kind; });
}

bool ReadNumber(const QString& text, int lowest, int highest, int* number) {
    bool isNumber = false;
    *number = text.toInt(&isNumber);
    return isNumber && *number >= lowest && *number <= highest;
}

int Roll(std::mt19937& random, int below) {
    return std::uniform_int_distribution<int>(0, below - 1)(random);
}

void Add(QByteArray& bytes, int at, int difference) {
    bytes[at] = static_cast<char>(bytes[at] + difference);
}

/// The answer to \a frame with the opposite of the states that were asked for. An exception stays as it is.
QByteArray Opposite(const QByteArray& frame, QByteArray answer) {
    if (answer[modbusframe::FunctionAt] != frame[modbusframe::FunctionAt]) return answer;
    const int count = static_cast<quint8>(frame[modbusframe::CountAt]) << 8 |
                      static_cast<quint8>(frame[modbusframe::CountAt + 1]);
    for (int i = 0; i < count; ++i)
        answer[modbusframe::StatesAt + i / 8] =
            static_cast<char>(answer[modbusframe::StatesAt + i / 8] ^ 1 << i % 8);
    return answer;
}

QByteArray WrongLength(QByteArray answer, std::mt19937& random) {
    switch (Roll(random, 4)) {
        case 0:  // a byte less, and all lengths say so
            answer.chop(1);
            Add(answer, modbusframe::LengthAt + 1, -1);
            if (answer.size() > modbusframe::ByteCountAt) Add(answer, modbusframe::ByteCountAt, -1);
            break;
        case 1:  // a byte more, and all lengths say so
            answer += '\0';
            Add(answer, modbusframe::LengthAt + 1, 1);
            Add(answer, modbusframe::ByteCountAt, 1);
            break;
        case 2:  // as many as were asked for, but the frame says less
            Add(answer, modbusframe::LengthAt + 1, -1);
            break;
        default:  // fewer than it says
            Add(answer, modbusframe::LengthAt + 1, 10);
            Add(answer, modbusframe::ByteCountAt, 10);
            break;
    }
    return answer;
}

QByteArray Garbage(std::mt19937& random) {
    QByteArray garbage(1 + Roll(random, MaxFrameSize), '\0');
    for (char& byte : garbage)
        byte = static_cast<char>(Roll(random, 256));
    return garbage;
}

Fault StormFault(int percent, std::mt19937& random) {
    Fault fault;
    if (Roll(random, 100) >= percent) return fault;
    fault.kind = StormFaults[Roll(random, static_cast<int>(std::size(StormFaults)))];
    if (fault.kind == EFault::Delay) fault.argument = Roll(random, StormDelayMs);
    if (fault.kind == EFault::Exception) fault.argument = Roll(random, 256);
    return fault;
}

}  // namespace

QString Fault::Parse(const QStringList& words, Fault* fault) {
    const QString name = words.value(0);
    const auto* const found =
        std::find_if(std::begin(Descriptions), std::end(Descriptions),
                     [&](const Description& d) { return name == QLatin1String(d.name); });
    if (found == std::end(Descriptions)) return QStringLiteral("'%1' is no fault").arg(name);
    Fault parsed;
    parsed.kind = found->kind;
    parsed.argument = found->unlessGiven;
    int next = 1;
    if (found->argument != nullptr && next < words.size() && !words[next].startsWith(QLatin1Char('x'))) {
        if (!ReadNumber(words[next], found->lowest, found->highest, &parsed.argument))
            return QStringLiteral("'%1' is no number from %2 to %3")
                .arg(words[next])
                .arg(found->lowest)
                .arg(found->highest);
        ++next;
    }
    if (next < words.size() && words[next].startsWith(QLatin1Char('x')))
        if (!ReadNumber(words[next++].mid(1), 1, MaxCount, &parsed.count))
            return QStringLiteral("'%1' is not x1 to x%2").arg(words[next - 1]).arg(MaxCount);
    if (next < words.size()) return QStringLiteral("'%1' is not understood").arg(words[next]);
    // These do not wait for a question.
    if (parsed.count != 0 && (parsed.kind == EFault::Refused || parsed.kind == EFault::Idle))
        return QStringLiteral("'%1' lasts until it is changed").arg(name);
    *fault = parsed;
    return QString();
}

QString Fault::ToText() const {
    const Description& description = DescriptionOf(kind);
    QString text = QLatin1String(description.name);
    if (description.argument != nullptr) text += QStringLiteral(" %1").arg(argument);
    if (count != 0) text += QStringLiteral(" x%1").arg(count);
    return text;
}

QString Fault::Help() {
    QString help;
    for (const Description& description : Descriptions) {
        QString form = QLatin1String(description.name);
        if (description.argument != nullptr)
            form += QStringLiteral(" [%1]").arg(QLatin1String(description.argument));
        help += QStringLiteral("  %1 %2\n").arg(form, -18).arg(QLatin1String(description.help));
    }
    return help;
}

Reaction React(const Fault& fault, const QByteArray& frame, const QByteArray& answer, std::mt19937& random) {
    const QByteArray wrong = Opposite(frame, answer);
    const auto changed = [&wrong](int at, int difference) {
        QByteArray bytes = wrong;
        Add(bytes, at, difference);
        return Reaction{0ms, bytes, Reaction::EThen::Stay};
    };
    switch (fault.kind) {
        case EFault::None:
        case EFault::Idle:
            return {0ms, answer, Reaction::EThen::Stay};
        case EFault::Delay:
            return {std::chrono::milliseconds(fault.argument), answer, Reaction::EThen::Stay};
        case EFault::Reset:
        case EFault::Refused:
            return {0ms, QByteArray(), Reaction::EThen::Reset};
        case EFault::Silence:
            return {};
        case EFault::Half:
            return {0ms, wrong.left(wrong.size() / 2), Reaction::EThen::Stay};
        case EFault::Transaction:
            return changed(modbusframe::TransactionAt + 1, -1);
        case EFault::Function:
            return changed(modbusframe::FunctionAt, 1);
        case EFault::Length:
            return {0ms, WrongLength(wrong, random), Reaction::EThen::Stay};
        case EFault::Garbage:
            return {0ms, Garbage(random), Reaction::EThen::Stay};
        case EFault::Exception:
            return {0ms, Exception(frame, fault.argument), Reaction::EThen::Stay};
        case EFault::Duplicate:
            return {0ms, answer + answer, Reaction::EThen::Stay};
        case EFault::Storm:
            return React(StormFault(fault.argument, random), frame, answer, random);
    }
    return {};
}

}  // namespace dimodule
