// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/device/orvscript.h>

#include <platform/config/textfile.h>

#include <algorithm>

namespace {

enum class EArgument { None, Optional, Needed, Mode };

struct Statement {
    const char* word;
    OrvScript::EAction action;
    EArgument argument;
};

// clang-format off
constexpr Statement Statements[] = {
    {"mode",    OrvScript::EAction::Mode,    EArgument::Mode},
    {"fail",    OrvScript::EAction::Fail,    EArgument::Optional},
    {"recover", OrvScript::EAction::Recover, EArgument::None},
    {"log",     OrvScript::EAction::Log,     EArgument::Needed},
    {"occupy",  OrvScript::EAction::Occupy,  EArgument::Needed},
    {"vacate",  OrvScript::EAction::Vacate,  EArgument::None},
};
// clang-format on

const Statement* FindStatement(const QString& word) {
    const auto* const found = std::find_if(std::begin(Statements), std::end(Statements),
                                           [&](const auto& s) { return word == QLatin1String(s.word); });
    return found != std::end(Statements) ? found : nullptr;
}

bool FindMode(const QString& text, EOperationMode* mode) {
    const values::ValueDescriptor& modes = StdDeviceDefinition::g_vdOperationMode;
    for (int i = 0; i < modes.CountSelItems(); ++i) {
        if (modes.SelItems()[i].String().compare(text, Qt::CaseInsensitive) != 0) continue;
        *mode = static_cast<EOperationMode>(modes.SelItems()[i].Key());
        return true;
    }
    return false;
}

/// Takes the first word off \a rest.
QString TakeWord(QString* rest) {
    const QString text = rest->trimmed();
    const int end = text.indexOf(QLatin1Char(' '));
    *rest = end == -1 ? QString() : text.mid(end + 1).trimmed();
    return text.left(end);
}

/// What is wrong with \a argument; empty if nothing is.
QString CheckArgument(const Statement& statement, const QString& argument, OrvScript::Step* step) {
    const QString word = QLatin1String(statement.word);
    switch (statement.argument) {
        case EArgument::None:
            return argument.isEmpty() ? QString() : QStringLiteral("'%1' takes no argument").arg(word);
        case EArgument::Needed:
            return argument.isEmpty() ? QStringLiteral("'%1' needs an argument").arg(word) : QString();
        case EArgument::Mode:
            if (FindMode(argument, &step->mode)) return QString();
            return QStringLiteral("'%1' is no operation mode").arg(argument);
        case EArgument::Optional:
            break;
    }
    return QString();
}

/// What is wrong with \a line; empty if nothing is.
QString ParseLine(const QString& line, OrvScript::Step* step) {
    QString rest = line;
    if (TakeWord(&rest) != QLatin1String("after"))
        return QStringLiteral("a line is 'after <ms> <action> [argument]'");
    const QString time = TakeWord(&rest);
    bool isNumber = false;
    step->time = std::chrono::milliseconds(time.toInt(&isNumber));
    if (!isNumber || step->time < step->time.zero() || step->time > OrvScript::MaxTime)
        return QStringLiteral("'%1' is no number of ms from 0 to %2")
            .arg(time, QString::number(std::chrono::milliseconds(OrvScript::MaxTime).count()));
    const QString word = TakeWord(&rest);
    const Statement* const statement = FindStatement(word);
    if (statement == nullptr) return QStringLiteral("'%1' is no action").arg(word);
    step->action = statement->action;
    step->text = rest;
    return CheckArgument(*statement, rest, step);
}

}  // namespace

bool OrvScript::Load(const QString& path, QString* error) {
    QStringList lines;
    if (!TextFile::ReadLines(path, &lines, error)) return false;
    return Parse(lines.join(QLatin1Char('\n')).toUtf8(), path, error);
}

bool OrvScript::Parse(const QByteArray& text, const QString& name, QString* error) {
    QStringList lines;
    if (!TextFile::SplitLines(text, name, &lines, error)) return false;
    std::vector<Step> steps;
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = lines[i].simplified();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
        Step step;
        QString reason = ParseLine(line, &step);
        if (reason.isEmpty() && steps.size() >= std::size_t(MaxSteps))
            reason = QStringLiteral("there are more than %1 steps").arg(MaxSteps);
        if (!reason.isEmpty()) {
            *error = QStringLiteral("%1:%2: %3").arg(name, QString::number(i + 1), reason);
            return false;
        }
        steps.push_back(step);
    }
    std::stable_sort(steps.begin(), steps.end(),
                     [](const Step& a, const Step& b) { return a.time < b.time; });
    m_steps = steps;
    return true;
}
