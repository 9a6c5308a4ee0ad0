// SPDX-License-Identifier: Apache-2.0
#include <apps/common/safetext.h>
#include <apps/mctree/command/commands.h>
#include <apps/mctree/command/setter.h>
#include <apps/mctree/mirror/requestanswer.h>
#include <apps/mctree/text/inputlines.h>
#include <apps/mctree/text/linetext.h>

#include <QtCore/QFile>

#include <list>

namespace mctree {

namespace {

/// Paths that stay asked for after their line, since the next lines may be about them again, and an MpxORV
/// that nobody asks for any more may go.
constexpr std::size_t MostKept = 64;
constexpr int LongestValue = 1048576;                  // characters
constexpr qint64 LargestLinesFile = 16 * 1024 * 1024;  // bytes

/// Sets what the lines of a stream say, one by one as they come.
class LineSetter {
  public:
    explicit LineSetter(const Context& context) : m_context(context), m_report(context.tell) {}

    Outcome Run(std::shared_ptr<std::istream> stream) {
        Session& session = m_context.session;
        InputLines lines(std::move(stream), [&session] { session.Wake(); });
        bool isTooLong = false;
        std::optional<QString> line;
        const auto isMore = [&] {
            if (!line) line = lines.Take(&isTooLong);
            return line || lines.IsAtEnd();
        };
        while (session.WaitUntil(isMore, QDeadlineTimer(QDeadlineTimer::Forever)) == Session::EWait::Met &&
               line) {
            ++m_number;
            const Outcome outcome = isTooLong ? Wrong(QStringLiteral("too long")) : SetLine(*line);
            if (outcome.code == EExitCode::NoConnection) return outcome;
            m_report.Add(outcome);
            m_context.printer.Flush();
            line.reset();
        }
        if (session.IsInterrupted()) return Session::Interrupted(EExitCode::Refused);
        return m_report.Result();
    }

  private:
    /// What one line asked for.
    struct Kept {
        QString path;
        std::vector<PathPattern> patterns;
        std::unique_ptr<Targets> targets;
    };

    QString Prefix() const { return QStringLiteral("line %1: ").arg(m_number); }
    Outcome Wrong(const QString& error) const {
        return {EExitCode::Usage, Prefix() + safetext::Escaped(error)};
    }

    Outcome SetLine(const QString& line) {
        if (linetext::IsComment(line)) return Outcome();
        const linetext::Pair pair = linetext::Split(line);
        if (!pair.error.isEmpty()) return Wrong(pair.error);
        // What was read by a pattern has what the server has answered, too. That is not to be said again.
        if (RequestAnswer::IsAnswer(pair.path))
            return {EExitCode::Done,
                    Prefix() + safetext::Escaped(pair.path) +
                        QStringLiteral(": is an answer of the server, and is left as it is")};
        QString error;
        Targets* const targets = Provide(pair.path, &error);
        if (targets == nullptr) return Wrong(error);
        Outcome outcome = targets->Settle(QDeadlineTimer(m_context.arguments.Timeout()));
        if (outcome.IsDone()) m_setter.SetAll(*targets, pair.content, Prefix());
        return outcome;
    }

    /// The targets of \a path; null if it is no path.
    Targets* Provide(const QString& path, QString* error) {
        for (auto kept = m_kept.begin(); kept != m_kept.end(); ++kept) {
            if (kept->path != path) continue;
            m_kept.splice(m_kept.end(), m_kept, kept);
            return m_kept.back().targets.get();
        }
        PathPattern pattern;
        *error = pattern.Parse(path, m_context.arguments.reading);
        if (!error->isEmpty()) return nullptr;
        if (m_kept.size() == MostKept) m_kept.pop_front();
        m_kept.push_back({path, {pattern}, nullptr});
        Kept& kept = m_kept.back();
        kept.targets = std::make_unique<Targets>(m_context.session, kept.patterns, EPurpose::Look);
        return kept.targets.get();
    }

    const Context& m_context;
    Report m_report;
    Setter m_setter{m_context, m_report};
    std::list<Kept> m_kept;  ///< the last ones, that of the last line at the end
    int m_number = 0;        ///< of the line, from 1
};

/// The stream of lines that the arguments name; null, with the reason, if it cannot be read.
std::shared_ptr<std::istream> OpenLines(const QString& name, QString* error) {
    if (name == QLatin1String("-")) return InputLines::StandardInput();
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return nullptr;
    }
    const QByteArray bytes = file.read(LargestLinesFile + 1);
    if (bytes.size() <= LargestLinesFile) return InputLines::Of(bytes);
    *error = QStringLiteral("the file is too large");
    return nullptr;
}

/// Reads all of the standard input, without the end of its last line.
Outcome ReadValue(Session& session, QString* value) {
    InputLines lines(InputLines::StandardInput(), [&session] { session.Wake(); });
    QStringList read;
    int size = 0;
    bool isTooLong = false;
    const auto isOver = [&] {
        while (const auto line = isTooLong ? std::nullopt : lines.Take(&isTooLong)) {
            read += *line;
            size += line->size() + 1;
            isTooLong = isTooLong || size > LongestValue;
        }
        return isTooLong || lines.IsAtEnd();
    };
    if (session.WaitUntil(isOver, QDeadlineTimer(QDeadlineTimer::Forever)) == Session::EWait::Interrupted)
        return Session::Interrupted(EExitCode::Refused);
    if (isTooLong) return {EExitCode::Usage, QStringLiteral("the standard input is too long for a value")};
    *value = read.join(QLatin1Char('\n'));
    return Outcome();
}

}  // namespace

Outcome RunSet(const Context& context) {
    if (!context.arguments.linesFile.isEmpty()) {
        QString error;
        auto stream = OpenLines(context.arguments.linesFile, &error);
        if (stream == nullptr)
            return {EExitCode::Usage,
                    safetext::Escaped(context.arguments.linesFile) + QStringLiteral(": ") + error};
        return LineSetter(context).Run(std::move(stream));
    }
    QString value = context.arguments.value;
    Outcome outcome = context.arguments.isValueFromInput ? ReadValue(context.session, &value) : Outcome();
    if (!outcome.IsDone()) return outcome;
    Targets targets(context.session, context.arguments.patterns, EPurpose::Look);
    outcome = targets.Settle(QDeadlineTimer(context.arguments.Timeout()));
    if (!outcome.IsDone()) return outcome;
    Report report(context.tell);
    Setter(context, report).SetAll(targets, value, QString());
    return report.Result();
}

}  // namespace mctree
