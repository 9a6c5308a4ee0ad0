// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/moduleoptions.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtNetwork/QHostAddress>

#include <limits>

namespace dimodule {

namespace {

struct Option {
    const char* name;
    const char* value;
    const char* description;
};

// In the order of the help.
constexpr Option Options[] = {
    {"listen", "ADDRESS[:PORT]",
     "Where a module is, an address of this machine only (127.x.y.z); port 0 is any free one. May be given "
     "several times. 127.0.0.1:1502 unless given."},
    {"modules", "N", "So many modules at each of these, at one address after the other."},
    {"inputs", "N", "Inputs of each module, 1 to 32. 12 unless given."},
    {"start", "N", "Modbus address of the first input. 0 unless given."},
    {"unit", "N", "The only Modbus unit that answers. Every unit unless given."},
    {"pattern", "NAME[:MS]", "Key inputs by itself, every MS (500): walk, blink or random."},
    {"script", "FILE", "Carry out the commands in FILE, one line each."},
    {"fault", "FAULT", "Start with this fault, such as 'delay 300 x5'."},
    {"seed", "N", "What random faults and patterns start from. 1 unless given."},
};

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

QString HelpText(const QCommandLineParser& parser) {
    return parser.helpText() +
           Text(
               "\nCommands, on the standard input or in the script, where M is a module from 1, and all "
               "modules without it:\n"
               "  key [M/]INPUT...      key transmitters: the inputs (from 0, or all) read 0\n"
               "  release [M/]INPUT...  the inputs read 1\n"
               "  states [M/]NUMBER     all inputs at once, bit i for input i\n"
               "  fault [M/]FAULT       do wrong from now on\n"
               "  show                  tell about the modules\n"
               "  wait MS, repeat       in a script: wait, start again\n"
               "  quit\n"
               "\nFaults; xN after one ends it after N questions:\n") +
           Fault::Help();
}

void Describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        Text("Simulates modules of digital inputs on Modbus/TCP. An input reads 1, or 0 while "
             "its transmitter is keyed."));
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addHelpOption();
    parser.addVersionOption();
    for (const Option& option : Options)
        parser.addOption({Text(option.name), Text(option.description), Text(option.value)});
}

/// Reads one option after the other, up to the first that is wrong.
class Reader {
  public:
    Reader(const QCommandLineParser& parser, ModuleOptions& options) : m_parser(parser), m_options(options) {}

    /// What is wrong; empty if nothing is.
    QString Read() {
        Inputs& inputs = m_options.inputs;
        int modules = 1;
        int seed = 1;
        ReadNumber("modules", 1, ModuleOptions::MaxModules, &modules);
        ReadNumber("inputs", 1, Inputs::MaxCount, &inputs.count);
        ReadNumber("start", 0, 65535 - inputs.count + 1, &inputs.start);
        ReadNumber("unit", 0, 255, &inputs.unit);
        ReadNumber("seed", 0, std::numeric_limits<int>::max(), &seed);
        inputs.states = inputs.All();
        m_options.seed = static_cast<unsigned>(seed);
        m_options.scriptFile = m_parser.value(Text("script"));
        if (m_parser.isSet(Text("script")) && m_options.scriptFile.isEmpty())
            Fail("script", Text("a file is missing"));
        if (m_parser.isSet(Text("pattern")))
            Fail("pattern", Pattern::Parse(m_parser.value(Text("pattern")), &m_options.pattern));
        if (m_parser.isSet(Text("fault")))
            Fail("fault", Fault::Parse(m_parser.value(Text("fault")).simplified().split(QLatin1Char(' ')),
                                       &m_options.fault));
        QStringList places = m_parser.values(Text("listen"));
        if (places.isEmpty()) places += Text("127.0.0.1");
        for (const QString& place : places)
            AddModules(place, modules);
        return m_error;
    }

  private:
    void Fail(const char* option, const QString& reason) {
        if (m_error.isEmpty() && !reason.isEmpty())
            m_error = QStringLiteral("--%1: %2").arg(Text(option), reason);
    }

    void ReadNumber(const char* name, int lowest, int highest, int* number) {
        if (!m_parser.isSet(Text(name))) return;
        const QString text = m_parser.value(Text(name));
        bool isNumber = false;
        const int read = text.toInt(&isNumber);
        if (isNumber && read >= lowest && read <= highest)
            *number = read;
        else
            Fail(name, QStringLiteral("'%1' is no number from %2 to %3").arg(text).arg(lowest).arg(highest));
    }

    void AddModules(const QString& place, int count) {
        ListenAddress listen{QString(), ModuleOptions::DefaultPort};
        QString error;
        if (!listen.Parse(place, &error)) return Fail("listen", error);
        const QHostAddress first(listen.address);
        const bool isIPv4 = first.protocol() == QAbstractSocket::IPv4Protocol;
        for (int i = 0; i < count; ++i) {
            const QHostAddress address =
                isIPv4 ? QHostAddress(first.toIPv4Address() + static_cast<quint32>(i)) : first;
            // Whoever can reach a module can ask it, and no such thing is to be open to a network by mistake.
            if (!isIPv4 || !address.isLoopback())
                return Fail("listen",
                            QStringLiteral("'%1' is not within 127.0.0.0/8").arg(address.toString()));
            m_options.listen.push_back({address.toString(), listen.port});
        }
        if (m_options.listen.size() > std::size_t(ModuleOptions::MaxModules))
            Fail("modules", QStringLiteral("there are more than %1 modules").arg(ModuleOptions::MaxModules));
    }

    const QCommandLineParser& m_parser;
    ModuleOptions& m_options;
    QString m_error;
};

}  // namespace

ModuleOptions ModuleOptions::Parse(const QStringList& arguments) {
    ModuleOptions options;
    QCommandLineParser parser;
    Describe(parser);
    QString error;
    if (!parser.parse(arguments)) {
        error = parser.errorText();
    } else if (parser.isSet(Text("help")) || parser.isSet(Text("help-all"))) {
        options.action = EAction::Print;
        options.text = HelpText(parser);
        return options;
    } else if (parser.isSet(Text("version"))) {
        options.action = EAction::Print;
        options.text = QStringLiteral("dimodule %1\n").arg(QCoreApplication::applicationVersion());
        return options;
    } else if (!parser.positionalArguments().isEmpty()) {
        error = QStringLiteral("'%1' is not understood").arg(parser.positionalArguments().first());
    } else {
        error = Reader(parser, options).Read();
    }
    if (error.isEmpty()) return options;
    options.action = EAction::Complain;
    options.text = error;
    return options;
}

}  // namespace dimodule
