// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/pattern.h>

#include <iterator>

namespace dimodule {

namespace {

constexpr std::chrono::milliseconds Shortest(1);
constexpr std::chrono::milliseconds Longest = std::chrono::hours(1);

struct Name {
    const char* name;
    Pattern::EKind kind;
};

constexpr Name Names[] = {
    {"walk", Pattern::EKind::Walk}, {"blink", Pattern::EKind::Blink}, {"random", Pattern::EKind::Random}};

}  // namespace

QString Pattern::Parse(const QString& text, Pattern* pattern) {
    const int colon = text.indexOf(QLatin1Char(':'));
    const QString name = text.left(colon);
    Pattern parsed;
    for (const Name& known : Names)
        if (name == QLatin1String(known.name)) parsed.kind = known.kind;
    if (parsed.kind == EKind::None) return QStringLiteral("'%1' is no pattern").arg(name);
    bool isNumber = true;
    if (colon != -1) parsed.interval = std::chrono::milliseconds(text.mid(colon + 1).toInt(&isNumber));
    if (!isNumber || parsed.interval < Shortest || parsed.interval > Longest)
        return QStringLiteral("'%1' is no number of ms from %2 to %3")
            .arg(text.mid(colon + 1))
            .arg(Shortest.count())
            .arg(Longest.count());
    *pattern = parsed;
    return QString();
}

quint32 Pattern::StatesAt(int step, const Inputs& inputs, std::mt19937& random) const {
    switch (kind) {
        case EKind::None:
            break;
        case EKind::Walk:
            return inputs.All() & ~(1u << step % inputs.count);
        case EKind::Blink:
            return step % 2 == 0 ? 0 : inputs.All();
        case EKind::Random:
            return static_cast<quint32>(random()) & inputs.All();
    }
    return inputs.states;
}

}  // namespace dimodule
