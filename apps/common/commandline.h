// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/programoptions.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <cstddef>

/// Reads the command line of a program that is started with options: --help and --version for all of them,
/// and the first thing that is wrong, in one line. What is read goes where the program says. Needs the
/// application object.
class CommandLine {
  public:
    struct Option {
        const char* name;
        const char* value;  ///< what the help calls it; null: takes none
        const char* description;
    };

    /// \a options: in the order of the help. \a asked is told what the command line asks for; outlives this.
    template <std::size_t count>
    CommandLine(const char* program, const char* description, const Option (&options)[count],
                ProgramOptions* asked)
        : CommandLine(program, description, asked) {
        for (const Option& option : options)
            Add(option);
    }

    /// A word behind the options; \a syntax as the help shows it. Without one, every such word is refused.
    void AddWord(const char* name, const char* description, const char* syntax);
    /// What the help says below all options.
    void SetHelpEnd(const QString& text) { m_helpEnd = text; }

    /// Reads \a arguments, the program's name first. False if there is nothing more to be read: the program
    /// is not to run.
    bool Parse(const QStringList& arguments);

    bool IsSet(const char* name) const { return m_parser.isSet(QString::fromUtf8(name)); }
    QString GetValue(const char* name) const { return m_parser.value(QString::fromUtf8(name)); }
    QStringList GetValues(const char* name) const { return m_parser.values(QString::fromUtf8(name)); }
    QStringList GetWords() const { return m_parser.positionalArguments(); }

    /// Takes what the option is given, if it is; an empty text is refused.
    void TakeText(const char* name, QString* text);
    /// The same for whole numbers, from \a lowest to \a highest.
    void TakeNumber(const char* name, int lowest, int highest, int* number);

    /// Says what is wrong; what was said first counts. Empty: nothing is.
    void Refuse(const QString& what);
    void Refuse(const char* option, const QString& reason);
    void RefuseWord(const QString& word);

  private:
    CommandLine(const char* program, const char* description, ProgramOptions* asked);
    void Add(const Option& option);
    bool Print(const QString& text);

    QString m_program;
    QString m_helpEnd;
    bool m_takesWords = false;
    QCommandLineParser m_parser;
    ProgramOptions& m_asked;
};
